// The free string routines that the text model has no oracle for, in tables.
#include <vq0300/StringRoutines.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>
#include <tuple>

// Two texts, a number and two results: the rows of the comparison and search tables.
using Row = std::tuple<const char*, const char*, int, int, int>;

// Upper-case letters from digit 10 on; bases beyond 36 go on from '['
// (digit 36); a base below 2 writes nothing.
TEST(StringRoutines, ItoaDigitsOfEveryBase) {
  using Numeral = std::tuple<int, int, const char*>;  // value, base, text
  for (auto [value, base, text] :
       {Numeral{0, 10, "0"}, Numeral{5, 2, "101"}, Numeral{INT_MIN, 16, "-80000000"},
        Numeral{INT_MAX, 36, "ZIK0ZJ"}, Numeral{36, 37, "["}, Numeral{-(38 * 41 + 39), 41, "-]^"},
        Numeral{9, INT_MAX, "9"}, Numeral{INT_MIN, INT_MAX, "-11"}, Numeral{5, 1, nullptr}}) {
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
