// The installation's definitions: doc types, templates with their namespace (page kind)
// definitions, page layouts, tables of contents, variables, phrases and scraps, the kinds of
// tagged comment, the model comment profiles and the code languages. They are read from the
// configuration folder (see docs/configuration.md); a build sets a few flags on them and holds
// references to them. Lookups by key fail rather than return nothing.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kavrel/Collection.h"
#include "kavrel/DocTypeDef.h"
#include "kavrel/NamespaceDef.h"
#include "kavrel/StoredElement.h"
#include "kavrel/TaggedCommentDef.h"
#include "kavrel/Text.h"
#include "services/Subscribers.h"

namespace kv {

class XMLNode;
class XMLDocument;

struct PageLayoutKeyword {
  std::string Text;
  std::string Kind;  // "K" index, "A" associative links, "F"
};

// One layout file and the rules for its output. An empty NamespaceList makes it a general file.
class PageLayout {
 public:
  std::string Name;
  std::string TemplateFileName;  // relative to the template's folder
  std::string OutputFileNamePattern;
  std::string NamespaceList;  // comma-separated namespace definition names
  std::string DependsOnNamespaceName;
  std::string DependsOnParameters;
  long DependsOnMinimum = -1;  // -1: no dependency check
  std::vector<PageLayoutKeyword> Keywords;
};

// One node of a table of contents definition.
class NodeDef {
 public:
  enum Type { StaticNode = 0, ItemsNode = 1, EmbeddedTable = 3, MergedTable = 4 };

  std::string Name;
  long NodeType = StaticNode;
  std::string Caption;
  std::string ParentName;             // the parent node's name; empty for a top node
  std::weak_ptr<NodeDef> ParentNode;  // set by ResolveReferences
  bool HasIcon = false;
  long IconNumber = 0;
  bool MarkAsNew = false;
  std::string EmbeddedName;
  std::string DependsOnNamespaceName;
  std::string DependsOnParameters;
  long DependsOnMinimum = 0;
  bool GenerateWhenBelowMinimum = false;
  std::string FileName;
  std::string NamespaceName;
  std::string Parameters;
  bool HasPage = false;
  bool IsDefaultTopic = false;
  std::string PageLayout;  // name of a page layout of the template, or empty

  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;
  // Called once all nodes of a definition are in: finds the parent node by name.
  void ResolveReferences(const Collection<std::shared_ptr<NodeDef>>& nodeDefs);
};

class Template;

class TOCDefinition {
 public:
  std::string Name;
  // The template the definition belongs to; set on a custom definition to bind it.
  std::weak_ptr<kv::Template> Template;
  Collection<std::shared_ptr<kv::NodeDef>> NodeDefs;

  // Reads the "NodeDef" children of `e` and resolves their references.
  void Load(const XMLNode& e);
  // Writes the definition as the root of `doc`, for comparison by text.
  void Save(XMLDocument& doc) const;
  std::string SaveToText() const;
};

struct VariableDef {
  std::string Name;
  std::string DefaultValue;
  long Type = 0;  // 4: a colour
};

class Template {
 public:
  std::string Name;
  std::string Description;
  std::string Folder;               // ends in "/"
  std::string DefinitionFileName;   // full name of the definition file, never copied
  kv::NamespaceDefs NamespaceDefs;  // the root definitions
  Collection<std::shared_ptr<kv::PageLayout>> PageLayouts;
  Collection<std::shared_ptr<kv::TOCDefinition>> TOCDefinitions;
  std::string SingleItemTOCName, MultipleItemTOCName;
  std::vector<VariableDef> VariableDefs;
  // The doc types the template serves, compared by object identity.
  std::vector<std::shared_ptr<DocTypeDef>> DocTypeDefs;
  // Root item types the template handles: "source", "binary".
  std::vector<std::string> ItemTypes;
  // Diagram style: colours as RGB with red in the lowest byte.
  std::int32_t objFillColor = 0xFFFFFF, objTextColor = 0, objBorderColor = 0;
  std::int32_t colFillColor = 0xFFFFFF, colTextColor = 0, colBorderColor = 0;
  std::int32_t BorderWidth = 1;
  bool UseDropShadow = false, CenterCaptions = false, DiagramBold = false, UseDiagramShapes = false;

