#include <vq0300/BoundedCopy.h>
#include <vq0300/LCString.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

namespace {

// The three fields in their fixed order, read from the object's bytes. This
// both pins the layout and makes the add position visible.
struct Fields {
  char* data;
  int32_t length;
  int32_t add_pos;
};

Fields Peek(const LCString& s) {
  static_assert(std::is_standard_layout<LCString>::value, "LCString must stay standard layout");
  static_assert(sizeof(LCString) == sizeof(Fields), "LCString holds exactly its three fields");
  Fields f;
  std::memcpy(&f, &s, sizeof f);
  return f;
}

// The counted view: all GetLength() bytes, NUL bytes included.
std::string Counted(const LCString& s) { return std::string(s.c_str(), static_cast<size_t>(s.GetLength())); }

}  // namespace

TEST(LCString, FieldLayout) {
  LCString s("abc");
  Fields f = Peek(s);
  EXPECT_EQ(f.data, s.c_str());
  EXPECT_EQ(f.length, 3);
  EXPECT_EQ(f.add_pos, 2);
  EXPECT_EQ(LTEXT(s), s.c_str());
}

TEST(LCString, ConstructionSetsLengthAndAddPosition) {
  LCString empty;
  EXPECT_EQ(empty.GetLength(), 0);
  EXPECT_TRUE(empty.IsEmpty());
  EXPECT_EQ(Peek(empty).add_pos, 0);
  EXPECT_STREQ(empty.c_str(), "");

  LCString presized(5);
  EXPECT_EQ(presized.GetLength(), 5);
  EXPECT_FALSE(presized.IsEmpty());
  EXPECT_EQ(Peek(presized).add_pos, 0);
  EXPECT_EQ(Counted(presized), std::string(5, '\0'));
  EXPECT_TRUE(presized == LCString());
  EXPECT_TRUE(presized == "");

  LCString from_null(static_cast<char const*>(nullptr));
  EXPECT_EQ(from_null.GetLength(), 0);
  EXPECT_EQ(Peek(from_null).add_pos, 0);
  LCString from_empty("");
  EXPECT_EQ(from_empty.GetLength(), 0);
  EXPECT_EQ(Peek(from_empty).add_pos, -1);
  EXPECT_EQ(from_null.AddString(1, "x"), nullptr);
  EXPECT_EQ(from_empty.AddString(1, "x"), nullptr);

  LCString nul('\0');
  EXPECT_EQ(nul.GetLength(), 1);
  EXPECT_FALSE(nul.IsEmpty());
  EXPECT_EQ(Peek(nul).add_pos, 0);
  EXPECT_TRUE(nul == "");
  LCString x('x');
  EXPECT_STREQ(x.c_str(), "x");

  const std::string with_nuls("a\0b\0", 4);
  LCString from_std(with_nuls);
  EXPECT_EQ(from_std.GetLength(), 4);
  EXPECT_EQ(Peek(from_std).add_pos, 3);
  LCString copy(from_std);
  EXPECT_EQ(Counted(copy), with_nuls);
  EXPECT_NE(copy.c_str(), from_std.c_str()) << "copies are deep";
}

TEST(LCString, NegativeSizesCountAsZero) {
  LCString s(-7);
  EXPECT_EQ(s.GetLength(), 0);
  EXPECT_STREQ(s.c_str(), "");
  LCString t("abc");
  t.Reallocate(INT_MIN);
  EXPECT_EQ(t.GetLength(), 0);
  EXPECT_EQ(Peek(t).add_pos, 0);
  EXPECT_STREQ(t.c_str(), "");
}

TEST(LCString, AssignmentAndReallocate) {
  LCString s("abc");
  LCString t(8);
  t = s;
  EXPECT_EQ(Counted(t), "abc");
  EXPECT_EQ(Peek(t).add_pos, 2);

  // Self-assignment keeps everything, the add position included.
  LCString u(6);
  u.AddString(2, "hi");
  char* before = u.c_str();
  LCString& same = u;
  u = same;
  EXPECT_EQ(u.c_str(), before);
  EXPECT_EQ(u.GetLength(), 6);
  EXPECT_EQ(Peek(u).add_pos, 2);

  s.Reallocate(4);
  EXPECT_EQ(Counted(s), std::string(4, '\0'));
  EXPECT_EQ(Peek(s).add_pos, 0);
}

