#include <vq0300/RBTree.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "TestSupport.h"

namespace {

// A node with its own key buffer, as a caller lays it out. Every buffer can
// take any key used here, as Delete requires.
struct Slot {
  RBTreeNode node{};
  char key[32] = {};
};

// The data word of a key: a function of its text, so that a node's data can
// be checked against its key wherever Delete has moved them.
void* DataFor(const std::string& key) {
  return reinterpret_cast<void*>(static_cast<std::uintptr_t>(std::hash<std::string>{}(key) | 1u));
}

RBTreeNode* Fill(Slot& slot, const std::string& key) {
  slot.node = RBTreeNode{};
  std::strcpy(slot.key, key.c_str());
  slot.node.key = slot.key;
  slot.node.data = DataFor(key);
  return &slot.node;
}

// Colours, no red child of a red node, parent links and equal black heights
// below node. Returns the black height, or -1 with *fault set.
int CheckSubtree(const RBTreeNode* node, const RBTreeNode* parent, std::size_t* count,
                 std::string* fault) {
  if (node == nullptr) return 1;
  ++*count;
  const bool red = node->color == 1;
  const char* problem = node->color > 1 ? "bad colour" : nullptr;
  if (node->parent != parent) problem = "bad parent link";
  if (red && ((node->left && node->left->color == 1) || (node->right && node->right->color == 1))) {
    problem = "red node with a red child";
  }
  const int left = problem ? -1 : CheckSubtree(node->left, node, count, fault);
  const int right = left < 0 ? -1 : CheckSubtree(node->right, node, count, fault);
  if (!problem && right >= 0 && left != right) problem = "black heights differ";
  if (problem) *fault = std::string(problem) + " at " + node->key;
  return (problem || right < 0) ? -1 : left + (red ? 0 : 1);
}

// All five rules, the links, the in-order walk by Succesor against the
// oracle (which proves the search order too) and every key's own data.
void CheckTree(RBTree& tree, const std::set<std::string>& oracle) {
  std::string fault;
  std::size_t count = 0;
  if (tree.root && tree.root->color != 0) fault = "red root";
  if (fault.empty()) CheckSubtree(tree.root, nullptr, &count, &fault);
  auto expected = oracle.begin();
  for (RBTreeNode* n = tree.Minimum(tree.root); n && fault.empty(); n = tree.Succesor(n)) {
    if (expected == oracle.end() || *expected != n->key)
      fault = std::string("walk finds ") + n->key;
    if (n->data != DataFor(n->key)) fault = std::string("wrong data at ") + n->key;
    ++expected;
  }
  if (fault.empty() && (expected != oracle.end() || count != oracle.size())) fault = "keys missing";
  ASSERT_TRUE(fault.empty()) << fault;
}

// Inserts ('i'), deletes ('d') and searches ('s') beside a std::set, checking
// the whole tree after every step.
class TreeDriver {
 public:
  explicit TreeDriver(std::size_t capacity) : slots_(capacity) {
    for (Slot& slot : slots_) free_.push_back(&slot);
  }

  bool Run(char op, std::string key) {
    RBTreeNode* found = tree_.Search(tree_.root, &key[0]);
    const bool present = oracle_.count(key) != 0;
    EXPECT_EQ(found != nullptr, present) << key;
    if (op == 'i') {
      RBTreeNode* node = Fill(*free_.back(), key);
      node->color = 7;  // a rejected node must come back untouched
      EXPECT_EQ(tree_.Insert(&tree_, node), present ? 0 : 1) << key;
      if (present) {
        EXPECT_TRUE(node->color == 7 && node->parent == nullptr);
      } else {
        oracle_.insert(key);
        free_.pop_back();
      }
    } else if (op == 'd' && present) {
      const bool two_children = found->left && found->right;
      RBTreeNode* successor = tree_.Succesor(found);
      RBTreeNode* gone = tree_.Delete(&tree_, found);
      // With two children the successor leaves; its key and data stay in found.
      EXPECT_EQ(gone, two_children ? successor : found);
      if (two_children) {
        EXPECT_TRUE(std::strcmp(found->key, gone->key) == 0 && found->data == gone->data);
      }
      oracle_.erase(key);
      free_.push_back(reinterpret_cast<Slot*>(gone));
    }
    CheckTree(tree_, oracle_);
    return !::testing::Test::HasFailure();
  }

  bool empty() const { return oracle_.empty() && tree_.root == nullptr; }

 private:
  RBTree tree_{};
  std::vector<Slot> slots_;
  std::vector<Slot*> free_;
  std::set<std::string> oracle_;
};

}  // namespace

TEST(RBTree, InsertSearchAndNullArguments) {
  RBTree tree{};
  Slot d, b, f, again;
  ASSERT_EQ(tree.Insert(&tree, Fill(d, "d")), 1);
  EXPECT_TRUE(tree.root == &d.node && d.node.color == 0 && d.node.parent == nullptr);
  EXPECT_EQ(tree.Insert(&tree, Fill(again, "d")), 0);
  ASSERT_EQ(tree.Insert(&tree, Fill(b, "b")), 1);
  ASSERT_EQ(tree.Insert(&tree, Fill(f, "f")), 1);
  EXPECT_EQ(tree.Minimum(&b.node), &b.node);  // no left child: itself
  EXPECT_EQ(tree.Maximum(&f.node), &f.node);
  EXPECT_EQ(tree.Succesor(&f.node), nullptr);
  EXPECT_EQ(tree.Succesor(&b.node), &d.node);  // climbs
  char f_key[] = "f", upper[] = "D";
  EXPECT_EQ(tree.Search(&b.node, f_key), nullptr);    // only b's subtree
  EXPECT_EQ(tree.Search(tree.root, upper), nullptr);  // case-sensitive

  // Nulls, a missing key and rotations without the rising child do nothing.
  again.node.key = nullptr;
  EXPECT_EQ(tree.Insert(&tree, &again.node), 0);
  EXPECT_EQ(tree.Insert(nullptr, &again.node) + tree.Insert(&tree, nullptr), 0);
  EXPECT_EQ(tree.Minimum(nullptr), nullptr);
  EXPECT_EQ(tree.Maximum(nullptr), nullptr);
  EXPECT_EQ(tree.Succesor(nullptr), nullptr);
  EXPECT_EQ(tree.Search(nullptr, f_key), nullptr);
  EXPECT_EQ(tree.Search(tree.root, nullptr), nullptr);
  EXPECT_EQ(tree.Delete(&tree, nullptr), nullptr);
  EXPECT_EQ(tree.Delete(nullptr, &d.node), nullptr);
  tree.LeftRotate(&tree, &f.node);
  tree.RightRotate(&tree, &f.node);
  tree.InsertRB(nullptr, &f.node);
  tree.DeleteFixUp(&tree, nullptr);
  CheckTree(tree, {"b", "d", "f"});
}

