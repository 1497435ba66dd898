#include "RBTreeModel.h"
#include "TestSupport.h"

TEST(RBTree, EveryOperationKeepsTheRulesAndTheKeys) {
  model::RunSeeds(rbmodel::RunRBTreeOps, 40, 700);
}

namespace {

// One-letter keys inserted in the order given, into slots of the caller.
RBTree Grow(const std::string& order, std::deque<rbmodel::Slot>& slots) {
  RBTree tree{};
  for (char c : order) {
    rbmodel::Slot& slot = slots.emplace_back();
    slot.node.key = &(slot.key[0] = c);
    tree.Insert(&tree, &slot.node);
  }
  return tree;
}

}  // namespace

// One row a dump: the keys in insertion order, the key of the node written
// from and its level (none: the whole tree, by path), then the text.
TEST(RBTree, DumpIsPostOrderWithDepths) {
  const char* rows[][4] = {
      {"abcd", "", "",
       "Level = 1;\t key = a\nLevel = 2;\t key = d\nLevel = 1;\t key = c\nLevel = 0;\t key = b\n"},
      {"", "", "", ""},
      {"abcd", "c", "4", "Level = 5;\t key = d\nLevel = 4;\t key = c\n"},
      {"abcd", "x", "0", ""}};
  testsupport::TempDir dir;
  std::string path = dir / "tree.txt";
  for (const auto& row : rows) {
    std::deque<rbmodel::Slot> slots;
    RBTree tree = Grow(row[0], slots);
    std::string key = row[1];
    FILE* file = key.empty() ? nullptr : std::fopen(path.c_str(), "w");
    if (file == nullptr) tree.OuputTree(&path[0]);  // created or emptied
    if (file != nullptr) tree.OuputTree(file, tree.Search(tree.root, &key[0]), std::stoi(row[2]));
    if (file != nullptr) std::fclose(file);
    EXPECT_EQ(testsupport::ReadFile(path), row[3]) << row[0] << " from " << row[1];
  }
  std::string missing = dir / "none/tree.txt";
  RBTree().OuputTree(&missing[0]);  // cannot be opened: returns without a word
}
