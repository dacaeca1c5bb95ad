// An ordered collection of strings with optional keys that ignore case: the parameters of a
// template tag, the result of a parameter list, the values of a text substitution.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

class StringCollection {
 public:
  struct Entry {
    std::string key;
    std::string value;
    bool keyed = false;
  };

  // Adds at the end. A key that is already present fails with error 457.
  void Add(std::string value);
  void Add(std::string value, std::string key);
  bool Contains(std::string_view key) const { return Find(key) != nullptr; }
  // The value under `key`, or nullptr.
  const std::string* Find(std::string_view key) const;
  std::string* Find(std::string_view key);
  // By key; a missing key fails with error 5.
  const std::string& Item(std::string_view key) const;
  // By 1-based position; out of range fails with error 9.
  const std::string& Item(long index) const;
  void Remove(std::string_view key);
  long Count() const { return static_cast<long>(mEntries.size()); }
  bool empty() const { return mEntries.empty(); }

  std::vector<Entry>::const_iterator begin() const { return mEntries.begin(); }
  std::vector<Entry>::const_iterator end() const { return mEntries.end(); }

 private:
  // A tag has a handful of parameters: a linear search beats any map here.
  std::vector<Entry> mEntries;
};

}  // namespace kv
