#include <vq0300/BoundedCopy.h>
#include <vq0300/LCString.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

namespace {

// The fields in their fixed order (buffer, length, add position), read from
// the object's bytes: pins the layout and makes the add position visible.
struct Fields {
  char* data;
  int32_t length;
  int32_t add_pos;
};
static_assert(std::is_standard_layout<LCString>::value && sizeof(LCString) == sizeof(Fields),
              "layout");

int AddPos(const LCString& s) {
  Fields f;
  std::memcpy(&f, &s, sizeof f);
  EXPECT_TRUE(f.data == s.c_str() && f.length == s.GetLength());
  return f.add_pos;
}

std::string Counted(const LCString& s) {
  return std::string(s.c_str(), static_cast<size_t>(s.GetLength()));
}

}  // namespace

TEST(LCString, ConstructionSetsLengthAndAddPosition) {
  const std::string nuls("a\0b\0", 4), zeros(5, '\0');
  const LCString presized(5);  // add position 0, which a copy never takes over
  const LCString made[] = {LCString(),        LCString(5),
                           LCString(-7),      LCString(static_cast<char const*>(nullptr)),
                           LCString(""),      LCString("abc"),
                           LCString('\0'),    LCString(nuls),
                           LCString(presized)};
  const std::string counted[] = {"", zeros, "", "", "", "abc", std::string(1, '\0'), nuls, zeros};
  const int add_pos[] = {0, 0, 0, 0, -1, 2, 0, 3, 4};
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ(Counted(made[i]), counted[i]) << i;
    EXPECT_EQ(made[i].IsEmpty(), counted[i].empty()) << i;
    EXPECT_EQ(AddPos(made[i]), add_pos[i]) << i;
  }
  // No bytes before the first NUL: equal to the empty string.
  EXPECT_TRUE(presized == LCString() && presized == "" && LCString('\0') == "");
  EXPECT_EQ(LCString(static_cast<char const*>(nullptr)).AddString(1, "x"), nullptr);
  EXPECT_EQ(LCString("").AddString(1, "x"), nullptr);
}

TEST(LCString, AssignmentAndConcatenation) {
  LCString a("ab"), b("cd"), t(6);
  t.AddString(2, "hi");
  LCString& same = t;
  t = same;  // self-assignment keeps everything, the add position included
  EXPECT_EQ(AddPos(t), 2);
  t = a;
  EXPECT_EQ(AddPos(t), 1);
  t.Reallocate(INT_MIN);  // a negative size counts as 0
  EXPECT_EQ(Counted(t), "");

  LCString sum = a + b;
  EXPECT_EQ(Counted(a) + Counted(sum), "ababcd");
  EXPECT_NE(sum.AddString(1, "X"), nullptr);  // add position 0: writes over the text
  EXPECT_STREQ(sum.c_str(), "X");
  a += b;
  EXPECT_EQ(Counted(a), "abcd");
  EXPECT_EQ(a.AddString(1, "X"), nullptr);  // add position L - 1: full
  a += a;
  EXPECT_EQ(Counted(a), "abcdabcd");
  // Both go by the counted view: inner NUL bytes and what is behind them stay.
  LCString p(std::string("x\0y", 3)), q(2);
  EXPECT_EQ(Counted(p + q), std::string("x\0y\0\0", 5));
  q += p;
  EXPECT_EQ(Counted(q), std::string("\0\0x\0y", 5));
}

TEST(LCString, AddStringFillsInPieces) {
  LCString s(8);
  EXPECT_EQ(s.AddString(3, "abc"), s.c_str());
  EXPECT_EQ(s.AddString(3, "def"), s.c_str());
  EXPECT_EQ(s.AddString(3, "ghi"), s.c_str());  // room for 'g' only
  EXPECT_EQ(s.AddString(3, "jkl"), nullptr);
  EXPECT_EQ(Counted(s), std::string("abcdefg\0", 8));
  EXPECT_EQ(LCString(1).AddString(1, "a"), nullptr);
  LCString t(5);
  EXPECT_TRUE(!t.AddString(0, "a") && !t.AddString(-3, "a") && !t.AddString(2, nullptr));
  EXPECT_NE(t.AddString(3, std::string("a\0b", 3).c_str()), nullptr);  // a NUL does not stop it
  EXPECT_EQ(Counted(t), std::string("a\0b\0\0", 5));
}

