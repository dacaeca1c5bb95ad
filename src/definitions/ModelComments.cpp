#include "definitions/ModelComments.h"

#include "definitions/DefinitionReading.h"
#include "kavrel/XmlDocument.h"

namespace kv {

using namespace reading;

void ModelComment::Load(const XMLNode& e) {
  ItemKind = readText(e, "ItemKind");
  ItemName = readText(e, "ItemName");
  TagIdentifier = readText(e, "TagIdentifier");
  OnlyIfBlank = readBool(e, "OnlyIfBlank", false);
  Text = e.Text();
}

void ModelComment::Save(XMLNode& e) const {
  e.SetAttribute("ItemKind", ItemKind);
  e.SetAttribute("ItemName", ItemName);
  e.SetAttribute("TagIdentifier", TagIdentifier);
  e.SetAttribute("OnlyIfBlank", boolText(OnlyIfBlank));
  if (!Text.empty()) e.Text(Text);
}

void ModelComments::Add(std::shared_ptr<ModelComment> Item, std::string_view Key, std::optional<long> Before,
                        std::optional<long> After) {
  mItems.Add(std::move(Item), Key, Before, After);
  RaiseDirtyStateChanged();
}

void ModelComments::Remove(long index) {
  mItems.Remove(index);
  RaiseDirtyStateChanged();
}

void ModelComments::Save(XMLNode& e) const {
  e.SetAttribute("Name", mName);
  for (const auto& comment : mItems) {
    XMLNode child = e.AddChild("ModelComment");
    comment->Save(child);
  }
}

void ModelComments::Load(const XMLNode& e) {
  mItems.Clear();
  for (const XMLNode& child : e.ChildNodes()) {
    if (!isElement(child, "ModelComment")) continue;
    auto comment = std::make_shared<ModelComment>();
    comment->Load(child);
    mItems.Add(comment);
  }
}

void ModelComments::Subscribe(std::weak_ptr<ModelCommentsEvents> subscriber) {
  mSubscribers.Add(std::move(subscriber));
}

void ModelComments::RaiseDirtyStateChanged() {
  mSubscribers.Raise([](ModelCommentsEvents& e) { e.DirtyStateChanged(); });
}

}  // namespace kv
