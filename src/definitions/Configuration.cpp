#include "definitions/Configuration.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

#include "host/Installation.h"
#include "kavrel/FileSystem.h"
#include "kavrel/XmlDocument.h"

namespace kv {
namespace {

namespace fs = std::filesystem;

bool readBool(const XMLNode& e, std::string_view name, bool fallback) {
  const auto attr = e.Attributes().Find(name);
  if (!attr) return fallback;
  const std::string v = text::toLower(text::trim(attr->Value()));
  return v == "true" || v == "yes" || v == "1";
}

long readLong(const XMLNode& e, std::string_view name, long fallback) {
  const auto attr = e.Attributes().Find(name);
  if (!attr) return fallback;
  const std::string v = text::trim(attr->Value());
  long value = fallback;
  std::from_chars(v.data(), v.data() + v.size(), value);
  return value;
}

std::string readText(const XMLNode& e, std::string_view name, std::string_view fallback = {}) {
  return e.Attributes().ValueOr(name, fallback);
}

// "#RRGGBB" or a decimal number; the result has red in the lowest byte.
std::int32_t readColor(const XMLNode& e, std::string_view name, std::int32_t fallback) {
  const auto attr = e.Attributes().Find(name);
  if (!attr) return fallback;
  const std::string v = text::trim(attr->Value());
  if (v.size() == 7 && v[0] == '#') {
    unsigned rgb = 0;
    if (std::from_chars(v.data() + 1, v.data() + 7, rgb, 16).ec != std::errc()) return fallback;
    return std::int32_t(((rgb >> 16) & 0xFF) | (rgb & 0xFF00) | ((rgb & 0xFF) << 16));
  }
  std::int32_t value = fallback;
  std::from_chars(v.data(), v.data() + v.size(), value);
  return value;
}

const char* boolText(bool v) {
  return v ? "True" : "False";
}

// Adds under `key` unless the key is taken: definitions are read leniently.
template <class C, class T>
void ignoreDuplicate(C& collection, const T& item, std::string_view key) {
  if (!collection.Exists(key)) collection.Add(item, key);
}

bool isElement(const XMLNode& e, std::string_view name) {
  return text::equalsIgnoreCase(e.Name(), name);
}

// Parses a definition file; a file that cannot be read or parsed adds a line to `errors`.
std::optional<XMLDocument> readDefinitionFile(const std::string& fileName, std::string_view rootName,
                                              std::vector<std::string>& errors) {
  FileSystem file(fileName);
  if (!file.Exists()) {
    errors.push_back(fileName + ": the file does not exist");
    return std::nullopt;
  }
  XMLDocument doc;
  if (!doc.LoadXML(file.ReadAll())) {
    errors.push_back(fileName + ": " + doc.ParseError());
    return std::nullopt;
  }
  if (!isElement(doc.RootNode(), rootName)) {
    errors.push_back(fileName + ": the root element is not \"" + std::string(rootName) + "\"");
    return std::nullopt;
  }
  return doc;
}

std::shared_ptr<NamespaceDef> readNamespaceDef(const XMLNode& e) {
  auto def = std::make_shared<NamespaceDef>();
  def->Name = readText(e, "Name");
  def->DisplayName = readText(e, "DisplayName", def->Name);
  def->Handler = readText(e, "Handler");
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
      auto childDef = readNamespaceDef(child);
      ignoreDuplicate(def->ChildNamespaceDefs, childDef, childDef->Name);
    }
  return def;
}

}  // namespace

// --- Tables of contents ------------------------------------------------------------------------

void NodeDef::Load(const XMLNode& e) {
  Name = readText(e, "Name");
  NodeType = readLong(e, "NodeType", StaticNode);
  Caption = readText(e, "Caption");
  ParentName = readText(e, "Parent");
  HasIcon = readBool(e, "HasIcon", false);
  IconNumber = readLong(e, "IconNumber", 0);
  MarkAsNew = readBool(e, "MarkAsNew", false);
  EmbeddedName = readText(e, "EmbeddedName");
  DependsOnNamespaceName = readText(e, "DependsOnNamespaceName");
  DependsOnParameters = readText(e, "DependsOnParameters");
  DependsOnMinimum = readLong(e, "DependsOnMinimum", 0);
  GenerateWhenBelowMinimum = readBool(e, "GenerateWhenBelowMinimum", false);
  FileName = readText(e, "FileName");
  NamespaceName = readText(e, "NamespaceName");
  Parameters = readText(e, "Parameters");
  HasPage = readBool(e, "HasPage", false);
  IsDefaultTopic = readBool(e, "IsDefaultTopic", false);
  PageLayout = readText(e, "PageLayout");
}

void NodeDef::Save(XMLNode& e) const {
  e.SetAttribute("Name", Name);
  e.SetAttribute("NodeType", std::to_string(NodeType));
  e.SetAttribute("Caption", Caption);
  e.SetAttribute("Parent", ParentName);
  e.SetAttribute("HasIcon", boolText(HasIcon));
  e.SetAttribute("IconNumber", std::to_string(IconNumber));
  e.SetAttribute("MarkAsNew", boolText(MarkAsNew));
  e.SetAttribute("EmbeddedName", EmbeddedName);
  e.SetAttribute("DependsOnNamespaceName", DependsOnNamespaceName);
  e.SetAttribute("DependsOnParameters", DependsOnParameters);
  e.SetAttribute("DependsOnMinimum", std::to_string(DependsOnMinimum));
  e.SetAttribute("GenerateWhenBelowMinimum", boolText(GenerateWhenBelowMinimum));
  e.SetAttribute("FileName", FileName);
  e.SetAttribute("NamespaceName", NamespaceName);
  e.SetAttribute("Parameters", Parameters);
  e.SetAttribute("HasPage", boolText(HasPage));
  e.SetAttribute("IsDefaultTopic", boolText(IsDefaultTopic));
  e.SetAttribute("PageLayout", PageLayout);
}

