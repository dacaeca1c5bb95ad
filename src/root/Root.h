// The library's global object. Hosts and classes reach the general helpers through it; the
// instance count decides when process-wide state is set up and released.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "comments/TaggedCommentServices.h"
#include "contents/IndexKeywords.h"
#include "host/CompilerFileName.h"
#include "host/modMain.h"
#include "kavrel/model/VBProjectGroup.h"
#include "project/DocumentServices.h"
#include "template/BlockRendering.h"
#include "template/TextExpansion.h"

namespace kv {

class KVProject;

// The windows a host has open, so that they can be unloaded when the last Root goes.
class HostForms {
 public:
  // Registers an open form and returns its id; `unload` closes it.
  static std::size_t Open(std::string name, std::function<void()> unload);
  // Forgets a form that closed by itself.
  static void Close(std::size_t id);
  static std::size_t Count();
  // Unloads every open form, the last opened first; failures are dropped.
  static void UnloadAll();
};

class Root {
 public:
  Root();
  ~Root();
  Root(const Root&) = delete;
  Root& operator=(const Root&) = delete;

  // The process-wide instance, made on first use. A host calls releaseGlobal at shutdown so that
  // the last-instance work runs.
  static Root& global();
  static void releaseGlobal();
  static long instanceCount();

  // Refreshes the stored window layouts of the host for a layout name; the first instance calls it
  // with "" and with "KV2008". Default none.
  using LayoutRefresh = std::function<void(const std::string& layoutName)>;
  static void setLayoutRefresh(LayoutRefresh refresh);
  // Registers the release of a process-wide object (a cache); it runs whenever the last instance
  // goes, and stays registered.
  static void addRelease(std::function<void()> release);

  std::int32_t DefaultWrapLength = 80;
  // Markup around editable comment spans, from the machine settings.
  std::string EditableSpanPrefix;
  std::string EditableSpanSuffix;

  // Models: a new project with every option but keeping source text turned on, a .NET project
  // read from an assembly, a new group of projects.
  std::shared_ptr<vbProject> NewVBProject() const;
  std::shared_ptr<vbProject> NewDotNetVBProject(const std::string& FileName) const;
  std::shared_ptr<VBProjectGroup> NewVBProjectGroup() const;

  // Tagged comments: adding by the rules of the kind, joining texts, lookups, the text a page
  // reads, retired kinds, descriptions rebuilt from comments and a new comment file.
  void AddTaggedComment(TaggedComments& col, const TaggedCommentPtr& tc, bool IsBuffer,
                        bool PreserveOriginalTaggedComments) const {
    comments::AddTaggedComment(col, tc, IsBuffer, PreserveOriginalTaggedComments);
  }
  std::string AppendDescription(std::string& Description, std::string& NewText, long WrapType = 0) const {
    return comments::AppendDescription(Description, NewText, WrapType);
  }
  // With the images of the comment pointed at the project's additional files in the output.
  std::string GetTaggedCommentEx(const ObjectPtr& obj, std::string_view IDs, const TaggedCommentDefs* Defs,
                                 KVProject& Project) const {
    DocumentServices documents(Project);
    return comments::GetTaggedCommentEx(obj, IDs, Defs,
                                        [&](const std::string& text) { return documents.VerifyIMGTags(text); });
  }
  TaggedCommentPtr FindTaggedComment(const TaggedComments* col, std::string_view TagIdentifier) const {
    return comments::FindTaggedComment(col, TagIdentifier);
  }
  std::shared_ptr<Parameter> GetParameter(const ItemVector<Parameter>* colP, std::string_view Name) const {
    return comments::GetParameter(colP, Name);
  }
  std::string GetTaggedComment(const ObjectPtr& obj, std::string_view IDs, const TaggedCommentDefs* Defs) const {
    return comments::GetTaggedComment(obj, IDs, Defs);
  }
  std::string GetTaggedCommentEx(const ObjectPtr& obj, std::string_view IDs, const TaggedCommentDefs* Defs,
                                 const comments::ImageTagCheck& VerifyIMGTags) const {
    return comments::GetTaggedCommentEx(obj, IDs, Defs, VerifyIMGTags);
  }
  std::shared_ptr<TaggedCommentDef> UpgradeTaggedComment(std::string_view TagIdentifier,
                                                         const TaggedCommentDefs* Defs) const {
    return comments::UpgradeTaggedComment(TagIdentifier, Defs);
  }
  void UpdateObjectDescription(const ObjectPtr& Item, bool Recurse = false) const {
    comments::UpdateObjectDescription(Item, Recurse);
  }
  XMLDocument CreateStandardCommentFile(std::string_view ItemType, std::string_view Moniker) const {
    return comments::CreateStandardCommentFile(ItemType, Moniker);
  }
  bool ItemHasTaggedComments(const ObjectPtr& Item) const { return comments::ItemHasTaggedComments(Item); }
  bool SupportsTaggedComments(const ObjectPtr& obj) const { return comments::SupportsTaggedComments(obj); }
  bool IsItemCollection(const ObjectPtr& Item) const { return comments::IsItemCollection(Item); }
  bool TypeMatch(const ObjectPtr& obj, std::string_view TypeName) const { return kv::TypeMatch(obj, TypeName); }

