#include <vq0300/jtagShiftBitStream.h>

#include <gtest/gtest.h>

#include <climits>

TEST(jtagShiftBitStream, BitSizeSetsTheByteCount) {
  jtagShiftBitStream stream;
  EXPECT_EQ(stream.GetBufferBitSize(), 0);
  // Probing with WriteByte past the end puts the cursor on the last byte.
  const struct {
    int bits;
    int bytes;
  } cases[] = {{1, 1}, {8, 1}, {9, 2}, {16, 2}, {17, 3}, {64, 8}};
  for (const auto& c : cases) {
    stream.InitBuffer(c.bits);
    EXPECT_EQ(stream.GetBufferBitSize(), c.bits);
    EXPECT_TRUE(stream.WriteByte(c.bytes - 1, 0xA5)) << c.bits;
    EXPECT_FALSE(stream.WriteByte(c.bytes, 0x5A)) << c.bits;
    EXPECT_EQ(stream.ReadByte(c.bytes - 1), 0xA5) << c.bits;
    // InitBuffer puts the cursor on the last byte.
    stream.InitBuffer(c.bits);
    EXPECT_TRUE(stream.SequentialWrite(0x11));
    EXPECT_EQ(stream.ReadByte(c.bytes - 1), 0x11) << c.bits;
  }
}

TEST(jtagShiftBitStream, EmptyBuffers) {
  jtagShiftBitStream fresh;
  EXPECT_EQ(fresh.ReadByte(0), 0);
  EXPECT_FALSE(fresh.WriteByte(5, 1));
  EXPECT_FALSE(fresh.SequentialWrite(1));  // the cursor was left at -1
  EXPECT_FALSE(fresh.SequentialWrite(1));  // and then at 0: still no byte

  jtagShiftBitStream zero;
  zero.InitBuffer(0);
  EXPECT_EQ(zero.GetBufferBitSize(), 0);
  EXPECT_EQ(zero.ReadByte(0), 0);
  EXPECT_FALSE(zero.WriteByte(0, 7));
  EXPECT_EQ(zero.SequentialRead(), 0);  // reads at the cursor, -1

  // A negative bit count is taken as 0, replacing an earlier buffer.
  jtagShiftBitStream negative;
  negative.InitBuffer(16);
  negative.InitBuffer(-5);
  EXPECT_EQ(negative.GetBufferBitSize(), 0);
  EXPECT_FALSE(negative.WriteByte(0, 1));
  EXPECT_EQ(negative.ReadByte(0), 0);
  negative.ResetIndex();
  EXPECT_FALSE(negative.SequentialWrite(1));
}

TEST(jtagShiftBitStream, FailedReadLeavesTheCursorOutsideFailedWritePullsItBack) {
  jtagShiftBitStream stream;
  stream.InitBuffer(16);  // two bytes
  ASSERT_TRUE(stream.WriteByte(0, 'p'));
  ASSERT_TRUE(stream.WriteByte(1, 'q'));

  EXPECT_EQ(stream.ReadByte(7), 0);
  EXPECT_EQ(stream.SequentialRead(), 0);  // still at 7
  EXPECT_EQ(stream.ReadByte(-1), 0);
  EXPECT_EQ(stream.SequentialRead(), 0);  // still at -1

  EXPECT_FALSE(stream.WriteByte(7, 'x'));
  EXPECT_EQ(stream.SequentialRead(), 'q');  // pulled back to 1
  EXPECT_FALSE(stream.WriteByte(-1, 'x'));
  EXPECT_EQ(stream.SequentialRead(), 'p');  // pulled back to 0

  // The positioned calls share the cursor with the sequential ones.
  stream.ReadByte(1);
  EXPECT_TRUE(stream.SequentialWrite('Q'));
  EXPECT_EQ(stream.ReadByte(1), 'Q');
  stream.WriteByte(0, 'P');
  EXPECT_EQ(stream.SequentialRead(), 'P');
}

TEST(jtagShiftBitStream, SequentialCallsRunFromTheLastByteDown) {
  jtagShiftBitStream stream;
  stream.InitBuffer(24);  // three bytes
  EXPECT_TRUE(stream.SequentialWrite('a'));
  EXPECT_TRUE(stream.SequentialWrite('b'));
  EXPECT_TRUE(stream.SequentialWrite('c'));
  EXPECT_EQ(stream.ReadByte(0), 'c');
  EXPECT_EQ(stream.ReadByte(1), 'b');
  EXPECT_EQ(stream.ReadByte(2), 'a');

  stream.ResetIndex();
  EXPECT_EQ(stream.SequentialRead(), 'a');
  EXPECT_EQ(stream.SequentialRead(), 'b');
  EXPECT_EQ(stream.SequentialRead(), 'c');
  EXPECT_EQ(stream.SequentialRead(), 0);
  EXPECT_EQ(stream.SequentialRead(), 0);
  // The cursor went on falling; a failed sequential write pulls it to 0.
  EXPECT_FALSE(stream.SequentialWrite('z'));
  EXPECT_EQ(stream.SequentialRead(), 'c');

  // Four writes into three bytes: the fourth fails and leaves the cursor on
  // 0; the fifth overwrites byte 0, and failure and success alternate.
  stream.ResetIndex();
  EXPECT_TRUE(stream.SequentialWrite('1'));
  EXPECT_TRUE(stream.SequentialWrite('2'));
  EXPECT_TRUE(stream.SequentialWrite('3'));
  EXPECT_FALSE(stream.SequentialWrite('4'));
  EXPECT_TRUE(stream.SequentialWrite('5'));
  EXPECT_EQ(stream.ReadByte(0), '5');
  EXPECT_EQ(stream.ReadByte(2), '1');
}

TEST(jtagShiftBitStream, CursorStopsAtTheSmallestInt) {
  jtagShiftBitStream stream;
  stream.InitBuffer(8);
  ASSERT_TRUE(stream.WriteByte(0, 'k'));
  EXPECT_EQ(stream.ReadByte(INT_MIN), 0);
  EXPECT_EQ(stream.SequentialRead(), 0);  // no overflow below INT_MIN
  EXPECT_EQ(stream.SequentialRead(), 0);
  EXPECT_EQ(stream.ReadByte(INT_MAX), 0);
  EXPECT_EQ(stream.SequentialRead(), 0);
  EXPECT_FALSE(stream.WriteByte(INT_MIN, 'x'));
  EXPECT_EQ(stream.SequentialRead(), 'k');
}
