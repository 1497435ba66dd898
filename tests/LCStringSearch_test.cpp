#include <vq0300/LCString.h>

#include <gtest/gtest.h>

#include <cctype>
#include <climits>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

std::string Counted(const LCString& s) { return std::string(s.c_str(), static_cast<size_t>(s.GetLength())); }

// The add position, read from the third field.
int32_t AddPos(const LCString& s) {
  int32_t v;
  std::memcpy(&v, reinterpret_cast<const unsigned char*>(&s) + sizeof(char*) + sizeof(int32_t), sizeof v);
  return v;
}

// A string pre-sized to size and filled with text by AddString.
LCString PartlyFilled(int size, const char* text) {
  LCString s(size);
  s.AddString(static_cast<int>(std::strlen(text)), text);
  return s;
}

// Every string over {a, b, NUL} of length 0 to max_length.
std::vector<std::string> AllStrings(const std::string& alphabet, size_t max_length) {
  std::vector<std::string> out{""};
  for (size_t begin = 0, end = 1, len = 1; len <= max_length; ++len) {
    for (size_t i = begin; i < end; ++i) {
      for (char c : alphabet) out.push_back(out[i] + c);
    }
    begin = end;
    end = out.size();
  }
  return out;
}

}  // namespace

TEST(LCStringSearch, ForwardSearchesReadTheTerminatedView) {
  LCString abc("abc");
  EXPECT_EQ(abc.Find(""), 0);
  EXPECT_EQ(abc.Find("bc"), 1);
  EXPECT_EQ(abc.Find("cd"), -1);
  EXPECT_EQ(abc.Find('c'), 2);
  EXPECT_EQ(abc.Find('\0'), 3);  // strchr finds the terminator
  EXPECT_EQ(abc.ReverseFind('\0'), 3);
  EXPECT_EQ(abc.FindOneOf("xcb"), 1);
  EXPECT_EQ(abc.FindOneOf(""), -1);
  EXPECT_EQ(abc.Find(LCString("b")), 1);
  // The LCString forms see the argument's terminated view.
  EXPECT_EQ(abc.Find(LCString(std::string("c\0a", 3))), 2);
  EXPECT_EQ(abc.FindOneOf(LCString(std::string("\0a", 2))), -1);

  // Repeated and overlapping matches: first for Find, last for ReverseFind.
  LCString rep("aaaa");
  EXPECT_EQ(rep.Find("aa"), 0);
  EXPECT_EQ(rep.ReverseFind("aa"), 2);
  EXPECT_EQ(rep.ReverseFind('a'), 3);
  LCString ab("abababab");
  EXPECT_EQ(ab.Find("bab"), 1);
  EXPECT_EQ(ab.ReverseFind("abab"), 4);
  EXPECT_EQ(ab.ReverseFind("bab"), 5);

  // Text behind an inner NUL is out of reach of the forward searches.
  LCString inner(std::string("ab\0cb", 5));
  EXPECT_EQ(inner.Find("c"), -1);
  EXPECT_EQ(inner.Find('c'), -1);
  EXPECT_EQ(inner.ReverseFind('b'), 1);
  EXPECT_EQ(inner.Find('\0'), 2);
}

TEST(LCStringSearch, ReverseSearchesGiveOrdinaryIndexes) {
  LCString s("abcabc");
  EXPECT_EQ(s.ReverseFind("bc"), 4);
  EXPECT_EQ(s.ReverseFind(LCString("bc")), 4);
  EXPECT_EQ(s.ReverseFind("abcabc"), 0);
  EXPECT_EQ(s.ReverseFind("abcabcd"), -1);
  EXPECT_EQ(LCString("aaa").ReverseFind("aa"), 1);
  EXPECT_EQ(LCString("abc").ReverseFind(""), 3);
  EXPECT_EQ(LCString("abc").ReverseFind("x"), -1);
  EXPECT_EQ(s.ReverseFindOneOf("ab"), 4);
  EXPECT_EQ(s.ReverseFindOneOf(LCString("xa")), 3);
  EXPECT_EQ(s.ReverseFindOneOf(""), -1);
  EXPECT_EQ(s.ReverseFind('b'), 4);
  EXPECT_EQ(s.ReverseFind('x'), -1);
}

