#include "project/DocumentServices.h"

#include "kavrel/Text.h"
#include "project/AdditionalFiles.h"
#include "project/KVProject.h"

namespace kv {

std::shared_ptr<HtmlDocument> DocumentServices::NewDOM(std::string_view BodyHTML) {
  std::shared_ptr<HtmlDocument> dom;
  if (!mDOMCache.empty()) {
    dom = std::move(mDOMCache.back());
    mDOMCache.pop_back();
  } else {
    dom = std::make_shared<HtmlDocument>();
  }
  const std::string base = "file://" + text::replaceAll(mProject.OutputFolder(), " ", "%20");
  dom->Write(
      "<html xmlns:velmora xmlns:MSHelp=\"http://msdn.microsoft.com/mshelp\"><head><META "
      "HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; charset=UTF-8\"><base href=\"" +
      base + "\" /></head><body>" + std::string(BodyHTML) + "</body></html>");
  return dom;
}

std::shared_ptr<HtmlDocument> DocumentServices::CreateDOM(std::string_view HTML) {
  // The parser reads the text directly: there is no loading to wait for.
  return std::make_shared<HtmlDocument>(HTML);
}

void DocumentServices::RecycleDOM(std::shared_ptr<HtmlDocument> DOM) {
  if (DOM) mDOMCache.push_back(std::move(DOM));
}

std::string DocumentServices::VerifyIMGTags(const std::string& Text) {
  const auto dom = NewDOM(Text);
  bool changed = false;
  for (HtmlDocument::Element image : dom->ElementsByTagName("img")) {
    const std::optional<std::string> source = image.Attribute("src");
    if (!source) continue;
    std::string fileName = KVProject::IsFileURL(*source) ? KVProject::FileURLToFileName(*source) : *source;
    fileName = text::replaceAll(fileName, "\\", "/");
    const std::string shortName = fileName.substr(fileName.find_last_of('/') + 1);
    if (shortName.empty() || !mProject.AdditionalFiles || !mProject.AdditionalFiles->Exists(shortName)) continue;
    if (*source != shortName) {
      image.SetAttribute("src", shortName);
      changed = true;
    }
  }
  std::string result = changed ? dom->BodyInnerHTML() : Text;
  RecycleDOM(dom);
  return result;
}

}  // namespace kv
