#include "files/HtmlLinks.h"

#include <libxml/HTMLparser.h>
#include <libxml/HTMLtree.h>

#include <memory>

#include "kavrel/Failure.h"

namespace kv {
namespace {

struct DocFree {
  void operator()(xmlDoc* doc) const { xmlFreeDoc(doc); }
};

bool isAnchor(const xmlNode* node) {
  return node->type == XML_ELEMENT_NODE && xmlStrcasecmp(node->name, BAD_CAST "a") == 0;
}

void visit(xmlNode* node, const std::function<std::optional<std::string>(const std::string&)>& rewrite, bool& changed) {
  for (; node; node = node->next) {
    if (isAnchor(node)) {
      if (xmlChar* href = xmlGetProp(node, BAD_CAST "href")) {
        const std::string link(reinterpret_cast<const char*>(href));
        xmlFree(href);
        if (auto replacement = rewrite(link); replacement && *replacement != link) {
          xmlSetProp(node, BAD_CAST "href", BAD_CAST replacement->c_str());
          changed = true;
        }
      }
    }
    visit(node->children, rewrite, changed);
  }
}

}  // namespace

std::optional<std::string> RewriteAnchorLinks(
    std::string_view html, const std::function<std::optional<std::string>(const std::string& href)>& rewrite) {
  // No network, no added document type: the page comes back as it was apart from its links.
  const int options = HTML_PARSE_NONET | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NODEFDTD;
  std::unique_ptr<xmlDoc, DocFree> doc(htmlReadMemory(html.data(), int(html.size()), nullptr, "UTF-8", options));
  if (!doc) return std::nullopt;
  bool changed = false;
  visit(xmlDocGetRootElement(doc.get()), rewrite, changed);
  if (!changed) return std::nullopt;
  xmlChar* text = nullptr;
  int size = 0;
  htmlDocDumpMemoryFormat(doc.get(), &text, &size, 0);
  if (!text) throw Failure(err::OutOfMemory, "Out of memory");
  std::string out(reinterpret_cast<const char*>(text), std::size_t(size));
  xmlFree(text);
  return out;
}

}  // namespace kv