TEST(LCStringSearch, ReverseSearchesSeeOnlyTheTextBehindTheLastNul) {
  LCString s = PartlyFilled(8, "abc");
  EXPECT_EQ(s.Find("b"), 1);
  EXPECT_EQ(s.ReverseFind('b'), 1);
  EXPECT_EQ(s.ReverseFind("b"), -1);
  EXPECT_EQ(s.ReverseFindOneOf("b"), -1);
  EXPECT_EQ(s.ReverseFind(""), 8);  // the stored length, not the text's

  LCString inner(std::string("ab\0cb", 5));
  EXPECT_EQ(inner.ReverseFind("b"), 4);
  EXPECT_EQ(inner.ReverseFind("a"), -1);
  EXPECT_EQ(inner.ReverseFind("cb"), 3);
  EXPECT_EQ(inner.ReverseFindOneOf("ac"), 3);
}

// Exhaustive check against std::string over short texts with NUL bytes: the
// forward searches as find on the terminated view (strchr and strrchr also
// match the terminator), the reverse ones with a string or a set as rfind and
// find_last_of on the bytes behind the last NUL of the counted view.
TEST(LCStringSearch, AgreesWithStdStringOnAllShortTexts) {
  const std::vector<std::string> texts = AllStrings(std::string("ab\0", 3), 6);
  const std::vector<std::string> needles = AllStrings("ab", 3);
  for (const std::string& t : texts) {
    LCString s(t);
    const std::string terminated(t.c_str());
    const size_t last_nul = t.rfind('\0');
    const size_t tail_start = last_nul == std::string::npos ? 0 : last_nul + 1;
    const std::string tail = t.substr(tail_start);
    // Every search misses at once on a stored length of 0.
    auto expect = [&](size_t pos, size_t offset) {
      return t.empty() || pos == std::string::npos ? -1 : static_cast<int>(pos + offset);
    };
    SCOPED_TRACE(testing::PrintToString(t));
    for (const std::string& n : needles) {
      SCOPED_TRACE(n);
      EXPECT_EQ(s.Find(n.c_str()), expect(terminated.find(n), 0));
      EXPECT_EQ(s.FindOneOf(n.c_str()), expect(terminated.find_first_of(n), 0));
      EXPECT_EQ(s.ReverseFind(n.c_str()), expect(tail.rfind(n), tail_start));
      EXPECT_EQ(s.ReverseFindOneOf(n.c_str()), expect(tail.find_last_of(n), tail_start));
    }
    EXPECT_EQ(s.Find('a'), expect(terminated.find('a'), 0));
    EXPECT_EQ(s.ReverseFind('b'), expect(terminated.rfind('b'), 0));
    EXPECT_EQ(s.Find('\0'), expect(terminated.size(), 0));
    EXPECT_EQ(s.ReverseFind('\0'), expect(terminated.size(), 0));
  }
}

TEST(LCStringSearch, NullArgumentsMiss) {
  LCString s("abc");
  const char* none = nullptr;
  EXPECT_EQ(s.Find(none), -1);
  EXPECT_EQ(s.FindOneOf(none), -1);
  EXPECT_EQ(s.ReverseFind(none), -1);
  EXPECT_EQ(s.ReverseFindOneOf(none), -1);
  EXPECT_STREQ(s.c_str(), "abc");
}

// The edges where this class differs from its LString twin; callers rely on
// each of them.
TEST(LCStringSearch, EdgesThatDifferFromLString) {
  // A search ends at once on a stored length below 1, not on a NUL first byte.
  LCString empty;
  EXPECT_EQ(empty.Find(""), -1);
  EXPECT_EQ(empty.Find('\0'), -1);
  EXPECT_EQ(empty.ReverseFind(""), -1);
  EXPECT_EQ(empty.ReverseFind('\0'), -1);
  EXPECT_EQ(empty.FindOneOf("a"), -1);
  EXPECT_EQ(empty.ReverseFindOneOf("a"), -1);
  LCString nul('\0');
  EXPECT_EQ(nul.Find(""), 0);
  EXPECT_EQ(nul.Find('\0'), 0);
  EXPECT_EQ(nul.ReverseFind(""), 1);
  EXPECT_EQ(LCString(3).Find(""), 0);

  // Find with a NUL character gives the terminator's index, not 0.
  EXPECT_EQ(LCString("abc").Find('\0'), 3);

  // ReverseFind(char) reads the terminated view; ReverseFind(text) the tail
  // behind the last NUL of the counted view.
  LCString inner(std::string("ab\0b", 4));
  EXPECT_EQ(inner.ReverseFind('b'), 1);
  EXPECT_EQ(inner.ReverseFind("b"), 3);

  // Mid with start + count beyond int reaches to the end.
  EXPECT_EQ(Counted(LCString("abcdef").Mid(2, INT_MAX)), "cdef");

  // Trims work on the counted view and move the stored length.
  LCString padded(std::string(" a\0 ", 4));
  padded.TrimRight();
  EXPECT_EQ(padded.GetLength(), 2);
  padded.TrimLeft();
  EXPECT_EQ(Counted(padded), "a");
}

