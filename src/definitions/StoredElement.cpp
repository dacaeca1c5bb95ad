#include "kavrel/StoredElement.h"

#include "kavrel/Text.h"
#include "kavrel/XmlDocument.h"

namespace kv {

void StoredElement::Read(const XMLNode& e) {
  Name = e.Name();
  Attributes.clear();
  Children.clear();
  const XMLAttributes attributes = e.Attributes();
  for (long i = 1; i <= attributes.Count(); ++i) {
    const XMLAttribute attr = attributes.Item(i);
    Attributes.emplace_back(attr.Name(), attr.Value());
  }
  for (const XMLNode& child : e.ChildNodes()) {
    StoredElement stored;
    stored.Read(child);
    Children.push_back(std::move(stored));
  }
  Text = Children.empty() ? e.Text() : std::string();
}

void StoredElement::Write(XMLNode& e) const {
  for (const auto& [name, value] : Attributes) e.SetAttribute(name, value);
  if (!Text.empty()) e.Text(Text);
  for (const StoredElement& child : Children) {
    XMLNode added = e.AddChild(child.Name);
    child.Write(added);
  }
}

std::string StoredElement::Attribute(std::string_view name) const {
  for (const auto& [key, value] : Attributes)
    if (text::equalsIgnoreCase(key, name)) return value;
  return {};
}

}  // namespace kv
