#include <vq0300/StringRoutines.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>
#include <vector>

using namespace std::string_literals;
using Ints = std::vector<int>;

TEST(StringRoutines, CaseMappingAndReversal) {
  char text[] = "MiXeD 09_\0CD", odd[] = "abc", even[] = "abcd", empty[] = "";
  std::string inner("AB\0CD"s);
  EXPECT_EQ(strlwr(text), text);
  EXPECT_EQ(std::string(text, 12), "mixed 09_\0CD"s);  // the char* forms stop at a NUL
  EXPECT_EQ(strupr(text), text);
  EXPECT_STREQ(text, "MIXED 09_");
  strlwr(inner);  // the std::string forms go by size
  EXPECT_EQ(inner, "ab\0cd"s);
  strupr(inner);
  EXPECT_EQ(inner, "AB\0CD"s);
  strrev(odd);
  strrev(even);
  strrev(empty);
  EXPECT_EQ(std::string(odd) + even + empty, "cbadcba");
  EXPECT_TRUE(!strlwr(static_cast<char*>(nullptr)) && !strupr(static_cast<char*>(nullptr)));
  strrev(nullptr);  // no fault
}

TEST(StringRoutines, ItoaReturnsTheEndOfTheText) {
  struct Case {
    int value, base;
    const char* text;
  };
  for (const Case& c :
       {Case{255, 16, "FF"}, Case{-5, 2, "-101"}, Case{0, 10, "0"},
        Case{INT_MIN, 10, "-2147483648"}, Case{INT_MAX, 36, "ZIK0ZJ"}, Case{36, 37, "["},
        Case{INT_MIN, 2, "-10000000000000000000000000000000"}, Case{7, INT_MAX, "7"}}) {
    char buffer[40];
    EXPECT_EQ(itoa(c.value, buffer, c.base), buffer + std::strlen(c.text)) << c.text;
    EXPECT_STREQ(buffer, c.text);
  }
  char untouched[] = "keep";
  for (int base : {1, 0, -2}) EXPECT_EQ(itoa(5, untouched, base), nullptr);
  EXPECT_STREQ(untouched, "keep");
  EXPECT_EQ(itoa(5, nullptr, 10), nullptr);
}

// Signed bytes with the ASCII letters folded to upper case: '_' sorts above
// the letters, 0x80 and up below ASCII. stricmp gives exactly -1, 0 or 1;
// strnicmp sums the differences up to where either string ends.
TEST(StringRoutines, CaseInsensitiveComparisons) {
  char x[] = "Hello", y[] = "hELLO";
  EXPECT_EQ((Ints{stricmp("abc", "ABC"), stricmp("abc", "abd"), stricmp("abc", "ab"),
                  stricmp("", "a"), stricmp("a", "z"), stricmp("_", "z"), stricmp("\xe9", "a"),
                  stricmp("a", "\xe9"), strcmpi(x, y), stricmp(nullptr, "a"), stricmp("a", nullptr),
                  stricmp(nullptr, nullptr)}),
            (Ints{0, -1, 1, -1, -1, 1, -1, 1, 0, -1, -1, -1}));
  EXPECT_EQ((Ints{strnicmp("abc", "ABD", 2), strnicmp("abc", "ABD", 3), strnicmp("ac", "bb", 2),
                  strnicmp("abc", "ab", 9), strnicmp("", "abc", 3), strnicmp("\x80", "a", 1),
                  strnicmp("abc", "ABD", 0), strnicmp(nullptr, "a", 1), strnicmp("a", nullptr, 1)}),
            (Ints{0, -1, 0, 0, 0, -128 - 'A', 0, 0, 0}));
}

TEST(StringRoutines, FindSubStringResumesBehindThePartialMatch) {
  const char str[] = "xabc";
  EXPECT_EQ(FindSubString("aaab", "aab", 0, false), -1);  // fails at k = 2, resumes at 3
  EXPECT_EQ((Ints{FindSubString(str, "abc", 1, false), FindSubString(str, "bc", 3, false),
                  FindSubString(str, "ABC", 0, true), FindSubString(str, "ABC", 0, false),
                  FindSubString(str, "", 3, false), FindSubString(str, "", 4, false),
                  FindSubString("", "", 0, false), FindSubString(str, "a", -1, false),
                  FindSubString(str, "a", INT_MIN, false), FindSubString(str, "a", INT_MAX, false),
                  FindSubString(nullptr, "a", 0, false), FindSubString(str, nullptr, 0, false)}),
            (Ints{1, -1, 1, -1, 3, -1, -1, -1, -1, -1, -1, -1}));
  EXPECT_STREQ(str, "xabc");  // ignoring case changes nothing
}
