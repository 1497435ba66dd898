// LTree: an n-ary tree of object pointers on LObjList.
#include "vq0300/LTree.h"

#include <memory>

LTree::LTree() : m_pParent(nullptr), m_pTreeNode(nullptr), m_nIndex(0) {}

LTree::~LTree() = default;

void LTree::SetTreeNode(LObject* payload) { m_pTreeNode = payload; }

LObject* LTree::GetTreeNode() { return m_pTreeNode; }

// The new node is owned here until the child list holds it: when the list
// cannot grow, the node goes and the tree is unchanged.
LTree* LTree::InsertChild(int i, LObject* payload) {
  std::unique_ptr<LTree> child(new LTree);
  child->m_pTreeNode = payload;
  child->m_pParent = this;
  child->m_nIndex = i;
  m_Children.Insert(i, child.get());
  return child.release();
}

// Insert at the count appends, as AddTail does.
LTree* LTree::InsertLast(LObject* payload) { return InsertChild(m_Children.GetCount(), payload); }

LObject* LTree::GetChild(int i) {
  LTree* child = static_cast<LTree*>(m_Children.GetAt(i));
  return child != nullptr ? child->m_pTreeNode : nullptr;
}

LObject* LTree::GetLastChild() {
  LTree* child = static_cast<LTree*>(m_Children.GetTail());
  return child != nullptr ? child->m_pTreeNode : nullptr;
}

int LTree::GetChildNumber() { return m_Children.GetCount(); }

LObject* LTree::Delete() {
  if (m_Children.GetCount() > 0) return nullptr;
  if (m_pParent != nullptr) {
    // m_nIndex stops being the position as soon as a sibling comes or goes,
    // so the entry is found by its own pointer.
    LObjList& siblings = m_pParent->m_Children;
    for (int pos = 0; pos < siblings.GetCount(); ++pos) {
      if (siblings.GetAt(pos) == this) {
        siblings.Delete(pos);
        break;
      }
    }
  }
  return m_pTreeNode;
}

LTree* LTree::GetParent() { return m_pParent; }
