// The generation of a project's output: the gate before it (output folder, compilers, model
// comments, ignored relationships), the walk that writes one page per item and page layout,
// and the general files of each template. One object serves one build of one project; the
// project keeps what lasts from build to build.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "kavrel/Enums.h"
#include "kavrel/Object.h"

namespace kv {

class DataProvider;
class FileSystem;
class INamespaceProvider;
class KVDocType;
class KVProject;
class ModelComment;
class NamespaceDef;
class PageLayout;
class ParserTemplate;
class Template;

class PageGeneration {
 public:
  explicit PageGeneration(KVProject& project);
  ~PageGeneration();
  PageGeneration(const PageGeneration&) = delete;
  PageGeneration& operator=(const PageGeneration&) = delete;

  // Writes the pages and general files of every populated doc type into the output folder.
  KVBuildResultEnum Build();
  // The gate of the build: false stops it before anything is generated (see BuildPreparation.cpp).
  bool BeforeBuild();

  // --- The walk ---------------------------------------------------------------------------
  void ProcessNamespace(KVDocType& DocType, const std::shared_ptr<NamespaceDef>& Def, const ObjectPtr& ParentItem,
                        const std::shared_ptr<NamespaceDef>& ParentDef, long Nesting);
  void OutputNamespacePage(const Template& Template, INamespaceProvider& Provider, const std::string& TemplateName,
                           const std::string& OutputFileName);
  // The layout, loaded once per template and file for the whole build.
  std::shared_ptr<ParserTemplate> GetParserTemplate(const Template& Template, const std::string& TemplateName);
  // A layout with the project's metadata markers; a missing file gives an empty one.
  std::shared_ptr<ParserTemplate> CreateParserTemplate(const std::string& FileName);
  // False when the name matches one of the project's exclude filters: regular expressions when
  // the project says so, else wildcard patterns.
  bool ValidMemberName(const std::string& Name);
  // Phrase references ("$$key$$") expanded from the current doc type's template.
  std::string ParseForPhrases(const std::string& Text);
  // The build's creation date as the system variable "CreationDate".
  void AddStandardVariableValues();
  bool Cancelled();

  // --- Preparation, see BuildPreparation.cpp -------------------------------------------
  // Copies the project's additional files into `Path` (the output folder when empty); pages
  // among them are rendered as layouts.
  void CopyAdditionalFiles(const std::string& Path = {});
  // Warns when `File` could not be opened; true when it is open.
  bool CheckFileOpen(FileSystem& File, bool ForWrite);

  // --- Model comments, see ModelCommentApplication.cpp ----------------------------------
  void SetModelComments(const std::vector<std::shared_ptr<ModelComment>>& Comments);
  void ApplyAllModelComments(const std::shared_ptr<NamespaceDef>& Def, INamespaceProvider& Provider,
                             const ObjectPtr& Item);
  void MatchModelComments(const ObjectPtr& Item, const ObjectPtr& Project,
                          const std::vector<std::shared_ptr<ModelComment>>& Comments);
  void AddModelComment(const ObjectPtr& Item, const ObjectPtr& Project, const ModelComment& Comment);
  static ObjectPtr GetVBProjectFromRootItem(const ObjectPtr& RootItem);

 private:
  // Phases after the gate, up to the end of the general files.
  KVBuildResultEnum GenerateAll();
  void OutputGeneralFiles();
  void OutputGeneralFile(KVDocType& DocType, const Template& Template, const PageLayout& Layout);
  void AddPageKeywords(const PageLayout& Layout, DataProvider& DDP, const std::shared_ptr<NamespaceDef>& Def,
                       const ObjectPtr& Item, const std::string& FileName);
  // Opens the output, renders the template into it with the output code page and closes it.
  void RenderTo(ParserTemplate& Template, const std::string& FileName);
  bool OutputFolderReady();
  void ChooseCompilers();
  void GatherModelComments();
  void TurnIgnoredRelationshipsIntoComments();

  KVProject& mProject;
  std::map<std::string, std::shared_ptr<ParserTemplate>> mLoadedParserTemplates;
  // The folder the last page went into: pages come in runs into one folder, which is made once.
  std::string mMadeFolder;
  long mNesting = 0;
  bool mTriedRegExp = false, mUseRegExp = false;
};

}  // namespace kv
