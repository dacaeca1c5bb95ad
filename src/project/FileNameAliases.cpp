// Output file names of pages, their short numbered aliases ("topic<n>"), the services that turn
// links into local page names, and whether an item or a table-of-contents node counts as new.
#include <cstdio>
#include <ctime>
#include <tuple>

#include "definitions/Configuration.h"
#include "files/HtmlLinks.h"
#include "host/FailureHandler.h"
#include "kavrel/DataProvider.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/Text.h"
#include "kavrel/model/TaggedComments.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "project/VariableValues.h"

namespace kv {
namespace {

constexpr const char* kModule = "KVProject";

// Help project files keep their names: the help compiler looks for them by name.
bool isHelpProjectFile(std::string_view name) {
  const std::string ext = text::toLower(text::right(name, 3));
  for (const char* e : {"hxc", "hxt", "hxf", "hxk", "hhp", "hhk", "hhc"})
    if (ext == e) return true;
  return false;
}

// A date as text in the forms "yyyy-mm-dd" (optionally followed by a time) or "dd/mm/yyyy".
std::optional<std::tm> readDate(const std::string& s) {
  std::tm t{};
  char tail = 0;
  if (std::sscanf(s.c_str(), "%4d-%2d-%2d%c", &t.tm_year, &t.tm_mon, &t.tm_mday, &tail) >= 3 ||
      std::sscanf(s.c_str(), "%2d/%2d/%4d%c", &t.tm_mday, &t.tm_mon, &t.tm_year, &tail) >= 3) {
    if (t.tm_mon < 1 || t.tm_mon > 12 || t.tm_mday < 1 || t.tm_mday > 31) return std::nullopt;
    return t;
  }
  return std::nullopt;
}

bool earlier(const std::tm& a, const std::tm& b) {
  return std::tie(a.tm_year, a.tm_mon, a.tm_mday) < std::tie(b.tm_year, b.tm_mon, b.tm_mday);
}

}  // namespace

bool KVProject::LayoutListsNamespace(std::string_view NamespaceList, std::string_view Name) {
  // Only the first occurrence and only its right edge count, so "KV:BigClass" serves "Class".
  const long at = text::find(NamespaceList, Name, 1, true);
  if (at == 0 || Name.empty()) return false;
  const long end = at + text::length(Name);
  return end > text::length(NamespaceList) || text::mid(NamespaceList, end, 1) == ",";
}

std::string KVProject::CleanOutputFileName(std::string_view FileName) {
  FileSystem file{std::string(FileName)};
  std::string name = ConfigurationRoot::instance().ValidFileName(file.Name());
  if (mOutputFileExtension != ".html") name = text::replaceAll(name, ".html", mOutputFileExtension);
  const std::string folder = FileName.find('/') == std::string_view::npos ? std::string() : file.Folder();
  return folder + name;
}

std::string KVProject::GetPageLayoutFileName(const kv::PageLayout& Layout, const std::shared_ptr<kv::NamespaceDef>& Def,
                                             const ObjectPtr& Item, kv::DataProvider& DDP) {
  auto expand = [&](const std::string& pattern) {
    DDP.SetCurrentItem(Def, Item, Def ? Def->DisplayName : std::string(), DDP.CurrentParentItem());
    return DDP.ParseForProperties(pattern);
  };
  std::string name;
  if (!Layout.OutputFileNamePattern.empty())
    name = expand(Layout.OutputFileNamePattern);
  else if (Def && !Def->OutputFileNamePattern.empty())
    name = expand(Def->OutputFileNamePattern);
  else if (!Layout.NamespaceList.empty())
    name = Item->get("QualifiedName").toString() + mOutputFileExtension;
  else
    name = Layout.TemplateFileName;
  return CleanOutputFileName(name);
}

void KVProject::AddFileNameAlias(const std::string& FileName) {
  if (isHelpProjectFile(FileName)) return;
  // A second item with the same page name keeps the first number; its number is used up all
  // the same, which leaves harmless gaps.
  ignoreFailure([&] { mFileNameAliases->Add(mFileNameAliasIncrement, FileName); });
  ++mFileNameAliasIncrement;
}

void KVProject::CreateFileNameAliases(KVDocType& DocType, const std::shared_ptr<kv::NamespaceDef>& Def,
                                      const ObjectPtr& ParentItem, const std::shared_ptr<kv::NamespaceDef>& ParentDef,
                                      bool& cancelled) {
  std::shared_ptr<INamespaceProvider> provider;
  ignoreFailure([&] { provider = GetNamespaceProvider(Def->Handler); });
  if (!provider) return;
  const auto ddp = DataProviderOf(*provider);
  const ItemCollection items = provider->GetItems(Def, ParentItem, "forpagegeneration=true");
  if (!items || !ddp) return;
  const bool generates = !(Def->DontGeneratePages && !Def->CoreDefinition);
  std::vector<std::shared_ptr<kv::PageLayout>> layouts;
  if (generates)
    for (const auto& layout : DocType.Template()->PageLayouts)
      if (LayoutListsNamespace(layout->NamespaceList, Def->Name)) layouts.push_back(layout);

  for (const ObjectPtr& item : *items) {
    if (!ParentDef) ddp->CurrentRootItem(item);
    if (generates) ddp->SetCurrentItem(Def, item, Def->DisplayName, ParentItem);
    for (const auto& layout : layouts) AddFileNameAlias(GetPageLayoutFileName(*layout, Def, item, *ddp));
    if ((cancelled = Cancelled())) return;
    for (const auto& child : Def->ChildNamespaceDefs) {
      if (child->ChildKinds.find('x') != std::string::npos) continue;
      CreateFileNameAliases(DocType, child, item, Def, cancelled);
      if (cancelled) return;
    }
    if ((cancelled = Cancelled())) return;
  }
}

bool KVProject::CreateAllFileNameAliases() {
  return guard<bool>(kModule, [&] {
    FirePreBuildStatus("Creating Filename Aliases ..");
    FireUpdateStatusAnim("Writing");
    mFileNameAliases = std::make_shared<Collection<long>>();
    mFileNameAliasIncrement = 1;
    bool cancelled = false;
    for (const auto& docType : DocTypes->PopulatedDocTypes()) {
      if (IsLumideskDocType(*docType)) continue;
      CurrentDocType(docType);
      const auto tmpl = docType->Template();
      for (const auto& def : tmpl->NamespaceDefs) {
        CreateFileNameAliases(*docType, def, nullptr, nullptr, cancelled);
        if (cancelled || Cancelled()) return false;
      }
      // General files are named for the doc type's first root item.
      if (tmpl->NamespaceDefs.Count() == 0) continue;
      const auto& firstDef = tmpl->NamespaceDefs.Item(1);
      std::shared_ptr<kv::DataProvider> ddp;
      ObjectPtr root;
      if (const auto provider = GetNamespaceProvider(firstDef->Handler)) ddp = DataProviderOf(*provider);
      ignoreFailure([&] { root = docType->ProjectPlugIn()->RootItems()->call("Item", {1}).toObject(); });
      if (!ddp) continue;
      for (const auto& layout : tmpl->PageLayouts) {
        if (!layout->NamespaceList.empty()) continue;
        const std::string name = GetPageLayoutFileName(*layout, firstDef, root, *ddp);
        if (!name.empty()) AddFileNameAlias(name);
      }
    }
    return true;
  });
}

std::string KVProject::GetFileNameAlias(const std::string& FileName) const {
  if (!mUseFileNameAliases) return FileName;
  // Before the first alias pass there is no name to give.
  if (!mFileNameAliases) return {};
  const long* number = mFileNameAliases->Find(FileName);
  return number ? "topic" + std::to_string(*number) + mOutputFileExtension : FileName;
}

std::string KVProject::RemoveEntities(std::string_view Source) {
  std::string s(Source);
  for (std::size_t at = s.find('%'); at != std::string::npos; at = s.find('%')) {
    const std::string digits = s.substr(at + 1, 2);
    unsigned long code = 0;
    // Text that is no hexadecimal number decodes to the character of code 0.
    const bool hex = !digits.empty() && digits.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
    if (hex) code = std::stoul(digits, nullptr, 16);
    s.replace(at, std::min<std::size_t>(3, s.size() - at), std::string(1, char(code)));
  }
  return s;
}

std::string KVProject::Short_HelpFileName() {
  // Kept once known: a build may ask before it has given the help file its default name.
  if (!mShortHelpFileName || mShortHelpFileName->empty()) mShortHelpFileName = FileSystem(HelpFileName()).Name();
  return *mShortHelpFileName;
}

bool KVProject::IsFileURL(std::string_view URL) {
  return text::startsWithIgnoreCase(URL, "file://") || URL.find(':') == std::string_view::npos;
}

std::string KVProject::FileURLToFileName(std::string_view URL) {
  std::string_view rest = URL;
  if (text::startsWithIgnoreCase(rest, "file:///"))
    rest.remove_prefix(8);
  else if (text::startsWithIgnoreCase(rest, "file://"))
    rest.remove_prefix(7);
  // Links written on other systems may separate folders with "\".
  return RemoveEntities(text::replaceAll(rest, "\\", "/"));
}

std::string KVProject::GetLocalFileName(const std::string& URL) const {
  if (!IsFileURL(URL)) return URL;
  std::string name = FileURLToFileName(URL);
  // "file:///out/a.html" loses its leading "/" with the prefix; compare without it as well.
  const std::string folder = OutputFolder();
  for (std::string_view base : {std::string_view(folder), std::string_view(folder).substr(folder.empty() ? 0 : 1)})
    if (!base.empty() && text::startsWithIgnoreCase(name, base)) return name.substr(base.size());
  return name;
}

std::optional<std::string> KVProject::AliasOfLink(const std::string& Link) const {
  if (!mFileNameAliases) return std::nullopt;
  std::string name = GetLocalFileName(Link);
  if (name.empty()) return std::nullopt;
  // An aliased link loses its fragment: pages written so far have always come out that way.
  if (const auto pos = name.find('#'); pos != std::string::npos) name.resize(pos);
  if (const long* number = mFileNameAliases->Find(name))
    return "topic" + std::to_string(*number) + mOutputFileExtension;
  return std::nullopt;
}

std::optional<std::string> KVProject::LookForFileNameAliases(std::string_view Page) const {
  if (!mFileNameAliases) return std::nullopt;
  return RewriteAnchorLinks(Page, [&](const std::string& link) { return AliasOfLink(link); });
}

bool KVProject::IsItemNew(const ObjectPtr& Item) {
  if (!Item) return false;
  bool isNew = false;
  ignoreFailure([&] { isNew = getOr(Item, "IsNew").toBool(); });
  const bool component = TypeMatch(Item, "Component");
  const bool moduleMark = component && HasTaggedComment(Item, "##MODULE_ISNEW");
  if (!isNew) isNew = moduleMark || HasTaggedComment(Item, "##ISNEW");

  if (isNew) {
    std::string date;
    const bool found = ignoreFailure([&] {
      const ObjectPtr comments = Item->get("TaggedComments").toObject();
      const char* tag = moduleMark ? "##MODULE_ISNEW" : "##ISNEW";
      date = comments->call("Item", {Variant(tag)}).toObject()->get("Description").toString();
    });
    // A mark dated before the project's "IsNewDate" has expired.
    if (found && VariableValues->Exists("IsNewDate")) {
      const auto since = readDate(VariableValues->Item("IsNewDate")->Value());
      const auto marked = readDate(date);
      if (since && marked && earlier(*marked, *since)) isNew = false;
    }
  }
  // A member of a new component is new.
  if (!isNew) {
    const Variant component = getOr(Item, "Component");
    if (component.isObject()) isNew = IsItemNew(component.toObject());
  }
  return isNew;
}

bool KVProject::GetIsNew(const NodeDef& Node, const ObjectPtr& Item) {
  if (Node.MarkAsNew) return true;
  if (Node.NodeType != NodeDef::ItemsNode) return false;
  bool isNew = false;
  ignoreFailure([&] { isNew = IsItemNew(Item); });
  return isNew;
}

void KVProject::CheckOutputPathLength(const std::string& FileName) {
  if (mShownPathLengthWarning || text::length(FileName) <= 255) return;
  const std::string name = FileSystem(FileName).Name();
  RaiseBuildError(
      "<p>The length of the output path and filename exceed the length allowed by Windows. Output of the file [" +
          name +
          "] will fail.</p><p>To resolve this problem either:</p><ol style=\"list-style-type: lower-alpha\"><li>build "
          "the "
          "project to a shorter output path (e.g. c:\\docs)<br />&nbsp;<br />  or<br />&nbsp;<br /><li>for .NET "
          "documentation tick the 'Generate shortened alias filenames option' on the 'Microsoft .NET Options' page in "
          "the Kavrel Project Editor.</ol><p>Further warnings about the path length will not be generated for "
          "subsequent "
          "files in this build.</p>",
      KVWarning);
  if (CompileHelpFile() && HTMLHelpVersion() == "1")
    RaiseBuildError(
        "Very long output path and filenames may cause the Microsoft HTML Help Compiler to crash when compiling the "
        "final CHM file.",
        KVWarning);
  mShownPathLengthWarning = true;
}

}  // namespace kv
