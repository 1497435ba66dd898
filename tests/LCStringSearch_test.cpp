#include <vq0300/LCString.h>

#include <gtest/gtest.h>

#include <cctype>
#include <climits>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

std::string Counted(const LCString& s) {
  return std::string(s.c_str(), static_cast<size_t>(s.GetLength()));
}

// The add position: the third field, behind the pointer and the length.
int32_t AddPos(const LCString& s) {
  int32_t v;
  std::memcpy(&v, reinterpret_cast<const unsigned char*>(&s) + sizeof(char*) + sizeof(int32_t),
              sizeof v);
  return v;
}

// A string pre-sized to 8 and filled with "abc" by AddString.
LCString PartlyFilled() {
  LCString s(8);
  s.AddString(3, "abc");
  return s;
}

// Every string over alphabet of length 0 to max_length.
std::vector<std::string> AllStrings(const std::string& alphabet, size_t max_length) {
  std::vector<std::string> out{""};
  for (size_t begin = 0; begin < out.size(); ++begin) {
    if (out[begin].size() == max_length) break;
    for (char c : alphabet) out.push_back(out[begin] + c);
  }
  return out;
}

// The counted views of the strings in list.
std::vector<std::string> Views(const std::vector<LCString>& list) {
  std::vector<std::string> out;
  for (const LCString& s : list) out.push_back(Counted(s));
  return out;
}

}  // namespace

