#include <vq0300/LCirByteBuffer.h>

#include <gtest/gtest.h>

#include <string>

TEST(LCirByteBuffer, ReadsByStreamPositionAfterWrapping) {
  LCirByteBuffer ring(4);
  auto read = [&ring](int i) { return static_cast<char>(ring.ReadData(i)); };
  for (char c : {'a', 'b', 'c', 'd', 'e'}) ring.WriteData(c);
  ring.WriteData(static_cast<unsigned char>('f'));
  EXPECT_EQ(ring.GetLinearIndex(), 6);
  EXPECT_EQ(ring.GetCircularIndex(), 2);
  // Slots e f c d: positions 0 and 4 share a slot; a negative one reads slot 0.
  EXPECT_EQ((std::string{read(0), read(2), read(4), read(5), read(-5)}), "ecefe");
  ring.ClearBuffer();  // the old bytes stay until overwritten
  EXPECT_EQ(ring.GetLinearIndex(), 0);
  EXPECT_EQ(ring.GetBlockSize(), 4);
  EXPECT_EQ(read(3), 'd');
  ring.Allocate(1);
  ring.WriteData('x');
  ring.WriteData('y');
  EXPECT_EQ(ring.GetCircularIndex(), 0);
  EXPECT_EQ(ring.GetLinearIndex(), 2);
  EXPECT_EQ(read(0), 'y');
}

TEST(LCirByteBuffer, WithoutStorageNothingIsStoredOrRead) {
  LCirByteBuffer fresh, ring(4);
  ring.Allocate(-3);  // a size below 1 leaves a ring without storage, as new
  for (LCirByteBuffer* r : {&fresh, &ring}) {
    r->WriteData('a');
    EXPECT_EQ(r->ReadData(0), 0);
    EXPECT_EQ(r->GetBlockSize(), 0);
    EXPECT_EQ(r->GetLinearIndex(), 0);
    EXPECT_EQ(r->GetCircularIndex(), 0);
  }
}
