#include "kavrel/XmlDocument.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>

#include <climits>

#include "kavrel/Failure.h"
#include "kavrel/Text.h"

namespace kv {

namespace detail {
struct XmlOwner {
  explicit XmlOwner(xmlDocPtr d) : doc(d) {}
  ~XmlOwner() { xmlFreeDoc(doc); }
  XmlOwner(const XmlOwner&) = delete;
  XmlOwner& operator=(const XmlOwner&) = delete;
  xmlDocPtr doc;
};
}  // namespace detail

namespace {

const xmlChar* xml(std::string_view s) {
  return reinterpret_cast<const xmlChar*>(s.data());
}

std::string fromXml(const xmlChar* s) {
  return s ? std::string(reinterpret_cast<const char*>(s)) : std::string();
}

// Takes ownership of a string that libxml2 allocated.
std::string takeXml(xmlChar* s) {
  std::string out = fromXml(s);
  xmlFree(s);
  return out;
}

bool nameIs(const xmlChar* name, std::string_view wanted) {
  return text::equalsIgnoreCase(reinterpret_cast<const char*>(name), wanted);
}

xmlNodePtr nextElement(xmlNodePtr node) {
  while (node && node->type != XML_ELEMENT_NODE) node = node->next;
  return node;
}

xmlAttrPtr findAttribute(xmlNodePtr node, std::string_view name) {
  for (xmlAttrPtr attr = node->properties; attr; attr = attr->next)
    if (nameIs(attr->name, name)) return attr;
  return nullptr;
}

void requireName(std::string_view name) {
  if (name.empty() || xmlValidateName(xml(std::string(name).c_str()), 0) != 0)
    throw Failure(err::InvalidProcedureCall,
                  "Invalid procedure call or argument: '" + std::string(name) + "' is not an XML name");
}

std::shared_ptr<detail::XmlOwner> newOwner(xmlDocPtr doc) {
  if (!doc) throw std::bad_alloc();
  return std::make_shared<detail::XmlOwner>(doc);
}

}  // namespace

// ---------------------------------------------------------------------------------------------

std::string XMLAttribute::Name() const {
  return fromXml(mAttr->name);
}

std::string XMLAttribute::Value() const {
  return takeXml(xmlNodeGetContent(reinterpret_cast<xmlNodePtr>(mAttr)));
}

void XMLAttribute::Value(std::string_view value) {
  const std::string name = Name(), v(value);
  // xmlSetProp stores the value as text, without reading entity references in it.
  xmlSetProp(mAttr->parent, xml(name.c_str()), xml(v.c_str()));
}

// ---------------------------------------------------------------------------------------------

std::optional<XMLAttribute> XMLAttributes::Find(std::string_view name) const {
  xmlAttrPtr attr = findAttribute(mNode, name);
  if (!attr) return std::nullopt;
  return XMLAttribute(mOwner, attr);
}

XMLAttribute XMLAttributes::Item(std::string_view name) const {
  if (auto attr = Find(name)) return *attr;
  throw Failure(err::InvalidProcedureCall, "Invalid procedure call or argument: the element '" + fromXml(mNode->name) +
                                               "' has no attribute '" + std::string(name) + "'");
}

XMLAttribute XMLAttributes::Item(long index) const {
  long at = 1;
  for (xmlAttrPtr attr = mNode->properties; attr; attr = attr->next, ++at)
    if (at == index) return XMLAttribute(mOwner, attr);
  throw Failure(err::SubscriptOutOfRange, "Subscript out of range");
}

bool XMLAttributes::Exists(std::string_view name) const {
  return findAttribute(mNode, name) != nullptr;
}

std::string XMLAttributes::ValueOr(std::string_view name, std::string_view fallback) const {
  auto attr = Find(name);
  return attr ? attr->Value() : std::string(fallback);
}

long XMLAttributes::Count() const {
  long count = 0;
  for (xmlAttrPtr attr = mNode->properties; attr; attr = attr->next) ++count;
  return count;
}

// ---------------------------------------------------------------------------------------------

std::string XMLNode::Name() const {
  return fromXml(mNode->name);
}

void XMLNode::Name(std::string_view name) {
  requireName(name);
  xmlNodeSetName(mNode, xml(std::string(name).c_str()));
}

std::string XMLNode::Text() const {
  return takeXml(xmlNodeGetContent(mNode));
}

void XMLNode::Text(std::string_view text) {
  // Drops the children, then adds the text as it stands (no entity references are read in it).
  xmlNodeSetContent(mNode, nullptr);
  if (!text.empty()) xmlAddChild(mNode, xmlNewDocTextLen(mNode->doc, xml(text), static_cast<int>(text.size())));
}

XMLAttributes XMLNode::Attributes() const {
  return XMLAttributes(mOwner, mNode);
}

XMLNodes XMLNode::ChildNodes() const {
  return XMLNodes(mOwner, mNode);
}

void XMLNode::SetAttribute(std::string_view name, std::string_view value) {
  requireName(name);
  const std::string n(name), v(value);
  if (xmlAttrPtr existing = findAttribute(mNode, name); existing && fromXml(existing->name) != n)
    xmlNodeSetName(reinterpret_cast<xmlNodePtr>(existing), xml(n.c_str()));
  xmlSetProp(mNode, xml(n.c_str()), xml(v.c_str()));
}

XMLNode XMLNode::AddChild(std::string_view name) {
  requireName(name);
  xmlNodePtr child = xmlNewDocNode(mNode->doc, nullptr, xml(std::string(name).c_str()), nullptr);
  if (!child) throw std::bad_alloc();
  xmlAddChild(mNode, child);
  return XMLNode(mOwner, child);
}

XMLNode XMLNode::AppendCopy(const XMLNode& node) {
  xmlNodePtr copy = xmlDocCopyNode(node.mNode, mNode->doc, 1);
  if (!copy) throw std::bad_alloc();
  xmlAddChild(mNode, copy);
  return XMLNode(mOwner, copy);
}

std::string XMLNode::Xml() const {
  xmlBufferPtr buffer = xmlBufferCreate();
  if (!buffer) throw std::bad_alloc();
  xmlNodeDump(buffer, mNode->doc, mNode, 0, 0);
  std::string out(reinterpret_cast<const char*>(xmlBufferContent(buffer)),
                  static_cast<size_t>(xmlBufferLength(buffer)));
  xmlBufferFree(buffer);
  return out;
}

// ---------------------------------------------------------------------------------------------

XMLNodes::iterator& XMLNodes::iterator::operator++() {
  mNode = nextElement(mNode->next);
  return *this;
}

XMLNodes::iterator XMLNodes::begin() const {
  return iterator(mOwner, nextElement(mParent->children));
}

void XMLNode::Remove() {
  xmlUnlinkNode(mNode);
  xmlFreeNode(mNode);
  mNode = nullptr;
}

long XMLNodes::Count() const {
  return static_cast<long>(xmlChildElementCount(mParent));
}

std::optional<XMLNode> XMLNodes::Find(std::string_view name) const {
  for (xmlNodePtr node = nextElement(mParent->children); node; node = nextElement(node->next))
    if (nameIs(node->name, name)) return XMLNode(mOwner, node);
  return std::nullopt;
}

XMLNode XMLNodes::Item(std::string_view name) const {
  if (auto node = Find(name)) return *node;
  throw Failure(err::InvalidProcedureCall, "Invalid procedure call or argument: the element '" +
                                               fromXml(mParent->name) + "' has no child element '" + std::string(name) +
                                               "'");
}

XMLNode XMLNodes::Item(long index) const {
  long position = 1;
  for (xmlNodePtr node = nextElement(mParent->children); node; node = nextElement(node->next), ++position)
    if (position == index) return XMLNode(mOwner, node);
  throw Failure(err::SubscriptOutOfRange, "Subscript out of range: the element '" + fromXml(mParent->name) +
                                              "' has no child element " + std::to_string(index));
}

// ---------------------------------------------------------------------------------------------

XMLDocument::XMLDocument() {
  xmlInitParser();
  xmlDocPtr doc = xmlNewDoc(xml("1.0"));
  mOwner = newOwner(doc);
  xmlNodePtr root = xmlNewDocNode(doc, nullptr, xml("root"), nullptr);
  if (!root) throw std::bad_alloc();
  xmlDocSetRootElement(doc, root);
}

XMLNode XMLDocument::RootNode() const {
  return XMLNode(mOwner, xmlDocGetRootElement(mOwner->doc));
}

bool XMLDocument::LoadXML(std::string_view text) {
  if (text.size() > INT_MAX) {
    mParseError = "Line 0: the text is too long";
    return false;
  }
  xmlParserCtxtPtr ctxt = xmlNewParserCtxt();
  if (!ctxt) throw std::bad_alloc();
  // No network, no DTD loading, no entity expansion and libxml2's limits against entity
  // amplification left on (no XML_PARSE_HUGE). Errors are collected, not printed.
  constexpr int options = XML_PARSE_NONET | XML_PARSE_NOBLANKS | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
  xmlDocPtr doc = xmlCtxtReadMemory(ctxt, text.data(), static_cast<int>(text.size()), nullptr, "UTF-8", options);
  const bool wellFormed = doc && ctxt->wellFormed;
  if (wellFormed && xmlDocGetRootElement(doc)) {
    mOwner = newOwner(doc);
    mParseError.clear();
    xmlFreeParserCtxt(ctxt);
    return true;
  }
  const xmlError* error = xmlCtxtGetLastError(ctxt);
  std::string message = error && error->message ? error->message : "the text has no root element";
  while (!message.empty() && (message.back() == '\n' || message.back() == ' ')) message.pop_back();
  mParseError = "Line " + std::to_string(error ? error->line : 0) + ": " + message;
  if (doc) xmlFreeDoc(doc);
  xmlFreeParserCtxt(ctxt);
  return false;
}

std::string XMLDocument::Xml() const {
  xmlChar* buffer = nullptr;
  int size = 0;
  xmlDocDumpFormatMemoryEnc(mOwner->doc, &buffer, &size, "UTF-8", 1);
  std::string out(reinterpret_cast<const char*>(buffer), static_cast<size_t>(size));
  xmlFree(buffer);
  return out;
}

}  // namespace kv
