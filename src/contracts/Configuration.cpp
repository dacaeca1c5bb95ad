#include "contracts/Configuration.h"

#include "contracts/XmlDocument.h"

namespace kv {

ConfigurationRoot& ConfigurationRoot::instance() {
  static ConfigurationRoot root;
  return root;
}

std::vector<std::shared_ptr<NamespaceDef>> NamespaceDefs::FindByName(std::string_view name) const {
  std::vector<std::shared_ptr<NamespaceDef>> found;
  for (const auto& def : *this) {
    if (text::equalsIgnoreCase(def->Name, name)) found.push_back(def);
    for (auto& below : def->ChildNamespaceDefs.FindByName(name)) found.push_back(std::move(below));
  }
  return found;
}

void NodeDef::ResolveReferences(const Collection<std::shared_ptr<NodeDef>>& /*nodeDefs*/) {
  // Node references are followed by the table of contents builder, which reads them by name.
}

}  // namespace kv

namespace kv {

void StoredElement::Read(const XMLNode& e) {
  Name = e.Name();
  Attributes.clear();
  Children.clear();
  const XMLAttributes attributes = e.Attributes();
  for (long i = 1; i <= attributes.Count(); ++i) {
    const XMLAttribute attribute = attributes.Item(i);
    Attributes.emplace_back(attribute.Name(), attribute.Value());
  }
  for (const XMLNode child : e.ChildNodes()) Children.emplace_back().Read(child);
  // Text of an element with children is theirs.
  Text = Children.empty() ? e.Text() : std::string();
}

void StoredElement::Write(XMLNode& e) const {
  for (const auto& [name, value] : Attributes) e.SetAttribute(name, value);
  if (!Text.empty()) e.Text(Text);
  for (const auto& child : Children) {
    XMLNode added = e.AddChild(child.Name);
    child.Write(added);
  }
}

std::string StoredElement::Attribute(std::string_view name) const {
  for (const auto& [key, value] : Attributes)
    if (text::equalsIgnoreCase(key, name)) return value;
  return {};
}

void NodeDef::Load(const XMLNode& e) {
  mContent.Read(e);
  Name = mContent.Attribute("Name");
}

void NodeDef::Save(XMLNode& e) const {
  mContent.Write(e);
  if (!Name.empty()) e.SetAttribute("Name", Name);
}

std::string TOCDefinition::SaveToText() const {
  XMLDocument doc;
  XMLNode root = doc.RootNode();
  root.Name("TOCDefinition");
  for (const auto& nodeDef : NodeDefs) {
    XMLNode child = root.AddChild("NodeDef");
    nodeDef->Save(child);
  }
  return doc.Xml();
}

void ModelComments::Load(const XMLNode& e) {
  for (const XMLNode child : e.ChildNodes()) {
    auto comment = std::make_shared<ModelComment>();
    comment->Content.Read(child);
    comment->NamespaceName = comment->Content.Attribute("NamespaceName");
    Items.Add(comment);
  }
}

void ModelComments::Save(XMLNode& e) const {
  for (const auto& comment : Items) {
    XMLNode child = e.AddChild(comment->Content.Name.empty() ? "ModelComment" : comment->Content.Name);
    comment->Content.Write(child);
    child.SetAttribute("NamespaceName", comment->NamespaceName);
  }
}

}  // namespace kv
