#include <vq0300/LCirByteBuffer.h>

#include <gtest/gtest.h>

TEST(LCirByteBuffer, WrappedRingKeepsTheNewestBytes) {
  LCirByteBuffer ring(4);
  for (char c : {'a', 'b', 'c', 'd'}) ring.WriteData(c);
  EXPECT_EQ(ring.GetCircularIndex(), 0);
  ring.WriteData('e');
  ring.WriteData(static_cast<unsigned char>('f'));
  EXPECT_EQ(ring.GetLinearIndex(), 6);
  EXPECT_EQ(ring.GetCircularIndex(), 2);
  EXPECT_EQ(ring.ReadData(5), 'f');
  EXPECT_EQ(ring.ReadData(0), 'e');   // overwritten: the newer byte of the slot
  EXPECT_EQ(ring.ReadData(2), 'c');
  EXPECT_EQ(ring.ReadData(-5), 'e');  // a negative position reads slot 0

  ring.ClearBuffer();
  EXPECT_EQ(ring.GetLinearIndex(), 0);
  EXPECT_EQ(ring.GetBlockSize(), 4);
  EXPECT_EQ(ring.ReadData(3), 'd');  // old bytes stay until overwritten
  ring.Allocate(1);
  ring.WriteData('x');
  ring.WriteData('y');
  EXPECT_EQ(ring.GetCircularIndex(), 0);
  EXPECT_EQ(ring.GetLinearIndex(), 2);
  EXPECT_EQ(ring.ReadData(0), 'y');
}

TEST(LCirByteBuffer, WithoutStorageNothingIsStoredOrRead) {
  LCirByteBuffer fresh;
  fresh.WriteData('a');
  EXPECT_EQ(fresh.GetLinearIndex(), 0);
  EXPECT_EQ(fresh.ReadData(0), 0);
  LCirByteBuffer ring(4);
  ring.Allocate(-3);  // a size below 1 leaves a ring without storage
  EXPECT_EQ(ring.GetBlockSize(), 0);
  ring.WriteData('a');
  EXPECT_EQ(ring.ReadData(1), 0);
  EXPECT_EQ(ring.GetCircularIndex(), 0);
}
