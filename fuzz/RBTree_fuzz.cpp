// Fuzzes RBTree: a sequence of inserts, searches, deletes and rotations
// driven by the input, on a pool of caller-owned nodes, beside a std::map
// from key to data. Every key buffer is a heap block of exactly the size of
// the longest key, so the address sanitizer sees a copy past it. After every
// step the harness checks the red-black rules, the parent links, the key
// order, that the walk from Minimum by Succesor gives the keys of the map in
// order with their own data, and that only nodes in use are linked. Delete
// must return the node that left the tree: the one passed, or its successor
// when it has two children, whose key and data then move into the node
// passed. At the end of an input the tree dump is compared with a post-order
// walk of the harness's own.
#include <fuzzer/FuzzedDataProvider.h>
#include <vq0300/RBTree.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "FuzzSupport.h"

namespace {

const char* g_op = "";  // the current step, printed when a check fails

[[noreturn]] void Fail(int line, const char* what) { FailInStep("RBTree_fuzz", line, g_op, what); }

constexpr int kNodes = 48;
constexpr size_t kMaxKey = 6;

using Model = std::map<std::string, uintptr_t>;  // key -> data

void* Token(uintptr_t serial) { return reinterpret_cast<void*>(serial); }
uintptr_t Serial(const void* data) { return reinterpret_cast<uintptr_t>(data); }

struct Pool {
  RBTreeNode nodes[kNodes];
  std::unique_ptr<char[]> keys[kNodes];
  bool used[kNodes] = {};
  Pool() {
    for (auto& k : keys) k.reset(new char[kMaxKey + 1]());
  }
  int IndexOf(const RBTreeNode* n) const {
    for (int i = 0; i < kNodes; ++i) {
      if (n == &nodes[i]) return i;
    }
    return -1;
  }
  int FreeNode() const {
    for (int i = 0; i < kNodes; ++i) {
      if (!used[i]) return i;
    }
    return -1;
  }
};

// ---- Checks -----------------------------------------------------------------------

// The subtree at n: parent links, colours, order within (lo, hi), nodes in
// use and each seen once. Returns its black height.
int Verify(const Pool& pool, const RBTreeNode* n, const RBTreeNode* parent, const char* lo,
           const char* hi, std::vector<bool>& seen) {
  if (n == nullptr) return 1;
  const int i = pool.IndexOf(n);
  CHECK(i >= 0 && pool.used[i] && !seen[i]);
  seen[i] = true;
  CHECK(n->parent == parent);
  CHECK(n->color == 0 || n->color == 1);
  CHECK(n->key == pool.keys[i].get());
  CHECK(lo == nullptr || std::strcmp(lo, n->key) < 0);
  CHECK(hi == nullptr || std::strcmp(n->key, hi) < 0);
  if (n->color == 1) {
    CHECK(n->left == nullptr || n->left->color == 0);
    CHECK(n->right == nullptr || n->right->color == 0);
  }
  const int left = Verify(pool, n->left, n, lo, n->key, seen);
  const int right = Verify(pool, n->right, n, n->key, hi, seen);
  CHECK(left == right);
  return left + (n->color == 0 ? 1 : 0);
}

// Order and links only: what a rotation keeps.
void VerifyOrder(const Pool& pool, RBTree& tree) {
  std::vector<bool> seen(kNodes);
  CHECK(tree.root == nullptr || tree.root->parent == nullptr);
  std::string last;
  bool first = true;
  for (RBTreeNode* n = tree.Minimum(tree.root); n != nullptr; n = tree.Succesor(n)) {
    const int i = pool.IndexOf(n);
    CHECK(i >= 0 && pool.used[i] && !seen[i]);
    seen[i] = true;
    CHECK(n->left == nullptr || n->left->parent == n);
    CHECK(n->right == nullptr || n->right->parent == n);
    CHECK(first || last < n->key);
    last = n->key;
    first = false;
  }
}

void CheckTree(const Pool& pool, RBTree& tree, const Model& model) {
  std::vector<bool> seen(kNodes);
  Verify(pool, tree.root, nullptr, nullptr, nullptr, seen);
  CHECK(tree.root == nullptr || tree.root->color == 0);
  // The walk by Succesor visits the model's keys in order, each with its data.
  auto it = model.begin();
  RBTreeNode* last = nullptr;
  for (RBTreeNode* n = tree.Minimum(tree.root); n != nullptr; n = tree.Succesor(n)) {
    CHECK(it != model.end());
    CHECK(it->first == n->key && it->second == Serial(n->data));
    ++it;
    last = n;
  }
  CHECK(it == model.end());
  CHECK(tree.Maximum(tree.root) == last);
  int used = 0;
  for (bool u : pool.used) used += u ? 1 : 0;
  CHECK(used == static_cast<int>(model.size()));
}

// ---- Steps --------------------------------------------------------------------------

// A key: mostly short texts over "abcd", so that keys repeat; else any bytes.
std::string Key(FuzzedDataProvider& in) {
  if (in.ConsumeIntegralInRange(0, 3) == 0) return in.ConsumeRandomLengthString(kMaxKey).c_str();
  std::string key(in.ConsumeIntegralInRange<size_t>(0, 3), 'a');
  for (char& c : key) c = static_cast<char>('a' + in.ConsumeIntegralInRange(0, 3));
  return key;
}

// The node at position k of the in-order walk, k taken modulo the size.
RBTreeNode* NodeAt(RBTree& tree, size_t size, FuzzedDataProvider& in) {
  if (size == 0) return nullptr;
  size_t k = in.ConsumeIntegralInRange<size_t>(0, size - 1);
  RBTreeNode* n = tree.Minimum(tree.root);
  while (k-- > 0) n = tree.Succesor(n);
  return n;
}

void Insert(Pool& pool, RBTree& tree, Model& model, uintptr_t& serial, const std::string& key) {
  g_op = "Insert";
  const int i = pool.FreeNode();
  if (i < 0) return;
  RBTreeNode& n = pool.nodes[i];
  std::strcpy(pool.keys[i].get(), key.c_str());
  // Parent and colour hold rubbish: Insert sets them, or leaves a refused
  // node as it was.
  n = RBTreeNode{};
  n.key = pool.keys[i].get();
  n.data = Token(++serial);
  n.parent = &pool.nodes[(i + 1) % kNodes];
  n.color = 7;
  const RBTreeNode before = n;
  const bool fresh = model.count(key) == 0;
  pool.used[i] = true;  // linked, or checked below
  const int result = tree.Insert(&tree, &n);
  CHECK(result == (fresh ? 1 : 0));
  if (fresh) {
    model[key] = serial;
  } else {
    pool.used[i] = false;
    CHECK(n.parent == before.parent && n.color == 7 && n.left == nullptr && n.right == nullptr);
    CHECK(n.key == before.key && n.data == before.data && key == n.key);
  }
}

void Delete(Pool& pool, RBTree& tree, Model& model, RBTreeNode* n) {
  g_op = "Delete";
  if (n == nullptr) return;
  const std::string key = n->key;
  RBTreeNode* leaving = n->left != nullptr && n->right != nullptr ? tree.Succesor(n) : n;
  const std::string leavingKey = leaving->key;
  void* const leavingData = leaving->data;
  RBTreeNode* const result = tree.Delete(&tree, n);
  CHECK(result == leaving);
  CHECK(result->key == leavingKey && result->data == leavingData);
  if (leaving != n) CHECK(n->key == leavingKey && n->data == leavingData);
  CHECK(model.erase(key) == 1);
  const int i = pool.IndexOf(result);
  CHECK(i >= 0 && pool.used[i]);
  pool.used[i] = false;
}

void SearchSubtree(RBTree& tree, const Model& model, FuzzedDataProvider& in) {
  g_op = "Search";
  RBTreeNode* top = NodeAt(tree, model.size(), in);
  std::string key = Key(in);
  RBTreeNode* found = tree.Search(tree.root, &key[0]);
  CHECK((found != nullptr) == (model.count(key) == 1));
  if (found != nullptr) CHECK(found->key == key && Serial(found->data) == model.at(key));
  if (top == nullptr) return;
  // From a node, only its subtree counts.
  std::set<std::string> inside;
  std::vector<RBTreeNode*> stack{top};
  while (!stack.empty()) {
    RBTreeNode* n = stack.back();
    stack.pop_back();
    inside.insert(n->key);
    if (n->left != nullptr) stack.push_back(n->left);
    if (n->right != nullptr) stack.push_back(n->right);
  }
  found = tree.Search(top, &key[0]);
  CHECK((found != nullptr) == (inside.count(key) == 1));
  if (found != nullptr) CHECK(found->key == key);
}

// A rotation and its inverse: order and links hold in between, and the tree
// is as before afterwards.
void Rotations(const Pool& pool, RBTree& tree, const Model& model, FuzzedDataProvider& in) {
  g_op = "rotations";
  RBTreeNode* n = NodeAt(tree, model.size(), in);
  if (n == nullptr) return;
  struct Links {
    RBTreeNode *parent, *left, *right;
    unsigned char color;
    bool operator==(const Links& o) const {
      return parent == o.parent && left == o.left && right == o.right && color == o.color;
    }
  };
  std::vector<Links> before;
  for (const RBTreeNode& x : pool.nodes) before.push_back({x.parent, x.left, x.right, x.color});
  RBTreeNode* const root = tree.root;
  const bool left = in.ConsumeBool();
  RBTreeNode* const up = left ? n->right : n->left;
  if (left) {
    tree.LeftRotate(&tree, n);
  } else {
    tree.RightRotate(&tree, n);
  }
  VerifyOrder(pool, tree);
  if (up == nullptr) {
    // Nothing to rotate: nothing changes.
  } else {
    CHECK(n->parent == up);
    CHECK((root == n) == (tree.root == up));
    if (left) {
      tree.RightRotate(&tree, up);
    } else {
      tree.LeftRotate(&tree, up);
    }
  }
  CHECK(tree.root == root);
  for (int i = 0; i < kNodes; ++i) {
    const RBTreeNode& x = pool.nodes[i];
    CHECK((before[i] == Links{x.parent, x.left, x.right, x.color}));
  }
}

void Nulls(RBTree& tree, Pool& pool) {
  g_op = "null arguments";
  CHECK(tree.Insert(nullptr, &pool.nodes[0]) == 0);
  CHECK(tree.Insert(&tree, nullptr) == 0);
  CHECK(tree.Delete(&tree, nullptr) == nullptr);
  CHECK(tree.Delete(nullptr, nullptr) == nullptr);
  char key[] = "a";
  CHECK(tree.Search(nullptr, key) == nullptr);
  CHECK(tree.Search(tree.root, nullptr) == nullptr);
  CHECK(tree.Minimum(nullptr) == nullptr && tree.Maximum(nullptr) == nullptr);
  CHECK(tree.Succesor(nullptr) == nullptr);
  RBTreeNode keyless{};
  CHECK(tree.Insert(&tree, &keyless) == 0);
}

// The dump, post-order with depths, as the harness walks it.
void Dump(const RBTreeNode* n, int level, std::string& out) {
  if (n == nullptr) return;
  Dump(n->left, level + 1, out);
  Dump(n->right, level + 1, out);
  out += "Level = " + std::to_string(level) + ";\t key = " + n->key + "\n";
}

void CheckDump(RBTree& tree) {
  g_op = "OuputTree";
  char* area = nullptr;
  size_t size = 0;
  FILE* f = open_memstream(&area, &size);
  CHECK(f != nullptr);
  tree.OuputTree(f, tree.root, 0);
  CHECK(std::fclose(f) == 0);
  const std::string got(area, size);
  std::free(area);
  std::string want;
  Dump(tree.root, 0, want);
  CHECK(got == want);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider in(data, size);
  std::unique_ptr<Pool> pool(new Pool);
  RBTree tree{};
  Model model;
  uintptr_t serial = 0;
  for (int steps = 0; steps < 256 && in.remaining_bytes() > 0; ++steps) {
    switch (in.ConsumeIntegralInRange(0, 9)) {
      case 0:
      case 1:
      case 2:
      case 3:
        Insert(*pool, tree, model, serial, Key(in));
        break;
      case 4:
      case 5: {
        std::string key = Key(in);
        RBTreeNode* n = tree.Search(tree.root, &key[0]);
        CHECK((n != nullptr) == (model.count(key) == 1));
        Delete(*pool, tree, model, n);
        break;
      }
      case 6:
        Delete(*pool, tree, model, NodeAt(tree, model.size(), in));
        break;
      case 7:
        SearchSubtree(tree, model, in);
        break;
      case 8:
        Rotations(*pool, tree, model, in);
        break;
      default:
        Nulls(tree, *pool);
        break;
    }
    CheckTree(*pool, tree, model);
  }
  CheckDump(tree);
  return 0;
}
