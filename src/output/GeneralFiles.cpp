// The general files of a build: the page layouts that serve no namespace definition (help
// project files, frames, contents and index pages, scripts), written once per doc type.
#include "definitions/Configuration.h"
#include "definitions/Template.h"
#include "host/FailureHandler.h"
#include "kavrel/DataProvider.h"
#include "kavrel/FileSystem.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/Text.h"
#include "output/PageGeneration.h"
#include "project/CommunityProperties.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "template/ParserTemplate.h"

namespace kv {

namespace {

constexpr const char* kModule = "KVProject";

// Whether the general file of this layout is left out of this doc type's output.
bool skipGeneralFile(KVProject& project, KVDocType& docType, const PageLayout& layout) {
  const FileSystem source(layout.TemplateFileName);
  const std::string ext = text::toLower(source.Extension());
  const bool fromHelpTemplates = project.DocTypes->HelpTemplatesFrom().get() == &docType;
  const bool lite = text::equalsIgnoreCase(docType.Name(), "kv.lumidesklite");
  const bool help2 = project.HTMLHelpVersion() == "2";
  if (ext == "hxc" || ext == "hxt" || ext == "hxf" || ext == "hxk") return !fromHelpTemplates || !help2;
  if (ext == "hhp" || ext == "hhk" || ext == "hhc") return !fromHelpTemplates || help2 || lite;

  const std::string base = text::toLower(source.BaseName());
  if (base == "webframe" || base == "webindex" || base == "webnav" || base == "webtoc" || base == "webblank")
    return !fromHelpTemplates || lite;
  if (base == "registerhelp2" || base == "unregisterhelp2") return !help2 || !fromHelpTemplates || lite;
  if (base == "vc_community" || base == "vc_community.aspx")
    return !project.CommunityProperties->IsEnabled() || project.CommunityProperties->GetHostingKey().empty();
  return false;
}

}  // namespace

void PageGeneration::OutputGeneralFiles() {
  for (const auto& docType : mProject.DocTypes->PopulatedDocTypes()) {
    mProject.CurrentDocType(docType);
    const auto tmpl = docType->Template();
    for (const auto& layout : tmpl->PageLayouts)
      if (layout->NamespaceList.empty()) OutputGeneralFile(*docType, *tmpl, *layout);
  }
}

void PageGeneration::OutputGeneralFile(KVDocType& DocType, const Template& Template, const PageLayout& Layout) {
  guard(kModule, [&] {
    if (skipGeneralFile(mProject, DocType, Layout)) return;
    // Used once each: general files are not cached.
    const auto parser = CreateParserTemplate(Template.Folder + Layout.TemplateFileName);

    if (Template.NamespaceDefs.Count() == 0) return;
    const auto provider = mProject.GetNamespaceProvider(Template.NamespaceDefs.Item(1)->Handler);
    if (!provider) return;
    const auto ddp = mProject.DataProviderOf(*provider);
    if (!ddp) return;
    parser->DataProvider(ddp);
    ddp->SetCurrentItem(nullptr, nullptr, "", nullptr);

    const std::string pattern = Layout.OutputFileNamePattern.empty()
                                    ? Layout.TemplateFileName
                                    : ddp->ParseForProperties(Layout.OutputFileNamePattern);
    FileSystem file(mProject.OutputFolder() + pattern);
    file.BaseName(ConfigurationRoot::instance().ValidFileName(file.BaseName()));
    std::string fileName = file.FileName();
    if (mProject.OutputFileExtension() != ".html")
      fileName = text::replaceAllIgnoringCase(fileName, ".html", mProject.OutputFileExtension());

    if (mProject.IsLumideskDocType(DocType)) {
      bool skip = false;
      mProject.FireBeforeOutputNamespacePage(nullptr, nullptr, nullptr, skip);
      if (skip) return;
    }

    std::shared_ptr<ParserTemplate> render = parser;
    FileSystem existing(fileName);
    if (mProject.RefreshIfExists() && text::startsWithIgnoreCase(existing.Extension(), "htm") && existing.Exists()) {
      render = std::make_shared<ParserTemplate>(*parser);
      render->RefreshFrom(existing.ReadAll());
      ddp->SetCurrentItem(nullptr, nullptr, "", nullptr);
    }
    RenderTo(*render, fileName);

    provider->PageOutput(ddp->NamespaceDef(), ddp->CurrentItem(), fileName, false, false);
    mProject.FireContentCreated(fileName);
  });
}

}  // namespace kv
