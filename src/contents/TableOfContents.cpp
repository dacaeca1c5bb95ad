#include "contents/TableOfContents.h"

#include <cstdlib>

#include "contents/ContentsData.h"
#include "definitions/TOCDefinition.h"
#include "definitions/Template.h"
#include "files/EscapeText.h"
#include "host/FailureHandler.h"
#include "kavrel/DataProvider.h"
#include "kavrel/FileSystem.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/NamespaceDef.h"
#include "kavrel/StringCollection.h"
#include "kavrel/Text.h"
#include "kavrel/model/TaggedComments.h"
#include "project/AdditionalFiles.h"
#include "project/KVDocType.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "template/TextExpansion.h"

namespace kv {
namespace {}  // namespace

std::string TableOfContents::AppendCommaDelimited(const std::string& Source, const std::string& Addition) {
  return Source.empty() ? Addition : Source + "," + Addition;
}

bool TableOfContents::Help2() const {
  return std::atol(mProject.HTMLHelpVersion().c_str()) == 2;
}

void TableOfContents::BuildTOC(std::shared_ptr<FileSystem>& OutputFile,
                               const std::shared_ptr<KVDocType>& SpecificDocType) {
  const auto keptDocType = mProject.CurrentDocType();
  OutputFile->OutputLineFeeds(true);
  mProject.FirePostBuildStatus("Generating Table of Contents");
  mTOC_DDPs.clear();
  for (const auto& docType : mProject.DocTypes->PopulatedDocTypes()) {
    if (SpecificDocType && docType != SpecificDocType) continue;
    mProject.CurrentDocType(docType);
    const auto definition = docType->TOCSource->TOCDefinition();
    if (!definition) continue;
    const auto provider = docType->NamespaceProvider();
    for (const auto& node : definition->NodeDefs)
      if (!node->ParentNode.lock())
        CreateTOCNode_Namespace(*docType, *definition, OutputFile, node, nullptr, provider.get(), nullptr, false);
  }
  mTOC_DDPs.clear();
  LastNodeDef = nullptr;
  LastParentObject = nullptr;
  mProject.CurrentDocType(keptDocType);
}

std::shared_ptr<DataProvider> TableOfContents::GetTOCDDP(INamespaceProvider* NamespaceProvider) {
  auto& cached = mTOC_DDPs[NamespaceProvider];
  if (!cached) cached = ContentsDataProvider(NamespaceProvider, mProject);
  return cached;
}

bool TableOfContents::DependencyAllows(const KVDocType& DocType, const NodeDef& Node, const ObjectPtr& ParentObject,
                                       bool& DoChildren) {
  if (Node.DependsOnNamespaceName.empty()) return true;
  if (LastNodeDef == &Node && LastParentObject == ParentObject) {
    DepCount = LastDepCount;
  } else {
    const auto tmpl = const_cast<KVDocType&>(DocType).Template();
    if (const auto def = FindNamespaceDef(*tmpl, Node.DependsOnNamespaceName)) {
      const auto provider = mProject.GetNamespaceProvider(def->Handler);
      if (provider) {
        const ItemCollection items =
            provider->GetItems(def, ParentObject, AppendCommaDelimited(Node.DependsOnParameters, "fortoc=true"));
        if (items) DepCount = long(items->size());
      }
    }
    LastNodeDef = &Node;
    LastParentObject = ParentObject;
    LastDepCount = DepCount;
  }
  if (DepCount >= Node.DependsOnMinimum) return true;
  if (!Node.GenerateWhenBelowMinimum) return false;
  DoChildren = true;
  return true;
}

void TableOfContents::CreateTOCNode_Namespace(KVDocType& DocType, const TOCDefinition& Definition,
                                              std::shared_ptr<FileSystem>& OutputFile,
                                              const std::shared_ptr<NodeDef>& Node, const ObjectPtr& ParentObject,
                                              INamespaceProvider* NamespaceProvider, const ObjectPtr& vObj,
                                              bool IndividualInstance) {
  if (Node->NodeType == NodeDef::EmbeddedTable) {
    if (NamespaceProvider) NamespaceProvider->StreamContent(OutputFile, "EmbeddedTOC:" + Node->EmbeddedName);
    return;
  }
  if (Node->NodeType == NodeDef::MergedTable) {
    if (Help2()) {
      OutputFile->WriteLine("<HelpTOCNode NodeType=\"TOC\" Url=\"" + Node->FileName + "\"/>");
    } else if (mProject.CompileHelpFile()) {
      const std::string merge = text::containsIgnoreCase(Node->FileName, ".chm")
                                    ? Node->FileName
                                    : Node->FileName + ".chm::/" + Node->FileName + ".hhc";
      OutputFile->WriteLine("</UL>\n<OBJECT type=\"text/sitemap\">\n<param name=\"Merge\" value=\"" + merge +
                            "\">\n</OBJECT>\n<UL>");
    }
    return;
  }

  ObjectPtr obj = vObj;
  bool DoChildren = false;
  bool GenerateThisNode = DependencyAllows(DocType, *Node, ParentObject, DoChildren);
  if (!GenerateThisNode) return;
  // An item its author keeps out of the table of contents writes no entry; its children still may.
  ignoreFailure([&] {
    if (obj && HasTaggedComment(obj, "##EXCLUDE_TOC")) GenerateThisNode = false;
  });

  std::shared_ptr<DataProvider> tDDP;
  if (GenerateThisNode) {
    if (Node->NodeType != NodeDef::StaticNode) {
      const auto def = FindNamespaceDef(*DocType.Template(), Node->NamespaceName);
      const auto provider = def ? mProject.GetNamespaceProvider(def->Handler) : nullptr;
      if (def && provider) {
        if (IndividualInstance) {
          tDDP = GetTOCDDP(provider.get());
          tDDP->SetCurrentItem(def, vObj, def->DisplayName, ParentObject);
          const std::string fileName = Node->HasPage ? PageFileName(*Node, def, *tDDP) : std::string();
          OutputTOCNode_Namespace(*OutputFile, *Node, vObj, fileName, *tDDP, provider.get());
          DoChildren = true;
        } else {
          const ItemCollection items =
              provider->GetItems(def, ParentObject, AppendCommaDelimited(Node->Parameters, "fortoc=true"));
          if (items)
            for (const ObjectPtr& item : *items)
              CreateTOCNode_Namespace(DocType, Definition, OutputFile, Node, ParentObject, NamespaceProvider, item,
                                      true);
        }
      }
    } else {
      tDDP = GetTOCDDP(NamespaceProvider);
      const std::string fileName =
          Node->PageLayout.empty() ? tDDP->ParseForProperties(Node->FileName) : PageFileName(*Node, nullptr, *tDDP);
      OutputTOCNode_Namespace(*OutputFile, *Node, nullptr, fileName, *tDDP, NamespaceProvider);
      // A static node groups what lies below the item it stands under ("Functions" of a header):
      // its children are that item's.
      obj = vObj ? vObj : ParentObject;
      DoChildren = true;
    }
  }

  if (DoChildren) {
    bool Found = false;
    for (const auto& child : Definition.NodeDefs) {
      if (child->ParentNode.lock() != Node) continue;
      if (!Found && GenerateThisNode) {
        if (!Help2() || !mProject.TOCBookPrefix.empty()) OutputFile->WriteLine(mProject.TOCBookPrefix);
      }
      Found = true;
      if (tDDP) {
        // The child's walk moves the shared provider on; it comes back to this node after.
        const auto def = tDDP->NamespaceDef();
        const std::string itemType = tDDP->CurrentItemType();
        const ObjectPtr item = tDDP->CurrentItem(), parent = tDDP->CurrentParentItem();
        CreateTOCNode_Namespace(DocType, Definition, OutputFile, child, obj, NamespaceProvider, nullptr, false);
        tDDP->SetCurrentItem(def, item, itemType, parent);
      } else {
        CreateTOCNode_Namespace(DocType, Definition, OutputFile, child, obj, NamespaceProvider, nullptr, false);
      }
    }
    if (Found && GenerateThisNode) {
      if (!Help2() || !mProject.TOCBookSuffix.empty()) OutputFile->WriteLine(mProject.TOCBookSuffix);
    }
    // A Help 2 node stays open over its children; a web form written by scraps has no such node.
    if (Help2() && GenerateThisNode && mProject.TOCNodeScrap.empty()) OutputFile->WriteLine("</HelpTOCNode>");
  }
  if (!mProject.TOCSuffix.empty()) OutputFile->WriteLine(mProject.TOCSuffix);
}

std::string TableOfContents::PageFileName(const NodeDef& Node, const std::shared_ptr<NamespaceDef>& Def,
                                          DataProvider& DDP) {
  std::string name;
  if (!Node.PageLayout.empty()) {
    const auto tmpl = mProject.CurrentDocType()->Template();
    if (const auto* layout = tmpl->PageLayouts.Find(Node.PageLayout)) name = (*layout)->OutputFileNamePattern;
  }
  if (name.empty()) name = Node.FileName;
  if (name.empty()) {
    if (Def && !Def->OutputFileNamePattern.empty()) {
      name = Def->OutputFileNamePattern;
    } else {
      ignoreFailure([&] { name = DDP.GetProperty("itemqualifiedname") + mProject.OutputFileExtension(); });
    }
  }
  name = DDP.ParseForProperties(ProjectPhrases(mProject, name));
  if (mProject.UseFileNameAliases()) {
    const std::string alias = mProject.GetFileNameAlias(name);
    if (!alias.empty()) name = alias;
  }
  return name;
}

void TableOfContents::CheckStaticTarget(FileSystem& OutputFile, const NodeDef& Node, const std::string& FileName,
                                        INamespaceProvider* NamespaceProvider) {
  FileSystem target;
  if (FileName.find('/') != std::string::npos || FileName.find('\\') != std::string::npos) {
    target.MakeRelativeTo(&OutputFile);
    target.FileName(FileName);
    target.MakeRelativeTo(nullptr);
  } else {
    target.FileName(mProject.OutputFolder() + FileName);
  }
  if (target.Exists()) {
    // A file in place that is not one of the additional files is output of its own: the
    // provider hears of it, and the compile's post-processing sees it.
    bool NotFound = true;
    if (target.Folder() == OutputFile.Folder() && mProject.AdditionalFiles &&
        mProject.AdditionalFiles->Exists(target.Name()))
      NotFound = false;
    if (NotFound) {
      if (NamespaceProvider)
        ignoreFailure([&] { NamespaceProvider->PageOutput(nullptr, nullptr, target.FileName(), false, false); });
      mProject.FireContentCreated(target.FileName());
    }
  } else {
    mProject.RaiseBuildError(
        "A Table of Contents Node '" + Node.Caption +
        "' points to a file that is not generated and is not present "
        "in the output folder ('" +
        target.FileName() +
        ")'.  This may indicate you have added a custom Node to the "
        "Table of Contents definition but have not added the requisite additional file.  This problem will result "
        "in warnings being issued by the HTML Help compiler.");
  }
}

void TableOfContents::OutputTOCNode_Namespace(FileSystem& OutputFile, const NodeDef& Node, const ObjectPtr& Item,
                                              const std::string& FileName, DataProvider& DDP,
                                              INamespaceProvider* NamespaceProvider) {
  if (Node.NodeType == NodeDef::StaticNode && !FileName.empty() && Node.PageLayout.empty() &&
      !text::containsIgnoreCase(FileName, "http://") && !text::containsIgnoreCase(FileName, "mailto:") &&
      !text::containsIgnoreCase(FileName, "https://"))
    CheckStaticTarget(OutputFile, Node, FileName, NamespaceProvider);

  const std::string caption = DDP.ParseForProperties(ProjectPhrases(mProject, Node.Caption));
  const bool help2 = Help2();
  if (!mProject.TOCNodeScrap.empty()) {
    StringCollection parameters;
    parameters.Add(caption, "nodecaption");
    parameters.Add(help2 && FileName.empty() ? std::string("~~Empty~~.htm") : FileName, "nodetarget");
    parameters.Add(mProject.GetIsNew(Node, Item) ? "True" : "False", "isnew");
    parameters.Add(Node.HasIcon ? std::to_string(Node.IconNumber) : std::string("-1"), "icon");
    const std::string scrap = mProject.Scrap(mProject.TOCNodeScrap + (FileName.empty() ? "_TITLE" : "_PAGE"));
    OutputFile.WriteLine(DDP.ParseForProperties(ParseForParameters(scrap, parameters, "%%")));
  } else if (help2) {
    OutputFile.OutputLineFeeds(false);
    OutputFile.WriteLine("<HelpTOCNode Title = \"" + EscapeText(caption) + "\"");
    if (!FileName.empty()) OutputFile.WriteLine(" Url = \"" + EscapeText(FileName) + "\"");
    bool isNew = Node.MarkAsNew;
    ignoreFailure([&] { isNew = isNew || (Item && Item->get("IsNew").toBool()); });
    if (isNew) OutputFile.WriteLine(" New=\"Yes\"");
    if (Node.HasIcon) OutputFile.WriteLine(" Icon=\"" + std::to_string(Node.IconNumber) + "\"");
    OutputFile.OutputLineFeeds(true);
    OutputFile.WriteLine(">");
  } else {
    OutputFile.WriteLine("<LI> <OBJECT type=\"text/sitemap\">");
    OutputFile.WriteLine("        <param name=\"Name\" value=\"" + EscapeText(caption) + "\">");
    if (Node.HasIcon)
      OutputFile.WriteLine("        <param name=\"ImageNumber\" value=\"" + std::to_string(Node.IconNumber) + "\">");
    if (!FileName.empty()) OutputFile.WriteLine("        <param name=\"Local\" value=\"" + FileName + "\">");
    if (mProject.GetIsNew(Node, Item)) OutputFile.WriteLine("        <param name=\"New\" value=\"1\">");
    OutputFile.WriteLine("     </OBJECT>");
  }
  if (Node.IsDefaultTopic && !FileName.empty()) mProject.DefaultTopic(FileName);
}

}  // namespace kv
