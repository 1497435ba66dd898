// The text routines: LString and LCString against their model (TextModel.h),
// the free string routines and the hexadecimal conversions in tables.
#include <vq0300/HexConversion.h>
#include <vq0300/StringRoutines.h>

#include <gtest/gtest.h>

#include <cctype>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <tuple>

#include "TextModel.h"

// Two texts, a number and two results: the rows of the comparison and search tables.
using Row = std::tuple<const char*, const char*, int, int, int>;

// LString, LCString, the case mappings and strrev against their models (see
// TextModel.h); these tables hold what has none.
TEST(LCString, AndLStringAgreeWithTheModel) { model::RunSeeds(text_model::RunTextOps, 300, 3000); }

// Upper-case letters from digit 10 on; bases beyond 36 go on from '['
// (digit 36); a base below 2 writes nothing.
TEST(StringRoutines, ItoaDigitsOfEveryBase) {
  using Numeral = std::tuple<int, int, const char*>;  // value, base, text
  for (auto [value, base, text] :
       {Numeral{0, 10, "0"}, Numeral{5, 2, "101"}, Numeral{INT_MIN, 16, "-80000000"},
        Numeral{INT_MAX, 36, "ZIK0ZJ"}, Numeral{36, 37, "["}, Numeral{-(38 * 41 + 39), 41, "-]^"},
        Numeral{7, INT_MAX, "7"}, Numeral{INT_MIN, INT_MAX, "-11"}, Numeral{5, 1, nullptr}}) {
    char buffer[40] = "keep";
    EXPECT_EQ(itoa(value, buffer, base), text ? buffer + std::strlen(text) : nullptr);
    EXPECT_STREQ(buffer, text ? text : "keep");
  }
}

// Signed bytes with a to z folded to upper case: '_' (0x5F) above the letters,
// 0x80 and up below every ASCII byte. stricmp gives -1, 0 or 1; strnicmp sums
// the differences up to where either string ends. A null gives -1 and 0.
TEST(StringRoutines, CaseInsensitiveComparisonsOfSignedBytes) {
  // a, b, n, stricmp's order, strnicmp's sum
  for (auto [a, b, n, order, sum] :
       {Row{"abc", "ABC", 3, 0, 0}, Row{"abc", "abd", 3, -1, -1}, Row{"abc", "ab", 9, 1, 0},
        Row{"", "a", 1, -1, 0}, Row{"_", "z", 1, 1, '_' - 'Z'}, Row{"\x80", "a", 1, -1, -128 - 'A'},
        Row{"a", "\xff", 1, 1, 'A' + 1}, Row{"ac", "bb", 2, -1, 0}, Row{"abc", "ABD", 2, -1, 0},
        Row{"{", "[", 1, 1, '{' - '['}, Row{nullptr, "a", 1, -1, 0}, Row{"a", nullptr, 1, -1, 0}}) {
    SCOPED_TRACE(testing::PrintToString(std::make_tuple(a, b, n)));
    EXPECT_EQ(stricmp(a, b), order);
    EXPECT_EQ(strcmpi(const_cast<char*>(a), const_cast<char*>(b)), order);
    EXPECT_EQ(strnicmp(a, b, n), sum);
  }
}

// After a partial match fails at index k of sub the search goes on at p + k + 1.
TEST(StringRoutines, FindSubStringResumesBehindAPartialMatch) {
  // str, sub, start, ignoreCase, found
  for (auto [str, sub, start, fold, found] :
       {Row{"aaab", "aab", 0, 0, -1}, Row{"xabc", "abc", 1, 0, 1}, Row{"xabc", "bc", 3, 0, -1},
        Row{"xAbC", "aBc", 0, 1, 1}, Row{"xabc", "ABC", 0, 0, -1}, Row{"xabc", "", 3, 0, 3},
        Row{"xabc", "", 4, 0, -1}, Row{"xabc", "x", -1, 0, -1}, Row{"xabc", "a", INT_MAX, 0, -1},
        Row{nullptr, "a", 0, 0, -1}, Row{"a", nullptr, 0, 0, -1}}) {
    EXPECT_EQ(FindSubString(str, sub, start, fold != 0), found)
        << testing::PrintToString(std::make_tuple(str, sub, start));
  }
}

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
