#include <vq0300/HexConversion.h>

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

// Every byte value against printf's upper-case hex and strtol's reading of a
// digit; util_FlipByte against the bits read in the other direction.
TEST(HexConversion, EveryByteAgainstTheCLibrary) {
  unsigned char all[256], out[514];
  std::string expected;
  for (int i = 0; i < 256; ++i) {
    char two[3], digit[2] = {static_cast<char>(i), '\0'}, flipped = digit[0];
    std::snprintf(two, sizeof two, "%02X", i);
    expected += two;
    all[i] = static_cast<unsigned char>(i);
    unsigned char high = 0, low = 0, mirrored = 0;
    util_SplitBin2Char(all[i], high, low);
    EXPECT_EQ(high, two[0]) << i;
    EXPECT_EQ(low, two[1]) << i;
    EXPECT_EQ(util_Hex2HexAnsi(all[i]), i < 16 ? two[1] : 0) << i;  // the byte 0 above 15
    EXPECT_EQ(util_HexAnsi2Hex(digit[0]), std::isxdigit(i) ? std::strtol(digit, nullptr, 16) : 0);
    util_FlipByte(flipped);
    for (int bit = 0; bit < 8; ++bit) mirrored = mirrored << 1 | ((i >> bit) & 1);
    EXPECT_EQ(static_cast<unsigned char>(flipped), mirrored) << i;
  }
  out[513] = 'x';
  util_Bin2HexAnsi(all, out, 256);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(out)), expected);
  EXPECT_EQ(out[513], 'x');
  for (int count : {0, -5}) {
    out[1] = 'x';
    util_Bin2HexAnsi(all, out, count);  // only the terminator
    EXPECT_EQ(out[0], '\0') << count;
    EXPECT_EQ(out[1], 'x') << count;
  }
  util_Bin2HexAnsi(nullptr, out, 3);
  util_Bin2HexAnsi(all, nullptr, 3);  // no fault
  EXPECT_EQ(out[1], 'x');
}

// A lower-case "0x" anywhere shortens the text in place by its first two characters.
TEST(HexConversion, HexStr2Hex16ShortensTheTextOnAnyLowerCasePrefix) {
  struct Case {
    const char* text;
    unsigned int value;
    const char* left;
  };
  for (const Case& c :
       {Case{"1F", 31, "1F"}, Case{"0x1F", 31, "1F"}, Case{"0x", 0, ""}, Case{"", 0, ""},
        Case{"0X1F", 31, "0X1F"}, Case{"10x2", 2, "x2"}, Case{"1G2", 0x102, "1G2"},
        Case{"ffffFFFF", 0xFFFFFFFFu, "ffffFFFF"}, Case{"123456789", 0x23456789u, "123456789"}}) {
    char buffer[32];
    std::strcpy(buffer, c.text);
    EXPECT_EQ(util_HexStr2Hex16(buffer), c.value) << c.text;
    EXPECT_STREQ(buffer, c.left) << c.text;
  }
  EXPECT_EQ(util_HexStr2Hex16(nullptr), 0u);
}
