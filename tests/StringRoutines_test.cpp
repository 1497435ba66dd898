#include <vq0300/BoundedCopy.h>
#include <vq0300/StringRoutines.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <tuple>

// Two texts, a number and two results: the rows of the comparison and search tables.
using Row = std::tuple<const char*, const char*, int, int, int>;

// The case mappings, strrev and itoa run against oracles in LString's model
// (tests/TextModel.h); these tables hold what has none.

// Bases beyond 36 go on from '[' (digit 36); a base below 2 writes nothing.
TEST(StringRoutines, ItoaOutsideTheBasesOfToChars) {
  using Numeral = std::tuple<int, int, const char*>;  // value, base, text
  for (const Numeral& row :
       {Numeral{36, 37, "["}, Numeral{-(38 * 41 + 39), 41, "-]^"}, Numeral{7, INT_MAX, "7"},
        Numeral{INT_MIN, INT_MAX, "-11"}, Numeral{5, 1, nullptr}}) {
    const auto [value, base, text] = row;
    char buffer[40] = "keep";
    EXPECT_EQ(itoa(value, buffer, base), text ? buffer + std::strlen(text) : nullptr);
    EXPECT_STREQ(buffer, text ? text : "keep");
  }
}

// Signed bytes with a to z folded to upper case: '_' (0x5F) above the letters,
// 0x80 and up below every ASCII byte. stricmp gives -1, 0 or 1; strnicmp sums
// the differences up to where either string ends, clamped to int. A null
// gives -1 and 0.
TEST(StringRoutines, CaseInsensitiveComparisonsOfSignedBytes) {
  // a, b, n, stricmp's order, strnicmp's sum
  for (const Row& row :
       {Row{"abc", "ABC", 3, 0, 0}, Row{"abc", "abd", 3, -1, -1}, Row{"abc", "ab", 9, 1, 0},
        Row{"", "a", 1, -1, 0}, Row{"_", "z", 1, 1, '_' - 'Z'}, Row{"\x80", "a", 1, -1, -128 - 'A'},
        Row{"a", "\xff", 1, 1, 'A' + 1}, Row{"ac", "bb", 2, -1, 0}, Row{"abc", "ABD", 2, -1, 0},
        Row{"{", "[", 1, 1, '{' - '['}, Row{nullptr, "a", 1, -1, 0}, Row{"a", nullptr, 1, -1, 0}}) {
    const auto [a, b, n, order, sum] = row;
    SCOPED_TRACE(testing::PrintToString(row));
    EXPECT_EQ(stricmp(a, b), order);
    EXPECT_EQ(strcmpi(const_cast<char*>(a), const_cast<char*>(b)), order);
    EXPECT_EQ(strnicmp(a, b, n), sum);
  }
  // 0x7F less -0x80 is 255 a byte: 8.5 million bytes pass the limits of int.
  const std::string high(8'500'000, '\x7f'), low(high.size(), '\x80');
  EXPECT_EQ(strnicmp(high.c_str(), low.c_str(), INT_MAX), INT_MAX);
  EXPECT_EQ(strnicmp(low.c_str(), high.c_str(), INT_MAX), INT_MIN);
}

// After a partial match fails at index k of sub the search goes on at p + k + 1.
TEST(StringRoutines, FindSubStringResumesBehindAPartialMatch) {
  // str, sub, start, ignoreCase, found
  for (const Row& row :
       {Row{"aaab", "aab", 0, 0, -1}, Row{"xabc", "abc", 1, 0, 1}, Row{"xabc", "bc", 3, 0, -1},
        Row{"xAbC", "aBc", 0, 1, 1}, Row{"xabc", "ABC", 0, 0, -1}, Row{"xabc", "", 3, 0, 3},
        Row{"xabc", "", 4, 0, -1}, Row{"xabc", "x", -1, 0, -1}, Row{"xabc", "a", INT_MAX, 0, -1},
        Row{nullptr, "a", 0, 0, -1}, Row{"a", nullptr, 0, 0, -1}}) {
    const auto [str, sub, start, fold, found] = row;
    EXPECT_EQ(FindSubString(str, sub, start, fold != 0), found) << testing::PrintToString(row);
  }
}

// The char* overloads work as the const ones do (whose rules LCString's model
// checks). A null pointer writes nothing, but a null src to util_strncpy
// leaves an empty string.
TEST(StringRoutines, NonConstOverloadsAndNullPointers) {
  char dst[8] = "x", src[] = "ab";
  util_strncpy(dst, src, 0, 0), util_strncat(dst, src, 0, 0);
  util_strncpy(nullptr, src, 0, 0), util_strncat(nullptr, src, 0, 0), strrev(nullptr);
  util_strncat(dst, static_cast<const char*>(nullptr), 0, 0);
  EXPECT_STREQ(dst, "abab");
  util_strncpy(dst, static_cast<const char*>(nullptr), 5, 0);
  EXPECT_EQ(std::string(dst, 4), std::string("\0bab", 4));
  EXPECT_EQ(itoa(5, nullptr, 10), nullptr);
}
