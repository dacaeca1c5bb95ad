// The tags of a layout that the common provider answers: the entry checks every tag passes
// (kind, "type", "condition") and the tags that rest on the provider's own properties.
#include "definitions/Configuration.h"
#include "files/EscapeText.h"
#include "kavrel/Failure.h"
#include "kavrel/ParserElement.h"
#include "kavrel/Text.h"
#include "project/KVDocType.h"
#include "project/KVProject.h"
#include "template/CommonProvider.h"
#include "template/ElementCondition.h"
#include "template/TextExpansion.h"

namespace kv {
namespace {

// A parameter the tag needs: its absence fails the tag.
const std::string& required(const ParserElement& element, std::string_view name) {
  return element.Parameters().Item(name);
}

std::string optional(const ParserElement& element, std::string_view name) {
  const std::string* value = element.Parameters().Find(name);
  return value ? *value : std::string();
}

}  // namespace

std::string CommonProvider::ProvideData(ParserElement& Element, std::shared_ptr<FileSystem>& /*FileSystemObject*/) {
  int step = 1;
  try {
    if (Element.ElementType() != ParserElement::DataTag) return {};
    // The type is checked before the condition, so a tag without one reports that first.
    if (!Element.HasParameter("type")) return "!MISSING Type PROPERTY!";
    if (Element.HasParameter("condition")) {
      step = 2;
      ElementCondition condition;
      condition.Load(required(Element, "condition"));
      if (condition.ElementConditionType == ectNone) return "!INVALID CONDITION TYPE!";
      if (!condition.Evaluate(mCurrentItem, mNamespaceDef, *project())) return {};
    }
    const std::string type = text::toLower(required(Element, "type"));
    if (type.find(':') != std::string::npos) return {};

    if (type == "phrase") {
      step = 3;
      std::string phrase = project()->Phrase(required(Element, "name"));
      if (phrase.find("%%") != std::string::npos) phrase = ParseForProperties(phrase);
      return phrase;
    }
    if (type == "variable") {
      step = 4;
      return GetProperty(required(Element, "name"));
    }
    if (type == "scrap") {
      step = 5;
      const auto p = project();
      const std::string scrap = ParseForProperties(p->Scrap(required(Element, "name")));
      const auto tmpl = p->CurrentDocType()->Template();
      return ParseForPhrasesEx(scrap, [&](std::string_view key) -> std::optional<std::string> {
        const auto& phrases = tmpl->Phrases();
        const auto found = phrases.find(std::string(key));
        if (found == phrases.end()) return std::nullopt;
        return found->second;
      });
    }
    if (type == "helpprojecttitle") {
      step = 6;
      const std::string title = project()->ProjectGroupName();
      return text::equalsIgnoreCase(optional(Element, "escaped"), "true") ? EscapeText(title) : title;
    }
    if (type == "communityprojectkey" || type == "communitybaseurl" || type == "communityproxytargeturl" ||
        type == "communityitemid") {
      step = 7;
      return GetProperty(type);
    }
    return {};
  } catch (...) {
    return "!ERROR " + std::to_string(currentFailureNumber()) + "." + std::to_string(step) + " FETCHING ELEMENT!";
  }
}

}  // namespace kv
