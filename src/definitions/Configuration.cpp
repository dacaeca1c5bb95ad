#include "definitions/Configuration.h"

#include <algorithm>
#include <filesystem>

#include "definitions/DefinitionReading.h"
#include "host/Installation.h"
#include "kavrel/FileSystem.h"
#include "kavrel/XmlDocument.h"

namespace kv {
namespace {

namespace fs = std::filesystem;
using namespace reading;

// A definition without a handler of its own has `parentHandler`: the items below an item come
// from the same provider unless the child names another.
std::shared_ptr<NamespaceDef> readNamespaceDef(const XMLNode& e, const std::string& parentHandler = {}) {
  auto def = std::make_shared<NamespaceDef>();
  def->Name = readText(e, "Name");
  def->DisplayName = readText(e, "DisplayName", def->Name);
  def->Handler = readText(e, "Handler");
  if (def->Handler.empty()) def->Handler = parentHandler;
  def->DontGeneratePages = readBool(e, "DontGeneratePages", false);
  def->CoreDefinition = readBool(e, "CoreDefinition", false);
  def->OutputFileNamePattern = readText(e, "OutputFileNamePattern");
  def->ChildKinds = readText(e, "ChildKinds");
  def->Selectable = readBool(e, "Selectable", false);
  def->DefaultInclude = readBool(e, "DefaultInclude", true);
  def->Definition.Read(e);
  // Child definitions are kept as definitions, not a second time as stored content.
  std::erase_if(def->Definition.Children,
                [](const StoredElement& c) { return text::equalsIgnoreCase(c.Name, "Namespace"); });
  for (const XMLNode& child : e.ChildNodes())
    if (isElement(child, "Namespace")) {
      auto childDef = readNamespaceDef(child, def->Handler);
      ignoreDuplicate(def->ChildNamespaceDefs, childDef, childDef->Name);
    }
  return def;
}

}  // namespace

struct ConfigurationRoot::Content {
  std::vector<std::shared_ptr<DocTypeDef>> docTypeDefs;
  kv::ModelCommentProfiles modelCommentProfiles;
  kv::Templates templates;
  kv::TaggedCommentDefs taggedCommentDefs;
  kv::CodeLanguages codeLanguages;
  std::string invalidFileNameCharacters = "/\\:*?\"<>|";
  std::string fileNameReplacement = "_";
  std::vector<std::string> errors;

