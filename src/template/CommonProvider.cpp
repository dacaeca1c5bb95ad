#include "template/CommonProvider.h"

#include <cstdio>
#include <ctime>
#include <unordered_map>

#include "definitions/Configuration.h"
#include "files/EscapeText.h"
#include "files/UnicodeHelpers.h"
#include "host/FailureHandler.h"
#include "kavrel/FileSystem.h"
#include "kavrel/Text.h"
#include "project/CommunityProperties.h"
#include "project/KVDocType.h"
#include "project/KVProject.h"
#include "project/Keywords.h"
#include "project/VariableValues.h"

namespace kv {
namespace {

// The process-wide cache of the community key: the last composite key seen and its value.
std::string gCommunityKey;
std::string gCommunityValue;

std::string now(const char* format) {
  const std::time_t t = std::time(nullptr);
  std::tm local{};
  localtime_r(&t, &local);
  char buffer[128];
  // The process's LC_TIME formats, as the system's date and time settings.
  const std::size_t n = std::strftime(buffer, sizeof buffer, format, &local);
  return std::string(buffer, n);
}

std::string memberText(const Object& object, std::string_view member) {
  return object.get(member).toString();
}

}  // namespace

// --- State ----------------------------------------------------------------------------------

void CommonProvider::Reset() {
  mCurrentItem.reset();
  mNamespaceDef.reset();
  mCurrentParentItem.reset();
  mCurrentRootItem.reset();
}

void CommonProvider::SetCurrentItem(const std::shared_ptr<kv::NamespaceDef>& NamespaceDef, const ObjectPtr& Item,
                                    std::string_view ItemType, const ObjectPtr& ParentItem) {
  mNamespaceDef = NamespaceDef;
  mCurrentItem = Item;
  mCurrentItemType = ItemType;
  mCurrentParentItem = ParentItem;
}

std::shared_ptr<DataProvider> CommonProvider::Clone() {
  auto clone = std::make_shared<CommonProvider>();
  clone->SetCurrentItem(mNamespaceDef, mCurrentItem, mCurrentItemType, mCurrentParentItem);
  clone->CurrentRootItem(mCurrentRootItem);
  clone->mKVProject = mKVProject;
  clone->ExampleWrapLength = ExampleWrapLength;
  return clone;
}

const Object& CommonProvider::item() const {
  if (!mCurrentItem) throw ObjectNotSet();
  return *mCurrentItem;
}

std::shared_ptr<KVProject> CommonProvider::project() const {
  auto project = mKVProject.lock();
  if (!project) throw ObjectNotSet();
  return project;
}

// --- The property table ----------------------------------------------------------------------

struct CommonProvider::Row {
  std::string (CommonProvider::*answer)();
  // The step number that failure text reports for this row.
  int step;
};

std::string CommonProvider::GetProperty(std::string_view Name) {
  // Several names answer alike; the step tells the rows apart in failure text.
  static const std::unordered_map<std::string, Row> kRows{
      {"crlf", {nullptr, 1}},
      {"item_qualified_name", {&CommonProvider::itemQualifiedName, 2}},
      {"itemqualifiedname", {&CommonProvider::itemQualifiedName, 2}},
      // So spelled in layouts since long ago; the dictionary spelling is not a property.
      {"parentqualifedname", {&CommonProvider::parentQualifiedName, 3}},
      {"itemname", {&CommonProvider::itemName, 4}},
      {"name", {&CommonProvider::itemName, 4}},
      {"shortitemname", {&CommonProvider::itemName, 4}},
      {"parentitemname", {&CommonProvider::parentItemName, 5}},
      {"projectgrouptitle", {&CommonProvider::projectGroupTitle, 6}},
      {"projectgroup_title", {&CommonProvider::projectGroupTitle, 6}},
      {"helpprojecttitle", {&CommonProvider::projectGroupTitle, 6}},
      {"projectgroup_name", {&CommonProvider::projectFileName, 7}},
      {"projectgroupname", {&CommonProvider::projectFileName, 7}},
      {"helpcompilerprojectfilename", {&CommonProvider::projectFileName, 7}},
      {"chmfilename", {&CommonProvider::helpFileName, 8}},
      {"outputfilename", {&CommonProvider::helpFileName, 8}},
      {"shortchmfilename", {&CommonProvider::shortHelpFileName, 9}},
      {"shortoutputfilename", {&CommonProvider::shortHelpFileName, 9}},
      {"relativechmfilename", {&CommonProvider::relativeHelpFileName, 10}},
      {"hhnamespace", {&CommonProvider::hhNamespace, 11}},
      {"hhidentifier", {&CommonProvider::hhIdentifier, 12}},
      // There is no collection value of its own.
      {"hhcollection", {&CommonProvider::hhIdentifier, 12}},
      {"filename", {&CommonProvider::fileName, 13}},
      {"defaulttopic", {&CommonProvider::defaultTopic, 14}},
      {"itemtype", {&CommonProvider::itemType, 15}},
      {"rawitemtype", {&CommonProvider::itemType, 15}},
      {"keywordtarget", {&CommonProvider::keywordTarget, 16}},
      {"keyword", {&CommonProvider::keyword, 17}},
      {"metacharset", {&CommonProvider::metaCharset, 18}},
      {"localestring", {&CommonProvider::localeString, 19}},
      {"charset", {&CommonProvider::charset, 20}},
      {"year", {&CommonProvider::year, 21}},
      {"longdate", {&CommonProvider::longDate, 22}},
      {"shortdate", {&CommonProvider::shortDate, 23}},
      {"longtime", {&CommonProvider::longTime, 24}},
      {"shorttime", {&CommonProvider::shortTime, 25}},
      {"generaldate", {&CommonProvider::generalDate, 26}},
      {"designitem", {&CommonProvider::designItem, 27}},
      {"tcid", {&CommonProvider::tcid, 28}},
      {"linkcategoryname", {&CommonProvider::linkCategoryName, 29}},
      {"examplelanguagecaption", {&CommonProvider::exampleLanguageCaption, 30}},
      {"communityproxytargeturl", {&CommonProvider::communityProxyTargetURL, 31}},
      {"communitybaseurl", {&CommonProvider::communityBaseURL, 32}},
      {"communityprojectkey", {&CommonProvider::communityProjectKey, 33}},
      {"communityitemid", {&CommonProvider::communityItemID, 34}},
      {"phraselanguage", {&CommonProvider::phraseLanguage, 35}},
  };
  constexpr int kVariableStep = 36;

  int step = 0;
  try {
    const auto row = kRows.find(text::toLower(Name));
    if (row == kRows.end()) {
      step = kVariableStep;
      return VariableLookup(Name);
    }
    step = row->second.step;
    if (!row->second.answer) return "\r\n";
    return (this->*row->second.answer)();
  } catch (...) {
    return "!ERROR " + std::to_string(currentFailureNumber()) + "." + std::to_string(step) + " FETCHING PROPERTY!";
  }
}

std::string CommonProvider::itemQualifiedName() {
  return memberText(item(), "QualifiedName");
}

std::string CommonProvider::parentQualifiedName() {
  if (!mCurrentParentItem) throw ObjectNotSet();
  return memberText(*mCurrentParentItem, "QualifiedName");
}

std::string CommonProvider::itemName() {
  return memberText(item(), "Name");
}

std::string CommonProvider::parentItemName() {
  if (!mCurrentParentItem) throw ObjectNotSet();
  return memberText(*mCurrentParentItem, "Name");
}

std::string CommonProvider::projectGroupTitle() {
  return project()->ProjectGroupName();
}

std::string CommonProvider::projectFileName() {
  return project()->ProjectFileNameNoPathOrExtension();
}

std::string CommonProvider::helpFileName() {
  return project()->HelpFileName();
}

std::string CommonProvider::shortHelpFileName() {
  return FileSystem(project()->HelpFileName()).Name();
}

std::string CommonProvider::relativeHelpFileName() {
  const auto p = project();
  FileSystem base(p->OutputFolder() + "test.txt");
  FileSystem file(p->HelpFileName());
  file.MakeRelativeTo(&base);
  return file.RelativeName();
}

std::string CommonProvider::hhNamespace() {
  return project()->HHNamespace();
}

std::string CommonProvider::hhIdentifier() {
  return project()->HHIdentifier();
}

std::string CommonProvider::fileName() {
  if (!mCurrentItem) return {};
  return memberText(*mCurrentItem, "QualifiedName") + project()->OutputFileExtension();
}

std::string CommonProvider::defaultTopic() {
  return project()->DefaultTopic();
}

std::string CommonProvider::itemType() {
  return mCurrentItemType;
}

std::string CommonProvider::keywordTarget() {
  std::string target;
  if (TypeMatch(mCurrentItem, "KeywordJump")) {
    target = memberText(*mCurrentItem, "Target");
    if (const auto p = project(); p->UseFileNameAliases()) {
      const std::string alias = p->GetFileNameAlias(target);
      if (!alias.empty()) target = alias;
    }
  } else if (TypeMatch(mCurrentItem, "Keyword")) {
    // A keyword of the build's stores holds its jumps itself; another answers by member name.
    if (const auto keyword = std::dynamic_pointer_cast<Keyword>(mCurrentItem)) {
      if (keyword->Jumps.empty()) throw Failure(err::SubscriptOutOfRange, "Subscript out of range");
      target = keyword->Jumps.front().Target;
    } else {
      const ObjectPtr jumps = mCurrentItem->get("Jumps").toObject();
      if (!jumps) throw ObjectNotSet();
      target = memberText(*jumps->call("Item", {Variant(1)}).toObject(), "Target");
    }
    // A keyword's jump without an alias comes out empty, unlike a lone jump.
    if (const auto p = project(); p->UseFileNameAliases()) target = p->GetFileNameAlias(target);
  }
  return EscapeText(target);
}

std::string CommonProvider::keyword() {
  if (!TypeMatch(mCurrentItem, "KeywordJump") && !TypeMatch(mCurrentItem, "Keyword")) return {};
  return EscapeText(memberText(*mCurrentItem, "Name"));
}

std::string CommonProvider::metaCharset() {
  // The design view declares its own character set.
  if (ForEdit) return {};
  return "<META HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; charset=" +
         UnicodeHelpers::CodePageFromID(project()->CodePage).Charset + "\">";
}

namespace {
Locale localeOf(const KVProject& project) {
  if (project.LocaleID() == 0) return UnicodeHelpers::SystemLocale();
  return project.Locale().value_or(Locale{});
}
}  // namespace

std::string CommonProvider::localeString() {
  const Locale locale = localeOf(*project());
  if (!locale.Valid) return {};
  char id[24];
  std::snprintf(id, sizeof id, "0x%lX ", locale.ID);
  return id + locale.Language;
}

std::string CommonProvider::charset() {
  return std::to_string(UnicodeHelpers::CharSetID(localeOf(*project()).ANSICodePage.ID));
}

std::string CommonProvider::year() {
  return now("%Y");
}

std::string CommonProvider::longDate() {
  return now("%A, %e %B %Y");
}

std::string CommonProvider::shortDate() {
  return now("%x");
}

std::string CommonProvider::longTime() {
  return now("%X");
}

std::string CommonProvider::shortTime() {
  return now("%H:%M");
}

std::string CommonProvider::generalDate() {
  return now("%x %X");
}

bool CommonProvider::designSkipped() const {
  if (!TypeMatch(mCurrentRootItem, "Assembly") || !TypeMatch(mCurrentItem, "Namespace")) return false;
  const std::string extension = FileSystem(memberText(*mCurrentRootItem, "FileName")).Extension();
  return text::equalsIgnoreCase(extension, "csproj") || text::equalsIgnoreCase(extension, "vbproj");
}

std::string CommonProvider::designItem() {
  if (designSkipped() || !ForEdit) return {};
  std::string id;
  ignoreFailure([&] { id = memberText(item(), "TaggedCommentID"); });
  const std::string field = UnicodeHelpers::NthField(id, "|", 2);
  // Hidden comments ("h...") get no design markup.
  if (!id.empty() && !field.starts_with('h')) return project()->Scrap("_DESIGN_ITEM");
  return {};
}

std::string CommonProvider::tcid() {
  if (!ForEdit) return {};
  return memberText(item(), "TaggedCommentID");
}

std::string CommonProvider::linkCategoryName() {
  if (!TypeMatch(mCurrentItem, "MenuLinkCategory")) return {};
  std::string name = memberText(*mCurrentItem, "Name");
  if (name.empty()) name = project()->Phrase("DEFAULT_LINK_CATEGORY");
  return name;
}

std::string CommonProvider::exampleLanguageCaption() {
  if (!TypeMatch(mCurrentItem, "Example")) return {};
  const std::string language = memberText(*mCurrentItem, "Language");
  std::string caption = language;
  ignoreFailure([&] {
    const auto& entry = ConfigurationRoot::instance().CodeLanguages().Item(language);
    if (text::equalsIgnoreCase(entry->Name, language)) caption = entry->Caption;
  });
  const std::string title = memberText(*mCurrentItem, "Caption");
  return title.empty() ? caption : title + " (" + caption + ")";
}

std::string CommonProvider::communityProxyTargetURL() {
  return project()->CommunityProperties->GetTargetURL();
}

std::string CommonProvider::communityBaseURL() {
  return project()->CommunityProperties->GetBaseURL();
}

std::string CommonProvider::communityProjectKey() {
  const auto p = project();
  if (!p->CommunityProperties->IsEnabled()) return {};
  const std::string key = p->CommunityProjectKey + "|" + p->CommunityProperties->GetHostingKey();
  if (key == gCommunityKey) return gCommunityValue;
  // A new key is remembered now and answered from the next request on.
  gCommunityKey = key;
  gCommunityValue = p->CommunityProperties->GetEncodedProjectKey(p->CommunityProjectKey);
  return {};
}

std::string CommonProvider::communityItemID() {
  if (!project()->CommunityProperties->IsEnabled() || !mCurrentItem) return {};
  std::string id;
  ignoreFailure([&] { id = memberText(*mCurrentItem, "QualifiedName"); });
  return id;
}

std::string CommonProvider::phraseLanguage() {
  const std::string language = project()->Language();
  return language.empty() ? "English" : language;
}

std::string CommonProvider::VariableLookup(std::string_view Name) {
  const auto p = project();
  const std::string name(Name);
  if (p->VariableValues->Exists(name)) return p->VariableValues->Item(name)->Value();
  // The design view shows the template's defaults; a build shows only what the project sets.
  if (ForEdit) {
    const auto docType = p->CurrentDocType();
    if (!docType) throw ObjectNotSet();
    for (const auto& def : docType->Template()->VariableDefs)
      if (text::equalsIgnoreCase(def.Name, name)) return def.DefaultValue;
  }
  return "!UNRECOGNISED ELEMENT TYPE '" + name + "'!";
}

// --- Expansion ------------------------------------------------------------------------------

std::string CommonProvider::ParseForProperties(std::string_view Text) {
  std::string text(Text);
  if (text.find("%%") == std::string::npos) return text;
  // A value may name further properties; three passes bound a value that names itself.
  for (int pass = 0; pass < 3; ++pass) {
    text = InternalParseForProperties(text);
    if (text.find("%%") == std::string::npos) break;
  }
  return text;
}

std::string CommonProvider::InternalParseForProperties(std::string_view Text) {
  std::string out;
  std::string_view rest = Text;
  for (;;) {
    const auto open = rest.find("%%");
    const auto close = open == std::string_view::npos ? open : rest.find("%%", open + 2);
    if (close == std::string_view::npos) {
      out += rest;
      return out;
    }
    const std::string_view name = rest.substr(open + 2, close - open - 2);
    const std::string value = GetProperty(name);
    out += rest.substr(0, open);
    // Only this misspelt marker keeps a reference; an unknown name is replaced by the failure
    // text that GetProperty gives.
    if (value.starts_with("!UNCRECOGNISED"))
      out += "%%" + std::string(name) + "%%";
    else
      out += value;
    rest = rest.substr(close + 2);
  }
}

}  // namespace kv
