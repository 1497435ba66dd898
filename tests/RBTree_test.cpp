#include <vq0300/RBTree.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <deque>
#include <functional>
#include <random>
#include <set>
#include <string>

#include "TestSupport.h"

namespace {

// A node with its own key buffer, large enough for any key used here, as
// Delete requires.
struct Slot {
  RBTreeNode node{};
  char key[32] = {};
};

// The data word of a key is a function of its text, so that every node's
// data can be checked against its key wherever Delete has moved them.
void* DataFor(const std::string& key) {
  return reinterpret_cast<void*>(static_cast<std::uintptr_t>(std::hash<std::string>{}(key) | 1u));
}

// Black height of the subtree at node, or -1 if a colour is neither red nor
// black, a red node has a red parent, a parent link is wrong or the black
// heights of two siblings differ.
int BlackHeight(const RBTreeNode* node, const RBTreeNode* parent) {
  if (node == nullptr) return 1;
  const bool red = node->color == 1;
  if (node->color > 1 || node->parent != parent || (red && parent && parent->color == 1)) return -1;
  const int left = BlackHeight(node->left, node), right = BlackHeight(node->right, node);
  return (left < 0 || left != right) ? -1 : left + (red ? 0 : 1);
}

// Inserts ('i'), deletes ('d') or searches ('s') beside a std::set; then
// checks the five rules, the links, the in-order walk by Succesor against the
// oracle (which proves the search order too) and every key's own data.
// Returns what went wrong, or "".
struct TreeDriver {
  std::string Run(char op, std::string key) {
    RBTreeNode* found = tree.Search(tree.root, &key[0]);
    const bool present = oracle.count(key) != 0;
    if ((found != nullptr) != present) return "Search wrong for " + key;
    if (op == 'i') {
      Slot& slot = slots.emplace_back();
      RBTreeNode* node = &slot.node;
      node->key = std::strcpy(slot.key, key.c_str());
      node->data = DataFor(key);
      node->color = 7;  // a rejected node must come back untouched
      if (tree.Insert(&tree, node) != (present ? 0 : 1) ||
          (present && (node->color != 7 || node->parent != nullptr)))
        return "Insert wrong for " + key;
      oracle.insert(key);
    } else if (op == 'd' && present) {
      const bool two_children = found->left && found->right;
      RBTreeNode* successor = tree.Succesor(found);
      RBTreeNode* gone = tree.Delete(&tree, found);
      // With two children the successor leaves; its key and data stay in found.
      if (gone != (two_children ? successor : found) ||
          (two_children && (std::strcmp(found->key, gone->key) != 0 || found->data != gone->data)))
        return "Delete wrong for " + key;
      oracle.erase(key);
    }
    if ((tree.root && tree.root->color != 0) || BlackHeight(tree.root, nullptr) < 0)
      return "red-black rules or parent links broken after " + key;
    auto expected = oracle.begin();
    for (RBTreeNode* n = tree.Minimum(tree.root); n; n = tree.Succesor(n), ++expected) {
      if (expected == oracle.end() || *expected != n->key || n->data != DataFor(n->key))
        return std::string("walk or data wrong at ") + n->key;
    }
    return expected == oracle.end() ? "" : "keys lost after " + key;
  }

  RBTree tree{};
  std::deque<Slot> slots;
  std::set<std::string> oracle;
};

}  // namespace

