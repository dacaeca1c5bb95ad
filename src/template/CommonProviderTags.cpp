// The tags of a layout that the common provider answers: the entry checks every tag passes
// (kind, "type", "condition"), then the tags in the order they are compared.
#include "definitions/Configuration.h"
#include "definitions/Template.h"
#include "files/EscapeText.h"
#include "kavrel/Failure.h"
#include "kavrel/FileSystem.h"
#include "kavrel/ParserElement.h"
#include "kavrel/Text.h"
#include "kavrel/model/Example.h"
#include "project/KVDocType.h"
#include "project/KVProject.h"
#include "template/CommonProvider.h"
#include "template/ElementCondition.h"
#include "template/ExampleRendering.h"
#include "template/ParserTemplate.h"
#include "template/TextExpansion.h"
#include "template/XmlTagRendering.h"

namespace kv {
namespace {

// A parameter the tag needs: its absence fails the tag.
const std::string& required(const ParserElement& element, std::string_view name) {
  return element.Parameters().Item(name);
}

std::string optional(const ParserElement& element, std::string_view name) {
  const std::string* value = element.Parameters().Find(name);
  return value ? *value : std::string();
}

// A switch of the "xml" tag: on when present and not "false".
bool switchOn(const ParserElement& element, std::string_view name) {
  const std::string* value = element.Parameters().Find(name);
  return value && !text::equalsIgnoreCase(*value, "false");
}

// The file an "include" tag names, read whole. The name is taken in lower case, as layouts
// written for case-blind file systems expect; a file whose name has capitals is still found
// under the name as written. A name that starts with a separator is absolute; any other lies
// below the template's folder.
std::string includedFile(const std::string& rootFolder, const std::string& written) {
  const std::string source = text::toLower(written);
  for (const std::string& name : {source, written}) {
    FileSystem file;
    if (!name.starts_with('/') && !name.starts_with('\\')) {
      const FileSystem base(withTrailingSlash(rootFolder));
      file.MakeRelativeTo(&base);
    }
    file.FileName(name);
    if (file.Exists()) return ProtectPercent(file.ReadAll());
  }
  return "!INCLUDE NOT FOUND '" + source + "'!";
}

}  // namespace

std::string CommonProvider::ProvideData(ParserElement& Element, std::shared_ptr<FileSystem>& FileSystemObject) {
  int step = 1;
  try {
    if (Element.ElementType() != ParserElement::DataTag) return {};
    // The type is checked before the condition, so a tag without one reports that first.
    if (!Element.HasParameter("type")) return "!MISSING Type PROPERTY!";
    if (Element.HasParameter("condition")) {
      step = 2;
      ElementCondition condition;
      condition.Load(required(Element, "condition"));
      if (condition.ElementConditionType == ectNone) return "!INVALID CONDITION TYPE!";
      if (!condition.Evaluate(mCurrentItem, mNamespaceDef, *project())) return {};
    }
    const std::string type = text::toLower(required(Element, "type"));
    if (type.find(':') != std::string::npos) return {};

    if (type == "phrase") {
      step = 3;
      std::string phrase = project()->Phrase(required(Element, "name"));
      if (phrase.find("%%") != std::string::npos) phrase = ParseForProperties(phrase);
      return phrase;
    }
    if (type == "include") {
      step = 8;
      const auto docType = project()->CurrentDocType();
      if (!docType) throw ObjectNotSet();
      return includedFile(docType->Template()->RootFolder(), required(Element, "source"));
    }
    if (type == "variable") {
      step = 4;
      return GetProperty(required(Element, "name"));
    }
    if (type == "scrap") {
      step = 5;
      return expandScrap(project()->Scrap(required(Element, "name")));
    }
    if (type == "tableofcontents") {
      step = 14;
      const auto p = project();
      const std::string bookPrefix = optional(Element, "BookPrefix"), bookSuffix = optional(Element, "BookSuffix");
      const std::string nodeScrap = optional(Element, "NodeScrap");
      // Without any markup of its own the tag writes the sitemap's books; a suffix alone is dropped.
      if (bookPrefix.empty() && bookSuffix.empty() && nodeScrap.empty()) {
        p->TOCBookPrefix = "<UL>";
        p->TOCBookSuffix = "</UL>";
        p->TOCNodeScrap.clear();
        p->TOCSuffix.clear();
      } else {
        p->TOCBookPrefix = bookPrefix;
        p->TOCBookSuffix = bookSuffix;
        p->TOCNodeScrap = nodeScrap;
        p->TOCSuffix = optional(Element, "Suffix");
      }
      p->BuildTOC(FileSystemObject);
      return std::string(ParserTemplate::Discard);
    }
    if (type == "indexcontent") {
      step = 15;
      project()->BuildIndex(FileSystemObject, optional(Element, "scrap"));
      return std::string(ParserTemplate::Discard);
    }
    if (type == "index") {
      step = 16;
      const std::string scrap = optional(Element, "scrap");
      project()->StreamContent(FileSystemObject, scrap.empty() ? "Index" : "Index:" + scrap);
      return std::string(ParserTemplate::Discard);
    }
    if (type == "filessection" || type == "mapsection" || type == "aliassection") {
      step = type == "filessection" ? 17 : type == "mapsection" ? 18 : 19;
      const char* content = type == "filessection" ? "Files" : type == "mapsection" ? "MAP" : "ALIAS";
      project()->StreamContent(FileSystemObject, content);
      return std::string(ParserTemplate::Discard);
    }
    if (type == "designlist") {
      step = 9;
      if (designSkipped() || !ForEdit) return std::string(ParserTemplate::Discard);
      std::string list = project()->Scrap("_DESIGN_LIST");
      if (const std::string* itemType = Element.Parameters().Find("itemtype"))
        list = text::replaceAll(list, "%%itemtype%%", *itemType);
      if (const std::string* identifier = Element.Parameters().Find("tagidentifier"))
        list = text::replaceAll(list, "%%tagidentifier%%", *identifier);
      return list;
    }
    if (type == "designbanner") {
      step = 10;
      if (!ForEdit) return std::string(ParserTemplate::Discard);
      const auto p = project();
      std::string banner = p->Scrap("_DESIGN_SUPPORT");
      if (!DesignBanner.empty())
        banner += text::replaceAllIgnoringCase(p->Scrap("_DESIGN_BANNER"), "%%bannercontents%%", DesignBanner);
      return banner;
    }
    if (type == "xml") {
      step = 11;
      return xmlTag(Element);
    }
    if (type == "checkforfile") {
      step = 12;
      const std::string name = optional(Element, "filename");
      if (name.empty()) return std::string(ParserTemplate::Discard);
      const FileSystem base(withTrailingSlash(project()->OutputFolder()));
      FileSystem file;
      file.MakeRelativeTo(&base);
      file.FileName(name);
      if (!file.Exists()) return std::string(ParserTemplate::Discard);
      return text::equalsIgnoreCase(optional(Element, "relative"), "false") ? file.FileName() : file.RelativeName();
    }
    if (type == "examplecode") {
      step = 13;
      if (!TypeMatch(mCurrentItem, "Example")) return {};
      // An item that only calls itself an example has no code to show.
      const auto example = std::dynamic_pointer_cast<Example>(mCurrentItem);
      if (!example) throw ObjectNotSet();
      const auto p = project();
      const std::string projectFolder = p->KVProjectFileName ? p->KVProjectFileName->Folder() : std::string();
      return ProtectPercent(ExampleHtml(*example, projectFolder, true, ExampleWrapLength));
    }
    if (type == "helpprojecttitle") {
      step = 6;
      const std::string title = project()->ProjectGroupName();
      return text::equalsIgnoreCase(optional(Element, "escaped"), "true") ? EscapeText(title) : title;
    }
    if (type == "communityprojectkey" || type == "communitybaseurl" || type == "communityproxytargeturl" ||
        type == "communityitemid") {
      step = 7;
      return GetProperty(type);
    }
    step = 14;
    if (auto answer = itemTag(type, Element)) return *answer;
    return {};
  } catch (...) {
    return "!ERROR " + std::to_string(currentFailureNumber()) + "." + std::to_string(step) + " FETCHING ELEMENT!";
  }
}

std::string CommonProvider::xmlTag(const ParserElement& Element) {
  const auto p = project();
  XmlTagRequest request;
  request.XmlFile = p->FromRelativeFileNAme(optional(Element, "file"));
  request.XslParameter = optional(Element, "xslfile");
  if (!request.XslParameter.empty()) request.XslFile = p->FromRelativeFileNAme(request.XslParameter);
  request.Colorized = switchOn(Element, "colorized");
  request.Dynamic = switchOn(Element, "dynamic");
  request.XPath = optional(Element, "xpath");
  request.ConfigPath = ConfigurationRoot::instance().ConfigPath();
  const XmlTagResult result = RenderXmlTag(request);
  for (const std::string& error : result.Errors) p->RaiseBuildError(error, KVError);
  if (!result.HasDocument) return std::string(ParserTemplate::Discard);

  const std::string scrapName = optional(Element, "scrap");
  const std::string scrap = p->Scrap(!scrapName.empty() ? scrapName : request.Dynamic ? "_XML_DYNAMIC" : "_XML_STATIC");
  return XmlInScrap(scrap, optional(Element, "caption"), result.Html);
}

}  // namespace kv