TEST(LCString, ElementAccessAtAndBeyondTheEnd) {
  LCString s("abc"), empty;
  const LCString& cs = s;
  EXPECT_EQ(&s[3], s.c_str() + 3);  // operator[] at L: the terminator cell
  EXPECT_EQ(cs[3], '\0');
  EXPECT_EQ(s.GetAt(3), 'c');  // GetAt at L: the last character
  EXPECT_FALSE(s.SetAt(3, 'x'));
  for (int i : {4, 7, -1, INT_MIN, INT_MAX}) {  // any other index: the last character
    EXPECT_TRUE(&s[i] == s.c_str() + 2 && cs[i] == 'c' && s.GetAt(i) == 'c' && !s.SetAt(i, 'x'))
        << i;
    EXPECT_TRUE(&empty[i] == empty.c_str() && empty.GetAt(i) == '\0') << i;
  }
  EXPECT_TRUE(&empty[0] == empty.c_str() && !empty.SetAt(0, 'x'));
  EXPECT_TRUE(s.SetAt(2, 'x'));
  s[9] = 'y';
  EXPECT_TRUE(s.SetAt(0, '\0'));  // the stored length stays
  EXPECT_EQ(Counted(s), std::string("\0by", 3));
}

TEST(LCString, ComparisonsHandOnStrcmp) {
  const char* texts[] = {"abc", "abd", "ab", "", "\x80", "z", "a\xff", "a~"};
  for (const char* x : texts) {
    for (const char* y : texts) {
      LCString a(x), b(y);
      const int r = std::strcmp(a.c_str(), b.c_str());  // at run time, not folded
      EXPECT_EQ(a.Compare(b), r);
      EXPECT_EQ(
          (std::vector<bool>{a == b, a != b, (a < b), (a > b), a <= b, a >= b, a == y, a != y}),
          (std::vector<bool>{r == 0, r != 0, (r < 0), (r > 0), r <= 0, r >= 0, r == 0, r != 0}));
    }
  }
  EXPECT_TRUE(LCString("\x80") > LCString("~"));  // unsigned byte order
  EXPECT_TRUE(LCString(std::string("ab\0x", 4)) == LCString(std::string("ab\0y", 4)));
  EXPECT_TRUE(!(LCString() == static_cast<char const*>(nullptr)) &&
              LCString() != static_cast<char const*>(nullptr));

  const LCString under("_"), upper_z("Z");
  EXPECT_EQ(LCString("AbC").CompareNoCase(LCString("aBc")), 0);
  EXPECT_EQ(under.CompareNoCase(LCString("z")), std::strcmp(under.c_str(), upper_z.c_str()));
  EXPECT_GT(under.CompareNoCase(LCString("z")), 0);  // folds to upper: '_' after the letters
  EXPECT_EQ(LCString("ab").CompareNoCase(LCString(std::string("AB\0c", 4))), 0);
}

TEST(LCString, CaseAndReverseMapTheCountedView) {
  LCString s(std::string("aZ\x80\xe4\0bY{@[`", 11));
  s.MakeUpper();
  EXPECT_EQ(Counted(s), std::string("AZ\x80\xe4\0BY{@[`", 11));
  s.MakeLower();
  EXPECT_EQ(Counted(s), std::string("az\x80\xe4\0by{@[`", 11));
  LCString r(6);
  r.AddString(2, "ab");
  r.MakeReverse();
  EXPECT_EQ(Counted(r) + r[6], std::string("\0\0\0\0ba\0", 7));
}

TEST(LCString, BoundedCopyFromLCString) {
  char buf[16];
  auto copy = [&](const LCString& s, int count, int limit) {
    std::memset(buf, 'x', sizeof buf);
    util_strncpy(buf, s, count, limit);
    return std::string(buf, 7);
  };
  EXPECT_EQ(copy(LCString(), 5, 0), std::string("\0xxxxxx", 7));  // no padding
  EXPECT_EQ(copy(LCString(8), 0, 0), std::string("\0xxxxxx", 7));
  EXPECT_EQ(copy(LCString(8), 5, 0), std::string("\0\0\0\0\0\0x", 7));
  EXPECT_EQ(copy(LCString("abcdef"), 5, 2), std::string("ab\0xxxx", 7));
  EXPECT_EQ(copy(LCString("abcdef"), 0, 2), std::string("abcdef\0", 7));
  util_strncpy(nullptr, LCString("abc"), 0, 0);  // no fault
}
