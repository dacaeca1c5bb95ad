// The model of a parse, and its items as the namespace definitions ask for them.
//
// The model is a vbProject whose components are the header files (ComponentKind "Header": their
// free functions and macros as blocks, enumerations, variables and type aliases as variables) and
// the classes, structs and unions (with their template parameters as generic arguments, members
// as blocks and variables, nested enumerations), wherever they are declared. Doc comments become
// tagged comments of the kinds the configuration defines.
//
// The definitions walk it as: header files at the root; below a header the classes, functions,
// enumerations, type aliases, macros and variables it declares; below a class its members,
// filtered by access.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "CppKinds.h"
#include "CppParser.h"
#include "kavrel/TaggedCommentDef.h"
#include "kavrel/model/vbProject.h"

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
  // `relativeName` names a header file for the reader; comments are filed under `commentDefs`.
  CppItems(const ParseResult& parsed, const std::string& projectName,
           const std::function<std::string(const std::string&)>& relativeName,
           std::shared_ptr<const TaggedCommentDefs> commentDefs);

  const std::shared_ptr<vbProject>& Project() const { return mProject; }
  const std::vector<std::shared_ptr<Component>>& Headers() const { return mHeaders; }
  // The items of definition `def` below `parent` (nothing for the root).
  std::vector<ObjectPtr> Items(const std::string& def, const ObjectPtr& parent, const AccessFilter& access) const;
  // The item of a qualified name ("geo~Point~scale"; a header by its name), or nothing.
  ItemPtr Find(const std::string& qualifiedName) const;
  // The definition that an item belongs to, empty for none.
  static std::string DefinitionOf(const Item& item);

 private:
  void AddScope(const Declaration& scope);
  void AddClass(const Declaration& decl);
  void AddMember(Component& owner, const Declaration& decl, const Declaration& scope);
  void Comment(Item& item, const DocComment& comment);
  void Add(Item& item, const std::string& tag, const std::string& text, const std::string& qualifier = {});
  bool Defined(const std::string& tag) const;
  Component* HeaderOf(const std::string& file) const;

  std::shared_ptr<vbProject> mProject;
  std::vector<std::shared_ptr<Component>> mHeaders;
  std::vector<std::shared_ptr<Component>> mClasses;
  std::map<std::string, std::shared_ptr<Component>> mHeaderByFile;
  std::shared_ptr<const TaggedCommentDefs> mCommentDefs;
};

}  // namespace kv::cpp