  // Index keywords from comments and from the items of indexed definitions (see IndexKeywords.h).
  void GetIndexKeywords(const ObjectPtr& obj, Keywords& Keywords, const std::string& Target) const {
    kv::GetIndexKeywords(obj, Keywords, Target);
  }
  void GetIndexKeywordsEx(const ObjectPtr& obj, Keywords& Keywords, const std::string& Target, bool FIndex,
                          bool AIndex) const {
    kv::GetIndexKeywordsEx(obj, Keywords, Target, FIndex, AIndex);
  }
  std::vector<IndexEntry> IndexEntries(const ObjectPtr& obj) const { return kv::IndexEntries(obj); }
  void GetKeywordsEx(Keywords& Keywords, const std::shared_ptr<NamespaceDef>& nd, const ObjectPtr& ParentObject,
                     INamespaceProvider& Provider, DataProvider& DDP) const {
    kv::GetKeywordsEx(Keywords, nd, ParentObject, Provider, DDP);
  }
  void OutputIndexEntries(FileSystem& OutputFile, const std::shared_ptr<NamespaceDef>& nd,
                          const ObjectPtr& ParentObject, INamespaceProvider& Provider, DataProvider& DDP,
                          const std::string& Scrap, bool Help2) const {
    kv::OutputIndexEntries(OutputFile, nd, ParentObject, Provider, DDP, Scrap, Help2);
  }
  // The help compilers: HTML Help (`IsHHC`) or the WinHelp stub's; Help 2 only where a setting
  // names one.
  std::string GetCompilerFileName(std::string_view RegKeyString, bool IsHHC) const {
    return kv::GetCompilerFileName(RegKeyString, IsHHC);
  }
  bool IsHelp2CompilerInstalled() const { return !kv::Help2CompilerFileName().empty(); }

  std::string RegKeyPath() const { return kv::RegKeyPath(); }
  std::string GetAppValue(std::string_view ValueName, std::string_view DefaultValue = {},
                          std::string_view ExtraPath = {}) const {
    return kv::GetAppValue(ValueName, DefaultValue, ExtraPath);
  }
  void SetAppValue(std::string_view ValueName, std::string_view Value, std::string_view ExtraPath = {}) const {
    kv::SetAppValue(ValueName, Value, ExtraPath);
  }
  std::string ReplaceSystemPath(std::string_view FileName) const { return kv::ReplaceSystemPath(FileName); }
  std::string ElapsedTime(DateTime t1, DateTime t2) const { return kv::ElapsedTime(t1, t2); }
  std::string ColorToWebHex(std::int64_t Color) const { return kv::ColorToWebHex(Color); }
  bool DelTree32(std::string_view sPathToDel) const { return kv::DelTree32(sPathToDel); }
  std::string ToRelativeFileName(FileSystem& FileName, FileSystem& RelativeTo) const {
    return kv::ToRelativeFileName(FileName, RelativeTo);
  }
  std::string FromRelativeFileNAme(FileSystem& FileName, FileSystem& RelativeTo) const {
    return kv::FromRelativeFileNAme(FileName, RelativeTo);
  }
  std::string FromRelativeFileNAme(std::string_view FileName, FileSystem& RelativeTo) const {
    return kv::FromRelativeFileNAme(FileName, RelativeTo);
  }
  std::string GetTreePath(const TreeView& Tree) const { return kv::GetTreePath(Tree); }
  void SetTreePath(TreeView& Tree, std::string_view Path) const { kv::SetTreePath(Tree, Path); }
  bool IsXPSP2() const { return kv::IsXPSP2(); }
  bool AreRegularExpressionsAvailable() const { return kv::AreRegularExpressionsAvailable(); }
  bool IsValidRegularExpression(std::string_view SearchString, std::string_view ReplaceString = {}) const {
    return kv::IsValidRegularExpression(SearchString, ReplaceString);
  }
  bool IsLumideskLiteInstalled() const { return kv::IsLumideskLiteInstalled(); }
  bool IsLumidesk2Installed() const { return kv::IsLumidesk2Installed(); }
  bool IsLumidesk3Installed() const { return kv::IsLumidesk3Installed(); }
  bool IsLumideskInstalled() const { return kv::IsLumideskInstalled(); }
  ObjectPtr GetLDProject(std::string_view FileName) const { return kv::GetLDProject(FileName); }
  bool IsVBNETExtension(std::string_view Text) const { return kv::IsVBNETExtension(Text); }
  std::string RemoveGenericSuffix(std::string_view Name) const { return kv::RemoveGenericSuffix(Name); }
  bool InIDE() const { return kv::InIDE(); }

