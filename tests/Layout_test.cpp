// The field layout that callers compile against: sizes and offsets of the
// classes whose fields callers touch. CI also builds this file against the
// installed headers.
#include <vq0300/vq0300.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

template <typename T, typename F>
std::ptrdiff_t OffsetOf(const T& object, const F& field) {
  return reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&object);
}

}  // namespace

TEST(Layout, ErrorElement) {
  // vptr, then m_dwErrorCode (32 bits), m_wContinue (16 bits), m_pszMessage.
  ErrorElement element;
  EXPECT_EQ(sizeof element, 24u);
  EXPECT_EQ(OffsetOf(element, element.m_dwErrorCode), 8);
  EXPECT_EQ(OffsetOf(element, element.m_wContinue), 12);
  EXPECT_EQ(sizeof element.m_dwErrorCode, 4u);
  EXPECT_EQ(sizeof element.m_wContinue, 2u);
  std::string text = "message";
  element.SetErrorMessage(text.data());
  char* stored = nullptr;
  std::memcpy(&stored, reinterpret_cast<const char*>(&element) + 16, sizeof stored);
  EXPECT_EQ(stored, element.GetErrorMessage());
}

TEST(Layout, RedBlackTree) {
  RBTreeNode node{};
  EXPECT_EQ(sizeof node, 56u);
  EXPECT_EQ(offsetof(RBTreeNode, data), 8u);
  EXPECT_EQ(offsetof(RBTreeNode, color), 16u);
  EXPECT_EQ(offsetof(RBTreeNode, key), 24u);
  EXPECT_EQ(offsetof(RBTreeNode, parent), 32u);
  EXPECT_EQ(offsetof(RBTreeNode, left), 40u);
  EXPECT_EQ(offsetof(RBTreeNode, right), 48u);
  RBTree tree{};
  EXPECT_EQ(sizeof tree, 16u);
  EXPECT_EQ(offsetof(RBTree, root), 8u);
}

TEST(Layout, LCString) {
  // m_pszData, m_nLength, m_nAddPos: no vptr.
  LCString text("abc");
  ASSERT_EQ(sizeof text, 16u);
  const char* data = nullptr;
  int32_t length = 0;
  std::memcpy(&data, &text, sizeof data);
  std::memcpy(&length, reinterpret_cast<const char*>(&text) + 8, sizeof length);
  EXPECT_EQ(data, text.c_str());
  EXPECT_EQ(length, 3);
}