TEST(RBTree, DeleteReturnsTheNodeThatLeft) {
  RBTree tree{};
  Slot a, b, c;
  ASSERT_EQ(tree.Insert(&tree, Fill(b, "b")), 1);
  EXPECT_EQ(tree.Delete(&tree, &b.node), &b.node);  // the only node
  EXPECT_EQ(tree.root, nullptr);

  // b at the root with a and c: the c node leaves, the b node takes over c.
  ASSERT_EQ(tree.Insert(&tree, Fill(b, "b")), 1);
  ASSERT_EQ(tree.Insert(&tree, Fill(a, "a")), 1);
  ASSERT_EQ(tree.Insert(&tree, Fill(c, "c")), 1);
  EXPECT_EQ(tree.Delete(&tree, &b.node), &c.node);
  EXPECT_STREQ(c.node.key, "c");
  EXPECT_STREQ(b.node.key, "c");
  EXPECT_EQ(b.node.data, DataFor("c"));
  EXPECT_EQ(tree.root, &b.node);
  CheckTree(tree, {"a", "c"});
}

TEST(RBTree, OuputTreeWritesPostOrder) {
  RBTree tree{};
  Slot r, a, z;
  ASSERT_EQ(tree.Insert(&tree, Fill(r, "r")), 1);
  ASSERT_EQ(tree.Insert(&tree, Fill(a, "a")), 1);
  ASSERT_EQ(tree.Insert(&tree, Fill(z, "z")), 1);
  testsupport::TempDir dir;
  std::string path = dir / "tree.txt", sub = dir / "sub.txt", bad = dir / "no/tree.txt";
  tree.OuputTree(&path[0]);
  EXPECT_EQ(testsupport::ReadFile(path),
            "Level = 1;\t key = a\nLevel = 1;\t key = z\nLevel = 0;\t key = r\n");

  FILE* file = std::fopen(sub.c_str(), "w");
  ASSERT_NE(file, nullptr);
  tree.OuputTree(file, &a.node, 4);  // starts at the level given
  tree.OuputTree(file, nullptr, 0);
  tree.OuputTree(nullptr, &a.node, 0);
  std::fclose(file);
  EXPECT_EQ(testsupport::ReadFile(sub), "Level = 4;\t key = a\n");

  RBTree empty{};
  empty.OuputTree(&path[0]);  // an empty tree empties the file
  EXPECT_EQ(testsupport::ReadFile(path), "");
  tree.OuputTree(&bad[0]);  // cannot be opened: nothing happens
  tree.OuputTree(static_cast<char*>(nullptr));
}

TEST(RBTree, RisingAndFallingKeysAgainstStdSet) {
  for (const bool rising : {true, false}) {
    TreeDriver driver(700);
    // Equal-length numerals: text order is number order.
    auto key = [&](int i) { return std::to_string(100000 + (rising ? i : 700 - i)); };
    for (int i = 0; i < 700; ++i) ASSERT_TRUE(driver.Run('i', key(i))) << i;
    for (int i = 0; i < 350; ++i)
      ASSERT_TRUE(driver.Run('d', key(i)) && driver.Run('s', key(i + 1)));
    for (int i = 699; i >= 350; --i) ASSERT_TRUE(driver.Run('d', key(i))) << i;
    EXPECT_TRUE(driver.empty());
  }
}

TEST(RBTree, RandomAndRepeatedKeysAgainstStdSet) {
  // Short keys over four letters: prefixes of one another, duplicates and
  // absent keys. The tree grows for 1800 steps, then shrinks.
  for (const std::uint32_t seed : {1u, 2u, 3u}) {
    std::mt19937 rng(seed);
    std::uniform_int_distribution<int> length(0, 5), letter('a', 'd'), op(0, 9);
    TreeDriver driver(1400);
    for (int step = 0; step < 3000; ++step) {
      std::string key(static_cast<std::size_t>(length(rng)), ' ');
      for (char& c : key) c = static_cast<char>(letter(rng));
      const int what = op(rng);
      const char kind = what < (step < 1800 ? 6 : 3) ? 'i' : what < 8 ? 'd' : 's';
      ASSERT_TRUE(driver.Run(kind, key)) << "seed " << seed << ", step " << step;
    }
  }
  // Twenty keys inserted and deleted over and over.
  std::mt19937 rng(7);
  std::uniform_int_distribution<int> pick(0, 19), coin(0, 1);
  TreeDriver driver(64);
  for (int step = 0; step < 4000; ++step) {
    ASSERT_TRUE(driver.Run(coin(rng) ? 'i' : 'd', "key" + std::to_string(pick(rng)))) << step;
  }
}
