#include "template/XmlTagRendering.h"

#include <libxml/parser.h>
#include <libxml/xmlsave.h>
#include <libxml/xpath.h>
#include <libxslt/documents.h>
#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/xslt.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>

#include <climits>
#include <memory>
#include <optional>

#include "files/EscapeText.h"
#include "kavrel/Failure.h"
#include "kavrel/FileSystem.h"
#include "kavrel/Text.h"

namespace kv {

namespace {

struct DocFree {
  void operator()(xmlDoc* d) const { xmlFreeDoc(d); }
};
struct StyleFree {
  void operator()(xsltStylesheet* s) const { xsltFreeStylesheet(s); }
};
struct ContextFree {
  void operator()(xsltTransformContext* c) const { xsltFreeTransformContext(c); }
};
struct XPathContextFree {
  void operator()(xmlXPathContext* c) const { xmlXPathFreeContext(c); }
};
struct XPathObjectFree {
  void operator()(xmlXPathObject* o) const { xmlXPathFreeObject(o); }
};
using Doc = std::unique_ptr<xmlDoc, DocFree>;
using Style = std::unique_ptr<xsltStylesheet, StyleFree>;

const xmlChar* xml(const char* s) {
  return reinterpret_cast<const xmlChar*>(s);
}

void discardMessage(void*, const char*, ...) {}

// libxml2 and libxslt print their complaints to the standard error unless told otherwise; the
// tag reports in its own words, so their messages are dropped while it works.
class QuietErrors {
 public:
  QuietErrors() {
    xmlSetGenericErrorFunc(nullptr, discardMessage);
    xsltSetGenericErrorFunc(nullptr, discardMessage);
  }
  ~QuietErrors() {
    xmlSetGenericErrorFunc(nullptr, nullptr);
    xsltSetGenericErrorFunc(nullptr, nullptr);
  }
  QuietErrors(const QuietErrors&) = delete;
  QuietErrors& operator=(const QuietErrors&) = delete;
};

xsltDocLoaderFunc gLibraryLoader = nullptr;

// Documents a stylesheet reads (imports, document()) load without network and without external
// DTDs or entities, whatever libxslt would ask for.
xmlDocPtr safeLoader(const xmlChar* uri, xmlDictPtr dict, int options, void* ctxt, xsltLoadType type) {
  options = (options | XML_PARSE_NONET) & ~(XML_PARSE_NOENT | XML_PARSE_DTDLOAD | XML_PARSE_DTDATTR);
  return gLibraryLoader(uri, dict, options, ctxt, type);
}

// What a stylesheet may do: read local files, nothing else outside its own output.
xsltSecurityPrefsPtr securityPrefs() {
  static xsltSecurityPrefsPtr prefs = [] {
    xsltInit();
    xsltSecurityPrefsPtr p = xsltNewSecurityPrefs();
    if (!p) throw std::bad_alloc();
    xsltSetSecurityPrefs(p, XSLT_SECPREF_WRITE_FILE, xsltSecurityForbid);
    xsltSetSecurityPrefs(p, XSLT_SECPREF_CREATE_DIRECTORY, xsltSecurityForbid);
    xsltSetSecurityPrefs(p, XSLT_SECPREF_READ_NETWORK, xsltSecurityForbid);
    xsltSetSecurityPrefs(p, XSLT_SECPREF_WRITE_NETWORK, xsltSecurityForbid);
    // Imports are checked against the default preferences, so they become the process's rule.
    xsltSetDefaultSecurityPrefs(p);
    gLibraryLoader = xsltDocDefaultLoader;
    xsltSetLoaderFunc(safeLoader);
    return p;
  }();
  return prefs;
}

// Parses text as MSXML's LoadXML does here: no network, no DTD, no entity expansion.
Doc parse(const std::string& text, const char* url = nullptr) {
  if (text.size() > INT_MAX) return nullptr;
  xmlParserCtxtPtr ctxt = xmlNewParserCtxt();
  if (!ctxt) throw std::bad_alloc();
  constexpr int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
  Doc doc(xmlCtxtReadMemory(ctxt, text.data(), int(text.size()), url, "UTF-8", options));
  const bool wellFormed = doc && ctxt->wellFormed && xmlDocGetRootElement(doc.get());
  xmlFreeParserCtxt(ctxt);
  return wellFormed ? std::move(doc) : nullptr;
}

// A stylesheet from a parsed document, which it then owns; nullptr when it is no stylesheet.
Style compile(Doc doc) {
  securityPrefs();
  Style style(xsltParseStylesheetDoc(doc.get()));
  if (style) doc.release();
  return style;
}

// The document transformed and written out as the stylesheet's output method says, or nothing
// when the transform fails (a forbidden write included).
std::optional<std::string> transform(xsltStylesheet* style, xmlDoc* doc) {
  std::unique_ptr<xsltTransformContext, ContextFree> ctxt(xsltNewTransformContext(style, doc));
  if (!ctxt) throw std::bad_alloc();
  if (xsltSetCtxtSecurityPrefs(securityPrefs(), ctxt.get()) != 0) return std::nullopt;
  Doc result(xsltApplyStylesheetUser(style, doc, nullptr, nullptr, nullptr, ctxt.get()));
  if (!result || ctxt->state != XSLT_STATE_OK) return std::nullopt;
  xmlChar* buffer = nullptr;
  int size = 0;
  if (xsltSaveResultToString(&buffer, &size, result.get(), style) != 0) return std::nullopt;
  std::string out(buffer ? reinterpret_cast<const char*>(buffer) : "", std::size_t(buffer ? size : 0));
  xmlFree(buffer);
  return out;
}

// The document's text, with the declaration only when its source had one.
std::string documentXml(xmlDoc* doc, bool declaration) {
  xmlBufferPtr buffer = xmlBufferCreate();
  if (!buffer) throw std::bad_alloc();
  xmlSaveCtxtPtr save = xmlSaveToBuffer(buffer, "UTF-8", declaration ? 0 : XML_SAVE_NO_DECL);
  if (!save) {
    xmlBufferFree(buffer);
    throw std::bad_alloc();
  }
  xmlSaveDoc(save, doc);
  xmlSaveClose(save);
  std::string out(reinterpret_cast<const char*>(xmlBufferContent(buffer)), std::size_t(xmlBufferLength(buffer)));
  xmlBufferFree(buffer);
  while (!out.empty() && out.back() == '\n') out.pop_back();
  return out;
}

bool hasDeclaration(const std::string& text) {
  std::size_t i = text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
  return text.compare(i, 5, "<?xml") == 0;
}

Style configurationStylesheet(const std::string& path) {
  FileSystem file(path);
  Doc doc = file.Exists() ? parse(file.ReadAll(), path.c_str()) : nullptr;
  Style style = doc ? compile(std::move(doc)) : nullptr;
  if (!style)
    throw Failure(err::FileNotFound, "The stylesheet '" + path + "' of the configuration could not be loaded");
  return style;
}

// The copy of the first node `xpath` selects as a document of its own, for transforming that
// node; the text of a node that is not an element; nothing when nothing is selected.
struct Selected {
  Doc doc;
  std::string text;
};
std::optional<Selected> selectSingleNode(xmlDoc* doc, const std::string& xpath) {
  std::unique_ptr<xmlXPathContext, XPathContextFree> ctxt(xmlXPathNewContext(doc));
  if (!ctxt) throw std::bad_alloc();
  std::unique_ptr<xmlXPathObject, XPathObjectFree> found(xmlXPathEvalExpression(xml(xpath.c_str()), ctxt.get()));
  if (!found || found->type != XPATH_NODESET || !found->nodesetval || found->nodesetval->nodeNr == 0)
    return std::nullopt;
  xmlNodePtr node = found->nodesetval->nodeTab[0];
  Selected s;
  if (node->type == XML_DOCUMENT_NODE) {
    s.doc.reset(xmlCopyDoc(doc, 1));
  } else if (node->type == XML_ELEMENT_NODE) {
    s.doc.reset(xmlNewDoc(xml("1.0")));
    if (!s.doc) throw std::bad_alloc();
    xmlDocSetRootElement(s.doc.get(), xmlDocCopyNode(node, s.doc.get(), 1));
  } else {
    xmlChar* content = xmlNodeGetContent(node);
    s.text = EscapeText(content ? reinterpret_cast<const char*>(content) : "");
    xmlFree(content);
  }
  return s;
}

std::string coloured(xmlDoc* doc, const XmlTagRequest& r, const std::string& messagePath, XmlTagResult& result) {
  const Style style = configurationStylesheet(withTrailingSlash(r.ConfigPath) +
                                              (r.Dynamic ? "xmltohtml_dynamic.xsl" : "xmltohtml_static.xsl"));
  std::optional<std::string> text;
  if (r.XPath.empty()) {
    text = transform(style.get(), doc);
  } else {
    std::optional<Selected> node = selectSingleNode(doc, r.XPath);
    if (node) text = node->doc ? transform(style.get(), node->doc.get()) : node->text;
    if (!text) {
      result.Errors.push_back("Could not resolve XPath '" + r.XPath + "' in XML File '" + messagePath +
                              "'. Content referencing this file and XPath will be missing.");
      text = "";
    }
  }
  if (!text) throw Failure(err::InvalidProcedureCall, "The document could not be coloured");
  while (!text->empty() && text->back() == '\n') text->pop_back();  // the HTML writer's last line end
  return (r.Dynamic ? "<div class=\"dynamicxml\">" : "<div class=\"colorizedxml\">") + *text + "</div>";
}

// Reads a file the tag names, or says it is missing.
std::optional<std::string> readFile(const std::string& path, const char* what, XmlTagResult& result) {
  FileSystem file(path);
  if (file.Exists()) return file.ReadAll();
  result.Errors.push_back(std::string(what) + " File '" + file.FileName() +
                          "' could not be found. Content referencing this file will be missing.");
  return std::nullopt;
}

}  // namespace

std::string XmlInScrap(std::string scrap, std::string_view caption, std::string_view html) {
  if (scrap.starts_with("!MISSING")) scrap = "<div class=\"formattedxml\" onclick=\"javascript:cl()\">%%XML%%</div>";
  scrap = text::replaceAllIgnoringCase(scrap, "%%Caption%%", caption.empty() ? "&nbsp;" : caption);
  return text::replaceAll(scrap, "%%XML%%", text::replaceAll(html, "%", "/%"));
}

XmlTagResult RenderXmlTag(const XmlTagRequest& r) {
  XmlTagResult result;
  QuietErrors quiet;
  const std::optional<std::string> xmlText = readFile(r.XmlFile, "XML", result);
  std::optional<std::string> xslText;
  if (!r.XslFile.empty()) xslText = readFile(r.XslFile, "XSL", result);
  if (!xmlText || (!r.XslFile.empty() && !xslText) || xmlText->empty()) return result;
  // Messages name the last file looked for: the stylesheet, when there is one.
  const std::string messagePath = r.XslFile.empty() ? r.XmlFile : r.XslFile;
  const std::string notLoaded = "XML File '" + messagePath +
                                "' could not be loaded - it may contain invalid XML. Content referencing this file "
                                "will be missing.";

  Doc doc = parse(*xmlText, r.XmlFile.c_str());
  if (!doc) {
    result.Errors.push_back(notLoaded);
    return result;
  }
  bool declaration = hasDeclaration(*xmlText);
  if (xslText && !xslText->empty()) {
    Doc xslDoc = parse(*xslText, r.XslFile.c_str());
    if (!xslDoc) {
      result.Errors.push_back(notLoaded);
      return result;
    }
    const Style style = compile(std::move(xslDoc));
    const std::optional<std::string> output = style ? transform(style.get(), doc.get()) : std::nullopt;
    doc = output ? parse(*output) : nullptr;
    if (!doc) {
      result.Errors.push_back("The result of XML File '" + messagePath + "' transformed by XSL '" + r.XslParameter +
                              "' could not be loaded - it may contain invalid XML. Content referencing these files "
                              "will be missing.");
      return result;
    }
    declaration = hasDeclaration(*output);
  }

  result.HasDocument = true;
  result.Html = r.Colorized ? coloured(doc.get(), r, messagePath, result)
                            : "<pre class=\"plainxml\">" + EscapeText(documentXml(doc.get(), declaration)) + "</pre>";
  return result;
}

}  // namespace kv
