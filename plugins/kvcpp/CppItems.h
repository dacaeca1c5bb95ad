// The items of a parse, as the namespace definitions ask for them: header files at the root;
// below a header the classes, functions, enumerations, type aliases, macros and variables it
// declares, however deep in namespaces; below a class its members, filtered by access. Each
// declaration has one item for the life of the parse, so that comments stay with it.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "CppItem.h"
#include "CppParser.h"

namespace kv::cpp {

// The namespace definitions of kv.cpp items.
namespace defs {
inline constexpr const char* Header = "KV:Header";
inline constexpr const char* Class = "KV:Class";
inline constexpr const char* Method = "KV:Method";
inline constexpr const char* Field = "KV:Field";
inline constexpr const char* Private = "KV:Private";
inline constexpr const char* Function = "KV:Function";
inline constexpr const char* Enumeration = "KV:Enumeration";
inline constexpr const char* Typedef = "KV:Typedef";
inline constexpr const char* Macro = "KV:Macro";
inline constexpr const char* Variable = "KV:Variable";
}  // namespace defs

struct AccessFilter {
  bool Protected = false;
  bool Private = false;
};

class CppItems {
 public:
  // `relativeName` names a header file for the reader.
  CppItems(std::shared_ptr<const ParseResult> parsed,
           const std::function<std::string(const std::string&)>& relativeName);

  const std::vector<std::shared_ptr<CppItem>>& Headers() const { return mHeaders; }
  // The items of definition `def` below `parent` (nothing for the root).
  std::vector<ObjectPtr> Items(const std::string& def, const ObjectPtr& parent, const AccessFilter& access);
  // The item of a qualified name ("geo~Point~scale"; a header by its name), or nothing.
  std::shared_ptr<CppItem> Find(const std::string& qualifiedName);
  // The definition that an item's kind belongs to.
  static std::string DefinitionOf(const CppItem& item);

 private:
  std::shared_ptr<CppItem> ItemOf(const Declaration& decl);
  void Collect(const Declaration& scope, const std::string& file, const std::string& def, std::vector<ObjectPtr>& out);

  std::shared_ptr<const ParseResult> mParsed;
  std::vector<std::shared_ptr<CppItem>> mHeaders;
  std::map<const Declaration*, std::shared_ptr<CppItem>> mItems;
};

}  // namespace kv::cpp
