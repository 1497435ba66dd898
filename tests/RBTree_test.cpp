#include <vq0300/RBTree.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "TestSupport.h"

using testsupport::ReadFile;
using testsupport::TempDir;

namespace {

constexpr int kKeyRoom = 32;  // every key buffer takes any key used here

// A node with its own key buffer, as a caller would lay it out.
struct Slot {
  RBTreeNode node{};
  char key[kKeyRoom] = {};
};

// The data word a key carries: a function of the key text, so a node's data
// can be checked against its key wherever the key has moved.
void* DataFor(const std::string& key) {
  return reinterpret_cast<void*>(static_cast<std::uintptr_t>(std::hash<std::string>{}(key) | 1u));
}

void Fill(Slot& slot, const std::string& key) {
  slot.node = RBTreeNode{};
  std::strcpy(slot.key, key.c_str());
  slot.node.key = slot.key;
  slot.node.data = DataFor(key);
}

// Checks the subtree at node: colours, no red-red pair, parent links and
// equal black heights. Returns the black height, counting the null leaves,
// or -1 after writing the first fault found into *fault.
int CheckSubtree(const RBTreeNode* node, const RBTreeNode* parent, int* count,
                 std::string* fault) {
  if (node == nullptr) return 1;
  ++*count;
  const char* problem = nullptr;
  if (node->color > 1) problem = "bad colour";
  if (node->parent != parent) problem = "bad parent link";
  if (node->color == 1 && ((node->left != nullptr && node->left->color == 1) ||
                           (node->right != nullptr && node->right->color == 1))) {
    problem = "red node with a red child";
  }
  const int left = problem ? -1 : CheckSubtree(node->left, node, count, fault);
  const int right = left < 0 ? -1 : CheckSubtree(node->right, node, count, fault);
  if (problem == nullptr && right >= 0 && left != right) problem = "black heights differ";
  if (problem != nullptr) *fault = std::string(problem) + " at " + node->key;
  if (problem != nullptr || right < 0) return -1;
  return left + (node->color == 0 ? 1 : 0);
}

// The red-black rules, the links, the in-order walk by Succesor against the
// oracle (which also proves the search order) and every key's own data.
void CheckTree(RBTree& tree, const std::set<std::string>& oracle) {
  if (tree.root == nullptr) {
    EXPECT_TRUE(oracle.empty());
    return;
  }
  EXPECT_EQ(tree.root->color, 0) << "the root is red";
  int count = 0;
  std::string fault;
  ASSERT_GT(CheckSubtree(tree.root, nullptr, &count, &fault), 0) << fault;
  EXPECT_EQ(static_cast<std::size_t>(count), oracle.size());

  auto expected = oracle.begin();
  for (RBTreeNode* n = tree.Minimum(tree.root); n != nullptr; n = tree.Succesor(n)) {
    if (expected == oracle.end()) {
      fault = std::string("the walk runs past the oracle at ") + n->key;
    } else if (*expected != n->key) {
      fault = "the walk finds " + std::string(n->key) + " where the oracle has " + *expected;
    } else if (n->data != DataFor(n->key)) {
      fault = std::string("wrong data at ") + n->key;
    }
    ASSERT_TRUE(fault.empty()) << fault;
    ++expected;
  }
  EXPECT_EQ(expected, oracle.end());
  EXPECT_EQ(tree.Maximum(tree.root)->key, *oracle.rbegin());
}

// Runs a sequence of inserts, searches and deletes beside a std::set and
// checks the whole tree after every step.
class TreeDriver {
 public:
  explicit TreeDriver(std::size_t capacity) : slots_(capacity) {
    for (std::size_t i = capacity; i > 0; --i) free_.push_back(&slots_[i - 1]);
  }

  void Insert(const std::string& key) {
    ASSERT_FALSE(free_.empty());
    Slot* slot = free_.back();
    Fill(*slot, key);
    slot->node.color = 7;  // a rejected node must come back untouched
    const int result = tree_.Insert(&tree_, &slot->node);
    if (oracle_.count(key) != 0) {
      EXPECT_EQ(result, 0) << key;
      EXPECT_EQ(slot->node.color, 7);
      EXPECT_EQ(slot->node.parent, nullptr);
    } else {
      EXPECT_EQ(result, 1) << key;
      oracle_.insert(key);
      free_.pop_back();
    }
  }

