#include <vq0300/LCirByteBuffer.h>

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

void WriteText(LCirByteBuffer& ring, const std::string& text) {
  for (char c : text) ring.WriteData(c);
}

}  // namespace

TEST(LCirByteBuffer, WrappedRingKeepsTheNewestBytes) {
  LCirByteBuffer ring(4);
  EXPECT_EQ(ring.GetBlockSize(), 4);
  EXPECT_EQ(ring.GetLinearIndex(), 0);
  EXPECT_EQ(ring.GetCircularIndex(), 0);

  WriteText(ring, "abcd");
  EXPECT_EQ(ring.GetCircularIndex(), 0);
  EXPECT_EQ(ring.GetLinearIndex(), ring.GetBlockSize());

  WriteText(ring, "ef");
  EXPECT_EQ(ring.GetLinearIndex(), 6);
  EXPECT_EQ(ring.GetCircularIndex(), 2);
  // Slots hold e, f, c, d.
  EXPECT_EQ(ring.ReadData(5), 'f');
  EXPECT_EQ(ring.ReadData(4), 'e');
  EXPECT_EQ(ring.ReadData(0), 'e');  // overwritten: the newer byte of its slot
  EXPECT_EQ(ring.ReadData(2), 'c');
  EXPECT_EQ(ring.ReadData(7), 'd');
  EXPECT_EQ(ring.ReadData(-5), 'e');  // a negative position reads slot 0

  ring.WriteData(static_cast<unsigned char>(0xFE));
  EXPECT_EQ(ring.ReadData(6), 0xFE);
}

TEST(LCirByteBuffer, RingOfOneByte) {
  LCirByteBuffer ring(1);
  WriteText(ring, "xyz");
  EXPECT_EQ(ring.GetCircularIndex(), 0);
  EXPECT_EQ(ring.GetLinearIndex(), 3);
  EXPECT_EQ(ring.ReadData(0), 'z');
  EXPECT_EQ(ring.ReadData(2), 'z');
}

TEST(LCirByteBuffer, ClearAndReallocate) {
  LCirByteBuffer ring(4);
  WriteText(ring, "abcdef");
  ring.ClearBuffer();
  EXPECT_EQ(ring.GetLinearIndex(), 0);
  EXPECT_EQ(ring.GetCircularIndex(), 0);
  EXPECT_EQ(ring.GetBlockSize(), 4);
  EXPECT_EQ(ring.ReadData(0), 'e');  // old bytes stay until overwritten
  ring.WriteData('Q');
  EXPECT_EQ(ring.ReadData(0), 'Q');
  EXPECT_EQ(ring.ReadData(1), 'f');

  ring.Allocate(3);
  EXPECT_EQ(ring.GetBlockSize(), 3);
  EXPECT_EQ(ring.GetLinearIndex(), 0);
  EXPECT_EQ(ring.GetCircularIndex(), 0);
  WriteText(ring, "1234");
  EXPECT_EQ(ring.ReadData(3), '4');
  EXPECT_EQ(ring.ReadData(2), '3');
  EXPECT_EQ(ring.GetCircularIndex(), 1);
}

TEST(LCirByteBuffer, WithoutStorageNothingIsStoredOrRead) {
  LCirByteBuffer ring;
  EXPECT_EQ(ring.GetBlockSize(), 0);
  ring.WriteData('a');
  ring.WriteData(static_cast<unsigned char>('b'));
  EXPECT_EQ(ring.GetLinearIndex(), 0);
  EXPECT_EQ(ring.GetCircularIndex(), 0);
  EXPECT_EQ(ring.ReadData(0), 0);
  EXPECT_EQ(ring.ReadData(-1), 0);

  // A size below 1 gives back such a ring, also after real storage.
  LCirByteBuffer sized(4);
  WriteText(sized, "abc");
  sized.Allocate(0);
  EXPECT_EQ(sized.GetBlockSize(), 0);
  EXPECT_EQ(sized.GetLinearIndex(), 0);
  sized.WriteData('x');
  EXPECT_EQ(sized.ReadData(1), 0);
  LCirByteBuffer negative(-3);
  EXPECT_EQ(negative.GetBlockSize(), 0);
  negative.WriteData('x');
  EXPECT_EQ(negative.ReadData(0), 0);
  // Storage given later works as usual.
  negative.Allocate(2);
  WriteText(negative, "xy");
  EXPECT_EQ(negative.ReadData(1), 'y');
}

TEST(LCirByteBuffer, HeldPositionsMatchTheStream) {
  std::mt19937 rng(77u);
  for (int size : {1, 2, 5, 16, 31}) {
    LCirByteBuffer ring(size);
    std::string stream;
    for (int i = 0; i < 200; ++i) {
      char c = static_cast<char>(rng());
      ring.WriteData(c);
      stream += c;
      const int written = static_cast<int>(stream.size());
      ASSERT_EQ(ring.GetLinearIndex(), written);
      ASSERT_EQ(ring.GetCircularIndex(), written % size);
      const int oldest = written > size ? written - size : 0;
      for (int pos = oldest; pos < written; ++pos) {
        ASSERT_EQ(ring.ReadData(pos), static_cast<unsigned char>(stream[static_cast<std::size_t>(pos)]));
      }
    }
  }
}
