#include <vq0300/LTree.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// Payloads are named by letter: 'a' is g_payloads[0] and so on.
LObject g_payloads[26];

LObject* Obj(char name) { return &g_payloads[name - 'a']; }

std::string Payloads(LTree& node) {
  std::string out;
  for (int i = 0; i < node.GetChildNumber(); ++i)
    out += static_cast<char>('a' + (node.GetChild(i) - g_payloads));
  return out;
}

}  // namespace

TEST(LTree, InsertChildFollowsTheListPlaceRule) {
  // Position given to InsertChild, then the payloads of the children.
  for (const char* row : {"0 xab", "1 axb", "2 abx", "9 abx", "-1 abx"}) {
    const std::string order = std::strchr(row, ' ') + 1;
    LTree root;
    LTree* nodes[] = {root.InsertLast(Obj('a')), root.InsertLast(Obj('b')),
                      root.InsertChild(std::atoi(row), Obj('x'))};
    EXPECT_TRUE(nodes[2]->GetParent() == &root && nodes[2]->GetTreeNode() == Obj('x'));
    EXPECT_TRUE(Payloads(root) == order && root.GetLastChild() == Obj(order.back())) << row;
    for (LTree* node : nodes) {  // the caller owns the nodes
      node->Delete();
      delete node;
    }
    EXPECT_EQ(root.GetChildNumber(), 0);
  }
}

TEST(LTree, DeleteDetachesLeavesOnly) {
  LTree root;
  LTree *na = root.InsertLast(Obj('a')), *nb = root.InsertLast(Obj('b'));
  LTree* leaf = na->InsertLast(nullptr);
  EXPECT_TRUE(na->Delete() == nullptr && Payloads(root) == "ab");  // children: it stays put
  EXPECT_EQ(leaf->Delete(), nullptr);  // a leaf with a null payload is detached
  EXPECT_EQ(na->GetChildNumber(), 0);
  EXPECT_EQ(na->Delete(), Obj('a'));
  EXPECT_EQ(Payloads(root), "b");
  // The parent link stays, and a second Delete takes nothing more out.
  EXPECT_TRUE(na->GetParent() == &root && na->Delete() == Obj('a') && Payloads(root) == "b");
  // A root has no list to leave: it answers its payload and changes nothing.
  root.SetTreeNode(Obj('r'));
  EXPECT_EQ(root.Delete(), nullptr);  // it still has a child
  EXPECT_EQ(nb->Delete(), Obj('b'));
  EXPECT_TRUE(root.Delete() == Obj('r') && root.GetParent() == nullptr);
  EXPECT_TRUE(root.GetChild(0) == nullptr && root.GetLastChild() == nullptr);
  for (LTree* node : {leaf, na, nb}) delete node;

  // Destroying a parent leaves its children alive (the sanitizers watch).
  LTree* parent = new LTree;
  LTree* child = parent->InsertChild(5, Obj('p'));
  delete parent;
  EXPECT_EQ(child->GetTreeNode(), Obj('p'));
  delete child;
}