TEST(RBTree, SmallTreeOutputNullAnswersAndDeleteWithTwoChildren) {
  TreeDriver driver;
  for (const char* key : {"d", "b", "f"}) ASSERT_EQ(driver.Run('i', key), "");
  RBTree& tree = driver.tree;
  RBTreeNode *d = tree.root, *b = d->left, *f = d->right;
  EXPECT_EQ(tree.Maximum(d), f);
  char f_key[] = "f", upper[] = "D";
  EXPECT_EQ(tree.Search(b, f_key), nullptr);          // only b's subtree
  EXPECT_EQ(tree.Search(tree.root, upper), nullptr);  // case-sensitive

  // OuputTree writes post-order; from a node, it starts at the level given.
  testsupport::TempDir dir;
  std::string path = dir / "tree.txt", sub = dir / "sub.txt", bad_path = dir / "no/tree.txt";
  tree.OuputTree(&path[0]);
  EXPECT_EQ(testsupport::ReadFile(path),
            "Level = 1;\t key = b\nLevel = 1;\t key = f\nLevel = 0;\t key = d\n");
  FILE* file = std::fopen(sub.c_str(), "w");
  ASSERT_NE(file, nullptr);
  tree.OuputTree(file, b, 4);
  tree.OuputTree(file, nullptr, 0);
  tree.OuputTree(nullptr, b, 0);
  std::fclose(file);
  EXPECT_EQ(testsupport::ReadFile(sub), "Level = 4;\t key = b\n");
  RBTree().OuputTree(&path[0]);  // an empty tree empties the file
  EXPECT_EQ(testsupport::ReadFile(path), "");
  tree.OuputTree(&bad_path[0]);  // cannot be opened: nothing happens
  tree.OuputTree(static_cast<char*>(nullptr));

  // The chosen null answers; rotations without the rising child do nothing.
  RBTreeNode no_key{};
  EXPECT_EQ(tree.Insert(&tree, &no_key) + tree.Insert(nullptr, f) + tree.Insert(&tree, nullptr), 0);
  for (RBTreeNode* r : {tree.Minimum(nullptr), tree.Maximum(nullptr), tree.Succesor(nullptr),
                        tree.Search(nullptr, f_key), tree.Search(tree.root, nullptr),
                        tree.Delete(&tree, nullptr), tree.Delete(nullptr, d)})
    EXPECT_EQ(r, nullptr);
  tree.LeftRotate(&tree, f);
  tree.RightRotate(&tree, f);
  tree.InsertRB(nullptr, f);
  tree.DeleteFixUp(&tree, nullptr);
  EXPECT_EQ(driver.Run('s', "d"), "");

  // d has two children: the f node leaves, d's buffer takes f's key.
  EXPECT_EQ(driver.Run('d', "d"), "");
  EXPECT_TRUE(tree.root == d && std::strcmp(d->key, "f") == 0 && d->left == b);
}

TEST(RBTree, OperationSequencesAgainstStdSet) {
  // Rising and falling runs of equal-length numerals (text order is number
  // order): all in, then all out in the same order.
  for (const int step : {1, -1}) {
    TreeDriver driver;
    for (int i = 0; i < 800; ++i) {
      ASSERT_EQ(driver.Run(i < 400 ? 'i' : 'd', std::to_string(5000 + step * (i % 400))), "");
    }
  }
  // Random keys of up to five letters from a to d, the empty one included:
  // prefixes of one another, repeats and absent keys. The tree grows for 60%
  // of the steps, then shrinks. Seed 4 keeps a few dozen keys of up to two
  // letters going in and out over and over.
  for (const std::uint32_t seed : {1u, 2u, 3u, 4u}) {
    std::mt19937 rng(seed);
    std::uniform_int_distribution<int> length(0, seed == 4 ? 2 : 5), op(0, 9);
    std::uniform_int_distribution<int> letter('a', seed == 4 ? 'e' : 'd');
    TreeDriver driver;
    for (int step = 0; step < 1500; ++step) {
      std::string key(static_cast<std::size_t>(length(rng)), ' ');
      for (char& c : key) c = static_cast<char>(letter(rng));
      const int what = op(rng);
      const char kind = what < (step < 900 ? 6 : 3) ? 'i' : what < 8 ? 'd' : 's';
      ASSERT_EQ(driver.Run(kind, key), "") << "seed " << seed << ", step " << step;
    }
  }
}