  void Search(std::string key) {
    RBTreeNode* found = tree_.Search(tree_.root, &key[0]);
    if (oracle_.count(key) != 0) {
      ASSERT_NE(found, nullptr) << key;
      EXPECT_EQ(key, found->key);
    } else {
      EXPECT_EQ(found, nullptr) << key;
    }
  }

  void Delete(std::string key) {
    RBTreeNode* node = tree_.Search(tree_.root, &key[0]);
    if (oracle_.count(key) == 0) {
      EXPECT_EQ(node, nullptr);
      return;
    }
    ASSERT_NE(node, nullptr) << key;
    const bool two_children = node->left != nullptr && node->right != nullptr;
    RBTreeNode* successor = tree_.Succesor(node);
    RBTreeNode* gone = tree_.Delete(&tree_, node);
    oracle_.erase(key);
    if (two_children) {
      // The successor leaves; its key and data now live in node.
      EXPECT_EQ(gone, successor);
      EXPECT_STREQ(node->key, gone->key);
      EXPECT_EQ(node->data, gone->data);
    } else {
      EXPECT_EQ(gone, node);
      EXPECT_EQ(key, gone->key);
    }
    free_.push_back(reinterpret_cast<Slot*>(gone));
  }

  void Check() { CheckTree(tree_, oracle_); }
  const std::set<std::string>& oracle() const { return oracle_; }

 private:
  RBTree tree_{};
  std::vector<Slot> slots_;
  std::vector<Slot*> free_;
  std::set<std::string> oracle_;
};

std::string Numbered(int n) {
  char text[16];
  std::snprintf(text, sizeof text, "k%06d", n);
  return text;
}

std::string RandomKey(std::mt19937& rng) {
  // Short keys over a small alphabet: prefixes of one another and repeats.
  std::uniform_int_distribution<int> length(0, 5);
  std::uniform_int_distribution<int> letter('a', 'd');
  std::string key(static_cast<std::size_t>(length(rng)), ' ');
  for (char& c : key) c = static_cast<char>(letter(rng));
  return key;
}

}  // namespace

TEST(RBTree, FirstNodeIsBlackRootAndDuplicatesAreRejected) {
  RBTree tree{};
  Slot a, again, other;
  Fill(a, "m");
  Fill(again, "m");
  Fill(other, "x");
  EXPECT_EQ(tree.Insert(&tree, &a.node), 1);
  EXPECT_EQ(tree.root, &a.node);
  EXPECT_EQ(a.node.color, 0);
  EXPECT_EQ(a.node.parent, nullptr);

  EXPECT_EQ(tree.Insert(&tree, &again.node), 0);
  EXPECT_EQ(tree.root, &a.node);
  EXPECT_EQ(a.node.left, nullptr);
  EXPECT_EQ(a.node.right, nullptr);

  // Null tree, node or key: rejected, nothing changes.
  EXPECT_EQ(tree.Insert(nullptr, &other.node), 0);
  EXPECT_EQ(tree.Insert(&tree, nullptr), 0);
  other.node.key = nullptr;
  EXPECT_EQ(tree.Insert(&tree, &other.node), 0);
  EXPECT_EQ(a.node.right, nullptr);
}

