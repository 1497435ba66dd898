#include <vq0300/BoundedCopy.h>
#include <vq0300/LCString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

using namespace std::string_literals;
using Texts = std::vector<std::string>;

namespace {

// The counted view and the add position (the third field, behind the buffer
// pointer and the length) in one text: "abc@2".
std::string State(const LCString& s) {
  int32_t add_pos;
  std::memcpy(&add_pos, reinterpret_cast<const char*>(&s) + sizeof(char*) + 4, sizeof add_pos);
  return std::string(s.c_str(), size_t(s.GetLength())) + "@" + std::to_string(add_pos);
}

// The states of several strings, taken by reference: a copy would reset the add position.
template <class... T>
Texts States(const T&... s) {
  return {State(s)...};
}

// Every string over alphabet of length 0 to max_length.
Texts AllStrings(const std::string& alphabet, size_t max_length) {
  Texts out{""};
  for (size_t i = 0; out[i].size() < max_length; ++i)
    for (char c : alphabet) out.push_back(out[i] + c);
  return out;
}

}  // namespace

TEST(LCString, ConstructionSetsLengthAndAddPosition) {
  const LCString presized(5);
  LCString none(static_cast<const char*>(nullptr)), blank("");
  EXPECT_EQ(States(LCString(), presized, LCString(-7), none, blank, LCString("abc"), LCString('\0'),
                   LCString("a\0b\0"s), LCString(presized)),
            (Texts{"@0", "\0\0\0\0\0@0"s, "@0", "@0", "@-1", "abc@2", "\0@0"s, "a\0b\0@3"s,
                   "\0\0\0\0\0@4"s}));
  EXPECT_TRUE(LCString().IsEmpty());
  EXPECT_FALSE(presized.IsEmpty());
  EXPECT_FALSE(LCString('\0').IsEmpty());
  EXPECT_FALSE(none.AddString(1, "x"));
  EXPECT_FALSE(blank.AddString(1, "x"));  // both full
}

TEST(LCString, AssignmentAndConcatenationSetTheAddPosition) {
  LCString a("ab"), b("cd"), t(6), p("x\0y"s), q(2);
  t.AddString(2, "hi");
  LCString& same = t;
  // In turn, as a braced list is evaluated left to right. Self-assignment keeps
  // the add position; a + b gives 0 and leaves a alone; a negative size counts as 0.
  EXPECT_EQ((Texts{State(t = same), State(t = a), State(a + b), State(a), State((a += b, a)),
                   State((a += a, a)), State((t.Reallocate(INT_MIN), t))}),
            (Texts{"hi\0\0\0\0@2"s, "ab@1", "abcd@0", "ab@1", "abcd@3", "abcdabcd@7", "@0"}));
  // Both go by the counted view: inner NUL bytes and what is behind them stay.
  EXPECT_EQ((Texts{State(p + q), State((q += p, q))}), (Texts{"x\0y\0\0@0"s, "\0\0x\0y@4"s}));
}

TEST(LCString, AddStringFillsAPresizedStringInPieces) {
  LCString s(8), t(5);
  for (const char* piece : {"abc", "def", "ghi"}) EXPECT_EQ(s.AddString(3, piece), s.c_str());
  EXPECT_EQ(s.AddString(3, "jkl"), nullptr);
  EXPECT_EQ(State(s), "abcdefg\0@7"s);  // room for 'g' only: L - 1 bytes
  EXPECT_FALSE(LCString(1).AddString(1, "a"));
  EXPECT_FALSE(t.AddString(0, "a"));
  EXPECT_FALSE(t.AddString(-3, "a"));
  EXPECT_FALSE(t.AddString(2, nullptr));
  EXPECT_NE(t.AddString(3, "a\0b"), nullptr);  // a NUL does not stop it
  EXPECT_EQ(State(t), "a\0b\0\0@3"s);
}

TEST(LCString, OperatorIndexGivesTheTerminatorAtLAndGetAtTheLastCharacter) {
  LCString s("abc"), empty;
  const LCString& cs = s;
  EXPECT_EQ(&s[3], s.c_str() + 3);
  EXPECT_EQ(cs[3], '\0');
  EXPECT_EQ(s.GetAt(3), 'c');
  EXPECT_FALSE(s.SetAt(3, 'x'));
  for (int i : {4, -1, INT_MIN, INT_MAX}) {  // any other index: the last character
    EXPECT_EQ(&s[i], s.c_str() + 2) << i;
    EXPECT_EQ(cs[i], 'c') << i;
    EXPECT_EQ(s.GetAt(i), 'c') << i;
    EXPECT_FALSE(s.SetAt(i, 'x')) << i;
    EXPECT_EQ(&empty[i], empty.c_str()) << i;
    EXPECT_EQ(empty.GetAt(i), '\0') << i;
  }
  EXPECT_EQ(&empty[0], empty.c_str());
  EXPECT_FALSE(empty.SetAt(0, 'x'));
  EXPECT_TRUE(s.SetAt(0, '\0'));
  s[9] = 'y';
  EXPECT_EQ(State(s), "\0by@2"s);  // a NUL stored keeps the stored length
}

