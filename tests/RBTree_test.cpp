#include "RBTreeModel.h"
#include "TestSupport.h"

TEST(RBTree, EveryOperationKeepsTheRulesAndTheKeys) {
  model::RunSeeds(rbmodel::RunRBTreeOps, 40, 700);
}

// One row a dump: one-letter keys in insertion order, the key of the node
// written from (none: the whole tree, by path) and its level, then the text.
TEST(RBTree, DumpIsPostOrderWithDepths) {
  const std::tuple<const char*, const char*, int, const char*> rows[] = {
      {"abcd", "", 0,
       "Level = 1;\t key = a\nLevel = 2;\t key = d\nLevel = 1;\t key = c\nLevel = 0;\t key = b\n"},
      {"", "", 0, ""},  // the file is emptied
      {"abcd", "c", 4, "Level = 5;\t key = d\nLevel = 4;\t key = c\n"}};
  testsupport::TempDir dir;
  std::string path = dir / "tree.txt", missing = dir / "none/tree.txt";
  for (const auto& [order, from, level, text] : rows) {
    RBTree tree{};
    std::deque<rbmodel::Slot> slots;
    for (const char* c = order; *c != '\0'; ++c) tree.Insert(&tree, &rbmodel::NewNode(slots, {*c}));
    std::string key = from;
    FILE* file = key.empty() ? nullptr : std::fopen(path.c_str(), "w");
    if (file == nullptr) tree.OuputTree(&path[0]);
    if (file != nullptr) tree.OuputTree(file, tree.Search(tree.root, &key[0]), level);
    if (file != nullptr) std::fclose(file);
    EXPECT_EQ(testsupport::ReadFile(path), text) << order << " from " << from;
  }
  RBTree().OuputTree(&missing[0]);  // cannot be opened: returns without a word
}
