#include <vq0300/jtagShiftBitStream.h>

#include <gtest/gtest.h>

#include <climits>

TEST(jtagShiftBitStream, BitSizeSetsTheByteCount) {
  jtagShiftBitStream stream, fresh;  // fresh: no buffer, as 0 bytes
  for (int bits : {1, 8, 9, 17}) {
    stream.InitBuffer(bits);
    EXPECT_TRUE(stream.GetBufferBitSize() == bits && stream.SequentialWrite(0x11));
    EXPECT_EQ(stream.ReadByte((bits - 1) / 8), 0x11) << bits;  // written on the last byte
    EXPECT_FALSE(stream.WriteByte((bits + 7) / 8, 0)) << bits;
  }
  stream.InitBuffer(-5);  // a negative bit count is taken as 0
  EXPECT_TRUE(stream.GetBufferBitSize() == 0 && !stream.WriteByte(0, 1) &&
              !stream.SequentialWrite(1));
  EXPECT_TRUE(fresh.ReadByte(0) == 0 && !fresh.WriteByte(5, 1));
}

TEST(jtagShiftBitStream, SequentialCallsRunFromTheLastByteDown) {
  jtagShiftBitStream stream;
  stream.InitBuffer(24);
  for (unsigned char c : {'a', 'b', 'c'}) EXPECT_TRUE(stream.SequentialWrite(c));
  EXPECT_FALSE(stream.SequentialWrite('d'));  // cursor back on 0
  EXPECT_TRUE(stream.ReadByte(0) == 'c' && stream.ReadByte(2) == 'a');
  stream.ResetIndex();
  for (unsigned char c : {'a', 'b', 'c', '\0', '\0'}) EXPECT_EQ(stream.SequentialRead(), c);
  EXPECT_FALSE(stream.SequentialWrite('x'));
  EXPECT_TRUE(stream.SequentialWrite('z'));  // the one after overwrites byte 0
  EXPECT_EQ(stream.ReadByte(0), 'z');

  // A failed read leaves the cursor outside; a failed write pulls it back to
  // the nearest end.
  EXPECT_EQ(stream.ReadByte(7), 0);
  EXPECT_EQ(stream.SequentialRead(), 0);  // still outside, at 7
  EXPECT_FALSE(stream.WriteByte(7, 'x'));
  EXPECT_EQ(stream.SequentialRead(), 'a');  // pulled back to the last byte, 2
  EXPECT_FALSE(stream.WriteByte(-1, 'x'));
  EXPECT_EQ(stream.SequentialRead(), 'z');  // pulled back to 0
  EXPECT_EQ(stream.ReadByte(INT_MIN), 0);
  EXPECT_EQ(stream.SequentialRead(), 0);  // the cursor stops at INT_MIN
}