  // Text expansion of the template language.
  long InStrEx(long Start, std::string_view Source, std::string_view Seeking, int CompareMode = compare::BinaryCompare,
               bool IgnoreCommentCharacter = false) const {
    return kv::InStrEx(Start, Source, Seeking, CompareMode, IgnoreCommentCharacter);
  }
  std::vector<std::string> SplitEx(std::string_view Source, std::string_view Delimeter) const {
    return kv::SplitEx(Source, Delimeter);
  }
  StringCollection GetParameters(std::string_view Source) const { return kv::GetParameters(Source); }
  std::string ParseForProviderProperties(std::string_view Text, DataProvider& DDP) const {
    return kv::ParseForProviderProperties(Text, DDP);
  }
  std::string ParseForProviderPropertiesEx(std::string_view Text, DataProvider& DDP) const {
    return kv::ParseForProviderPropertiesEx(Text, DDP);
  }
  std::string ParseForPhrases(std::string_view Text, const PhraseLookup& Phrases,
                              std::string_view Delimeter = "$$") const {
    return kv::ParseForPhrases(Text, Phrases, Delimeter);
  }
  std::string ParseForParameters(std::string_view Text, const StringCollection& Parameters,
                                 std::string_view Delimeter) const {
    return kv::ParseForParameters(Text, Parameters, Delimeter);
  }
  std::string StripQuotes(std::string_view Source) const { return kv::StripQuotes(Source); }
  std::string StripTags(std::string_view Source) const { return kv::StripTags(Source); }
  std::string CollectionToString(const StringCollection& col, std::string_view Delimeter) const {
    return kv::CollectionToString(col, Delimeter);
  }

  // Pieces of pages: headings, paragraphs, source code and examples (code lines are wrapped at
  // `DefaultWrapLength`), enumerations by name and the design view's editable spans.
  std::string Heading(std::string_view Text) const { return blocks::Heading(Text); }
  std::string PageHeading(std::string_view Text) const { return blocks::PageHeading(Text); }
  std::string Paragraph(std::string_view Text) const { return blocks::Paragraph(Text); }
  std::string GetFormat(const ParserElement& e, std::string_view Default) const {
    return blocks::GetFormat(e, Default);
  }
  std::string GetBlankFormat(const ParserElement& e, std::string_view Default) const {
    return blocks::GetBlankFormat(e, Default);
  }
  std::string SourceCode(const ObjectPtr& I) const { return blocks::SourceCode(I, DefaultWrapLength); }
  bool IsExcludedBlock(const Block& b) const { return blocks::IsExcludedBlock(b); }
  std::string ExampleCode(const Example& e) const;
  // With the folder of the project file as the base of the example's file.
  std::string ExampleCodeEx(const Example& e, const KVProject& project) const;
  std::string ExampleCode2(const Example& e, const KVProject& project, bool WrapInDivAndTable) const;
  std::shared_ptr<Examples> GetExamples(const ObjectPtr& obj, const KVProject& project) const;
  ItemPtr GetEnumeration(const vbProject& project, const Component* InComponent, std::string_view Name,
                         bool IncludePrivate) const {
    return blocks::GetEnumeration(project, InComponent, Name, IncludePrivate);
  }
  std::string StripFirstPara(std::string_view Source) const { return blocks::StripFirstPara(Source); }
  std::string CommentEditSpan(const Object& Item, std::string_view TagIdentifier, std::string_view Caption) const {
    return blocks::CommentEditSpan(Item, TagIdentifier, Caption, EditableSpanPrefix, EditableSpanSuffix);
  }
};

}  // namespace kv
