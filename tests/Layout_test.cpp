// The field layout that callers compile against: sizes and offsets of the
// classes whose fields callers touch, checked when this file compiles. CI also
// builds it against the installed headers.
#include <vq0300/vq0300.h>

#include <cstddef>
#include <type_traits>

// What the compiler can check is checked where the program is built.
// ErrorElement has a vptr, so it is no standard-layout class and offsetof is
// not defined for it; the ABI check (.ci/abi) guards its field offsets.
static_assert(sizeof(ErrorElement) == 24, "vptr, code, continue flag, message");
static_assert(sizeof ErrorElement::m_dwErrorCode == 4, "m_dwErrorCode is 32 bits");
static_assert(sizeof ErrorElement::m_wContinue == 2, "m_wContinue is 16 bits");
static_assert(std::is_standard_layout_v<RBTreeNode>, "RBTreeNode");
static_assert(sizeof(RBTreeNode) == 56, "RBTreeNode");
static_assert(offsetof(RBTreeNode, data) == 8, "RBTreeNode::data");
static_assert(offsetof(RBTreeNode, color) == 16, "RBTreeNode::color");
static_assert(offsetof(RBTreeNode, key) == 24, "RBTreeNode::key");
static_assert(offsetof(RBTreeNode, parent) == 32, "RBTreeNode::parent");
static_assert(offsetof(RBTreeNode, left) == 40, "RBTreeNode::left");
static_assert(offsetof(RBTreeNode, right) == 48, "RBTreeNode::right");
static_assert(std::is_standard_layout_v<RBTree>, "RBTree");
static_assert(sizeof(RBTree) == 16, "RBTree");
static_assert(offsetof(RBTree, root) == 8, "RBTree::root");
static_assert(sizeof(LCString) == 16, "m_pszData, m_nLength, m_nAddPos: no vptr");
