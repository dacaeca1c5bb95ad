#include "files/HtmlDocument.h"

#include <libxml/HTMLparser.h>
#include <libxml/HTMLtree.h>

#include "kavrel/Failure.h"

namespace kv {
namespace {

bool isElement(const xmlNode* node, std::string_view tag) {
  return node->type == XML_ELEMENT_NODE && xmlStrcasecmp(node->name, BAD_CAST std::string(tag).c_str()) == 0;
}

void collect(xmlNode* node, std::string_view tag, std::vector<xmlNode*>& out) {
  for (; node; node = node->next) {
    if (isElement(node, tag)) out.push_back(node);
    collect(node->children, tag, out);
  }
}

}  // namespace

void HtmlDocument::DocFree::operator()(_xmlDoc* doc) const {
  xmlFreeDoc(doc);
}

HtmlDocument::HtmlDocument() = default;
HtmlDocument::~HtmlDocument() = default;

void HtmlDocument::Write(std::string_view html) {
  const int options = HTML_PARSE_NONET | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NODEFDTD;
  mDoc.reset(htmlReadMemory(html.data(), int(html.size()), nullptr, "UTF-8", options));
}

std::vector<HtmlDocument::Element> HtmlDocument::ElementsByTagName(std::string_view tag) const {
  std::vector<xmlNode*> nodes;
  if (mDoc) collect(xmlDocGetRootElement(mDoc.get()), tag, nodes);
  std::vector<Element> elements;
  for (xmlNode* node : nodes) elements.push_back(Element(node));
  return elements;
}

std::string HtmlDocument::BodyInnerHTML() const {
  std::vector<xmlNode*> bodies;
  if (mDoc) collect(xmlDocGetRootElement(mDoc.get()), "body", bodies);
  if (bodies.empty()) return {};
  std::unique_ptr<xmlBuffer, void (*)(xmlBufferPtr)> buffer(xmlBufferCreate(), xmlBufferFree);
  if (!buffer) throw Failure(err::OutOfMemory, "Out of memory");
  for (xmlNode* child = bodies.front()->children; child; child = child->next)
    htmlNodeDump(buffer.get(), mDoc.get(), child);
  return std::string(reinterpret_cast<const char*>(xmlBufferContent(buffer.get())),
                     size_t(xmlBufferLength(buffer.get())));
}

std::optional<std::string> HtmlDocument::Element::Attribute(std::string_view name) const {
  xmlChar* value = xmlGetProp(mNode, BAD_CAST std::string(name).c_str());
  if (!value) return std::nullopt;
  std::string text(reinterpret_cast<const char*>(value));
  xmlFree(value);
  return text;
}

void HtmlDocument::Element::SetAttribute(std::string_view name, std::string_view value) {
  xmlSetProp(mNode, BAD_CAST std::string(name).c_str(), BAD_CAST std::string(value).c_str());
}

}  // namespace kv
