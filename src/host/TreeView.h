// The tree view of a host window, as far as saving and restoring the selected path needs it, and a
// simple in-memory tree for hosts without one of their own.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "kavrel/Text.h"

namespace kv {

class TreeNode {
 public:
  virtual ~TreeNode() = default;
  virtual std::string Key() const = 0;
  // nullptr for a root node.
  virtual std::shared_ptr<TreeNode> Parent() const = 0;
  virtual bool Expanded() const = 0;
  virtual void Expanded(bool on) = 0;
  virtual bool Selected() const = 0;
  virtual void Selected(bool on) = 0;
};

class TreeView {
 public:
  virtual ~TreeView() = default;
  // The selected node, or nullptr.
  virtual std::shared_ptr<TreeNode> SelectedItem() const = 0;
  // The node with the key, or nullptr (a host may also fail instead).
  virtual std::shared_ptr<TreeNode> Node(std::string_view key) const = 0;
};

// A tree kept in memory. Keys ignore case; at most one node is selected.
class MemoryTreeView : public TreeView {
 public:
  // Adds a node below `parentKey` (empty: a root node). Fails with 35602 when the key is taken
  // and with 35601 when the parent is unknown.
  std::shared_ptr<TreeNode> Add(std::string_view parentKey, std::string key);

  std::shared_ptr<TreeNode> SelectedItem() const override;
  std::shared_ptr<TreeNode> Node(std::string_view key) const override;

 private:
  class MemoryNode;
  std::map<std::string, std::shared_ptr<MemoryNode>, text::LessIgnoreCase> mNodes;
  std::weak_ptr<MemoryNode> mSelected;
};

}  // namespace kv
