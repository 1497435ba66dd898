// RBTree: an intrusive red-black tree over caller-owned nodes and keys.
#include "vq0300/RBTree.h"

#include <cstring>

#include "vq0300/BoundedCopy.h"

// The red-black rules that hold between operations:
//   1. Every node is red or black.
//   2. The root is black.
//   3. Every leaf, a null link, is black.
//   4. A red node has no red child.
//   5. Every path from a node down to a null link passes the same number of
//      black nodes (the node's black height).
// Together they keep the longest path from the root at most twice the
// shortest, so the height stays within 2 log2(n + 1).
//
// In the diagrams below, capital letters are black nodes, lower-case letters
// red ones, and a name in parentheses is a node of either colour.

namespace {

constexpr unsigned char kBlack = 0;
constexpr unsigned char kRed = 1;

bool IsRed(const RBTreeNode* node) { return node != nullptr && node->color == kRed; }

bool IsBlack(const RBTreeNode* node) { return !IsRed(node); }

// The order of strcmp, with the first byte decided inline and strcmp called
// only on a tie: near the top of a tree most comparisons end at that byte,
// and a call costs more than the comparison itself.
int CompareKeys(const char* a, const char* b) {
  if (*a != *b) return static_cast<unsigned char>(*a) - static_cast<unsigned char>(*b);
  return std::strcmp(a, b);
}

// Makes replacement take old_child's place under parent, or at the root.
void ReplaceChild(RBTree* tree, RBTreeNode* parent, RBTreeNode* old_child,
                  RBTreeNode* replacement) {
  if (parent == nullptr) {
    tree->root = replacement;
  } else if (parent->left == old_child) {
    parent->left = replacement;
  } else {
    parent->right = replacement;
  }
}

// A side of a node, as the link to its child there: node->*side. The
// rebalancing steps are written once for the side of the node they start from
// ("near") and its opposite ("far"); the mirror image is the same code with
// the sides swapped.
using Side = RBTreeNode* RBTreeNode::*;
constexpr Side kLeft = &RBTreeNode::left;
constexpr Side kRight = &RBTreeNode::right;

Side Opposite(Side side) { return side == kLeft ? kRight : kLeft; }

// The side of parent that child hangs on, and the other one.
struct Sides {
  Side near;
  Side far;
};

Sides SidesOf(const RBTreeNode* parent, const RBTreeNode* child) {
  return parent->left == child ? Sides{kLeft, kRight} : Sides{kRight, kLeft};
}

// The rotation proper, for a node that has the child that moves up: the child
// on the far side of `toward` takes node's place and node becomes its child
// on the `toward` side, so Rotate(tree, x, kLeft) is the left rotation. The
// rebalancing loops call this directly rather than the exported forms, which
// as interposable symbols of a shared object would cost an indirect call each.
void Rotate(RBTree* tree, RBTreeNode* node, Side toward) {
  const Side from = Opposite(toward);
  RBTreeNode* up = node->*from;
  node->*from = up->*toward;
  if (up->*toward != nullptr) (up->*toward)->parent = node;
  up->parent = node->parent;
  ReplaceChild(tree, node->parent, node, up);
  up->*toward = node;
  node->parent = up;
}

RBTreeNode* Leftmost(RBTreeNode* node) {
  while (node->left != nullptr) node = node->left;
  return node;
}

}  // namespace

RBTreeNode* RBTree::Minimum(RBTreeNode* node) {
  if (node == nullptr) return nullptr;
  return Leftmost(node);
}

RBTreeNode* RBTree::Maximum(RBTreeNode* node) {
  if (node == nullptr) return nullptr;
  while (node->right != nullptr) node = node->right;
  return node;
}

RBTreeNode* RBTree::Succesor(RBTreeNode* node) {
  if (node == nullptr) return nullptr;
  if (node->right != nullptr) return Leftmost(node->right);
  // Climb while coming up from the right: those ancestors are all smaller.
  RBTreeNode* parent = node->parent;
  while (parent != nullptr && node == parent->right) {
    node = parent;
    parent = parent->parent;
  }
  return parent;
}

RBTreeNode* RBTree::Search(RBTreeNode* node, char* key) {
  if (key == nullptr) return nullptr;
  while (node != nullptr) {
    const int order = CompareKeys(node->key, key);
    if (order == 0) return node;
    node = order > 0 ? node->left : node->right;
  }
  return nullptr;
}

