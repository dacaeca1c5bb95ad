#include "project/KVPropertyBag.h"

#include "files/XmlValues.h"

namespace kv {

std::string KVPropertyBag::PropertyValue(std::string_view Name, std::string_view DefaultValue) const {
  if (mValues->Exists(Name)) return mValues->Item(Name)->Value;
  return std::string(DefaultValue);
}

void KVPropertyBag::PropertyValue(std::string_view Name, std::string_view DefaultValue, std::string_view Value) {
  const bool exists = mValues->Exists(Name);
  if (exists && Value != DefaultValue) {
    auto& stored = mValues->Item(Name)->Value;
    if (stored != Value) {
      stored = Value;
      MarkProjectChanged(KVProject);
    }
  } else if (exists) {
    mValues->Remove(Name);
    MarkProjectChanged(KVProject);
  } else if (Value != DefaultValue) {
    mValues->Add(NewPropertyValue(Name, Value), Name);
    MarkProjectChanged(KVProject);
  }
}

void KVPropertyBag::Clear() {
  mValues = std::make_shared<kv::PropertyValues>();
}

std::shared_ptr<kv::PropertyValue> KVPropertyBag::NewPropertyValue(std::string_view Name, std::string_view Value) {
  auto value = std::make_shared<kv::PropertyValue>();
  value->Name = Name;
  value->Value = Value;
  return value;
}

}  // namespace kv

namespace kv {

void KVPropertyBag::Load(const XMLNode& e) {
  mValues = std::make_shared<kv::PropertyValues>();
  for (const XMLNode child : e.ChildNodes()) {
    if (child.Name() != "Property") continue;
    auto value = NewPropertyValue(xmlvalue::Attr(child, "Name"), child.Text());
    mValues->Add(value, value->Name);
  }
}

void KVPropertyBag::Save(XMLNode& e) const {
  for (const auto& value : *mValues) {
    XMLNode child = e.AddChild("Property");
    child.Text(value->Value);
    child.SetAttribute("Name", value->Name);
  }
}

}  // namespace kv