  void read(const std::string& folder);
  void readMain(const XMLNode& root);
  void readTemplate(const std::string& folder);
};

void ConfigurationRoot::Content::read(const std::string& folder) {
  if (auto doc = readDefinitionFile(folder + "kavrel.xml", "KavrelConfiguration", errors)) readMain(doc->RootNode());
  std::error_code ec;
  std::vector<fs::path> templateFolders;
  for (const auto& entry : fs::directory_iterator(folder + "Templates", ec))
    if (entry.is_directory(ec) && fs::exists(entry.path() / "template.xml", ec))
      templateFolders.push_back(entry.path());
  std::sort(templateFolders.begin(), templateFolders.end());
  for (const auto& templateFolder : templateFolders) readTemplate(templateFolder.string() + "/");
}

void ConfigurationRoot::Content::readMain(const XMLNode& root) {
  for (const XMLNode& e : root.ChildNodes()) {
    if (isElement(e, "DocType")) {
      auto def = std::make_shared<DocTypeDef>();
      def->Name = readText(e, "Name");
      def->Description = readText(e, "Description");
      def->PlugInProgID = readText(e, "PlugIn");
      const bool taken = std::any_of(docTypeDefs.begin(), docTypeDefs.end(),
                                     [&](const auto& d) { return text::equalsIgnoreCase(d->Name, def->Name); });
      if (def->Name.empty() || taken)
        errors.push_back("kavrel.xml: doc type '" + def->Name + "' is left out: its name is empty or not unique");
      else
        docTypeDefs.push_back(def);
    } else if (isElement(e, "CodeLanguage")) {
      auto language = std::make_shared<CodeLanguage>();
      language->Name = readText(e, "Name");
      language->Caption = readText(e, "Caption", language->Name);
      language->SwitchedOn = readBool(e, "On", true);
      ignoreDuplicate(codeLanguages, language, language->Name);
    } else if (isElement(e, "TaggedComment")) {
      auto def = std::make_shared<TaggedCommentDef>();
      def->TagIdentifier = readText(e, "TagIdentifier");
      def->Caption = readText(e, "Caption", def->TagIdentifier);
      def->DisplayName = readText(e, "DisplayName", def->Caption);
      def->DataType = readLong(e, "DataType", 0);
      def->DesignerName = readText(e, "DesignerName");
      def->IconFileName = readText(e, "IconFileName");
      def->AppendToDescription = readBool(e, "AppendToDescription", false);
      def->WrapType = readLong(e, "WrapType", 3);
      def->CommentFlags = readText(e, "CommentFlags");
      def->MergeInBuffer = readBool(e, "MergeInBuffer", false);
      def->UpgradedTagIdentifier = readText(e, "UpgradedTagIdentifier");
      def->UpgradeStop = readBool(e, "UpgradeStop", false);
      def->XMLTagNames = readText(e, "XMLTagNames");
      def->Alias = readText(e, "Alias");
      ignoreDuplicate(taggedCommentDefs, def, def->TagIdentifier);
    } else if (isElement(e, "ModelCommentProfile")) {
      auto profile = std::make_shared<ModelComments>();
      profile->Name(readText(e, "Name"));
      profile->Load(e);
      ignoreDuplicate(modelCommentProfiles, profile, profile->Name());
    } else if (isElement(e, "FileNames")) {
      invalidFileNameCharacters = readText(e, "InvalidCharacters", invalidFileNameCharacters);
      fileNameReplacement = readText(e, "Replacement", fileNameReplacement);
    }
  }
}

void ConfigurationRoot::Content::readTemplate(const std::string& folder) {
  const std::string definitionFile = folder + "template.xml";
  auto doc = readDefinitionFile(definitionFile, "Template", errors);
  if (!doc) return;
  const XMLNode root = doc->RootNode();
  auto tmpl = std::make_shared<Template>();
  tmpl->Name = readText(root, "Name", fs::path(folder).parent_path().filename().string());
  tmpl->Description = readText(root, "Description");
  tmpl->Folder = folder;
  tmpl->DefinitionFileName = definitionFile;
  tmpl->SingleItemTOCName = readText(root, "SingleItemTOC");
  tmpl->MultipleItemTOCName = readText(root, "MultipleItemTOC", tmpl->SingleItemTOCName);
  for (const XMLNode& e : root.ChildNodes()) {
    if (isElement(e, "DocType")) {
      const std::string name = readText(e, "Name");
      auto def = std::find_if(docTypeDefs.begin(), docTypeDefs.end(),
                              [&](const auto& d) { return text::equalsIgnoreCase(d->Name, name); });
      if (def == docTypeDefs.end())
        errors.push_back(definitionFile + ": the doc type '" + name + "' is not defined in kavrel.xml");
      else if (!tmpl->ServesDocType(def->get()))
        tmpl->DocTypeDefs.push_back(*def);
    } else if (isElement(e, "ItemType")) {
      tmpl->ItemTypes.push_back(readText(e, "Name"));
    } else if (isElement(e, "Variable")) {
      tmpl->VariableDefs.push_back({readText(e, "Name"), readText(e, "Default"), readLong(e, "Type", 0)});
    } else if (isElement(e, "Namespace")) {
      auto def = readNamespaceDef(e);
      ignoreDuplicate(tmpl->NamespaceDefs, def, def->Name);
    } else if (isElement(e, "PageLayout")) {
      auto layout = std::make_shared<PageLayout>();
      layout->Name = readText(e, "Name");
      layout->TemplateFileName = readText(e, "File");
      layout->OutputFileNamePattern = readText(e, "OutputFileNamePattern");
      layout->NamespaceList = readText(e, "Namespaces");
      layout->DependsOnNamespaceName = readText(e, "DependsOnNamespaceName");
      layout->DependsOnParameters = readText(e, "DependsOnParameters");
      layout->DependsOnMinimum = readLong(e, "DependsOnMinimum", -1);
      for (const XMLNode& k : e.ChildNodes())
        if (isElement(k, "Keyword")) layout->Keywords.push_back({k.Text(), readText(k, "Kind", "K")});
      if (layout->Name.empty()) layout->Name = layout->TemplateFileName;
      ignoreDuplicate(tmpl->PageLayouts, layout, layout->Name);
    } else if (isElement(e, "TOC")) {
      auto toc = std::make_shared<TOCDefinition>();
      toc->Name = readText(e, "Name");
      toc->Template = tmpl;
      toc->Load(e);
      ignoreDuplicate(tmpl->TOCDefinitions, toc, toc->Name);
    } else if (isElement(e, "DiagramStyle")) {
      tmpl->objFillColor = readColor(e, "objFillColor", tmpl->objFillColor);
      tmpl->objTextColor = readColor(e, "objTextColor", tmpl->objTextColor);
      tmpl->objBorderColor = readColor(e, "objBorderColor", tmpl->objBorderColor);
      tmpl->colFillColor = readColor(e, "colFillColor", tmpl->colFillColor);
      tmpl->colTextColor = readColor(e, "colTextColor", tmpl->colTextColor);
      tmpl->colBorderColor = readColor(e, "colBorderColor", tmpl->colBorderColor);
      tmpl->BorderWidth = std::int32_t(readLong(e, "BorderWidth", tmpl->BorderWidth));
      tmpl->UseDropShadow = readBool(e, "UseDropShadow", tmpl->UseDropShadow);
      tmpl->CenterCaptions = readBool(e, "CenterCaptions", tmpl->CenterCaptions);
      tmpl->DiagramBold = readBool(e, "DiagramBold", tmpl->DiagramBold);
      tmpl->UseDiagramShapes = readBool(e, "UseDiagramShapes", tmpl->UseDiagramShapes);
    }
  }
  if (templates.Exists(tmpl->Name))
    errors.push_back(definitionFile + ": a template named '" + tmpl->Name + "' is already installed");
  else
    templates.Add(tmpl, tmpl->Name);
}

ConfigurationRoot::ConfigurationRoot() = default;
ConfigurationRoot::~ConfigurationRoot() = default;

ConfigurationRoot& ConfigurationRoot::instance() {
  static ConfigurationRoot root;
  return root;
}

ConfigurationRoot::Content& ConfigurationRoot::content() {
  if (!mContent) {
    mContent = std::make_unique<Content>();
    mContent->read(ConfigPath());
  }
  return *mContent;
}

void ConfigurationRoot::Reset() {
  mContent.reset();
}

const std::vector<std::shared_ptr<DocTypeDef>>& ConfigurationRoot::DocTypeDefs() {
  return content().docTypeDefs;
}
const ModelCommentProfiles& ConfigurationRoot::ModelCommentProfiles() {
  return content().modelCommentProfiles;
}
const Templates& ConfigurationRoot::Templates() {
  return content().templates;
}
const TaggedCommentDefs& ConfigurationRoot::TaggedCommentDefs() {
  return content().taggedCommentDefs;
}
const CodeLanguages& ConfigurationRoot::CodeLanguages() {
  return content().codeLanguages;
}
const std::vector<std::string>& ConfigurationRoot::LoadErrors() {
  return content().errors;
}

std::string ConfigurationRoot::ConfigPath() const {
  return ConfigurationFolder();
}

std::string ConfigurationRoot::ApplicationPath() const {
  return ConfigPath();
}

std::string ConfigurationRoot::ValidFileName(std::string_view Name) {
  const Content& c = content();
  std::string out;
  for (char ch : Name) {
    const bool invalid =
        static_cast<unsigned char>(ch) < 32 || c.invalidFileNameCharacters.find(ch) != std::string::npos;
    if (invalid)
      out += c.fileNameReplacement;
    else
      out += ch;
  }
  return out;
}

}  // namespace kv

namespace kv {

std::shared_ptr<const TaggedCommentDefs> ConfiguredTaggedCommentDefs() {
  return std::make_shared<const TaggedCommentDefs>(ConfigurationRoot::instance().TaggedCommentDefs());
}

}  // namespace kv
