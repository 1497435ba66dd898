#include <vq0300/StringRoutines.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

TEST(StringRoutines, CaseMapping) {
  char text[] = "MiXeD 09_";
  EXPECT_EQ(strlwr(text), text);
  EXPECT_STREQ(text, "mixed 09_");
  EXPECT_EQ(strupr(text), text);
  EXPECT_STREQ(text, "MIXED 09_");
  EXPECT_EQ(strlwr(static_cast<char*>(nullptr)), nullptr);
  EXPECT_EQ(strupr(static_cast<char*>(nullptr)), nullptr);

  // The std::string forms go by size, past inner NUL bytes; the char* forms stop there.
  std::string inner("AB\0CD", 5);
  strlwr(inner);
  EXPECT_EQ(inner, std::string("ab\0cd", 5));
  strupr(inner);
  EXPECT_EQ(inner, std::string("AB\0CD", 5));
  char stops[] = "AB\0CD";
  strlwr(stops);
  EXPECT_EQ(std::memcmp(stops, "ab\0CD", 5), 0);
  std::string empty;
  strupr(empty);
  EXPECT_TRUE(empty.empty());
}

TEST(StringRoutines, ItoaReturnsTheEndOfTheText) {
  struct Case {
    int value, base;
    const char* text;
  };
  for (const Case& c : {Case{255, 16, "FF"}, Case{-255, 16, "-FF"}, Case{-5, 2, "-101"}, Case{0, 10, "0"},
                        Case{INT_MIN, 10, "-2147483648"}, Case{INT_MAX, 36, "ZIK0ZJ"}, Case{36, 37, "["},
                        Case{INT_MIN, 2, "-10000000000000000000000000000000"}, Case{7, INT_MAX, "7"}}) {
    char buffer[40];
    char* end = itoa(c.value, buffer, c.base);
    EXPECT_STREQ(buffer, c.text) << c.value << " base " << c.base;
    EXPECT_EQ(end, buffer + std::strlen(c.text));
  }
  char untouched[] = "keep";
  for (int base : {1, 0, -2}) EXPECT_EQ(itoa(5, untouched, base), nullptr);
  EXPECT_STREQ(untouched, "keep");
  EXPECT_EQ(itoa(5, nullptr, 10), nullptr);
}

TEST(StringRoutines, StricmpGivesMinusOneZeroOrOne) {
  EXPECT_EQ(stricmp("abc", "ABC"), 0);
  EXPECT_EQ(stricmp("abc", "abd"), -1);
  EXPECT_EQ(stricmp("abd", "abc"), 1);
  EXPECT_EQ(stricmp("abc", "ab"), 1);
  EXPECT_EQ(stricmp("ab", "abc"), -1);
  EXPECT_EQ(stricmp("", ""), 0);
  EXPECT_EQ(stricmp("", "a"), -1);
  EXPECT_EQ(stricmp("a", "z"), -1);  // exactly -1, not a difference
  EXPECT_EQ(stricmp("_", "z"), 1);   // letters fold to upper case
  EXPECT_EQ(stricmp("\xe9", "a"), -1);  // bytes from 0x80 sort below ASCII
  EXPECT_EQ(stricmp("a", "\xe9"), 1);
  EXPECT_EQ(stricmp(nullptr, "a"), -1);
  EXPECT_EQ(stricmp("a", nullptr), -1);
  EXPECT_EQ(stricmp(nullptr, nullptr), -1);
  char x[] = "Hello", y[] = "hELLO";
  EXPECT_EQ(strcmpi(x, y), 0);
}

TEST(StringRoutines, StrnicmpIsARunningSum) {
  EXPECT_EQ(strnicmp("abc", "ABD", 2), 0);
  EXPECT_EQ(strnicmp("abc", "ABD", 3), -1);
  EXPECT_EQ(strnicmp("abc", "ABD", 0), 0);
  EXPECT_EQ(strnicmp("ac", "bb", 2), 0);  // -1 and +1 cancel
  EXPECT_EQ(strnicmp("ab", "ba", 5), 0);
  for (int n : {1, 2, 3, 9}) EXPECT_EQ(strnicmp("abc", "ab", n), 0);
  EXPECT_EQ(strnicmp("", "abc", 3), 0);
  EXPECT_EQ(strnicmp("b", "a", 1), 1);
  EXPECT_EQ(strnicmp("\x80", "a", 1), -128 - 'A');
  EXPECT_EQ(strnicmp(nullptr, "a", 1), 0);
}

TEST(StringRoutines, Strrev) {
  for (auto [in, out] : {std::pair<std::string, std::string>{"abcd", "dcba"}, {"abc", "cba"}, {"a", "a"}, {"", ""}}) {
    std::string text = in;
    strrev(text.data());
    EXPECT_EQ(text, out);
  }
  strrev(nullptr);
}

TEST(StringRoutines, FindSubStringResumesBehindThePartialMatch) {
  EXPECT_EQ(FindSubString("aaab", "aab", 0, false), -1);  // missed: resumes at 3
  EXPECT_EQ(FindSubString("xabc", "abc", 0, false), 1);
  EXPECT_EQ(FindSubString("xabc", "abc", 1, false), 1);  // counted from the start of str
  EXPECT_EQ(FindSubString("abc", "", 0, false), 0);
  EXPECT_EQ(FindSubString("abc", "", 2, false), 2);
  EXPECT_EQ(FindSubString("abc", "", 3, false), -1);
  EXPECT_EQ(FindSubString("", "", 0, false), -1);
  EXPECT_EQ(FindSubString("abc", "bcd", 0, false), -1);  // longer than what remains
  EXPECT_EQ(FindSubString("abc", "a", -1, false), -1);
  EXPECT_EQ(FindSubString("abc", "a", INT_MIN, false), -1);
  EXPECT_EQ(FindSubString("abc", "a", INT_MAX, false), -1);
  EXPECT_EQ(FindSubString(nullptr, "a", 0, false), -1);
  EXPECT_EQ(FindSubString("a", nullptr, 0, false), -1);

  const char str[] = "xabc";
  EXPECT_EQ(FindSubString(str, "ABC", 0, true), 1);
  EXPECT_EQ(FindSubString(str, "ABC", 0, false), -1);
  EXPECT_STREQ(str, "xabc");
}
