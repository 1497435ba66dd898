#include <vq0300/HexConversion.h>

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

TEST(HexConversion, SingleDigits) {
  EXPECT_EQ(util_Hex2HexAnsi(0), '0');
  EXPECT_EQ(util_Hex2HexAnsi(9), '9');
  EXPECT_EQ(util_Hex2HexAnsi(10), 'A');
  EXPECT_EQ(util_Hex2HexAnsi(15), 'F');
  EXPECT_EQ(util_Hex2HexAnsi(16), 0);
  EXPECT_EQ(util_Hex2HexAnsi(255), 0);
  // Every char value, against the C library's digit classification.
  for (int i = -128; i < 128; ++i) {
    const char c = static_cast<char>(i);
    const char text[2] = {c, '\0'};
    const long expected = (i >= 0 && std::isxdigit(i)) ? std::strtol(text, nullptr, 16) : 0;
    EXPECT_EQ(util_HexAnsi2Hex(c), expected) << i;
  }
  unsigned char high = 0, low = 0;
  util_SplitBin2Char(0xA5, high, low);
  EXPECT_EQ(high, 'A');
  EXPECT_EQ(low, '5');
}

TEST(HexConversion, Bin2HexAnsi) {
  const unsigned char bytes[] = {0x00, 0xFF, 0x1E};
  unsigned char text[8];
  std::memset(text, 'x', sizeof text);
  util_Bin2HexAnsi(bytes, text, 3);
  EXPECT_STREQ(reinterpret_cast<char*>(text), "00FF1E");
  EXPECT_EQ(text[7], 'x');

  // All 256 byte values, against printf's upper-case hex.
  unsigned char all[256];
  std::string expected;
  for (int i = 0; i < 256; ++i) {
    all[i] = static_cast<unsigned char>(i);
    char two[3];
    std::snprintf(two, sizeof two, "%02X", i);
    expected += two;
  }
  unsigned char out[513];
  util_Bin2HexAnsi(all, out, 256);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(out)), expected);

  for (int count : {0, -5}) {
    std::memset(text, 'x', sizeof text);
    util_Bin2HexAnsi(bytes, text, count);
    EXPECT_EQ(text[0], '\0');
    EXPECT_EQ(text[1], 'x');
  }
  std::memset(text, 'x', sizeof text);
  util_Bin2HexAnsi(nullptr, text, 3);
  EXPECT_EQ(text[0], 'x');
  util_Bin2HexAnsi(bytes, nullptr, 3);  // must not fault
}

TEST(HexConversion, FlipByte) {
  for (int i = 0; i < 256; ++i) {
    char c = static_cast<char>(i);
    util_FlipByte(c);
    int mirrored = 0;
    for (int bit = 0; bit < 8; ++bit)
      if ((i >> bit) & 1) mirrored |= 0x80 >> bit;
    EXPECT_EQ(static_cast<unsigned char>(c), mirrored) << i;
    util_FlipByte(c);
    EXPECT_EQ(static_cast<unsigned char>(c), i);
  }
  char c = 0x12;
  util_FlipByte(c);
  EXPECT_EQ(c, 0x48);
}
