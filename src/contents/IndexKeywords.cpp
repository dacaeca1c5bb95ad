#include "contents/IndexKeywords.h"

#include "files/EscapeText.h"
#include "host/FailureHandler.h"
#include "kavrel/DataProvider.h"
#include "kavrel/FileSystem.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/NamespaceDef.h"
#include "kavrel/Text.h"
#include "project/Keywords.h"

namespace kv {
namespace {

std::string commentText(const ObjectPtr& obj, const char* tag) {
  std::string text;
  ignoreFailure([&] {
    const ObjectPtr comments = obj->get("TaggedComments").toObject();
    text = comments->call("Item", {Variant(tag)}).toObject()->get("Description").toString();
  });
  return text;
}

// The keyword comment of an item, split into its keywords.
std::vector<std::string> keywordParts(const ObjectPtr& obj) {
  std::string text;
  if (TypeMatch(obj, "Component")) text = commentText(obj, "##MODULE_KEYWORDS");
  if (text.empty()) text = commentText(obj, "##KEYWORDS");
  std::vector<std::string> parts;
  if (text.empty()) return parts;
  for (std::string& part : text::split(text, "|"))
    if (!part.empty()) parts.push_back(std::move(part));
  return parts;
}

bool indexed(const NamespaceDef& nd) {
  return nd.ChildKinds.find('i') != std::string::npos;
}

std::string indexURL(DataProvider& DDP) {
  std::string url = DDP.GetProperty("IndexURL");
  // A provider without a property of that name gives the page's file name.
  if (url.empty() || url.starts_with('!')) url = DDP.GetProperty("filename");
  return url;
}

}  // namespace

void GetIndexKeywords(const ObjectPtr& obj, Keywords& Keywords, const std::string& Target) {
  GetIndexKeywordsEx(obj, Keywords, Target, false, false);
}

void GetIndexKeywordsEx(const ObjectPtr& obj, Keywords& Keywords, const std::string& Target, bool /*FIndex*/,
                        bool /*AIndex*/) {
  for (const std::string& part : keywordParts(obj)) {
    if (part.find(',') != std::string::npos)
      Keywords.AddHierarchicalKeyword(part, Target);
    else
      Keywords.AddSimpleKeyword(part, Target);
  }
}

std::vector<IndexEntry> IndexEntries(const ObjectPtr& obj) {
  std::vector<IndexEntry> entries;
  const std::vector<std::string> parts = keywordParts(obj);
  if (parts.empty()) return entries;
  const std::string qualifiedName = obj->get("QualifiedName").toString();
  for (const std::string& part : parts) entries.push_back({part, qualifiedName});
  return entries;
}

void GetKeywordsEx(Keywords& Keywords, const std::shared_ptr<NamespaceDef>& nd, const ObjectPtr& ParentObject,
                   INamespaceProvider& Provider, DataProvider& DDP) {
  const ItemCollection items = Provider.GetItems(nd, ParentObject, "forindexgeneration=true");
  if (!items) return;
  for (const ObjectPtr& item : *items) {
    if (indexed(*nd)) {
      DDP.SetCurrentItem(nd, item, nd->DisplayName, ParentObject);
      const std::string target = indexURL(DDP);
      std::string title;
      if (!ignoreFailure([&] { title = item->get("ItemTitle").toString(); })) title = item->get("Name").toString();
      Keywords.AddSimpleKeyword(title, target);
      GetIndexKeywordsEx(item, Keywords, target, false, false);
    }
    for (const auto& child : nd->ChildNamespaceDefs) GetKeywordsEx(Keywords, child, item, Provider, DDP);
  }
}

void OutputIndexEntries(FileSystem& OutputFile, const std::shared_ptr<NamespaceDef>& nd, const ObjectPtr& ParentObject,
                        INamespaceProvider& Provider, DataProvider& DDP, const std::string& Scrap, bool Help2) {
  const ItemCollection items = Provider.GetItems(nd, ParentObject, "forindexgeneration=true");
  if (!items) return;
  for (const ObjectPtr& item : *items) {
    if (indexed(*nd)) {
      DDP.SetCurrentItem(nd, item, nd->DisplayName, ParentObject);
      OutputFile.WriteLine(DDP.ParseForProperties(Scrap));
      for (const IndexEntry& entry : IndexEntries(item)) {
        const size_t comma = entry.Title.find(',');
        if (comma == std::string::npos) continue;
        const std::string title = entry.Title.substr(0, comma);
        const std::string target = text::trim(entry.Title.substr(comma + 1));
        if (Help2)
          OutputFile.WriteLine("<Keyword Term=\"" + EscapeText(title) + "\">\n" + target + "\n</Keyword>");
        else
          OutputFile.WriteLine("<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"" + title +
                               "\"><param name=\"See Also\" value=\"" + target + "\"></OBJECT><UL><UL>" + target +
                               "</UL></UL>");
      }
    }
    for (const auto& child : nd->ChildNamespaceDefs)
      OutputIndexEntries(OutputFile, child, item, Provider, DDP, Scrap, Help2);
  }
}

}  // namespace kv
