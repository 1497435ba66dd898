/// @class RBTree
/// RBTree: a red-black tree over nodes that the caller supplies.
///
/// The tree is intrusive: the caller allocates every RBTreeNode and every key
/// buffer, and frees them. The tree allocates nothing and frees nothing; it
/// only links, recolours and unlinks the nodes it is handed. Nodes still
/// linked when the caller drops the tree stay the caller's to free.
///
/// Keys are NUL-terminated texts ordered by strcmp (bytes, case-sensitive) and
/// unique within a tree. A null link marks a leaf; there is no sentinel node,
/// and a missing node counts as black.
///
/// Both types are plain aggregates with no constructors of the library's:
/// @code
///   RBTree tree{};                    // root null: an empty tree
///   RBTreeNode node{};                // links null
///   node.key = buffer;                // the caller's buffer, see Delete
///   tree.Insert(&tree, &node);
/// @endcode
/// Every operation changes the tree given as its RBTree* argument, not the
/// receiver; only OuputTree(char*) reads the receiver's own root. Normally
/// receiver and argument are the same tree.
#ifndef VQ0300_RBTREE_H
#define VQ0300_RBTREE_H
/// @file

#include <cstdio>

#include "vq0300/vq0300_export.h"

/// One node of an RBTree, allocated and freed by the caller; see RBTree.
struct RBTreeNode {
  /// Not read or written by any operation; it keeps the node's layout.
  void* reserved = nullptr;
  /// The caller's word, carried with the key. The tree only copies it (Delete).
  void* data = nullptr;
  /// 1 red, 0 black.
  unsigned char color = 0;
  /// The key text, in a buffer of the caller's.
  char* key = nullptr;
  RBTreeNode* parent = nullptr;  ///< null at the root
  /// The subtree of smaller keys; null for none.
  RBTreeNode* left = nullptr;
  /// The subtree of greater keys; null for none.
  RBTreeNode* right = nullptr;
};

class VQ0300_API RBTree {
 public:
  /// Leftmost node of the subtree at node; node itself without a left child.
  /// A null node gives null.
  RBTreeNode* Minimum(RBTreeNode* node);

  /// Rightmost node of the subtree at node; node itself without a right child.
  /// A null node gives null.
  RBTreeNode* Maximum(RBTreeNode* node);

  /// The node with the next greater key, or null after the greatest.
  /// A null node gives null.
  RBTreeNode* Succesor(RBTreeNode* node);

  /// The node in the subtree at node whose key equals key, or null. Only that
  /// subtree is searched. A null node or key gives null.
  RBTreeNode* Search(RBTreeNode* node, char* key);

  /// Rotate around node; colours do not change, the in-order sequence
  /// a x b y c is kept. Steps of InsertRB and DeleteFixUp.
  /**
   * @code{.unparsed}
   *        x                       y
   *       / \     LeftRotate(x)   / \
   *      a   y       ------>     x   c
   *         / \      <------    / \
   *        b   c  RightRotate(y) a   b
   * @endcode
   */
  /// A null tree or node, or a node lacking the child that moves up, does
  /// nothing.
  void LeftRotate(RBTree* tree, RBTreeNode* node);
  /// The mirror of LeftRotate (see the picture there).
  void RightRotate(RBTree* tree, RBTreeNode* node);

  /// Colours a freshly linked node red and restores the red-black rules by
  /// recolouring and rotating on the way up. A step of Insert.
  /// A null tree or node does nothing.
  void InsertRB(RBTree* tree, RBTreeNode* node);

  /// Links node in by its key and balances the tree. Sets node's parent and
  /// colour; left and right must be null on entry. Returns 1 on success and 0
  /// for a null tree, node or key, or a key already in the tree; a rejected
  /// node is left untouched and stays the caller's.
  int Insert(RBTree* tree, RBTreeNode* node);

  /// Restores the red-black rules after a black node left the tree; node is
  /// the node that took its place. A step of Delete.
  /// A null tree or node does nothing (Delete handles an empty place itself).
  void DeleteFixUp(RBTree* tree, RBTreeNode* node);

  /// Removes node's key from the tree and returns the node that left it; null
  /// for a null tree or node.
  /// Beware: if node has two children, its successor y leaves the tree
  /// instead. y's key text is copied into node's key buffer (util_strncpy)
  /// and y's data into node's data; node stays linked, and y comes back with
  /// its own key and data and stale links. So every key buffer must be able
  /// to take the key of any node that may move into it, with its terminator.
  /// Example: with keys a, b, c and b at the root, Delete(&tree, b-node)
  /// returns the c-node; the b-node now holds key "c" and c's data.
  RBTreeNode* Delete(RBTree* tree, RBTreeNode* node);

  /// Writes the subtree at node to file, post-order (left subtree, right
  /// subtree, node), one line per node: "Level = %d;\t key = %s\n", with
  /// node at depth level and its children one deeper. Write results are not
  /// looked at. A null file or node writes nothing.
  void OuputTree(FILE* file, RBTreeNode* node, int level);

  /// Writes the whole tree of this receiver's root to the file at path,
  /// created or emptied, from level 0. If the file cannot be opened the call
  /// returns without a word. An empty tree leaves an empty file.
  void OuputTree(char* path);

  /// Not read or written by any operation; it keeps the tree's layout.
  void* reserved = nullptr;
  /// The root node, null when the tree is empty.
  RBTreeNode* root = nullptr;
};

#endif  // VQ0300_RBTREE_H
