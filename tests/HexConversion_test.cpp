// The hexadecimal conversions against the C library, and in tables.
#include <vq0300/HexConversion.h>

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <tuple>

// Every byte value against printf's upper-case hex and strtol's reading of a
// digit, util_FlipByte against the bits read in the other direction, and
// util_Bin2HexAnsi (each byte by util_SplitBin2Char) of all of them
// at once against printf's text; then a count of 0, which writes only the NUL.
TEST(HexConversion, EveryByteAgainstTheCLibrary) {
  unsigned char all[256], out[514];
  char text[514];
  for (int i = 0; i < 256; ++i) {
    char digit[2] = {static_cast<char>(i), '\0'}, flipped = digit[0], mirrored = 0;
    all[i] = static_cast<unsigned char>(i);
    std::snprintf(text + 2 * i, 3, "%02X", i);
    EXPECT_EQ(util_Hex2HexAnsi(all[i]), i < 16 ? text[2 * i + 1] : 0) << i;  // the byte 0 above 15
    EXPECT_EQ(util_HexAnsi2Hex(digit[0]), std::isxdigit(i) ? std::strtol(digit, nullptr, 16) : 0);
    for (int bit = 0; bit < 8; ++bit) mirrored = static_cast<char>(mirrored << 1 | (i >> bit & 1));
    util_FlipByte(flipped);
    EXPECT_EQ(flipped, mirrored) << i;
  }
  util_Bin2HexAnsi(all, out, 256);
  EXPECT_STREQ(reinterpret_cast<char*>(out), text);
  util_Bin2HexAnsi(all + 0xAB, out + 4, 1);  // two digits and a NUL, the rest kept
  EXPECT_EQ(std::string(reinterpret_cast<char*>(out + 4), 4), (std::string{'A', 'B', '\0', '3'}));
  util_Bin2HexAnsi(all, out + 1, 0);
  util_Bin2HexAnsi(nullptr, out, 3);  // null buffers: nothing is written
  util_Bin2HexAnsi(all, nullptr, 3);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(out), 3), (std::string{'0', '\0', '0'}));
}

// A lower-case "0x" anywhere shortens the text in place by its first two characters.
TEST(HexConversion, HexStr2Hex16ShortensTheTextOnAnyLowerCasePrefix) {
  using Hex = std::tuple<const char*, unsigned, const char*>;  // text, value, text after
  for (auto [text, value, after] :
       {Hex{"F", 15, "F"}, Hex{"1F", 31, "1F"}, Hex{"0x1F", 31, "1F"}, Hex{"0x", 0, ""},
        Hex{"", 0, ""}, Hex{"0X1F", 31, "0X1F"}, Hex{"10x2", 2, "x2"}, Hex{"1G2", 0x102, "1G2"},
        Hex{"ffffFFFF", 0xFFFFFFFFu, "ffffFFFF"}, Hex{"123456789", 0x23456789u, "123456789"}}) {
    std::string buffer = text;
    EXPECT_EQ(util_HexStr2Hex16(&buffer[0]), value) << text;
    EXPECT_STREQ(buffer.c_str(), after) << text;
  }
  EXPECT_EQ(util_HexStr2Hex16(nullptr), 0u);
}
