// Namespace definitions: the kinds of documented item and page ("KV:Module", "KV:Method", ...)
// that a template defines and a plug-in may add to, each with the definitions below it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "kavrel/Collection.h"
#include "kavrel/Export.h"
#include "kavrel/StoredElement.h"

namespace kv {

class NamespaceDef;

// An ordered list of namespace definitions keyed by name.
class KV_API NamespaceDefs : public Collection<std::shared_ptr<NamespaceDef>> {
 public:
  // The definitions here and below, in document order, whose name is `name` (ignoring case).
  std::vector<std::shared_ptr<NamespaceDef>> FindByName(std::string_view name) const;
};

// One kind of documented item and page.
class KV_API NamespaceDef {
 public:
  std::string Name;
  std::string DisplayName;  // for status lines
  std::string Handler;      // class name of the namespace provider
  bool DontGeneratePages = false;
  bool CoreDefinition = false;
  long ItemCounter = 0;  // running count during a build
  std::string OutputFileNamePattern;
  // Behaviour letters: "x" no child walks, "m" model comments, "i" index, "t" not in walks over
  // comment-bearing items, "d" duplicate-name check.
  std::string ChildKinds;
  bool Selectable = false;     // the user switches it on and off
  bool DefaultInclude = true;  // its state when the project does not say
  bool IncludeFlag = true;     // set before every build
  NamespaceDefs ChildNamespaceDefs;
  // The definition's element as written, for the readers of further definition content.
  StoredElement Definition;

  // Prepares the definition and its children for a build: the item counters start at 0.
  void Prepare();
};

}  // namespace kv
