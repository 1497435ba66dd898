#include "RBTreeModel.h"
#include "TestSupport.h"

TEST(RBTree, KeepsTheRulesAndTheKeys) { model::RunSeeds(rbmodel::RunRBTreeOps, 40, 700); }

// The dump of a tree of one-letter keys inserted in the order abcd: left
// subtree, right subtree, then the node, each with its depth.
TEST(RBTree, DumpIsPostOrderWithDepths) {
  testsupport::TempDir dir;
  std::string path = dir / "tree.txt", missing = dir / "none/tree.txt";
  RBTree tree{};
  std::deque<rbmodel::Slot> slots;
  for (char c : std::string("abcd")) tree.Insert(&tree, &rbmodel::NewNode(slots, {c}));
  tree.OuputTree(&path[0]);
  EXPECT_EQ(testsupport::ReadFile(path),
            "Level = 1;\t key = a\nLevel = 2;\t key = d\n"
            "Level = 1;\t key = c\nLevel = 0;\t key = b\n");
  tree.OuputTree(&missing[0]);  // cannot be opened: returns without a word
}
