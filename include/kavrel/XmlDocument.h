// XML documents for the project and comment files. Parsing never touches the network and never
// loads external entities or DTDs; entity references are not expanded. Lookup of attributes and
// child elements by name ignores case, because readers and writers of the files spell several
// names differently. Nodes, attribute lists and attributes keep their document alive.
#pragma once

#include <cstddef>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "kavrel/Export.h"

// libxml2's tree types, without its headers.
struct _xmlDoc;
struct _xmlNode;
struct _xmlAttr;

namespace kv {

namespace detail {
struct XmlOwner;  // holds the libxml2 document
}

class KV_API XMLAttribute {
 public:
  std::string Name() const;
  std::string Value() const;
  void Value(std::string_view value);

 private:
  friend class XMLAttributes;
  XMLAttribute(std::shared_ptr<detail::XmlOwner> owner, _xmlAttr* attr) : mOwner(std::move(owner)), mAttr(attr) {}
  std::shared_ptr<detail::XmlOwner> mOwner;
  _xmlAttr* mAttr;
};

class KV_API XMLAttributes {
 public:
  // The attribute of that name (case ignored); fails with "Invalid procedure call or argument"
  // (5) naming the attribute and the element when there is none.
  XMLAttribute Item(std::string_view name) const;
  // The attribute at a 1-based position; fails with "Subscript out of range" (9).
  XMLAttribute Item(long index) const;
  std::optional<XMLAttribute> Find(std::string_view name) const;
  bool Exists(std::string_view name) const;
  // The value, or `fallback` when there is no such attribute.
  std::string ValueOr(std::string_view name, std::string_view fallback = {}) const;
  long Count() const;

 private:
  friend class XMLNode;
  XMLAttributes(std::shared_ptr<detail::XmlOwner> owner, _xmlNode* node) : mOwner(std::move(owner)), mNode(node) {}
  std::shared_ptr<detail::XmlOwner> mOwner;
  _xmlNode* mNode;
};

class XMLNodes;

// One element.
class KV_API XMLNode {
 public:
  std::string Name() const;
  void Name(std::string_view name);
  // All text inside the element. Writing replaces the element's content with the text.
  std::string Text() const;
  void Text(std::string_view text);

  XMLAttributes Attributes() const;
  XMLNodes ChildNodes() const;
  // Adds the attribute, or replaces the value of one whose name matches ignoring case (the
  // name then takes the spelling given here).
  void SetAttribute(std::string_view name, std::string_view value);
  XMLNode AddChild(std::string_view name);
  // Appends a copy of `node` and everything in it, from this document or another, as the last
  // child; returns the copy.
  XMLNode AppendCopy(const XMLNode& node);
  // Takes the element and everything in it out of its document; the object is of no use after.
  void Remove();
  // The element and everything in it as XML text, without a declaration.
  std::string Xml() const;

  friend bool operator==(const XMLNode& a, const XMLNode& b) { return a.mNode == b.mNode; }

 private:
  friend class XMLDocument;
  friend class XMLNodes;
  XMLNode(std::shared_ptr<detail::XmlOwner> owner, _xmlNode* node) : mOwner(std::move(owner)), mNode(node) {}
  std::shared_ptr<detail::XmlOwner> mOwner;
  _xmlNode* mNode;
};

// The child elements of an element, in document order.
class KV_API XMLNodes {
 public:
  class iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = XMLNode;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = XMLNode;

    iterator() = default;
    XMLNode operator*() const { return XMLNode(mOwner, mNode); }
    iterator& operator++();
    iterator operator++(int) {
      iterator old = *this;
      ++*this;
      return old;
    }
    friend bool operator==(const iterator& a, const iterator& b) { return a.mNode == b.mNode; }

   private:
    friend class XMLNodes;
    iterator(std::shared_ptr<detail::XmlOwner> owner, _xmlNode* node) : mOwner(std::move(owner)), mNode(node) {}
    std::shared_ptr<detail::XmlOwner> mOwner;
    _xmlNode* mNode = nullptr;
  };

  long Count() const;
  // The first child element of that name (case ignored); fails with "Invalid procedure call or
  // argument" (5) when there is none.
  XMLNode Item(std::string_view name) const;
  // The child element at a 1-based position; fails with "Subscript out of range" (9).
  XMLNode Item(long index) const;
  std::optional<XMLNode> Find(std::string_view name) const;
  bool Exists(std::string_view name) const { return Find(name).has_value(); }

  iterator begin() const;
  iterator end() const { return iterator(mOwner, nullptr); }

 private:
  friend class XMLNode;
  XMLNodes(std::shared_ptr<detail::XmlOwner> owner, _xmlNode* parent) : mOwner(std::move(owner)), mParent(parent) {}
  std::shared_ptr<detail::XmlOwner> mOwner;
  _xmlNode* mParent;
};

class KV_API XMLDocument {
 public:
  // A new document with one root element, named "root" until its name is written.
  XMLDocument();

  XMLNode RootNode() const;
  // Parses UTF-8 text (an encoding in the declaration is not applied: the text is UTF-8 already).
  // On failure the document stays as it was and ParseError tells why.
  bool LoadXML(std::string_view text);
  // "Line N: message" for the last failed LoadXML, "" after a success.
  std::string ParseError() const { return mParseError; }
  // The document as UTF-8 text with its declaration, indented.
  std::string Xml() const;

 private:
  std::shared_ptr<detail::XmlOwner> mOwner;
  std::string mParseError;
};

}  // namespace kv