// Exhaustive check against std::string on short texts with NUL bytes, with
// overlapping and repeated matches: forward searches as find on the terminated
// view (strchr and strrchr also match its terminator), the reverse searches
// with a string or a set as rfind and find_last_of on the bytes behind the
// last NUL of the counted view. A stored length of 0 misses at once.
TEST(LCStringSearch, AgreesWithStdStringOnAllShortTexts) {
  const std::vector<std::string> needles = AllStrings("ab", 3);
  for (const std::string& t : AllStrings(std::string("ab\0", 3), 6)) {
    LCString s(t);
    const std::string terminated(t.c_str());
    const size_t last_nul = t.rfind('\0');
    const size_t tail_start = last_nul == std::string::npos ? 0 : last_nul + 1;
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

TEST(LCStringSearch, ListedCasesAndTheEdgesThatDifferFromLString) {
  LCString abc("abc"), abcabc("abcabc"), empty, filled = PartlyFilled();
  const char* none = nullptr;
  // The stored length ends a search, not a NUL first byte; a NUL character is
  // found at the terminator; null arguments miss.
  EXPECT_EQ(
      (std::vector<int>{abc.Find(""), empty.Find(""), LCString('\0').Find(""), LCString(3).Find(""),
                        abc.Find('\0'), abc.ReverseFind('\0'), abc.Find(none), abc.FindOneOf(none),
                        abc.ReverseFind(none), abc.ReverseFindOneOf(none)}),
      (std::vector<int>{0, -1, 0, 0, 3, 3, -1, -1, -1, -1}));
  EXPECT_EQ(
      (std::vector<int>{abcabc.ReverseFind("bc"), abcabc.ReverseFind(LCString("bc")),
                        LCString("aaa").ReverseFind("aa"), abc.ReverseFind(""),
                        abc.ReverseFind("x"), abcabc.ReverseFindOneOf("ab"),
                        abcabc.ReverseFindOneOf(LCString("xa")), abcabc.ReverseFindOneOf("")}),
      (std::vector<int>{4, 4, 1, 3, -1, 4, 3, -1}));
  // The LCString forms see the argument's terminated view.
  EXPECT_EQ(abc.Find(LCString(std::string("c\0a", 3))), 2);
  EXPECT_EQ(abc.FindOneOf(LCString(std::string("\0a", 2))), -1);
  // A partly filled string ends in NUL: the reverse searches with a string or
  // a set see nothing, while Find and ReverseFind(char) read the text.
  EXPECT_EQ((std::vector<int>{filled.Find("b"), filled.ReverseFind('b'), filled.ReverseFind("b"),
                              filled.ReverseFindOneOf("b"), filled.ReverseFind("")}),
            (std::vector<int>{1, 1, -1, -1, 8}));
}

TEST(LCStringTrim, WhiteSpaceIsEveryByteOutsideThePrintableRange) {
  for (int b = 0; b < 256; ++b) {
    const char c = static_cast<char>(b);
    const bool kept = std::isgraph(b) != 0;  // in the C locale exactly '!' to '~'
    LCString mid(std::string{'a', c, 'b'}), right(std::string{'a', c}), left(std::string{c, 'a'});
    mid.RemoveWhiteSpaces();
    right.TrimRight();
    left.TrimLeft();
    EXPECT_EQ(Counted(mid) + "|" + Counted(right) + "|" + Counted(left),
              kept ? (std::string{'a', c, 'b', '|', 'a', c, '|', c, 'a'}) : std::string("ab|a|a"))
        << b;
  }
  for (void (LCString::*trim)() :
       {&LCString::TrimLeft, &LCString::TrimRight, &LCString::RemoveWhiteSpaces}) {
    LCString blank(std::string(" \t\0\x7f\xa0\n", 6)), empty, ab("ab");
    (blank.*trim)();
    (empty.*trim)();
    (ab.*trim)();
    EXPECT_TRUE(blank.IsEmpty() && blank[0] == '\0' && empty.IsEmpty() && Counted(ab) == "ab");
  }
}

TEST(LCStringTrim, TrimsKeepTheBufferAndTheAddPosition) {
  LCString right("ab \t\n"), left(" \tab"), mixed(std::string("a b\tc\0\x80", 7)),
      filled = PartlyFilled();
  char* right_buffer = right.c_str();
  char* left_buffer = left.c_str();
  right.TrimRight();
  left.TrimLeft();
  mixed.RemoveWhiteSpaces();
  filled.TrimRight();
  EXPECT_TRUE(right.c_str() == right_buffer && left.c_str() == left_buffer);
  EXPECT_EQ(std::string(right_buffer, 6), std::string("ab\0\0\0\0", 6));
  EXPECT_EQ(std::string(left_buffer, 5), std::string("ab\0b\0", 5));  // old bytes stay above
  EXPECT_EQ(
      (std::vector<int>{right.GetLength(), left.GetLength(), filled.GetLength(), AddPos(right)}),
      (std::vector<int>{2, 2, 3, 4}));
  EXPECT_EQ(right.AddString(1, "x"), nullptr);  // an add position past L - 1 is full
  EXPECT_EQ(Counted(mixed), "abc");
  EXPECT_STREQ(mixed.c_str(), "abc");
}

TEST(LCStringSlice, LeftRightAndMid) {
  const LCString s("abcdef"), e;
  using V = std::vector<std::string>;
  EXPECT_EQ(Views({s.Left(2), s.Left(0), s.Left(-1), s.Left(INT_MIN), s.Left(6), s.Left(100),
                   s.Left(INT_MAX)}),
            (V{"ab", "", "", "", "abcdef", "abcdef", "abcdef"}));
  EXPECT_EQ(Views({s.Right(2), s.Right(0), s.Right(-1), s.Right(INT_MIN), s.Right(6), s.Right(100),
                   s.Right(INT_MAX)}),
            (V{"ef", "", "", "", "abcdef", "abcdef", "abcdef"}));
  EXPECT_EQ(Views({s.Mid(2, 2), s.Mid(4, 10), s.Mid(6, 1), s.Mid(-2, 3), s.Mid(-2, 100),
                   s.Mid(1, 0), s.Mid(3, -1), s.Mid(1, INT_MAX), s.Mid(INT_MAX, INT_MAX),
                   s.Mid(INT_MIN, 2), s.Mid(INT_MIN, INT_MAX), s.Mid(0, INT_MIN)}),
            (V{"cd", "ef", "", "abc", "abcdef", "", "", "bcdef", "", "ab", "abcdef", ""}));
  EXPECT_EQ(Views({e.Left(1), e.Left(INT_MAX), e.Right(1), e.Right(INT_MIN), e.Mid(0, 1),
                   e.Mid(INT_MIN, INT_MAX)}),
            V(6, ""));
  // Left and Right fall back on the terminated view when n covers the whole
  // stored length; Mid never does.
  const LCString blank(10), inner(std::string("ab\0cd", 5));
  EXPECT_EQ(Views({blank.Left(5), blank.Left(10), blank.Mid(0, 10), inner.Left(5), inner.Right(9),
                   inner.Right(3), inner.Mid(0, 5)}),
            (V{std::string(5, '\0'), "", std::string(10, '\0'), "ab", "ab", std::string("\0cd", 3),
               std::string("ab\0cd", 5)}));
}

TEST(LCStringSlice, AddPositionOfResults) {
  const LCString s("abcdef");
  LCString cut = s.Left(3);
  // A cut has add position 0; the whole-text branch length - 1 (-1 for no
  // text); a slice that gives nothing 0.
  EXPECT_EQ(
      (std::vector<int>{AddPos(cut), AddPos(s.Right(3)), AddPos(s.Mid(1, 2)), AddPos(s.Left(6)),
                        AddPos(s.Right(50)), AddPos(LCString(4).Left(4)), AddPos(s.Mid(9, 1))}),
      (std::vector<int>{0, 0, 0, 5, 5, -1, 0}));
  EXPECT_NE(cut.AddString(1, "X"), nullptr);  // and so AddString writes over it
  EXPECT_STREQ(cut.c_str(), "X");
}
