#include "template/ElementCondition.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "definitions/Configuration.h"
#include "host/FailureHandler.h"
#include "kavrel/DataProvider.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/Text.h"
#include "project/CommunityProperties.h"
#include "project/KVProject.h"
#include "project/VariableValues.h"
#include "template/TextExpansion.h"

namespace kv {
namespace {

constexpr const char* kModule = "ElementCondition";

// A number as text the way it reads back: "2" stays "2", " 3" becomes "3", "x" becomes "0".
std::string asNumberText(std::string_view value) {
  const std::string s = text::trim(value);
  double number = 0;
  const auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), number);
  if (ec != std::errc() || end != s.data() + s.size()) number = 0;
  char buffer[32];
  const auto written = std::to_chars(buffer, buffer + sizeof buffer, number);
  return std::string(buffer, written.ptr);
}

// Compares as text, code unit by code unit, also for counts: "10" < "9".
bool holds(std::string_view op, const std::string& actual, const std::string& value) {
  const auto order = text::toUtf16(actual) <=> text::toUtf16(value);
  if (op == "=") return order == 0;
  if (op == ">") return order > 0;
  if (op == "<") return order < 0;
  if (op == "<>") return order != 0;
  if (op == ">=") return order >= 0;
  if (op == "<=") return order <= 0;
  return false;
}

}  // namespace

void ElementCondition::Load(std::string_view Source) {
  guard(kModule, [&] {
    static constexpr std::array<std::pair<std::string_view, ElementConditionTypeEnum>, 5> kKinds{{
        {"childitems", ectChidItems},
        {"variablevalue", ectVariableValue},
        {"content", ectContent},
        {"helpversion", ectHelpVersion},
        {"communityenabled", ectCommunityEnabled},
    }};
    std::string source(Source);
    if (source.find(':') == std::string::npos) source += ':';
    const auto colon = source.find(':');
    const std::string kind = text::toLower(source.substr(0, colon));
    const auto known = std::find_if(kKinds.begin(), kKinds.end(), [&](const auto& k) { return k.first == kind; });
    if (known == kKinds.end()) return;
    ElementConditionType = known->second;
    ElementConditionProperties.emplace();
    const std::string parameters = source.substr(colon + 1);
    if (parameters.empty()) return;
    for (const std::string& piece : SplitEx(parameters, ",")) {
      const long equals = InStrEx(1, piece, "=");
      if (equals == 0) continue;
      ElementConditionProperties->Add(StripQuotes(text::mid(piece, equals + 1)), text::left(piece, equals - 1));
    }
  });
}

std::string ElementCondition::property(std::string_view name, std::string fallback) const {
  if (!ElementConditionProperties) return fallback;
  const std::string* value = ElementConditionProperties->Find(name);
  return value ? *value : fallback;
}

bool ElementCondition::Evaluate(const ObjectPtr& Item, const std::shared_ptr<NamespaceDef>& Def, KVProject& Project) {
  return EvaluateEx(Item, Def, Project, nullptr);
}

bool ElementCondition::EvaluateEx(const ObjectPtr& Item, const std::shared_ptr<NamespaceDef>& Def, KVProject& Project,
                                  DataProvider* DDP) {
  return guard<bool>(kModule, [&] {
    if (!Def) return false;
    std::string op, value, actual;
    switch (ElementConditionType) {
      case ectChidItems: {
        const auto provider = Project.GetNamespaceProvider(Def->Handler);
        if (!provider) return false;
        // The item type must be given; a missing one is a failure of the condition.
        if (!ElementConditionProperties) throw Failure(err::SubscriptOutOfRange, "Subscript out of range");
        const std::string& itemType = ElementConditionProperties->Item("itemtype");
        const std::shared_ptr<NamespaceDef>* child = Def->ChildNamespaceDefs.Find(itemType);
        if (!child) return false;
        op = property("Operator", ">=");
        const std::string filter = property("Filter");
        value = ElementConditionProperties->Exists("Value") ? asNumberText(property("Value")) : "1";
        const ItemCollection items = provider->GetItems(*child, Item, filter);
        actual = std::to_string(items ? items->size() : 0);
        break;
      }
      case ectVariableValue: {
        op = property("Operator", "<>");
        value = property("Value");
        const std::string name = property("VariableName");
        if (Project.VariableValues->Exists(name)) actual = Project.VariableValues->Item(name)->Value();
        break;
      }
      case ectContent:
        op = property("Operator", "<>");
        value = property("Value");
        if (DDP && ElementConditionProperties && ElementConditionProperties->Exists("Content"))
          actual = DDP->ParseForProperties(property("Content"));
        break;
      case ectHelpVersion:
        op = property("Operator", "=");
        value = property("Value");
        actual = Project.HTMLHelpVersion();
        break;
      case ectCommunityEnabled: return Project.CommunityProperties && Project.CommunityProperties->IsEnabled();
      case ectNone: return false;
    }
    return holds(op, actual, value);
  });
}

}  // namespace kv