TEST(LCString, ComparisonsAreStrcmpOfTheTerminatedViews) {
  const char* texts[] = {"abc", "abd", "ab", "", "\x80", "~", "a\xff", "a~"};
  for (const char* x : texts) {
    for (const char* y : texts) {
      LCString a(x), b(y);
      const int r = std::strcmp(a.c_str(), b.c_str());  // at run time, not folded
      const bool got[] = {a == b, a != b, (a < b), (a > b), a <= b, a >= b, a == y, a != y};
      const bool want[] = {r == 0, r != 0, (r < 0), (r > 0), r <= 0, r >= 0, r == 0, r != 0};
      EXPECT_EQ(a.Compare(b), r) << x << " " << y;
      EXPECT_TRUE(std::equal(got, got + 8, want)) << x << " " << y;
    }
  }
  const char* none = nullptr;
  EXPECT_EQ(LCString("ab\0x"s), LCString("ab\0y"s));
  EXPECT_EQ(LCString(5), LCString());
  EXPECT_FALSE(LCString() == none);
  EXPECT_NE(LCString(), none);
  // Folded to upper case, so '_' sorts after the letters; strcmp's value unchanged.
  const LCString under("_"), upper_z("Z");
  EXPECT_EQ(under.CompareNoCase(LCString("z")), std::strcmp(under.c_str(), upper_z.c_str()));
  EXPECT_EQ(LCString("aBc").CompareNoCase(LCString("AbC\0d"s)), 0);
}

TEST(LCString, CaseAndReverseMapTheCountedView) {
  LCString s("aZ\x80\xe4\0bY{@[`"s), r(6);
  s.MakeUpper();
  EXPECT_EQ(State(s), "AZ\x80\xe4\0BY{@[`@10"s);
  s.MakeLower();
  EXPECT_EQ(State(s), "az\x80\xe4\0by{@[`@10"s);
  r.AddString(2, "ab");
  r.MakeReverse();
  EXPECT_EQ(State(r) + r[6], "\0\0\0\0ba@2\0"s);  // the terminator stays
}

TEST(LCString, BoundedCopyFromLCString) {
  auto copy = [](const LCString& s, int count, int limit) {
    char buf[8] = {'x', 'x', 'x', 'x', 'x', 'x', 'x', 'x'};
    util_strncpy(buf, s, count, limit);
    return std::string(buf, 7);
  };
  // An empty source writes one NUL with no padding; else the terminated view.
  EXPECT_EQ((Texts{copy(LCString(), 5, 0), copy(LCString(6), 0, 0), copy(LCString(6), 5, 0),
                   copy(LCString("abcdef"), 5, 2), copy(LCString("abcdef"), 0, 2)}),
            (Texts{"\0xxxxxx"s, "\0xxxxxx"s, "\0\0\0\0\0\0x"s, "ab\0xxxx"s, "abcdef\0"s}));
  util_strncpy(nullptr, LCString("abc"), 0, 0);  // no fault
}

// Exhaustive check against std::string on short texts with NUL bytes and
// overlapping matches. The forward searches are find on the terminated view, so
// a NUL first byte does not end them and Find('\0') gives the index of the
// terminator (LString gives 0). The reverse searches with a string or a set are
// rfind / find_last_of on the bytes behind the last NUL of the counted view, so
// they see nothing on a partly filled string ("ab\0\0"). A stored length of 0
// misses at once.
TEST(LCStringSearch, AgreesWithStdStringOnAllShortTexts) {
  const Texts needles = AllStrings("ab", 3);
  for (const std::string& t : AllStrings("ab\0"s, 6)) {
    LCString s(t);
    const std::string terminated(t.c_str());
    const size_t tail_start = t.rfind('\0') + 1;  // npos + 1 is 0
    const std::string tail = t.substr(tail_start);
    auto expect = [&](size_t pos, size_t offset) {
      return t.empty() || pos == std::string::npos ? -1 : static_cast<int>(pos + offset);
    };
    SCOPED_TRACE(testing::PrintToString(t));
    for (const std::string& n : needles) {
      EXPECT_EQ(s.Find(n.c_str()), expect(terminated.find(n), 0)) << n;
      EXPECT_EQ(s.FindOneOf(n.c_str()), expect(terminated.find_first_of(n), 0)) << n;
      EXPECT_EQ(s.ReverseFind(n.c_str()), expect(tail.rfind(n), tail_start)) << n;
      EXPECT_EQ(s.ReverseFindOneOf(n.c_str()), expect(tail.find_last_of(n), tail_start)) << n;
    }
    EXPECT_EQ(s.Find('a'), expect(terminated.find('a'), 0));
    EXPECT_EQ(s.ReverseFind('b'), expect(terminated.rfind('b'), 0));
    EXPECT_EQ(s.Find('\0'), expect(terminated.size(), 0));
    EXPECT_EQ(s.ReverseFind('\0'), expect(terminated.size(), 0));
  }
}

