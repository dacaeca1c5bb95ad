// The tags that show the current item itself: its comments, its members as text or as code, its
// examples, the address of its page, and lists of the items below it, each row rendered from a
// scrap with the row's item as the current item. A tag with nothing to show adds no text, so a
// layout can name every section and an item shows those it has.
#include <cctype>

#include "comments/TaggedCommentServices.h"
#include "definitions/Configuration.h"
#include "definitions/Template.h"
#include "files/EscapeText.h"
#include "files/UnicodeHelpers.h"
#include "host/FailureHandler.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/NamespaceDef.h"
#include "kavrel/ParserElement.h"
#include "kavrel/Text.h"
#include "kavrel/model/Example.h"
#include "kavrel/model/ItemList.h"
#include "project/KVDocType.h"
#include "project/KVProject.h"
#include "template/CodeHighlighter.h"
#include "template/CodeRendering.h"
#include "template/CommonProvider.h"
#include "template/ExampleRendering.h"
#include "template/ParserTemplate.h"
#include "template/TextExpansion.h"

namespace kv {
namespace {

std::string optional(const ParserElement& element, std::string_view name) {
  const std::string* value = element.Parameters().Find(name);
  return value ? *value : std::string();
}

// The text of a member, or nothing when the item lacks it.
std::string memberOf(const ObjectPtr& item, std::string_view member) {
  std::string value;
  if (item) ignoreFailure([&] { value = item->get(member).toString(); });
  return value;
}

// A file name as a relative URL: what is not plain in a path is written %XX, so that names
// with blanks, "<" or "#" (C++ operators) still lead to their page. "&", "[" and "]" stay as
// they are: browsers take them so, and the HTML Help compiler, which reads no escape but "%20",
// finds the pages of overloads and operators by them.
std::string urlPath(std::string_view name) {
  return UnicodeHelpers::URLEncode(name, "!$'()*+,;=@&[]");
}

// Each "<pre>" block of comment text, which is how comments hold code, as a coloured code block.
std::string colourCode(const std::string& html, const std::string& definition, long wrapLength) {
  std::string out;
  std::size_t from = 0;
  for (;;) {
    const std::size_t open = html.find("<pre>", from);
    const std::size_t close = open == std::string::npos ? open : html.find("</pre>", open);
    if (close == std::string::npos) break;
    out.append(html, from, open - from);
    const std::string code = CommentTextToCode(std::string_view(html).substr(open + 5, close - open - 5));
    out += CodeBlockHtml(code, definition, !definition.empty(), wrapLength);
    from = close + 6;
  }
  return out + html.substr(from);
}

// Whether `name` can name an item: letters, digits, "_", "~" and "::" scopes.
bool isItemName(std::string_view name) {
  if (name.empty()) return false;
  for (const unsigned char c : name)
    if (!(std::isalnum(c) || c == '_' || c == '~' || c == ':' || c >= 0x80)) return false;
  return true;
}

}  // namespace

std::string CommonProvider::linkItemNames(const std::string& text) {
  if (text.find('<') != std::string::npos || !mNamespaceDef) return text;
  const auto provider = project()->GetNamespaceProvider(mNamespaceDef->Handler);
  if (!provider) return text;
  // A name is looked for in the item's own scope first, then in each scope around it.
  const std::vector<std::string> scopes = text::split(memberOf(mCurrentItem, "QualifiedName"), "~");
  std::vector<std::string> parts = text::split(text, ",");
  for (std::string& part : parts) {
    const std::string name = text::trim(part);
    if (!isItemName(name)) continue;
    const std::string relative = text::replaceAll(name, "::", "~");
    for (std::size_t depth = scopes.size() + 1; depth-- > 0;) {
      std::string candidate;
      for (std::size_t i = 0; i < depth; ++i) candidate += scopes[i] + "~";
      candidate += relative;
      ObjectPtr found;
      ignoreFailure([&] { found = provider->GetItemByQualifiedName(candidate); });
      if (!found) continue;
      const std::string url = urlPath(candidate + project()->OutputFileExtension());
      part = text::replaceAll(part, name, "<a href=\"" + url + "\">" + EscapeText(name) + "</a>");
      break;
    }
  }
  return text::join(parts, ",");
}

std::string CommonProvider::expandPhrases(std::string_view text) {
  const auto tmpl = project()->CurrentDocType()->Template();
  return ParseForPhrasesEx(text, [&](std::string_view key) -> std::optional<std::string> {
    const auto& phrases = tmpl->Phrases();
    const auto found = phrases.find(std::string(key));
    if (found == phrases.end()) return std::nullopt;
    return found->second;
  });
}

std::string CommonProvider::expandScrap(std::string_view text) {
  return expandPhrases(ParseForProperties(text));
}

std::string CommonProvider::section(const ParserElement& Element, const std::string& text) {
  if (text.empty()) return {};
  const std::string scrapName = optional(Element, "scrap");
  if (scrapName.empty()) return text;
  const auto p = project();
  std::string scrap = p->Scrap(scrapName);
  const std::string key = optional(Element, "phrase");
  scrap = text::replaceAllIgnoringCase(scrap, "%%Caption%%", key.empty() ? std::string() : p->Phrase(key));
  // The text goes in after the scrap is expanded, so that nothing in it is read as a reference.
  const std::size_t at = scrap.find("%%Text%%");
  if (at == std::string::npos) return expandScrap(scrap);
  return expandScrap(scrap.substr(0, at)) + text + expandScrap(scrap.substr(at + 8));
}

std::optional<std::string> CommonProvider::itemTag(const std::string& type, const ParserElement& Element) {
  if (type == "comment") {
    const auto& defs = ConfigurationRoot::instance().TaggedCommentDefs();
    std::string text = comments::GetTaggedComment(mCurrentItem, Element.Parameters().Item("tagidentifier"), &defs);
    if (text::equalsIgnoreCase(optional(Element, "links"), "true")) text = linkItemNames(text);
    if (const std::string* language = Element.Parameters().Find("language"))
      text = colourCode(text, CodeHighlighter::LanguageDefinition(*language, memberOf(mCurrentItem, "SourceFileName")),
                        ExampleWrapLength);
    return section(Element, ProtectPercent(text));
  }
  if (type == "member") {
    return section(Element, ProtectPercent(EscapeText(memberOf(mCurrentItem, Element.Parameters().Item("name")))));
  }
  if (type == "code") {
    const std::string code = memberOf(mCurrentItem, Element.Parameters().Item("member"));
    if (text::trim(code).empty()) return std::string();
    const std::string definition =
        CodeHighlighter::LanguageDefinition(optional(Element, "language"), memberOf(mCurrentItem, "SourceFileName"));
    const std::string* coloursMember = Element.Parameters().Find("colours");
    const std::string colours = coloursMember ? memberOf(mCurrentItem, *coloursMember) : std::string();
    return section(Element, ProtectPercent(CodeBlockHtml(code, definition, !definition.empty() || !colours.empty(),
                                                         ExampleWrapLength, colours)));
  }
  if (type == "examples") {
    const auto documented = std::dynamic_pointer_cast<DocumentedItem>(mCurrentItem);
    if (!documented || !documented->HasExamples()) return std::string();
    const auto p = project();
    const std::string projectFolder = p->KVProjectFileName ? p->KVProjectFileName->Folder() : std::string();
    std::string html;
    for (const auto& example : documented->Examples())
      html += ExampleHtml(*example, projectFolder, true, ExampleWrapLength);
    return section(Element, ProtectPercent(html));
  }
  if (type == "pageurl") {
    return ProtectPercent(urlPath(fileName()));
  }
  if (type == "items") return itemsTag(Element);
  return std::nullopt;
}

std::string CommonProvider::itemsTag(const ParserElement& Element) {
  const auto p = project();
  std::vector<std::pair<ObjectPtr, std::shared_ptr<kv::NamespaceDef>>> rows;
  if (const std::string* name = Element.Parameters().Find("namespace")) {
    // The items a child definition of the page's definition delivers below the item.
    const std::shared_ptr<kv::NamespaceDef>* child =
        mNamespaceDef ? mNamespaceDef->ChildNamespaceDefs.Find(*name) : nullptr;
    if (!child) return {};
    const auto provider =
        p->GetNamespaceProvider((*child)->Handler.empty() ? mNamespaceDef->Handler : (*child)->Handler);
    const ItemCollection items =
        provider ? provider->GetItems(*child, mCurrentItem, "forpagegeneration=true") : nullptr;
    if (items)
      for (const auto& item : *items) rows.emplace_back(item, *child);
  } else {
    // The items of a list the item holds, such as its parameters.
    const Variant member = getOr(mCurrentItem, Element.Parameters().Item("member"));
    const auto list = member.isObject() ? std::dynamic_pointer_cast<ItemListView>(member.toObject()) : nullptr;
    if (list)
      for (long i = 1; i <= list->Count(); ++i) rows.emplace_back(list->Item(Variant(i)), nullptr);
  }
  if (rows.empty()) return {};

  ParserTemplate row;
  row.LoadText(expandPhrases(p->Scrap(Element.Parameters().Item("scrap"))));
  const auto clone = Clone();
  row.DataProvider(clone);
  std::string html;
  for (const auto& [item, def] : rows) {
    clone->SetCurrentItem(def ? def : mNamespaceDef, item, def ? def->DisplayName : item->typeName(), mCurrentItem);
    html += row.ParseToString();
  }
  std::string before = optional(Element, "start"), after = optional(Element, "end");
  const std::string caption = Element.HasParameter("phrase") ? p->Phrase(optional(Element, "phrase")) : std::string();
  if (!before.empty()) before = expandScrap(text::replaceAllIgnoringCase(p->Scrap(before), "%%Caption%%", caption));
  if (!after.empty()) after = expandScrap(p->Scrap(after));
  return before + ProtectPercent(html) + after;
}

}  // namespace kv