TEST(LCString, Concatenation) {
  LCString a("ab");
  LCString b("cd");
  LCString sum = a + b;
  EXPECT_EQ(Counted(a), "ab");
  EXPECT_EQ(Counted(sum), "abcd");
  EXPECT_EQ(Peek(sum).add_pos, 0);
  // The result of + is open for AddString from index 0, over its text.
  EXPECT_NE(sum.AddString(1, "X"), nullptr);
  EXPECT_STREQ(sum.c_str(), "X");
  EXPECT_EQ(sum.GetLength(), 4);

  a += b;
  EXPECT_EQ(Counted(a), "abcd");
  EXPECT_EQ(Peek(a).add_pos, 3);
  EXPECT_EQ(a.AddString(1, "X"), nullptr);

  LCString s("ab");
  s += s;
  EXPECT_EQ(Counted(s), "abab");

  // Both go by the counted view: inner NUL bytes and the text behind them stay.
  LCString p(std::string("x\0y", 3));
  LCString q(2);
  EXPECT_EQ(Counted(p + q), std::string("x\0y\0\0", 5));
  q += p;
  EXPECT_EQ(Counted(q), std::string("\0\0x\0y", 5));
}

TEST(LCString, AddStringFillsInPieces) {
  LCString s(8);
  EXPECT_EQ(s.AddString(3, "abc"), s.c_str());
  EXPECT_EQ(s.AddString(3, "def"), s.c_str());
  EXPECT_STREQ(s.c_str(), "abcdef");
  EXPECT_EQ(s.AddString(3, "ghi"), s.c_str());  // room for one more only
  EXPECT_STREQ(s.c_str(), "abcdefg");
  EXPECT_EQ(s.AddString(3, "jkl"), nullptr);
  EXPECT_EQ(s.GetLength(), 8);

  LCString one(1);
  EXPECT_EQ(one.AddString(1, "a"), nullptr);

  LCString t(5);
  EXPECT_EQ(t.AddString(0, "a"), nullptr);
  EXPECT_EQ(t.AddString(-3, "a"), nullptr);
  EXPECT_EQ(t.AddString(2, nullptr), nullptr);
  EXPECT_EQ(Peek(t).add_pos, 0);

  // A NUL in the source does not stop the copy.
  EXPECT_NE(t.AddString(3, std::string("a\0b", 3).c_str()), nullptr);
  EXPECT_EQ(Counted(t), std::string("a\0b\0\0", 5));
}

TEST(LCString, ElementAccessAtAndBeyondTheEnd) {
  LCString s("abc");
  EXPECT_EQ(&s[3], s.c_str() + 3);  // the terminator cell
  EXPECT_EQ(s[3], '\0');
  EXPECT_EQ(&s[7], s.c_str() + 2);  // falls back to the last character
  EXPECT_EQ(s.GetAt(3), 'c');
  EXPECT_EQ(s.GetAt(100), 'c');
  EXPECT_FALSE(s.SetAt(3, 'x'));
  EXPECT_STREQ(s.c_str(), "abc");
  EXPECT_TRUE(s.SetAt(2, 'x'));
  EXPECT_STREQ(s.c_str(), "abx");
  s[9] = 'y';
  EXPECT_STREQ(s.c_str(), "aby");

  const LCString& cs = s;
  EXPECT_EQ(cs[3], '\0');
  EXPECT_EQ(cs[5], 'y');
  EXPECT_EQ(cs[0], 'a');

  // A NUL stored by SetAt leaves the stored length alone.
  EXPECT_TRUE(s.SetAt(1, '\0'));
  EXPECT_EQ(s.GetLength(), 3);
  EXPECT_STREQ(s.c_str(), "a");

  LCString empty;
  EXPECT_EQ(&empty[0], empty.c_str());
  EXPECT_FALSE(empty.SetAt(0, 'x'));
  EXPECT_EQ(empty.GetAt(0), '\0');
  EXPECT_EQ(&empty[4], empty.c_str());
}

TEST(LCString, NegativeIndexesFallBackSafely) {
  LCString s("abc");
  EXPECT_EQ(&s[-1], s.c_str() + 2);
  EXPECT_EQ(&s[INT_MIN], s.c_str() + 2);
  EXPECT_EQ(static_cast<const LCString&>(s)[-5], 'c');
  EXPECT_EQ(s.GetAt(-1), 'c');
  EXPECT_FALSE(s.SetAt(-1, 'x'));
  EXPECT_STREQ(s.c_str(), "abc");
  LCString empty;
  EXPECT_EQ(&empty[-1], empty.c_str());
  EXPECT_EQ(empty.GetAt(INT_MIN), '\0');
}

