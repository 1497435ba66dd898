/// @class LTree
/// LTree: one node of an n-ary tree of LObject payloads.
///
/// A root is simply a node without a parent. InsertChild and InsertLast
/// allocate the child nodes and hand them to the caller, who owns every node:
/// keep the returned pointers and destroy the nodes yourself, leaves first,
/// detaching each child with Delete() beforehand. No operation destroys a node
/// or a payload; ~LTree() frees only the node's own child list.
///
/// The child list can only be read back as payloads (GetChild, GetLastChild),
/// so downward navigation by node rests on the pointers the caller kept.
#ifndef VQ0300_LTREE_H
#define VQ0300_LTREE_H
/// @file

#include "vq0300/LObjList.h"
#include "vq0300/LObject.h"
#include "vq0300/vq0300_export.h"

class VQ0300_API LTree : public LObject {
 public:
  /// A root without payload and without children.
  LTree();
  /// Leaves the children, the payload and the parent's list untouched.
  ~LTree() override;

  /// Stores the payload; a payload replaced is not destroyed.
  void SetTreeNode(LObject* payload);
  /// The stored payload; null until SetTreeNode.
  LObject* GetTreeNode();

  /// Makes a child node carrying payload and puts it at position i of the
  /// children by LObjList::Insert's rule (negative or past the end appends,
  /// 0 makes it the first child). The child's m_nIndex is i as passed.
  LTree* InsertChild(int i, LObject* payload);

  /// Makes a child node behind all others; its m_nIndex is the number of
  /// children it found.
  LTree* InsertLast(LObject* payload);

  /// Payload of the child at position i (not the child node).
  /// A position outside the children returns null.
  LObject* GetChild(int i);

  /// Payload of the last child. A node without children returns null.
  LObject* GetLastChild();

  /// The number of children of this node (not of its whole subtree).
  int GetChildNumber();

  /// Detaches this childless node from its parent's list and returns its
  /// payload. A node with children is left as it is and gives null. The node
  /// keeps its m_pParent and stays allocated; a second call takes nothing out
  /// and returns the payload again.
  /// On a root nothing changes and the payload is returned.
  LObject* Delete();

  /// The node this one was made under; null for a root. Delete() does not
  /// clear it.
  LTree* GetParent();

 private:
  LTree* m_pParent;      ///< null in a root
  LObject* m_pTreeNode;  ///< the payload, null until set
  LObjList m_Children;   ///< child nodes in order, each an LTree*
  int m_nIndex;          ///< position asked for at insertion; never renumbered
};

#endif  // VQ0300_LTREE_H