TEST(RBTree, NavigationAndSubtreeSearch) {
  RBTree tree{};
  std::vector<Slot> slots(7);
  const char* keys[] = {"d", "b", "f", "a", "c", "e", "g"};
  for (int i = 0; i < 7; ++i) {
    Fill(slots[static_cast<std::size_t>(i)], keys[i]);
    ASSERT_EQ(tree.Insert(&tree, &slots[static_cast<std::size_t>(i)].node), 1);
  }
  RBTreeNode* d = tree.root;
  ASSERT_STREQ(d->key, "d");
  EXPECT_STREQ(tree.Minimum(d)->key, "a");
  EXPECT_STREQ(tree.Maximum(d)->key, "g");
  RBTreeNode* a = tree.Minimum(d);
  EXPECT_EQ(tree.Minimum(a), a);  // no left child: itself
  EXPECT_EQ(tree.Maximum(a), a);
  EXPECT_EQ(tree.Succesor(tree.Maximum(d)), nullptr);
  EXPECT_STREQ(tree.Succesor(d->left->right)->key, "d");  // climbs from c

  char absent[] = "cc";
  char upper[] = "D";
  char f_key[] = "f";
  EXPECT_EQ(tree.Search(d, absent), nullptr);
  EXPECT_EQ(tree.Search(d, upper), nullptr);  // case-sensitive
  EXPECT_EQ(tree.Search(d->left, f_key), nullptr);  // f is not below b
  EXPECT_EQ(tree.Search(d, f_key), d->right);
  EXPECT_EQ(tree.Search(nullptr, f_key), nullptr);
  EXPECT_EQ(tree.Search(d, nullptr), nullptr);

  // Null nodes give null.
  EXPECT_EQ(tree.Minimum(nullptr), nullptr);
  EXPECT_EQ(tree.Maximum(nullptr), nullptr);
  EXPECT_EQ(tree.Succesor(nullptr), nullptr);
}

TEST(RBTree, RotationsRelinkAndKeepColours) {
  RBTree tree{};
  Slot x, y, a, b, c;
  Fill(x, "x");
  Fill(y, "y");
  Fill(a, "a");
  Fill(b, "b");
  Fill(c, "c");
  // x with left a and right y; y with children b and c.
  tree.root = &x.node;
  x.node.left = &a.node;
  x.node.right = &y.node;
  y.node.left = &b.node;
  y.node.right = &c.node;
  a.node.parent = y.node.parent = &x.node;
  b.node.parent = c.node.parent = &y.node;
  x.node.color = 1;

  tree.LeftRotate(&tree, &x.node);
  EXPECT_EQ(tree.root, &y.node);
  EXPECT_EQ(y.node.parent, nullptr);
  EXPECT_EQ(y.node.left, &x.node);
  EXPECT_EQ(y.node.right, &c.node);
  EXPECT_EQ(x.node.parent, &y.node);
  EXPECT_EQ(x.node.right, &b.node);
  EXPECT_EQ(b.node.parent, &x.node);
  EXPECT_EQ(x.node.color, 1);

  tree.RightRotate(&tree, &y.node);  // and back
  EXPECT_EQ(tree.root, &x.node);
  EXPECT_EQ(x.node.right, &y.node);
  EXPECT_EQ(y.node.left, &b.node);
  EXPECT_EQ(b.node.parent, &y.node);

  // Without the child that moves up, or with nulls, nothing happens.
  tree.LeftRotate(&tree, &c.node);
  tree.RightRotate(&tree, &c.node);
  tree.LeftRotate(nullptr, &x.node);
  tree.RightRotate(&tree, nullptr);
  EXPECT_EQ(tree.root, &x.node);
  EXPECT_EQ(c.node.parent, &y.node);

  tree.InsertRB(nullptr, &x.node);
  tree.DeleteFixUp(&tree, nullptr);
  EXPECT_EQ(tree.root, &x.node);
}

TEST(RBTree, DeleteReturnsTheNodeThatLeft) {
  RBTree tree{};
  Slot only;
  Fill(only, "only");
  ASSERT_EQ(tree.Insert(&tree, &only.node), 1);
  EXPECT_EQ(tree.Delete(&tree, &only.node), &only.node);
  EXPECT_EQ(tree.root, nullptr);
  EXPECT_EQ(tree.Delete(&tree, nullptr), nullptr);
  EXPECT_EQ(tree.Delete(nullptr, &only.node), nullptr);

  // b at the root with children a and c: deleting b gives back the c node,
  // and the b node now holds "c" and c's data.
  Slot a, b, c;
  Fill(a, "a");
  Fill(b, "b");
  Fill(c, "c");
  ASSERT_EQ(tree.Insert(&tree, &b.node), 1);
  ASSERT_EQ(tree.Insert(&tree, &a.node), 1);
  ASSERT_EQ(tree.Insert(&tree, &c.node), 1);
  EXPECT_EQ(tree.Delete(&tree, &b.node), &c.node);
  EXPECT_STREQ(c.node.key, "c");
  EXPECT_STREQ(b.node.key, "c");
  EXPECT_EQ(b.node.data, DataFor("c"));
  EXPECT_EQ(tree.root, &b.node);
  CheckTree(tree, {"a", "c"});
}