TEST(LCString, ComparisonsFollowStrcmp) {
  const char* pairs[][2] = {{"abc", "abd"}, {"abd", "abc"}, {"ab", "abc"}, {"", ""},
                            {"\x80", "z"},  {"a\xff", "a~"}, {"Z", "a"}};
  for (auto& p : pairs) {
    LCString a(p[0]), b(p[1]);
    // strcmp at run time (a constant call may be folded to -1, 0 or 1).
    const int ref = std::strcmp(a.c_str(), b.c_str());
    EXPECT_EQ(a.Compare(b), ref) << p[0] << " " << p[1];
    EXPECT_EQ(a == b, ref == 0);
    EXPECT_EQ(a != b, ref != 0);
    EXPECT_EQ(a < b, ref < 0);
    EXPECT_EQ(a > b, ref > 0);
    EXPECT_EQ(a <= b, ref <= 0);
    EXPECT_EQ(a >= b, ref >= 0);
    EXPECT_EQ(a == p[1], ref == 0);
    EXPECT_EQ(a != p[1], ref != 0);
  }
  // A byte of 0x80 and above sorts above ASCII.
  EXPECT_TRUE(LCString("\x80") > LCString("~"));
  // Only the terminated views count.
  EXPECT_TRUE(LCString(std::string("ab\0x", 4)) == LCString(std::string("ab\0y", 4)));
  // Null pointers: never equal.
  EXPECT_FALSE(LCString() == static_cast<char const*>(nullptr));
  EXPECT_FALSE(LCString("a") == static_cast<char const*>(nullptr));
  EXPECT_TRUE(LCString() != static_cast<char const*>(nullptr));
}

TEST(LCString, CaseInsensitiveCompareAndCaseMapping) {
  EXPECT_EQ(LCString("AbC").CompareNoCase(LCString("aBc")), 0);
  // Folding is to upper case, so '_' (0x5F) sorts after every letter.
  // The value is strcmp's on the upper-case texts, compared at run time.
  const LCString underscore("_"), upper_z("Z"), upper_abc("ABC"), upper_abd("ABD");
  EXPECT_EQ(underscore.CompareNoCase(LCString("z")), std::strcmp(underscore.c_str(), upper_z.c_str()));
  EXPECT_GT(underscore.CompareNoCase(LCString("Z")), 0);
  EXPECT_EQ(LCString("abc").CompareNoCase(LCString("aBd")), std::strcmp(upper_abc.c_str(), upper_abd.c_str()));
  // The argument's text behind an inner NUL plays no part.
  EXPECT_EQ(LCString("ab").CompareNoCase(LCString(std::string("AB\0c", 4))), 0);

  LCString s(std::string("aZ\x80\xe4\0bY{", 8));
  s.MakeUpper();
  EXPECT_EQ(Counted(s), std::string("AZ\x80\xe4\0BY{", 8));
  s.MakeLower();
  EXPECT_EQ(Counted(s), std::string("az\x80\xe4\0by{", 8));
  LCString edges("@[`{");  // the neighbours of the letters stay
  edges.MakeUpper();
  edges.MakeLower();
  EXPECT_STREQ(edges.c_str(), "@[`{");
}

TEST(LCString, MakeReverseUsesTheCountedView) {
  LCString s("abcd");
  s.MakeReverse();
  EXPECT_EQ(Counted(s), "dcba");
  EXPECT_EQ(s[4], '\0');

  LCString partly(6);
  partly.AddString(2, "ab");
  partly.MakeReverse();
  EXPECT_EQ(Counted(partly), std::string("\0\0\0\0ba", 6));
  EXPECT_STREQ(partly.c_str(), "");
}

TEST(LCString, BoundedCopyFromLCString) {
  char buf[16];
  std::memset(buf, 'x', sizeof buf);
  util_strncpy(buf, LCString(), 5, 0);  // no padding from an empty string
  EXPECT_EQ(std::string(buf, 2), std::string("\0x", 2));

  LCString zeros(8);
  EXPECT_FALSE(zeros.IsEmpty());
  std::memset(buf, 'x', sizeof buf);
  util_strncpy(buf, zeros, 0, 0);
  EXPECT_EQ(std::string(buf, 2), std::string("\0x", 2));
  std::memset(buf, 'x', sizeof buf);
  util_strncpy(buf, zeros, 5, 0);
  EXPECT_EQ(std::string(buf, 7), std::string("\0\0\0\0\0\0x", 7));

  std::memset(buf, 'x', sizeof buf);
  util_strncpy(buf, LCString("abcdef"), 5, 2);
  EXPECT_EQ(std::string(buf, 4), std::string("ab\0x", 4));
  util_strncpy(buf, LCString("abcdef"), 0, 2);
  EXPECT_STREQ(buf, "abcdef");
  util_strncpy(nullptr, LCString("abc"), 0, 0);  // no fault
}
