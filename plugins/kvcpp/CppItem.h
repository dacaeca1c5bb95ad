// A documented declaration as the library sees an item: reached by member name, told apart by its
// run-time type name ("Component" for headers, namespaces and types, "Block" for functions,
// "Enumeration", "Variable" for fields, variables and enumerators, "Parameter").
#pragma once

#include <memory>
#include <string>

#include "Declaration.h"
#include "kavrel/Object.h"

namespace kv::cpp {

class CppItem : public Object {
 public:
  // `decl` lives as long as the parse it belongs to, which the item keeps.
  CppItem(std::shared_ptr<const Declaration> decl, std::string qualifiedName);
  // A header file: a component whose members are what the file declares.
  static std::shared_ptr<CppItem> Header(std::string file, std::string name);

  std::string typeName() const override;
  Variant get(std::string_view member) const override;
  void set(std::string_view member, const Variant& value) override;

  const Declaration* Decl() const { return mDecl.get(); }
  const std::string& File() const { return mFile; }  // of a header item
  const std::string& QualifiedName() const { return mQualifiedName; }

 private:
  std::shared_ptr<const Declaration> mDecl;
  std::string mFile;
  std::string mName;
  std::string mQualifiedName;
  bool mIncluded = true;
};

}  // namespace kv::cpp
