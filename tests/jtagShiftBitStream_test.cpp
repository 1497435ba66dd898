#include <vq0300/jtagShiftBitStream.h>

#include <gtest/gtest.h>

#include <climits>

TEST(jtagShiftBitStream, BitSizeSetsTheByteCount) {
  jtagShiftBitStream stream;
  for (int bits : {1, 8, 9, 17}) {
    const int bytes = (bits + 7) / 8;
    stream.InitBuffer(bits);
    EXPECT_EQ(stream.GetBufferBitSize(), bits);
    EXPECT_TRUE(stream.SequentialWrite(0x11));  // lands on the last byte
    EXPECT_EQ(stream.ReadByte(bytes - 1), 0x11);
    EXPECT_FALSE(stream.WriteByte(bytes, 0));
  }
  stream.InitBuffer(-5);  // a negative bit count is taken as 0
  EXPECT_EQ(stream.GetBufferBitSize(), 0);
  EXPECT_FALSE(stream.WriteByte(0, 1));
  jtagShiftBitStream fresh;
  EXPECT_EQ(fresh.ReadByte(0), 0);
  EXPECT_FALSE(fresh.WriteByte(5, 1));
}

TEST(jtagShiftBitStream, FailedReadLeavesTheCursorOutsideFailedWritePullsItBack) {
  jtagShiftBitStream stream;
  stream.InitBuffer(16);
  stream.WriteByte(0, 'p');
  stream.WriteByte(1, 'q');
  EXPECT_EQ(stream.ReadByte(7), 0);
  EXPECT_EQ(stream.SequentialRead(), 0);  // still outside, at 7
  EXPECT_FALSE(stream.WriteByte(7, 'x'));
  EXPECT_EQ(stream.SequentialRead(), 'q');  // pulled back to 1
  EXPECT_FALSE(stream.WriteByte(-1, 'x'));
  EXPECT_EQ(stream.SequentialRead(), 'p');  // pulled back to 0
  EXPECT_EQ(stream.ReadByte(INT_MIN), 0);
  EXPECT_EQ(stream.SequentialRead(), 0);  // the cursor stops at INT_MIN
}

TEST(jtagShiftBitStream, SequentialCallsRunFromTheLastByteDown) {
  jtagShiftBitStream stream;
  stream.InitBuffer(24);
  for (unsigned char c : {'a', 'b', 'c'}) EXPECT_TRUE(stream.SequentialWrite(c));
  EXPECT_FALSE(stream.SequentialWrite('d'));  // cursor back on 0
  EXPECT_EQ(stream.ReadByte(0), 'c');
  EXPECT_EQ(stream.ReadByte(2), 'a');
  stream.ResetIndex();
  for (unsigned char c : {'a', 'b', 'c', '\0', '\0'}) EXPECT_EQ(stream.SequentialRead(), c);
  EXPECT_FALSE(stream.SequentialWrite('x'));
  EXPECT_TRUE(stream.SequentialWrite('z'));  // the one after overwrites byte 0
  EXPECT_EQ(stream.ReadByte(0), 'z');
}
