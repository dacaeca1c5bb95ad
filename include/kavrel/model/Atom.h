// Interned text: names and type texts that repeat across a model ("value", "Integer", "Count")
// are stored once for the whole process, and an item keeps only a pointer to the shared copy.
// Atoms live until the process ends; interning is safe from several threads.
#pragma once

#include <string>
#include <string_view>

#include "kavrel/Export.h"

namespace kv {

class KV_API Atom {
 public:
  Atom() = default;  // the empty text
  Atom(std::string_view text);
  Atom(const std::string& text) : Atom(std::string_view(text)) {}
  Atom(const char* text) : Atom(std::string_view(text)) {}

  const std::string& str() const { return mText ? *mText : emptyText(); }
  operator const std::string&() const { return str(); }
  bool empty() const { return !mText || mText->empty(); }

  // Atoms of equal text share their copy, so equality is a pointer comparison.
  friend bool operator==(Atom a, Atom b) { return a.mText == b.mText; }

  // How many distinct texts have been interned.
  static std::size_t count();

 private:
  static const std::string& emptyText();
  const std::string* mText = nullptr;
};

}  // namespace kv