void NodeDef::ResolveReferences(const Collection<std::shared_ptr<NodeDef>>& nodeDefs) {
  ParentNode.reset();
  if (ParentName.empty()) return;
  if (const auto* parent = nodeDefs.Find(ParentName)) ParentNode = *parent;
}

void TOCDefinition::Load(const XMLNode& e) {
  for (const XMLNode& child : e.ChildNodes()) {
    if (!isElement(child, "NodeDef")) continue;
    auto node = std::make_shared<NodeDef>();
    node->Load(child);
    ignoreDuplicate(NodeDefs, node, node->Name);
  }
  for (const auto& node : NodeDefs) node->ResolveReferences(NodeDefs);
}

void TOCDefinition::Save(XMLDocument& doc) const {
  XMLNode root = doc.RootNode();
  root.Name("TOC");
  root.SetAttribute("Name", Name);
  for (const auto& node : NodeDefs) {
    XMLNode e = root.AddChild("NodeDef");
    node->Save(e);
  }
}

std::string TOCDefinition::SaveToText() const {
  XMLDocument doc;
  Save(doc);
  return doc.Xml();
}

// --- Templates ---------------------------------------------------------------------------------

std::string Template::RootFolder() const {
  return Folder.size() > 1 && Folder.back() == '/' ? Folder.substr(0, Folder.size() - 1) : Folder;
}

bool Template::SupportsItemType(std::string_view Type) const {
  return std::any_of(ItemTypes.begin(), ItemTypes.end(),
                     [&](const auto& t) { return text::equalsIgnoreCase(t, Type); });
}

bool Template::ServesDocType(const DocTypeDef* def) const {
  return std::any_of(DocTypeDefs.begin(), DocTypeDefs.end(), [&](const auto& d) { return d.get() == def; });
}

void Template::Language(std::string_view language) {
  if (text::equalsIgnoreCase(language, mLanguage)) return;
  mLanguage = language;
  mPhrases.reset();
}

const Template::PhraseTable& Template::Phrases() const {
  if (mPhrases) return *mPhrases;
  mPhrases.emplace();
  std::vector<std::string> errors;
  auto doc = readDefinitionFile(Folder + "Phrases/" + mLanguage + ".xml", "Phrases", errors);
  if (!doc && !text::equalsIgnoreCase(mLanguage, "English"))
    doc = readDefinitionFile(Folder + "Phrases/English.xml", "Phrases", errors);
  if (doc)
    for (const XMLNode& e : doc->RootNode().ChildNodes())
      if (isElement(e, "Phrase")) mPhrases->insert_or_assign(readText(e, "Key"), e.Text());
  return *mPhrases;
}

std::string Template::Phrase(std::string_view Key) const {
  const auto& phrases = Phrases();
  auto it = phrases.find(Key);
  return it == phrases.end() ? std::string(Key) : it->second;
}

std::string Template::Scrap(std::string_view Key) const {
  if (!mScraps) {
    mScraps.emplace();
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(Folder + "HTMLScraps", ec)) {
      if (!entry.is_regular_file(ec)) continue;
      FileSystem file(entry.path().string());
      mScraps->emplace(entry.path().stem().string(), file.ReadAll());
    }
  }
  auto it = mScraps->find(Key);
  return it == mScraps->end() ? "!MISSING Scrap " + std::string(Key) + "!" : it->second;
}

// --- Model comments ----------------------------------------------------------------------------

void ModelComment::Load(const XMLNode& e) {
  ItemKind = readText(e, "ItemKind");
  ItemName = readText(e, "ItemName");
  TagIdentifier = readText(e, "TagIdentifier");
  OnlyIfBlank = readBool(e, "OnlyIfBlank", false);
  Text = e.Text();
}

void ModelComment::Save(XMLNode& e) const {
  e.SetAttribute("ItemKind", ItemKind);
  e.SetAttribute("ItemName", ItemName);
  e.SetAttribute("TagIdentifier", TagIdentifier);
  e.SetAttribute("OnlyIfBlank", boolText(OnlyIfBlank));
  if (!Text.empty()) e.Text(Text);
}

void ModelComments::Add(std::shared_ptr<ModelComment> Item, std::string_view Key, std::optional<long> Before,
                        std::optional<long> After) {
  mItems.Add(std::move(Item), Key, Before, After);
  RaiseDirtyStateChanged();
}

void ModelComments::Remove(long index) {
  mItems.Remove(index);
  RaiseDirtyStateChanged();
}

void ModelComments::Save(XMLNode& e) const {
  e.SetAttribute("Name", mName);
  for (const auto& comment : mItems) {
    XMLNode child = e.AddChild("ModelComment");
    comment->Save(child);
  }
}

void ModelComments::Load(const XMLNode& e) {
  mItems.Clear();
  for (const XMLNode& child : e.ChildNodes()) {
    if (!isElement(child, "ModelComment")) continue;
    auto comment = std::make_shared<ModelComment>();
    comment->Load(child);
    mItems.Add(comment);
  }
}

void ModelComments::Subscribe(std::weak_ptr<ModelCommentsEvents> subscriber) {
  mSubscribers.Add(std::move(subscriber));
}

void ModelComments::RaiseDirtyStateChanged() {
  mSubscribers.Raise([](ModelCommentsEvents& e) { e.DirtyStateChanged(); });
}

// --- The configuration root --------------------------------------------------------------------

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
