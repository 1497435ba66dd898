#include <vq0300/LString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstring>
#include <string>
#include <vector>

namespace {

// Every string over "ab" of length 0 to max_length.
std::vector<std::string> AllStrings(size_t max_length) {
  std::vector<std::string> out{""};
  for (size_t i = 0; out[i].size() < max_length; ++i)
    out.insert(out.end(), {out[i] + 'a', out[i] + 'b'});
  return out;
}

// What a slice of src writes into a buffer filled with 'x'.
template <class... Args>
std::string Slice(const char* src, void (LString::*op)(char*, char const*, Args...), Args... args) {
  LString ls;
  char dst[16] = "xxxxxxxxxxxxxxx";
  (ls.*op)(dst, src, args...);
  return dst;
}

}  // namespace

// Against std::string, overlapping matches included. An empty s misses at
// once, so Find("", "") is -1 (LCString goes by its stored length instead).
TEST(LString, SearchesAgreeWithStdStringOnAllShortTexts) {
  LString ls;
  for (const std::string& t : AllStrings(5)) {
    auto expect = [&](size_t pos) { return t.empty() || pos == std::string::npos ? -1 : int(pos); };
    for (const std::string& n : AllStrings(2)) {
      const char *s = t.c_str(), *sub = n.c_str();
      EXPECT_EQ((std::vector<int>{ls.Find(s, sub), ls.FindOneOf(s, sub), ls.ReverseFind(s, sub),
                                  ls.ReverseFindOneOf(s, sub)}),
                (std::vector<int>{expect(t.find(n)), expect(t.find_first_of(n)), expect(t.rfind(n)),
                                  expect(t.find_last_of(n))}))
          << t << " " << n;
    }
    EXPECT_EQ(ls.Find(t.c_str(), 'b'), expect(t.find('b'))) << t;
    EXPECT_EQ(ls.ReverseFind(t.c_str(), 'a'), expect(t.rfind('a'))) << t;
  }
  // A NUL character is the empty string forward (LCString::Find gives the
  // length) and the length backward.
  EXPECT_TRUE(ls.Find("abc", '\0') == 0 && ls.ReverseFind("abc", '\0') == 3);
  const char* none = nullptr;
  EXPECT_EQ(
      (std::vector<int>{ls.Find(none, "a"), ls.Find("a", none), ls.Find(none, 'a'),
                        ls.FindOneOf(none, "a"), ls.FindOneOf("a", none), ls.ReverseFind(none, "a"),
                        ls.ReverseFind("a", none), ls.ReverseFind(none, 'a'),
                        ls.ReverseFindOneOf(none, "a"), ls.ReverseFindOneOf("a", none)}),
      std::vector<int>(10, -1));
}

// Against substr on a grid that takes in both ends of int: a negative start
// counts as 0 without shortening count.
TEST(LString, SlicesAgreeWithSubstrAtTheLimitsOfInt) {
  const std::string s = "abcdef";
  for (int n : {INT_MIN, -1, 0, 1, 2, 5, 6, 7, INT_MAX}) {
    const size_t take = n < 1 ? 0 : std::min(size_t(n), s.size());
    EXPECT_EQ(Slice(s.c_str(), &LString::Left, n), s.substr(0, take)) << n;
    EXPECT_EQ(Slice(s.c_str(), &LString::Right, n), s.substr(s.size() - take)) << n;
    EXPECT_EQ(Slice("", &LString::Left, n) + Slice("", &LString::Mid, 0, n), "") << n;
    for (int start : {INT_MIN, -2, 0, 1, 5, 6, INT_MAX}) {
      const size_t from = size_t(std::max(start, 0));
      EXPECT_EQ(Slice(s.c_str(), &LString::Mid, start, n),
                n < 1 || from >= s.size() ? "" : s.substr(from, size_t(n)))
          << start << " " << n;
    }
  }
  EXPECT_EQ(Slice(nullptr, &LString::Left, 2) + Slice(nullptr, &LString::Right, 2) +
                Slice(nullptr, &LString::Mid, 0, 2),
            std::string(45, 'x'));  // a null src writes nothing
  LString ls;
  char buffer[] = "abcdef";
  ls.Right(buffer, buffer, 4);  // dst may be src
  ls.Left(buffer, buffer, 3);
  ls.Mid(buffer, buffer, 1, 2);
  ls.Left(nullptr, "abc", 2);  // no fault
  EXPECT_STREQ(buffer, "de");
}

// Trailing white space is overwritten with NUL; a string of white space ends empty.
TEST(LString, WhiteSpaceIsEveryByteOutsideThePrintableRange) {
  LString ls;
  for (int b = 1; b < 256; ++b) {
    const char c = static_cast<char>(b);
    const std::string k = std::isgraph(b) ? std::string(2, c) : "";  // '!' to '~'
    char left[] = {c, c, 'a', '\0'}, right[] = {'a', c, c, '\0'}, all_l[] = {c, c, '\0'},
         all_r[] = {c, c, '\0'};
    ls.TrimLeft(left);
    ls.TrimRight(right);
    ls.TrimLeft(all_l);
    ls.TrimRight(all_r);
    EXPECT_EQ(left + std::string("|") + std::string(right, 3) + "|" + all_l + all_r,
              k + "a|a" + (k.empty() ? std::string(2, '\0') : k) + "|" + k + k)
        << b;
  }
  ls.TrimLeft(nullptr);  // no fault
  ls.TrimRight(nullptr);
}
