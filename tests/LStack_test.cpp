#include <vq0300/LStack.h>

#include <gtest/gtest.h>

TEST(LStack, LastInFirstOut) {
  LObject a, b;
  LStack stack;
  EXPECT_TRUE(stack.IsEmpty());
  EXPECT_EQ(stack.Pop(), nullptr);
  EXPECT_EQ(stack.GetStackElement(), 0);

  stack.Push(&a);
  stack.Push(&b);
  EXPECT_EQ(stack.GetStackElement(), 2);
  EXPECT_EQ(stack.Pop(), &b);
  EXPECT_EQ(stack.Pop(), &a);
  EXPECT_TRUE(stack.IsEmpty());

  // A pushed null pops as null too; the depth tells it from an empty stack.
  stack.Push(nullptr);
  EXPECT_FALSE(stack.IsEmpty());
  EXPECT_EQ(stack.Pop(), nullptr);
  EXPECT_EQ(stack.GetStackElement(), 0);
}

TEST(LStack, LeavesObjectsAlive) {
  bool destroyed = false;
  struct Probe : LObject {
    explicit Probe(bool* flag) : flag(flag) {}
    ~Probe() override { *flag = true; }
    bool* flag;
  };
  Probe* probe = new Probe(&destroyed);
  {
    LStack stack;
    stack.Push(probe);
  }
  EXPECT_FALSE(destroyed);
  delete probe;
  EXPECT_TRUE(destroyed);
}
