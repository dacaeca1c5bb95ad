// The table of contents of a build, written into a general file while it is generated: each doc
// type's table of contents definition walked node by node, nodes of items expanded through the
// namespace providers. One walk serves the HTML Help sitemap (".hhc"), the Help 2 table of
// contents (".hxt") and any web form the template gives by scraps.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "kavrel/Object.h"

namespace kv {

class DataProvider;
class FileSystem;
class INamespaceProvider;
class KVDocType;
class KVProject;
class NodeDef;
class TOCDefinition;

class TableOfContents {
 public:
  explicit TableOfContents(KVProject& project) : mProject(project) {}

  // Writes the entries of every populated doc type, or of `SpecificDocType` alone, in the form
  // the project's TOCBookPrefix, TOCBookSuffix, TOCSuffix and TOCNodeScrap ask for.
  void BuildTOC(std::shared_ptr<FileSystem>& OutputFile, const std::shared_ptr<KVDocType>& SpecificDocType = nullptr);

  static std::string AppendCommaDelimited(const std::string& Source, const std::string& Addition);

 private:
  std::shared_ptr<DataProvider> GetTOCDDP(INamespaceProvider* NamespaceProvider);
  void CreateTOCNode_Namespace(KVDocType& DocType, const TOCDefinition& Definition,
                               std::shared_ptr<FileSystem>& OutputFile, const std::shared_ptr<NodeDef>& Node,
                               const ObjectPtr& ParentObject, INamespaceProvider* NamespaceProvider,
                               const ObjectPtr& vObj, bool IndividualInstance);
  void OutputTOCNode_Namespace(FileSystem& OutputFile, const NodeDef& Node, const ObjectPtr& Item,
                               const std::string& FileName, DataProvider& DDP, INamespaceProvider* NamespaceProvider);
  // The page a node points to: its layout's pattern, its file name, or the item's page.
  std::string PageFileName(const NodeDef& Node, const std::shared_ptr<class NamespaceDef>& Def, DataProvider& DDP);
  // False when the node's dependency count is below its minimum and it is not generated then.
  bool DependencyAllows(const KVDocType& DocType, const NodeDef& Node, const ObjectPtr& ParentObject, bool& DoChildren);
  void CheckStaticTarget(FileSystem& OutputFile, const NodeDef& Node, const std::string& FileName,
                         INamespaceProvider* NamespaceProvider);
  bool Help2() const;

  KVProject& mProject;
  // Data providers of this walk, one per namespace provider.
  std::map<INamespaceProvider*, std::shared_ptr<DataProvider>> mTOC_DDPs;
  // The last dependency count asked for, with the node and parent it was asked for.
  const NodeDef* LastNodeDef = nullptr;
  ObjectPtr LastParentObject;
  long LastDepCount = 0;
  long DepCount = 0;
};

}  // namespace kv
