#include <vq0300/LStack.h>

#include <gtest/gtest.h>

TEST(LStack, LastInFirstOutAndLeavesObjectsAlive) {
  LObject a, b;
  LStack stack, left_full;
  EXPECT_EQ(stack.Pop(), nullptr);
  stack.Push(&a);
  stack.Push(&b);
  stack.Push(nullptr);  // pops as null too; the depth tells it from an empty stack
  EXPECT_EQ(stack.GetStackElement(), 3);
  EXPECT_EQ(stack.Pop(), nullptr);
  EXPECT_FALSE(stack.IsEmpty());
  EXPECT_EQ(stack.Pop(), &b);
  EXPECT_EQ(stack.Pop(), &a);
  EXPECT_TRUE(stack.IsEmpty() && stack.GetStackElement() == 0);
  // Destroyed with objects on it, a stack leaves them alone: deleting these
  // automatic objects would abort the test.
  left_full.Push(&a);
  left_full.Push(&b);
}
