// RBTree beside a std::set of its keys: inserts, deletes and rotations read
// from an OpInput; after each one the five red-black rules, the parent links,
// the in-order walk and every node's data are checked.
#pragma once

#include <vq0300/RBTree.h>

#include <cstring>
#include <deque>
#include <functional>
#include <set>

#include "ModelRun.h"

namespace rbmodel {

// A node with a key buffer that takes any key of a run, as Delete needs.
struct Slot {
  RBTreeNode node{};
  char key[8] = {};
};

// A key's data word follows from its text, so that a node's data can be
// checked wherever Delete has moved keys and data.
inline void* DataFor(const std::string& key) {
  return reinterpret_cast<void*>(std::hash<std::string>{}(key) | 1U);
}

// A new node for key in a slot that never moves; its parent and colour hold
// marks that an Insert refusing the node must leave alone.
inline RBTreeNode& NewNode(std::deque<Slot>& slots, const std::string& key) {
  Slot& slot = slots.emplace_back();
  slot.node = {nullptr, DataFor(key), 7, std::strcpy(slot.key, key.c_str()), &slot.node};
  return slot.node;
}

// Black height of the subtree at node, whose parent must be parent. A red
// node hangs under a black one, so the root is black.
inline int BlackHeight(const RBTreeNode* node, const RBTreeNode* parent) {
  if (node == nullptr) return 1;
  MODEL_CHECK(node->parent == parent);
  MODEL_CHECK(node->color <= 1);
  MODEL_CHECK(node->color == 0 || (parent != nullptr && parent->color == 0));
  const int left = BlackHeight(node->left, node);
  MODEL_CHECK(left == BlackHeight(node->right, node));
  return left + (node->color == 0 ? 1 : 0);
}

// Keys and colours in pre-order: the whole shape of a subtree.
inline std::string Shape(const RBTreeNode* n) {
  return n ? n->key + std::to_string(n->color) + Shape(n->left) + Shape(n->right) : ".";
}

inline void RunRBTreeOps(model::OpInput& in) {
  RBTree tree{};
  std::deque<Slot> slots;
  std::set<std::string> keys;
  while (!in.Done()) {
    const int op = in.Int(0, 4);
    std::string key = in.Text(3, "abcde");
    RBTreeNode* found = tree.Search(tree.root, &key[0]);
    MODEL_CHECK(found != nullptr ? key == found->key : keys.count(key) == 0);
    if (op <= 1) {  // parent and colour are set, or left alone on a refusal
      RBTreeNode& node = NewNode(slots, key);
      MODEL_CHECK(tree.Insert(&tree, &node) == (found == nullptr ? 1 : 0));
      MODEL_CHECK(found == nullptr || (node.color == 7 && node.parent == &node));
      keys.insert(key);
    } else if (op == 2 && found != nullptr) {  // with two children, the successor leaves
      RBTreeNode* leaving = found->left && found->right ? tree.Succesor(found) : found;
      MODEL_CHECK(tree.Delete(&tree, found) == leaving);
      keys.erase(key);
    } else if (op == 3 && found != nullptr) {  // a rotation, then its inverse
      const bool left = in.Bool();
      RBTreeNode* up = left ? found->right : found->left;
      const std::string before = Shape(tree.root);
      left ? tree.LeftRotate(&tree, found) : tree.RightRotate(&tree, found);
      if (up != nullptr) left ? tree.RightRotate(&tree, up) : tree.LeftRotate(&tree, up);
      MODEL_CHECK(Shape(tree.root) == before);
    } else if (op == 4) {  // null arguments answer null or 0 and change nothing
      RBTreeNode keyless{};
      for (bool refused :
           {tree.Succesor(nullptr) == nullptr, tree.Search(tree.root, nullptr) == nullptr,
            tree.Delete(&tree, nullptr) == nullptr, tree.Delete(nullptr, found) == nullptr,
            tree.Insert(&tree, &keyless) == 0, tree.Insert(nullptr, &keyless) == 0,
            tree.Insert(&tree, nullptr) == 0})
        MODEL_CHECK(refused);
      tree.LeftRotate(nullptr, found);
      tree.RightRotate(nullptr, found);
    }
    // The rules, the links, the walk against the keys and each node's data,
    // which follows the key wherever Delete has moved it.
    BlackHeight(tree.root, nullptr);
    auto want = keys.begin();
    for (RBTreeNode* n = tree.Minimum(tree.root); n != nullptr; n = tree.Succesor(n), ++want) {
      MODEL_CHECK(want != keys.end() && *want == n->key);
      MODEL_CHECK(n->data == DataFor(n->key));
    }
    MODEL_CHECK(want == keys.end());
    RBTreeNode* max = tree.Maximum(tree.root);
    MODEL_CHECK(max == nullptr ? keys.empty() : *keys.rbegin() == max->key);
  }
}

}  // namespace rbmodel