void RBTree::LeftRotate(RBTree* tree, RBTreeNode* node) {
  if (tree == nullptr || node == nullptr || node->right == nullptr) return;
  Rotate(tree, node, kLeft);
}

void RBTree::RightRotate(RBTree* tree, RBTreeNode* node) {
  if (tree == nullptr || node == nullptr || node->left == nullptr) return;
  Rotate(tree, node, kRight);
}

// Rebalancing after an insertion. n is the new node, p its parent, g its
// grandparent and u its uncle, the other child of g. The cases are drawn for
// p the left child of g (near is left, far is right); the code serves the
// mirror image too, with the sides swapped.
//
// Loop invariant: n is red, and rule 4 between n and p is the only rule that
// may be broken (rule 2 too, once n has climbed to the root). Rule 5 holds
// throughout. If p is red it is not the root (rule 2), so g exists and is
// black.
void RBTree::InsertRB(RBTree* tree, RBTreeNode* node) {
  if (tree == nullptr || node == nullptr) return;
  node->color = kRed;
  while (node != tree->root && IsRed(node->parent)) {
    RBTreeNode* parent = node->parent;
    RBTreeNode* grand = parent->parent;
    const auto [near, far] = SidesOf(grand, parent);
    RBTreeNode* uncle = grand->*far;

    if (IsRed(uncle)) {
      /*
       * Case 1: the uncle is red. Push g's black down to p and u; the black
       * height of g is unchanged, but g may now have a red parent, so go on
       * from g.
       *
       *        G                g   <- n
       *       / \              / \
       *      p   u    -->     P   U
       *     /                /
       *    n                n
       */
      parent->color = kBlack;
      uncle->color = kBlack;
      grand->color = kRed;
      node = grand;
      continue;
    }

    if (node == parent->*far) {
      /*
       * Case 2: the uncle is black and n is an inner child. Rotate at p
       * so that the red pair lies on the outside; the old p is the new n.
       * Both are red, so no black height changes. Go on to case 3.
       *
       *      G                G
       *     / \              / \
       *    p   U    -->     n   U
       *     \              /
       *      n            p   <- new n
       */
      node = parent;
      Rotate(tree, node, near);
      parent = node->parent;
    }
    /*
     * Case 3: the uncle is black and n is an outer child. Rotate at g and
     * swap the colours of p and g: the subtree keeps its black height and
     * its black top, so every rule holds and the loop ends.
     *
     *        G                P
     *       / \              / \
     *      p   U    -->     n   g
     *     /                      \
     *    n                        U
     */
    parent->color = kBlack;
    grand->color = kRed;
    Rotate(tree, grand, far);
  }
  tree->root->color = kBlack;
}

int RBTree::Insert(RBTree* tree, RBTreeNode* node) {
  if (tree == nullptr || node == nullptr || node->key == nullptr) return 0;
  RBTreeNode* parent = nullptr;
  RBTreeNode** link = &tree->root;
  while (*link != nullptr) {
    const int order = CompareKeys(node->key, (*link)->key);
    if (order == 0) return 0;  // nothing has been written yet
    parent = *link;
    link = order < 0 ? &parent->left : &parent->right;
  }
  node->parent = parent;
  *link = node;
  InsertRB(tree, node);
  return 1;
}

