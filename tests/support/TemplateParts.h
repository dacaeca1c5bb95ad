// The pieces tests build templates and projects from: namespace definitions and page layouts made
// in code, a plug-in with one root item "Lib", and a recorder of build errors.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "definitions/PageLayout.h"
#include "kavrel/IKVProjectPlugIn.h"
#include "kavrel/NamespaceDef.h"
#include "project/KVProjectEvents.h"
#include "support/Items.h"

namespace kv::test {

inline std::shared_ptr<NamespaceDef> namespaceDef(const std::string& name, const std::string& handler,
                                                  const std::string& childKinds = "") {
  auto def = std::make_shared<NamespaceDef>();
  def->Name = name;
  def->DisplayName = name;
  def->Handler = handler;
  def->ChildKinds = childKinds;
  return def;
}

inline std::shared_ptr<PageLayout> layout(const std::string& file, const std::string& namespaces,
                                          const std::string& pattern = "") {
  auto pl = std::make_shared<PageLayout>();
  pl->Name = file;
  pl->TemplateFileName = file;
  pl->NamespaceList = namespaces;
  pl->OutputFileNamePattern = pattern;
  return pl;
}

// A plug-in whose doc type documents one root item, the project "Lib".
struct RootPlugIn : IKVProjectPlugIn {
  ObjectPtr root = makeItem("vbProject", {{"Name", "Lib"}, {"QualifiedName", "Lib"}});
  bool SomethingToDocument() override { return true; }
  ObjectPtr RootItems(const std::string&) override { return makeCollection({{"Lib", root}}); }
};

struct BuildErrors : KVProjectEvents {
  std::vector<std::string> texts;
  void BuildError(const std::string& text, KVErrorLevel) override { texts.push_back(text); }
};

}  // namespace kv::test
