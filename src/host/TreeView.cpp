#include "host/TreeView.h"

#include "kavrel/Failure.h"

namespace kv {

class MemoryTreeView::MemoryNode : public TreeNode, public std::enable_shared_from_this<MemoryNode> {
 public:
  MemoryNode(MemoryTreeView& view, std::string key, std::shared_ptr<MemoryNode> parent)
      : mView(view), mKey(std::move(key)), mParent(std::move(parent)) {}

  std::string Key() const override { return mKey; }
  std::shared_ptr<TreeNode> Parent() const override { return mParent.lock(); }
  bool Expanded() const override { return mExpanded; }
  void Expanded(bool on) override { mExpanded = on; }
  bool Selected() const override { return mView.mSelected.lock().get() == this; }
  void Selected(bool on) override {
    if (on) {
      mView.mSelected = shared_from_this();
    } else if (Selected()) {
      mView.mSelected.reset();
    }
  }

 private:
  friend class MemoryTreeView;
  MemoryTreeView& mView;
  std::string mKey;
  std::weak_ptr<MemoryNode> mParent;
  bool mExpanded = false;
};

std::shared_ptr<TreeNode> MemoryTreeView::Add(std::string_view parentKey, std::string key) {
  if (mNodes.count(key)) throw Failure(35602, "Key is not unique in collection");
  std::shared_ptr<MemoryNode> parent;
  if (!parentKey.empty()) {
    auto it = mNodes.find(parentKey);
    if (it == mNodes.end()) throw Failure(35601, "Element not found");
    parent = it->second;
  }
  auto node = std::make_shared<MemoryNode>(*this, key, parent);
  mNodes.emplace(std::move(key), node);
  return node;
}

std::shared_ptr<TreeNode> MemoryTreeView::SelectedItem() const {
  return mSelected.lock();
}

std::shared_ptr<TreeNode> MemoryTreeView::Node(std::string_view key) const {
  auto it = mNodes.find(key);
  return it == mNodes.end() ? nullptr : it->second;
}

}  // namespace kv
