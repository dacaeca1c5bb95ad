// What the XML tag shows: an XML file, transformed first by the author's stylesheet when the tag
// names one, either coloured through the configuration's stylesheets (xmltohtml_static.xsl,
// xmltohtml_dynamic.xsl) or as escaped text. Stylesheets run without network access and may not
// write files or create folders; reading local files (document()) is allowed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

struct XmlTagRequest {
  std::string XmlFile;       // the full path of the document
  std::string XslFile;       // the full path of the author's stylesheet; empty for none
  std::string XslParameter;  // the stylesheet as the tag names it, for messages
  bool Colorized = false;
  bool Dynamic = false;
  std::string XPath;       // the node to show instead of the whole document (coloured form only)
  std::string ConfigPath;  // the folder that holds the configuration's stylesheets
};

struct XmlTagResult {
  // False when there is nothing to show: a file is missing or does not load, or the document is
  // empty. Errors say why.
  bool HasDocument = false;
  // The coloured form in "<div class=\"colorizedxml\">" (or "dynamicxml" when dynamic), or the
  // escaped document in "<pre class=\"plainxml\">".
  std::string Html;
  // Build errors, each of error level, in the words the build log has always used.
  std::vector<std::string> Errors;
};

// Renders the document. A configuration stylesheet that is missing or broken is a failure of the
// installation, not of the project: it throws.
XmlTagResult RenderXmlTag(const XmlTagRequest& request);

// The rendered document in its wrapper scrap: a scrap that is missing from the template (its text
// begins "!MISSING") gives way to "<div class=\"formattedxml\" onclick=\"javascript:cl()\">%%XML%%</div>";
// "%%Caption%%" (any case) becomes the caption, "&nbsp;" when it is empty; then "%%XML%%" (this
// case only) becomes the document, each "%" of it written "/%" so that the page's expansion of
// references leaves the document alone.
std::string XmlInScrap(std::string scrap, std::string_view caption, std::string_view html);

}  // namespace kv