// Rebalancing after a black node left the tree. x stands in its place, p is
// the parent of x and w the sibling of x, the other child of p. The cases
// are drawn for x the left child of p (near is left, far is right); the code
// serves the mirror image too, with the sides swapped.
//
// Loop invariant: x is black and every path through x passes one black node
// fewer than the paths through w; all other rules hold. Since the side of w
// is the taller one by black height, w exists. Painting x black ends the
// debt at once when x is red, and the debt vanishes when x reaches the root.
void RBTree::DeleteFixUp(RBTree* tree, RBTreeNode* node) {
  if (tree == nullptr || node == nullptr) return;
  while (node != tree->root && IsBlack(node)) {
    RBTreeNode* parent = node->parent;
    const auto [near, far] = SidesOf(parent, node);
    RBTreeNode* sibling = parent->*far;

    if (IsRed(sibling)) {
      /*
       * Case 1: w is red, so p and the children of w are black. Rotate at
       * p and swap the colours of p and w: x gets a black sibling, the old
       * Wl, and the debt is unchanged. Go on to case 2, 3 or 4.
       *
       *      P                    W
       *     / \                  / \
       *    X   w      -->       p   Wr
       *       / \              / \
       *      Wl  Wr           X   Wl  <- new w
       */
      sibling->color = kBlack;
      parent->color = kRed;
      Rotate(tree, parent, near);
      sibling = parent->*far;
    }
    if (IsBlack(sibling->left) && IsBlack(sibling->right)) {
      /*
       * Case 2: w and both its children are black. Paint w red: both sides
       * of p now lack a black node, so the debt moves up to p. A red p
       * ends the loop and is painted black below.
       *
       *     (p)                  (p)  <- new x
       *     / \                  / \
       *    X   W      -->       X   w
       *       / \                  / \
       *      Wl  Wr               Wl  Wr
       */
      sibling->color = kRed;
      node = parent;
      continue;
    }
    if (IsBlack(sibling->*far)) {
      /*
       * Case 3: w is black, its left child red and its right child black.
       * Rotate at w and swap the colours of w and wl: the black height on
       * w's side is unchanged, and the new w has a red right child. Go on
       * to case 4.
       *
       *     (p)                  (p)
       *     / \                  / \
       *    X   W      -->       X   Wl  <- new w
       *       / \                    \
       *      wl  Wr                   w
       *                                \
       *                                 Wr
       */
      (sibling->*near)->color = kBlack;
      sibling->color = kRed;
      Rotate(tree, sibling, far);
      sibling = parent->*far;
    }
    /*
     * Case 4: w is black and its right child red. Rotate at p; w takes p's
     * colour, p and wr turn black. x's side gains the black p and w's side
     * keeps its count through the new black Wr: the debt is paid and the
     * loop ends.
     *
     *     (p)                  (w)
     *     / \                  / \
     *    X   W      -->       P   Wr
     *       / \              / \
     *    (wl)  wr           X  (wl)
     */
    sibling->color = parent->color;
    parent->color = kBlack;
    (sibling->*far)->color = kBlack;
    Rotate(tree, parent, near);
    node = tree->root;
  }
  node->color = kBlack;
}

RBTreeNode* RBTree::Delete(RBTree* tree, RBTreeNode* node) {
  if (tree == nullptr || node == nullptr) return nullptr;
  // y is the node that leaves the tree: node itself if it has at most one
  // child, else its successor, which has no left child.
  RBTreeNode* leaving =
      (node->left == nullptr || node->right == nullptr) ? node : Leftmost(node->right);
  RBTreeNode* child = leaving->left != nullptr ? leaving->left : leaving->right;
  RBTreeNode* parent = leaving->parent;

  // A black node leaving without a child leaves an empty place that
  // DeleteFixUp must start from. A black stand-in leaf on the stack holds
  // that place during the fix-up and is unlinked afterwards; it never has
  // children, so it counts exactly as the null link it stands for. When the
  // last node leaves, there is nothing to restore.
  RBTreeNode stand_in{};
  const bool fix = leaving->color == kBlack;
  if (fix && child == nullptr && parent != nullptr) child = &stand_in;

  if (child != nullptr) child->parent = parent;
  ReplaceChild(tree, parent, leaving, child);

  if (leaving != node) {
    util_strncpy(node->key, leaving->key, 0, 0);
    node->data = leaving->data;
  }

  if (fix) DeleteFixUp(tree, child);
  if (child == &stand_in) ReplaceChild(tree, stand_in.parent, &stand_in, nullptr);
  return leaving;
}

void RBTree::OuputTree(FILE* file, RBTreeNode* node, int level) {
  if (file == nullptr || node == nullptr) return;
  if (node->left != nullptr) OuputTree(file, node->left, level + 1);
  if (node->right != nullptr) OuputTree(file, node->right, level + 1);
  std::fprintf(file, "Level = %d;\t key = %s\n", level, node->key != nullptr ? node->key : "");
}

void RBTree::OuputTree(char* path) {
  if (path == nullptr) return;
  FILE* file = std::fopen(path, "wt");
  if (file == nullptr) return;
  OuputTree(file, root, 0);
  std::fclose(file);
}
