#include <vq0300/LObjList.h>
#include <vq0300/LStack.h>
#include <vq0300/LTree.h>

#include <algorithm>

#include "ModelRun.h"

namespace {

LObject g_objects[3];

// The list and a stack, each beside a std::vector: list operations at
// positions drawn with the edges, pushes and pops, null entries among them;
// after each one the counts, the tail and every entry through both GetAt forms.
void RunListOps(model::OpInput& in) {
  LObjList list;
  LStack stack;
  std::vector<LObject*> want, stacked;
  while (!in.Done()) {
    const int op = in.Int(0, 7), n = static_cast<int>(want.size()), i = in.Index(n),
              pick = in.Int(0, 3);
    const bool inside = i >= 0 && i < n;
    LObject *const entry = pick < 3 ? &g_objects[pick] : nullptr, *const tail =
                                                                      n ? want.back() : nullptr;
    if (op == 0) {  // inside the list at i, anywhere else at the end
      MODEL_CHECK(list.Insert(i, entry) == 0);
      want.insert(want.begin() + (inside ? i : n), entry);
    } else if (op == 1) {
      list.SetAt(i, entry);
      if (inside) want[i] = entry;
    } else if (op == 2) {  // a miss, outside or at a null entry, answers the tail
      const bool hit = inside && want[i] != nullptr;
      MODEL_CHECK(list.Delete(i) == (hit ? want[i] : tail));
      if (hit) want.erase(want.begin() + i);
    } else if (op == 3) {
      MODEL_CHECK(list.RemoveTail() == tail);
      if (n > 0) want.pop_back();
    } else if (op <= 5) {
      list.AddTail(entry);
      want.push_back(entry);
    } else if (op == 6) {
      stack.Push(entry);
      stacked.push_back(entry);
    } else {  // an empty stack pops null
      MODEL_CHECK(stack.Pop() == (stacked.empty() ? nullptr : stacked.back()));
      if (!stacked.empty()) stacked.pop_back();
    }
    const LObjList& view = list;
    const int count = static_cast<int>(want.size());
    MODEL_CHECK(view.GetCount() == count);
    MODEL_CHECK(list.GetCount() == count);
    MODEL_CHECK(list.IsEmpty() == want.empty());
    MODEL_CHECK(list.GetTail() == (count ? want.back() : nullptr));
    MODEL_CHECK(list.GetAt(i) == (i >= 0 && i < count ? want[i] : nullptr));
    for (int at = 0; at < count; ++at) MODEL_CHECK(view.GetAt(at) == want[at]);
    MODEL_CHECK(stack.GetStackElement() == static_cast<int>(stacked.size()));
    MODEL_CHECK(stack.IsEmpty() == stacked.empty());
  }
}

struct Node {
  LTree* tree;
  int parent;  // -1 for the root
  LObject* payload;
  std::vector<int> children;  // those still in the list, in order
};

// A tree beside a model of its links: insertions at positions drawn with the
// edges, deletions and payload changes at any node, the root and detached
// nodes included; then every node's payload, parent and children.
void RunTreeOps(model::OpInput& in) {
  std::vector<Node> nodes{{new LTree, -1, nullptr, {}}};
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
      nodes.push_back({child, k, payload, {}});
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

TEST(LObjList, ListAndStackAgreeWithVectors) { model::RunSeeds(RunListOps, 40, 800); }

TEST(LTree, EveryOperationAgreesWithALinkModel) { model::RunSeeds(RunTreeOps, 30, 500); }
