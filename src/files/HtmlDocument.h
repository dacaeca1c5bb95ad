// An HTML document on libxml2's HTML parser, which takes the loose markup of pages and comments:
// filled from text, searched for elements by tag name, its attributes read and written, its body
// written out again. Parsing is synchronous and never touches the network.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct _xmlDoc;
struct _xmlNode;

namespace kv {

class HtmlDocument {
 public:
  // One element of the document; valid while the document lives and its text is not replaced.
  class Element {
   public:
    std::optional<std::string> Attribute(std::string_view name) const;
    void SetAttribute(std::string_view name, std::string_view value);

   private:
    friend class HtmlDocument;
    explicit Element(_xmlNode* node) : mNode(node) {}
    _xmlNode* mNode;
  };

  HtmlDocument();
  explicit HtmlDocument(std::string_view html) : HtmlDocument() { Write(html); }
  ~HtmlDocument();
  HtmlDocument(const HtmlDocument&) = delete;
  HtmlDocument& operator=(const HtmlDocument&) = delete;

  // Replaces the whole document by `html` (UTF-8).
  void Write(std::string_view html);
  // The elements of that tag name (ignoring case), in document order.
  std::vector<Element> ElementsByTagName(std::string_view tag) const;
  // The markup inside the body element; "" without a body.
  std::string BodyInnerHTML() const;

 private:
  struct DocFree {
    void operator()(_xmlDoc* doc) const;
  };
  std::unique_ptr<_xmlDoc, DocFree> mDoc;
};

}  // namespace kv