TEST(LCStringTrim, WhiteSpaceIsEveryByteOutsideThePrintableRange) {
  for (int b = 0; b < 256; ++b) {
    const char c = static_cast<char>(b);
    LCString s(std::string{'a', c, 'b'});
    s.RemoveWhiteSpaces();
    // isgraph in the C locale is exactly '!' to '~'.
    const bool kept = std::isgraph(b) != 0;
    EXPECT_EQ(s.GetLength(), kept ? 3 : 2) << b;
    LCString r(std::string{'a', c});
    r.TrimRight();
    EXPECT_EQ(r.GetLength(), kept ? 2 : 1) << b;
    LCString l(std::string{c, 'a'});
    l.TrimLeft();
    EXPECT_EQ(Counted(l), kept ? (std::string{c, 'a'}) : std::string("a")) << b;
  }
}

TEST(LCStringTrim, TrimsKeepTheBufferAndTheAddPosition) {
  LCString s("ab \t\n");
  char* buffer = s.c_str();
  s.TrimRight();
  EXPECT_EQ(Counted(s), "ab");
  EXPECT_EQ(s.c_str(), buffer);
  EXPECT_EQ(std::string(buffer, 6), std::string("ab\0\0\0\0", 6));
  EXPECT_EQ(AddPos(s), 4);
  EXPECT_EQ(s.AddString(1, "x"), nullptr);  // past L - 1 counts as full

  LCString filled = PartlyFilled(8, "abc");
  filled.TrimRight();
  EXPECT_EQ(Counted(filled), "abc");
  EXPECT_EQ(filled.ReverseFind("b"), 1);  // the NUL tail is gone

  LCString left(" \tab");
  buffer = left.c_str();
  left.TrimLeft();
  EXPECT_EQ(Counted(left), "ab");
  EXPECT_EQ(left.c_str(), buffer);
  // The terminator moves down; the bytes above it keep their old values.
  EXPECT_EQ(std::string(buffer, 5), std::string("ab\0b\0", 5));

  LCString mixed("a b\tc");
  mixed.RemoveWhiteSpaces();
  EXPECT_EQ(Counted(mixed), "abc");
  LCString high(std::string("a\x80" "b\xff", 4));
  high.RemoveWhiteSpaces();
  EXPECT_EQ(Counted(high), "ab");
  LCString high_end("ab\x80");
  high_end.TrimRight();
  EXPECT_EQ(Counted(high_end), "ab");
  // Inner NUL bytes are closed up, so the two views agree afterwards.
  LCString nuls(std::string("\0a\0b\0", 5));
  nuls.RemoveWhiteSpaces();
  EXPECT_EQ(Counted(nuls), "ab");
  EXPECT_STREQ(nuls.c_str(), "ab");
}

TEST(LCStringTrim, AllWhiteSpaceAndEmptyStrings) {
  for (int op = 0; op < 3; ++op) {
    LCString s(std::string(" \t\0\x7f\xa0\n", 6));
    LCString e;
    if (op == 0) s.TrimLeft(), e.TrimLeft();
    if (op == 1) s.TrimRight(), e.TrimRight();
    if (op == 2) s.RemoveWhiteSpaces(), e.RemoveWhiteSpaces();
    EXPECT_EQ(s.GetLength(), 0) << op;
    EXPECT_TRUE(s.IsEmpty()) << op;
    EXPECT_EQ(s[0], '\0') << op;
    EXPECT_EQ(e.GetLength(), 0) << op;
    EXPECT_STREQ(e.c_str(), "") << op;
  }
  LCString untouched("ab");
  untouched.TrimLeft();
  untouched.TrimRight();
  untouched.RemoveWhiteSpaces();
  EXPECT_EQ(Counted(untouched), "ab");
}

