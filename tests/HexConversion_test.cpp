#include <vq0300/HexConversion.h>

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

TEST(HexConversion, SingleDigits) {
  EXPECT_EQ(util_Hex2HexAnsi(9), '9');
  EXPECT_EQ(util_Hex2HexAnsi(15), 'F');
  EXPECT_EQ(util_Hex2HexAnsi(16), 0);
  EXPECT_EQ(util_Hex2HexAnsi(255), 0);
  // Every char value, against the C library's reading of a hex digit.
  for (int i = -128; i < 128; ++i) {
    const char text[2] = {static_cast<char>(i), '\0'};
    const long expected = (i >= 0 && std::isxdigit(i)) ? std::strtol(text, nullptr, 16) : 0;
    EXPECT_EQ(util_HexAnsi2Hex(text[0]), expected) << i;
  }
  unsigned char high = 0, low = 0;
  util_SplitBin2Char(0xA5, high, low);
  EXPECT_EQ(high, 'A');
  EXPECT_EQ(low, '5');
}

TEST(HexConversion, Bin2HexAnsi) {
  // All 256 byte values, against printf's upper-case hex.
  unsigned char all[256], out[514];
  std::string expected;
  for (int i = 0; i < 256; ++i) {
    all[i] = static_cast<unsigned char>(i);
    char two[3];
    std::snprintf(two, sizeof two, "%02X", i);
    expected += two;
  }
  out[513] = 'x';
  util_Bin2HexAnsi(all, out, 256);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(out)), expected);
  EXPECT_EQ(out[513], 'x');
  for (int count : {0, -5}) {
    std::memset(out, 'x', 2);
    util_Bin2HexAnsi(all, out, count);
    EXPECT_EQ(out[0], '\0');
    EXPECT_EQ(out[1], 'x');
  }
  util_Bin2HexAnsi(nullptr, out, 3);
  EXPECT_EQ(out[1], 'x');
  util_Bin2HexAnsi(all, nullptr, 3);  // must not fault
}

TEST(HexConversion, FlipByte) {
  for (int i = 0; i < 256; ++i) {
    char c = static_cast<char>(i);
    util_FlipByte(c);
    int mirrored = 0;
    for (int bit = 0; bit < 8; ++bit) mirrored |= ((i >> bit) & 1) << (7 - bit);
    EXPECT_EQ(static_cast<unsigned char>(c), mirrored) << i;
  }
}

TEST(HexConversion, HexStr2Hex16ShortensTheTextOnAnyLowerCasePrefix) {
  struct Case {
    const char* text;
    unsigned int value;
    const char* left;
  };
  for (const Case& c : {Case{"1F", 31, "1F"}, Case{"0x1F", 31, "1F"}, Case{"0x", 0, ""}, Case{"", 0, ""},
                        Case{"0X1F", 31, "0X1F"}, Case{"10x2", 2, "x2"}, Case{"1G2", 0x102, "1G2"},
                        Case{"ffffFFFF", 0xFFFFFFFFu, "ffffFFFF"}, Case{"123456789", 0x23456789u, "123456789"}}) {
    char buffer[32];
    std::strcpy(buffer, c.text);
    EXPECT_EQ(util_HexStr2Hex16(buffer), c.value) << c.text;
    EXPECT_STREQ(buffer, c.left) << c.text;
  }
  EXPECT_EQ(util_HexStr2Hex16(nullptr), 0u);
}
