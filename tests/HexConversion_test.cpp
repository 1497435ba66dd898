#include <vq0300/HexConversion.h>
#include <vq0300/TimeText.h>

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <tuple>

// Every byte value against printf's upper-case hex and strtol's reading of a
// digit, util_FlipByte against the bits read in the other direction, and
// util_Bin2HexAnsi (each byte by util_SplitBin2Char) of all of them at once
// against printf's text; then a count of 0 (only the NUL is written) and null
// buffers (nothing is).
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
  util_Bin2HexAnsi(all, out + 1, 0);
  util_Bin2HexAnsi(nullptr, out, 3);
  util_Bin2HexAnsi(all, nullptr, 3);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(out), 3), (std::string{'0', '\0', '0'}));
}

// A lower-case "0x" anywhere shortens the text in place by its first two characters.
TEST(HexConversion, HexStr2Hex16ShortensTheTextOnAnyLowerCasePrefix) {
  using Row = std::tuple<const char*, unsigned, const char*>;  // text, value, text after
  for (auto [text, value, after] :
       {Row{"F", 15, "F"}, Row{"1F", 31, "1F"}, Row{"0x1F", 31, "1F"}, Row{"0x", 0, ""},
        Row{"", 0, ""}, Row{"0X1F", 31, "0X1F"}, Row{"10x2", 2, "x2"}, Row{"1G2", 0x102, "1G2"},
        Row{"ffffFFFF", 0xFFFFFFFFu, "ffffFFFF"}, Row{"123456789", 0x23456789u, "123456789"}}) {
    char buffer[16];
    std::strcpy(buffer, text);
    EXPECT_EQ(util_HexStr2Hex16(buffer), value) << text;
    EXPECT_STREQ(buffer, after) << text;
  }
  EXPECT_EQ(util_HexStr2Hex16(nullptr), 0u);
}

// The platform's asctime of the same moment with its line end turned into two
// blanks: 26 characters, whatever the string held before.
TEST(TimeText, AsctimeLayoutWithTwoTrailingBlanks) {
  LCString text("previous content that is longer than a time stamp");
  std::time_t t = std::time(nullptr);
  util_GetTime(text);
  std::string expected;
  for (const std::time_t after = std::time(nullptr); t <= after && expected != text.c_str(); ++t)
    expected = std::string(std::asctime(std::localtime(&t)), 24) + "  ";
  EXPECT_EQ(text.c_str(), expected);
}