TEST(LCStringSlice, LeftRightAndMidOnText) {
  const LCString s("abcdef");
  EXPECT_EQ(Counted(s.Left(2)), "ab");
  EXPECT_EQ(Counted(s.Right(2)), "ef");
  for (int n : {0, -1, INT_MIN}) {
    EXPECT_TRUE(s.Left(n).IsEmpty()) << n;
    EXPECT_TRUE(s.Right(n).IsEmpty()) << n;
  }
  for (int n : {6, 100, INT_MAX}) {
    EXPECT_EQ(Counted(s.Left(n)), "abcdef") << n;
    EXPECT_EQ(Counted(s.Right(n)), "abcdef") << n;
  }
  struct Case {
    int start, count;
    const char* expected;
  };
  for (const Case& c : {Case{2, 2, "cd"}, Case{4, 10, "ef"}, Case{6, 1, ""}, Case{-2, 3, "abc"},
                        Case{-2, 100, "abcdef"}, Case{1, 0, ""}, Case{0, 6, "abcdef"}, Case{5, 1, "f"},
                        Case{1, INT_MAX, "bcdef"}, Case{INT_MAX, INT_MAX, ""}, Case{INT_MIN, 2, "ab"},
                        Case{INT_MIN, INT_MAX, "abcdef"}, Case{0, INT_MIN, ""}, Case{3, -1, ""}}) {
    EXPECT_EQ(Counted(s.Mid(c.start, c.count)), c.expected) << c.start << ", " << c.count;
  }
  EXPECT_EQ(Counted(s), "abcdef");  // the source is unchanged

  const LCString empty;
  for (int n : {INT_MIN, -1, 0, 1, 5, INT_MAX}) {
    EXPECT_TRUE(empty.Left(n).IsEmpty());
    EXPECT_TRUE(empty.Right(n).IsEmpty());
    EXPECT_TRUE(empty.Mid(0, n).IsEmpty());
    EXPECT_TRUE(empty.Mid(n, 3).IsEmpty());
  }
}

TEST(LCStringSlice, LeftAndRightFallBackOnTheTerminatedViewWhereMidDoesNot) {
  const LCString blank(10);
  EXPECT_EQ(Counted(blank.Left(5)), std::string(5, '\0'));
  EXPECT_EQ(blank.Left(10).GetLength(), 0);
  EXPECT_EQ(blank.Right(12).GetLength(), 0);
  EXPECT_EQ(Counted(blank.Mid(0, 10)), std::string(10, '\0'));

  const LCString inner(std::string("ab\0cd", 5));
  EXPECT_EQ(Counted(inner.Left(5)), "ab");
  EXPECT_EQ(Counted(inner.Right(5)), "ab");
  EXPECT_EQ(Counted(inner.Left(4)), std::string("ab\0c", 4));
  EXPECT_EQ(Counted(inner.Right(3)), std::string("\0cd", 3));
  EXPECT_EQ(Counted(inner.Mid(0, 5)), std::string("ab\0cd", 5));
}

TEST(LCStringSlice, AddPositionOfResults) {
  const LCString s("abcdef");
  // A cut gives add position 0: AddString writes over it from index 0.
  LCString cut = s.Left(3);
  EXPECT_EQ(AddPos(cut), 0);
  EXPECT_EQ(AddPos(s.Right(3)), 0);
  EXPECT_EQ(AddPos(s.Mid(1, 2)), 0);
  EXPECT_NE(cut.AddString(1, "X"), nullptr);
  EXPECT_STREQ(cut.c_str(), "X");
  // The whole-text branch is a copy of the text: add position length - 1.
  LCString whole = s.Left(6);
  EXPECT_EQ(AddPos(whole), 5);
  EXPECT_EQ(whole.AddString(1, "X"), nullptr);
  EXPECT_EQ(AddPos(s.Right(50)), 5);
  EXPECT_EQ(AddPos(LCString(4).Left(4)), -1);
  // Slices that give nothing: empty with add position 0.
  EXPECT_EQ(AddPos(s.Mid(9, 1)), 0);
  EXPECT_EQ(AddPos(s.Left(0)), 0);
}