TEST(LCStringSearch, OverloadsAndNullArguments) {
  LCString abc("abc");
  const char* none = nullptr;
  // The LCString forms see the argument's terminated view.
  EXPECT_EQ(
      (std::vector<int>{abc.Find(LCString("c\0a"s)), abc.FindOneOf(LCString("\0a"s)),
                        abc.ReverseFind(LCString("bc\0a"s)),
                        abc.ReverseFindOneOf(LCString("a\0c"s)), abc.Find(none),
                        abc.FindOneOf(none), abc.ReverseFind(none), abc.ReverseFindOneOf(none)}),
      (std::vector<int>{2, -1, 1, 0, -1, -1, -1, -1}));
}

// The trims leave the add position alone; a string of white space ends empty.
TEST(LCStringTrim, WhiteSpaceIsEveryByteOutsideThePrintableRange) {
  for (int b = 0; b < 256; ++b) {
    const std::string c(1, static_cast<char>(b)), k = std::isgraph(b) ? c : "";  // '!' to '~'
    LCString mid("a" + c + "b"), right("a" + c), left(c + "a"), all_l(c + c), all_r(all_l);
    mid.RemoveWhiteSpaces();
    right.TrimRight();
    left.TrimLeft();
    all_l.TrimLeft();
    all_r.TrimRight();
    EXPECT_EQ(States(mid, right, left, all_l, all_r),
              (Texts{"a" + k + "b@2", "a" + k + "@1", k + "a@1", k + k + "@1", k + k + "@1"}))
        << b;
    EXPECT_EQ(all_l.c_str() + std::string("|") + all_r.c_str(), k + k + "|" + k + k) << b;
  }
}

TEST(LCStringTrim, TrimsKeepTheBuffer) {
  LCString right("ab \t\n"), left(" \tab"), mixed("a b\tc\0\x80"s), empty;
  char *right_buffer = right.c_str(), *left_buffer = left.c_str();
  right.TrimRight();
  left.TrimLeft();
  mixed.RemoveWhiteSpaces();
  for (auto trim : {&LCString::TrimLeft, &LCString::TrimRight, &LCString::RemoveWhiteSpaces})
    (empty.*trim)();
  EXPECT_EQ(right.c_str(), right_buffer);
  EXPECT_EQ(left.c_str(), left_buffer);
  EXPECT_EQ(std::string(right_buffer, 6), "ab\0\0\0\0"s);
  EXPECT_EQ(std::string(left_buffer, 5), "ab\0b\0"s);  // old bytes stay above
  EXPECT_EQ(States(right, mixed, empty), (Texts{"ab@4", "abc@6", "@0"}));
  EXPECT_EQ(right.AddString(1, "x"), nullptr);  // an add position past L - 1 is full
  EXPECT_STREQ(mixed.c_str(), "abc");
}

// Against substr on the counted view, at both ends of int. A cut has add
// position 0. Left and Right with n >= L fall back on the TERMINATED view, with
// add position its length - 1; Mid never does, so Mid(0, L) keeps inner NULs.
TEST(LCStringSlice, AgreeWithSubstrAtTheLimitsOfInt) {
  for (const LCString& s : {LCString("abcdef"), LCString(), LCString("ab\0cd"s), LCString(10)}) {
    const std::string counted(s.c_str(), size_t(s.GetLength())), terminated(s.c_str());
    const int len = s.GetLength();
    const std::string whole = terminated + "@" + std::to_string(int(terminated.size()) - 1);
    for (int n : {INT_MIN, -1, 0, 1, 3, 5, 6, 10, INT_MAX}) {
      const bool none = n < 1 || len == 0, cut = !none && n < len;
      EXPECT_EQ(State(s.Left(n)), none ? "@0" : cut ? counted.substr(0, n) + "@0" : whole) << n;
      EXPECT_EQ(State(s.Right(n)), none ? "@0" : cut ? counted.substr(len - n) + "@0" : whole) << n;
      for (int start : {INT_MIN, -2, 0, 2, 5, 6, INT_MAX}) {
        const size_t from = size_t(std::max(start, 0));
        EXPECT_EQ(State(s.Mid(start, n)),
                  (n < 1 || from >= counted.size() ? "" : counted.substr(from, n)) + "@0")
            << start << " " << n << " " << testing::PrintToString(counted);
      }
    }
  }
}