  // The folder without its trailing "/", for names joined with "/".
  std::string RootFolder() const;
  bool SupportsItemType(std::string_view Type) const;
  bool ServesDocType(const DocTypeDef* def) const;

  // The language that selects the phrase set; "English" until set.
  std::string Language() const { return mLanguage; }
  void Language(std::string_view language);
  using PhraseTable = std::map<std::string, std::string, text::LessIgnoreCase>;
  // The phrases of the language, read from "Phrases/<language>.xml" on first use; a language
  // without a file has the English phrases.
  const PhraseTable& Phrases() const;
  // The phrase, or the key itself when there is no such phrase.
  std::string Phrase(std::string_view Key) const;
  // The text block "HTMLScraps/<key>.*", or "!MISSING Scrap <key>!" when there is none.
  std::string Scrap(std::string_view Key) const;

 private:
  std::string mLanguage = "English";
  mutable std::optional<PhraseTable> mPhrases;
  mutable std::optional<std::map<std::string, std::string, text::LessIgnoreCase>> mScraps;
};

// A keyed list of templates, creatable by callers.
class Templates : public Collection<std::shared_ptr<kv::Template>> {};

// One comment that is applied to every item of a kind whose name matches.
class ModelComment {
 public:
  std::string ItemKind;  // the namespace definition name it is for
  std::string ItemName;  // a name or a wildcard pattern
  std::string TagIdentifier;
  std::string Text;
  bool OnlyIfBlank = false;

  const std::string& NamespaceName() const { return ItemKind; }
  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;
};

class ModelCommentsEvents {
 public:
  virtual ~ModelCommentsEvents() = default;
  virtual void DirtyStateChanged() {}
};

// A set of model comments: a named profile, or the comments specific to one doc type.
class ModelComments {
 public:
  std::string Name() const { return mName; }
  void Name(std::string_view name) { mName = name; }

  void Add(std::shared_ptr<ModelComment> Item, std::string_view Key = {}, std::optional<long> Before = {},
           std::optional<long> After = {});
  void Remove(long index);
  long Count() const { return mItems.Count(); }
  const std::shared_ptr<ModelComment>& Item(long index) const { return mItems.Item(index); }
  auto begin() const { return mItems.begin(); }
  auto end() const { return mItems.end(); }

  // Writes a "ModelComment" child for each comment below `e`, and the name as attribute "Name".
  void Save(XMLNode& e) const;
  // Replaces the comments by those of the "ModelComment" children of `e`, so that loading the
  // same element again (as a plug-in reset does) keeps one copy of each.
  void Load(const XMLNode& e);

  void Subscribe(std::weak_ptr<ModelCommentsEvents> subscriber);

 private:
  void RaiseDirtyStateChanged();
  std::string mName;
  Collection<std::shared_ptr<ModelComment>> mItems;
  Subscribers<ModelCommentsEvents> mSubscribers;
};

class ModelCommentProfiles : public Collection<std::shared_ptr<ModelComments>> {};

struct CodeLanguage {
  std::string Name;
  bool SwitchedOn = true;
};

class CodeLanguages : public Collection<std::shared_ptr<CodeLanguage>> {};

// The process-wide configuration, read from the configuration folder on first use.
class ConfigurationRoot {
 public:
  static ConfigurationRoot& instance();

  const std::vector<std::shared_ptr<DocTypeDef>>& DocTypeDefs();
  const kv::ModelCommentProfiles& ModelCommentProfiles();
  // Every installed template, keyed by name.
  const kv::Templates& Templates();
  const kv::TaggedCommentDefs& TaggedCommentDefs();
  const kv::CodeLanguages& CodeLanguages();
  // The configuration folder, ending in "/".
  std::string ConfigPath() const;
  // The folder below which "Templates/" lies, ending in "/": the configuration folder.
  std::string ApplicationPath() const;
  // `Name` with every character that no file name may hold replaced.
  std::string ValidFileName(std::string_view Name);

  // What went wrong while reading the definitions, one line each; empty when all was read.
  const std::vector<std::string>& LoadErrors();
  // Forgets what was read, so that the next use reads the configuration folder again.
  void Reset();

 private:
  struct Content;
  ConfigurationRoot();
  ~ConfigurationRoot();
  Content& content();
  std::unique_ptr<Content> mContent;
};

}  // namespace kv
