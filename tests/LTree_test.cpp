#include <vq0300/LTree.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<LObject*> Payloads(LTree& node) {
  std::vector<LObject*> out;
  for (int i = 0; i < node.GetChildNumber(); ++i) out.push_back(node.GetChild(i));
  return out;
}

}  // namespace

TEST(LTree, InsertChildFollowsTheListPlaceRule) {
  LObject a, b, x;
  for (int i : {-1, 9, 0, 1}) {
    LTree root;
    LTree* na = root.InsertLast(&a);
    LTree* nb = root.InsertLast(&b);
    LTree* nx = root.InsertChild(i, &x);
    EXPECT_EQ(nx->GetParent(), &root);
    EXPECT_EQ(nx->GetTreeNode(), &x);
    if (i == 0) {
      EXPECT_EQ(Payloads(root), (std::vector<LObject*>{&x, &a, &b}));
    } else if (i == 1) {
      EXPECT_EQ(Payloads(root), (std::vector<LObject*>{&a, &x, &b}));
    } else {
      EXPECT_EQ(Payloads(root), (std::vector<LObject*>{&a, &b, &x}));
    }
    EXPECT_EQ(root.GetLastChild(), Payloads(root).back());
    // The caller owns the nodes.
    for (LTree* node : {na, nb, nx}) {
      node->Delete();
      delete node;
    }
    EXPECT_EQ(root.GetChildNumber(), 0);
  }
}

TEST(LTree, DeleteDetachesLeavesOnly) {
  LObject a, b, c;
  LTree root;
  LTree* na = root.InsertLast(&a);
  LTree* nb = root.InsertLast(&b);
  LTree* nc = root.InsertLast(&c);
  LTree* grandchild = na->InsertLast(nullptr);
  EXPECT_EQ(root.GetParent(), nullptr);

  // A node with children stays put and answers null.
  EXPECT_EQ(na->Delete(), nullptr);
  EXPECT_EQ(root.GetChildNumber(), 3);
  // A leaf with a null payload also answers null, but is detached.
  EXPECT_EQ(grandchild->Delete(), nullptr);
  EXPECT_EQ(na->GetChildNumber(), 0);

  EXPECT_EQ(na->Delete(), &a);
  EXPECT_EQ(nb->Delete(), &b);
  EXPECT_EQ(Payloads(root), (std::vector<LObject*>{&c}));
  // The parent link stays, and a second Delete takes nothing more out.
  EXPECT_EQ(na->GetParent(), &root);
  EXPECT_EQ(na->Delete(), &a);
  EXPECT_EQ(root.GetChildNumber(), 1);
  // A root has no list to leave: it answers its payload and changes nothing.
  root.SetTreeNode(&b);
  EXPECT_EQ(root.Delete(), nullptr);  // it still has a child
  nc->Delete();
  EXPECT_EQ(root.Delete(), &b);
  EXPECT_EQ(root.GetChild(0), nullptr);  // out of range: null, no fault
  EXPECT_EQ(root.GetLastChild(), nullptr);
  for (LTree* node : {grandchild, na, nb, nc}) delete node;
}

TEST(LTree, DestroyingAParentLeavesChildrenAlive) {
  LObject payload;
  LTree* parent = new LTree;
  LTree* child = parent->InsertChild(5, &payload);
  delete parent;
  EXPECT_EQ(child->GetTreeNode(), &payload);
  delete child;  // the sanitizers check that nothing leaked or was freed twice
}