TEST(RBTree, OuputTreeWritesPostOrder) {
  RBTree tree{};
  Slot r, a, b;
  Fill(r, "r");
  Fill(a, "a");
  Fill(b, "z");
  ASSERT_EQ(tree.Insert(&tree, &r.node), 1);
  ASSERT_EQ(tree.Insert(&tree, &a.node), 1);
  ASSERT_EQ(tree.Insert(&tree, &b.node), 1);

  TempDir dir;
  std::string path = dir.path() + "/tree.txt";
  tree.OuputTree(&path[0]);
  EXPECT_EQ(ReadFile(path),
            "Level = 1;\t key = a\nLevel = 1;\t key = z\nLevel = 0;\t key = r\n");

  // The FILE* form starts at the depth given.
  std::string sub = dir.path() + "/sub.txt";
  FILE* file = std::fopen(sub.c_str(), "w");
  ASSERT_NE(file, nullptr);
  tree.OuputTree(file, &a.node, 4);
  tree.OuputTree(file, nullptr, 0);
  tree.OuputTree(nullptr, &a.node, 0);
  std::fclose(file);
  EXPECT_EQ(ReadFile(sub), "Level = 4;\t key = a\n");

  // An empty tree empties the file; an unopenable path or null does nothing.
  RBTree empty{};
  empty.OuputTree(&path[0]);
  EXPECT_EQ(ReadFile(path), "");
  std::string bad = dir.path() + "/missing/tree.txt";
  tree.OuputTree(&bad[0]);
  tree.OuputTree(static_cast<char*>(nullptr));
}

TEST(RBTree, OrderedSequencesAgainstStdSet) {
  for (const bool rising : {true, false}) {
    TreeDriver driver(800);
    for (int i = 0; i < 700; ++i) {
      driver.Insert(Numbered(rising ? i : 700 - i));
      driver.Check();
    }
    // Delete in the same direction, then the other half from the far end,
    // searching as the tree shrinks.
    for (int i = 0; i < 350; ++i) {
      driver.Delete(Numbered(rising ? i : 700 - i));
      driver.Search(Numbered(rising ? i + 1 : 699 - i));
      driver.Check();
    }
    for (int i = 0; i < 350; ++i) {
      driver.Delete(Numbered(rising ? 699 - i : 1 + i));
      driver.Check();
    }
    EXPECT_TRUE(driver.oracle().empty()) << (rising ? "rising" : "falling");
    if (HasFailure()) return;
  }
}

TEST(RBTree, RandomOperationsAgainstStdSet) {
  for (const std::uint32_t seed : {1u, 2u, 3u}) {
    std::mt19937 rng(seed);
    TreeDriver driver(1400);
    std::uniform_int_distribution<int> op(0, 9);
    for (int step = 0; step < 3000; ++step) {
      const int what = op(rng);
      // Inserts dominate early, deletes late, so the tree grows and shrinks.
      const bool grow = step < 1800;
      if (what < (grow ? 6 : 3)) {
        driver.Insert(RandomKey(rng));
      } else if (what < 8) {
        driver.Delete(RandomKey(rng));
      } else {
        driver.Search(RandomKey(rng));
      }
      driver.Check();
      if (HasFailure()) FAIL() << "seed " << seed << ", step " << step;
    }
  }
}

TEST(RBTree, RepeatedKeysAgainstStdSet) {
  // Twenty keys, inserted and deleted again and again: most operations hit
  // a duplicate or a key that is absent.
  std::mt19937 rng(7);
  std::uniform_int_distribution<int> pick(0, 19);
  std::bernoulli_distribution insert(0.5);
  TreeDriver driver(64);
  for (int step = 0; step < 4000; ++step) {
    const std::string key = "key" + std::to_string(pick(rng));
    if (insert(rng)) {
      driver.Insert(key);
    } else {
      driver.Delete(key);
    }
    driver.Check();
    if (HasFailure()) FAIL() << "step " << step;
  }
}
