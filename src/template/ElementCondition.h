// The condition a layout tag may carry ("condition" parameter): one kind and its parameters,
// such as "childitems:itemtype=KV:Method,Operator=>=,Value=2". A tag applies when its condition
// holds for the current item; there are no boolean operators, layouts nest tags instead.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "kavrel/Object.h"
#include "kavrel/StringCollection.h"

namespace kv {

class DataProvider;
class KVProject;
class NamespaceDef;

enum ElementConditionTypeEnum : long {
  ectNone = 0,
  ectChidItems = 1,
  ectVariableValue = 2,
  ectContent = 3,
  ectHelpVersion = 4,
  ectCommunityEnabled = 5,
};

class ElementCondition {
 public:
  // The kind; ectNone until a known kind is loaded.
  ElementConditionTypeEnum ElementConditionType = ectNone;
  // The parameters, names ignoring case; absent until a known kind is loaded.
  std::optional<StringCollection> ElementConditionProperties;

  // Reads "kind:name=value,name=\"a, b\"". An unknown kind leaves the condition as it was; a
  // parameter named twice fails.
  void Load(std::string_view Source);
  // Whether the condition holds; false without a namespace definition. A "content" condition
  // needs `DDP` to expand its text and sees empty text without one.
  bool Evaluate(const ObjectPtr& Item, const std::shared_ptr<NamespaceDef>& Def, KVProject& Project);
  bool EvaluateEx(const ObjectPtr& Item, const std::shared_ptr<NamespaceDef>& Def, KVProject& Project,
                  DataProvider* DDP);

 private:
  // The parameter's value, or `fallback` when it is absent.
  std::string property(std::string_view name, std::string fallback = {}) const;
};

}  // namespace kv
