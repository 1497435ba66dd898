#include <vq0300/LTree.h>

#include <algorithm>

#include "ModelRun.h"

// Each child keeps the position it was inserted with in m_nIndex, which no
// operation reads back; the test names it through a member pointer taken in
// an explicit instantiation, where access is not checked.
int LTree::*IndexMember();
template <int LTree::*Member>
struct IndexAccess {
  friend int LTree::*IndexMember() { return Member; }
};
template struct IndexAccess<&LTree::m_nIndex>;

namespace {

LObject g_objects[3];

struct Node {
  LTree* tree;
  int parent, index;  // parent: -1 for the root; index: position asked for at insertion
  LObject* payload;
  std::vector<int> children;  // those still in the list, in order
};

// A tree beside a model of its links: insertions at positions drawn with the
// edges, deletions and payload changes at any node, the root and detached
// nodes included; then every node's payload, parent, index and children.
void RunTreeOps(model::OpInput& in) {
  std::vector<Node> nodes{{new LTree, -1, 0, nullptr, {}}};
  while (!in.Done()) {
    const int op = in.Int(0, 3), k = in.Int(0, static_cast<int>(nodes.size()) - 1),
              p = in.Int(0, 3);
    LObject* const payload = p < 3 ? &g_objects[p] : nullptr;
    const int n = static_cast<int>(nodes[k].children.size()), index = op == 0 ? in.Index(n) : n;
    if (op <= 1) {  // InsertChild by the list's place rule, or InsertLast
      LTree* tree = nodes[k].tree;
      LTree* child = op == 0 ? tree->InsertChild(index, payload) : tree->InsertLast(payload);
      const int place = index >= 0 && index < n ? index : n;
      nodes[k].children.insert(nodes[k].children.begin() + place, static_cast<int>(nodes.size()));
      nodes.push_back({child, k, index, payload, {}});
    } else if (op == 2) {  // a leaf leaves its parent's list, if it is in one
      MODEL_CHECK(nodes[k].tree->Delete() == (n == 0 ? nodes[k].payload : nullptr));
      std::vector<int>& list = nodes[std::max(nodes[k].parent, 0)].children;
      if (n == 0) list.erase(std::remove(list.begin(), list.end(), k), list.end());
    } else {
      nodes[k].tree->SetTreeNode(payload);
      nodes[k].payload = payload;
    }
    for (const Node& node : nodes) {
      const int count = static_cast<int>(node.children.size());
      MODEL_CHECK(node.tree->GetTreeNode() == node.payload);
      MODEL_CHECK(node.tree->GetParent() == (node.parent < 0 ? nullptr : nodes[node.parent].tree));
      MODEL_CHECK(node.tree->*IndexMember() == node.index);
      MODEL_CHECK(node.tree->GetChildNumber() == count);
      for (int c = 0; c < count; ++c)
        MODEL_CHECK(node.tree->GetChild(c) == nodes[node.children[c]].payload);
      MODEL_CHECK(node.tree->GetLastChild() ==
                  (count ? nodes[node.children.back()].payload : nullptr));
      MODEL_CHECK(node.tree->GetChild(count) == nullptr);
    }
  }
  for (const Node& node : nodes) delete node.tree;  // the caller owns every node
}

}  // namespace

TEST(LTree, EveryOperationAgreesWithALinkModel) { model::RunSeeds(RunTreeOps, 30, 500); }
