#include <vq0300/LString.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

namespace {

std::string Slice(void (LString::*op)(char*, char const*, int), const char* src, int n) {
  LString ls;
  char dst[64];
  std::memset(dst, 'x', sizeof dst);
  (ls.*op)(dst, src, n);
  return dst;
}

std::string Mid(const char* src, int start, int count) {
  LString ls;
  char dst[64];
  ls.Mid(dst, src, start, count);
  return dst;
}

}  // namespace

TEST(LString, ForwardSearchesStopOnAnEmptyString) {
  LString ls;
  EXPECT_EQ(ls.Find("abc", ""), 0);
  EXPECT_EQ(ls.Find("", ""), -1);
  EXPECT_EQ(ls.Find("abcabc", "ca"), 2);
  EXPECT_EQ(ls.Find("abc", "x"), -1);
  EXPECT_EQ(ls.Find("abc", 'c'), 2);
  EXPECT_EQ(ls.Find("abc", '\0'), 0);  // searches for the empty string
  EXPECT_EQ(ls.FindOneOf("abcabc", "xc"), 2);
  EXPECT_EQ(ls.FindOneOf("abc", ""), -1);
  EXPECT_EQ(ls.FindOneOf("", "a"), -1);
  // Null arguments answer -1.
  EXPECT_EQ(ls.Find(nullptr, "a"), -1);
  EXPECT_EQ(ls.Find("a", nullptr), -1);
  EXPECT_EQ(ls.Find(nullptr, 'a'), -1);
  EXPECT_EQ(ls.FindOneOf(nullptr, "a"), -1);
  EXPECT_EQ(ls.FindOneOf("a", nullptr), -1);
}

TEST(LString, ReverseSearchesSeeOverlappingMatches) {
  LString ls;
  EXPECT_EQ(ls.ReverseFind("abcabc", "bc"), 4);
  EXPECT_EQ(ls.ReverseFind("aaa", "aa"), 1);
  EXPECT_EQ(ls.ReverseFind("abababa", "aba"), 4);
  EXPECT_EQ(ls.ReverseFind("abc", "x"), -1);
  EXPECT_EQ(ls.ReverseFind("abc", ""), 3);
  EXPECT_EQ(ls.ReverseFind("abc", '\0'), 3);
  EXPECT_EQ(ls.ReverseFind("", ""), -1);
  EXPECT_EQ(ls.ReverseFind("abca", 'a'), 3);
  EXPECT_EQ(ls.ReverseFind("abc", "abc"), 0);
  EXPECT_EQ(ls.ReverseFindOneOf("abcabc", "ab"), 4);
  EXPECT_EQ(ls.ReverseFindOneOf("abcabc", ""), -1);
  EXPECT_EQ(ls.ReverseFindOneOf("abc", "x"), -1);
  EXPECT_EQ(ls.ReverseFind(nullptr, "a"), -1);
  EXPECT_EQ(ls.ReverseFind("a", nullptr), -1);
  EXPECT_EQ(ls.ReverseFindOneOf(nullptr, "a"), -1);
  EXPECT_EQ(ls.ReverseFindOneOf("a", nullptr), -1);
}

TEST(LString, LeftAndRightClamp) {
  EXPECT_EQ(Slice(&LString::Left, "abcdef", 2), "ab");
  EXPECT_EQ(Slice(&LString::Left, "abcdef", 6), "abcdef");
  EXPECT_EQ(Slice(&LString::Left, "abcdef", INT_MAX), "abcdef");
  EXPECT_EQ(Slice(&LString::Left, "abcdef", 0), "");
  EXPECT_EQ(Slice(&LString::Left, "abcdef", INT_MIN), "");
  EXPECT_EQ(Slice(&LString::Left, "", 3), "");
  EXPECT_EQ(Slice(&LString::Right, "abcdef", 2), "ef");
  EXPECT_EQ(Slice(&LString::Right, "abcdef", 6), "abcdef");
  EXPECT_EQ(Slice(&LString::Right, "abcdef", INT_MAX), "abcdef");
  EXPECT_EQ(Slice(&LString::Right, "abcdef", -1), "");
  EXPECT_EQ(Slice(&LString::Right, "abcdef", INT_MIN), "");
}

TEST(LString, MidRules) {
  EXPECT_EQ(Mid("abcdef", 2, 2), "cd");
  EXPECT_EQ(Mid("abcdef", 4, 10), "ef");
  EXPECT_EQ(Mid("abcdef", 6, 1), "");
  EXPECT_EQ(Mid("abcdef", -2, 3), "abc");
  EXPECT_EQ(Mid("abcdef", 1, INT_MAX), "bcdef");
  EXPECT_EQ(Mid("abcdef", INT_MAX, INT_MAX), "");
  EXPECT_EQ(Mid("abcdef", INT_MIN, 2), "ab");
  EXPECT_EQ(Mid("abcdef", 2, 0), "");
  EXPECT_EQ(Mid("abcdef", 2, INT_MIN), "");
}

TEST(LString, SlicesAcceptTheSameBufferAndIgnoreNull) {
  LString ls;
  char buffer[] = "abcdef";
  ls.Right(buffer, buffer, 4);
  EXPECT_STREQ(buffer, "cdef");
  ls.Left(buffer, buffer, 3);
  EXPECT_STREQ(buffer, "cde");
  char mid[] = "abcdef";
  ls.Mid(mid, mid, 1, 3);
  EXPECT_STREQ(mid, "bcd");

  char untouched[] = "keep";
  ls.Left(untouched, nullptr, 2);
  ls.Right(untouched, nullptr, 2);
  ls.Mid(untouched, nullptr, 0, 2);
  EXPECT_STREQ(untouched, "keep");
  ls.Left(nullptr, "abc", 2);  // no fault
  ls.TrimLeft(nullptr);
  ls.TrimRight(nullptr);
}

TEST(LString, TrimsTreatEveryByteOutsidePrintableAsciiAsWhiteSpace) {
  LString ls;
  char text[] = " \t\x7f\x80\xff" "a b" "\r\n\x7f\xfe ";
  ls.TrimRight(text);
  EXPECT_STREQ(text, " \t\x7f\x80\xff" "a b");
  ls.TrimLeft(text);
  EXPECT_STREQ(text, "a b");

  char blank[] = " \t\r\n\x80";
  ls.TrimRight(blank);
  EXPECT_STREQ(blank, "");
  char blank2[] = " \t\r\n\x80";
  ls.TrimLeft(blank2);
  EXPECT_STREQ(blank2, "");
  char empty[] = "";
  ls.TrimLeft(empty);
  ls.TrimRight(empty);
  EXPECT_STREQ(empty, "");
  // Bytes above the new end are NUL after TrimRight.
  char tail[] = "ab  ";
  ls.TrimRight(tail);
  EXPECT_EQ(std::memcmp(tail, "ab\0\0", 5), 0);
}
