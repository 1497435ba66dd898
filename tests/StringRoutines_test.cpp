#include <vq0300/BoundedCopy.h>
#include <vq0300/StringRoutines.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <climits>
#include <cstring>
#include <random>
#include <string>
#include <vector>

using namespace std::string_literals;

namespace {
std::string Mapped(std::string s, bool upper) {
  for (char& c : s) {
    const int byte = static_cast<unsigned char>(c);
    c = static_cast<char>(upper ? std::toupper(byte) : std::tolower(byte));
  }
  return s;
}
}  // namespace

// Random bytes, NULs among them, against the C library in its "C" locale and
// std::to_chars.
TEST(StringRoutines, AgreeWithTheStandardLibrary) {
  std::mt19937 gen(7);
  for (int round = 0; round < 3000; ++round) {
    std::string bytes(gen() % 8, '\0');
    for (char& c : bytes) c = static_cast<char>(gen() % 5 == 0 ? 0 : gen());
    const std::string text = bytes.c_str(), rest = bytes.substr(text.size());
    std::string up = bytes, low = bytes, rev = bytes, joined = bytes + "\0\0\0\0\0\0\0\0"s;
    EXPECT_EQ(strupr(&up[0]), &up[0]);  // the char* forms stop at the first NUL
    EXPECT_EQ(up, Mapped(text, true) + rest);
    EXPECT_EQ(strlwr(&low[0]), &low[0]);
    EXPECT_EQ(low, Mapped(text, false) + rest);
    strupr(up), strlwr(low);  // the std::string forms go by size
    EXPECT_EQ(up, Mapped(bytes, true));
    EXPECT_EQ(low, Mapped(bytes, false));
    strrev(&rev[0]);
    EXPECT_EQ(rev, std::string(text.rbegin(), text.rend()) + rest);
    const char* more = rest.empty() ? "" : rest.c_str() + 1;  // up to the second NUL
    util_strncat(&joined[0], more, 1, 1);                     // neither integer is read
    EXPECT_EQ(joined.c_str(), text + more);

    const int value = static_cast<int>(gen()) >> (gen() % 32),
              base = 2 + static_cast<int>(gen() % 35);
    char want[40] = {}, got[40];
    std::to_chars(want, want + sizeof want, value, base);
    EXPECT_EQ(itoa(value, got, base), got + std::strlen(want)) << value << " in " << base;
    EXPECT_EQ(got, Mapped(want, true)) << value << " in " << base;
  }
}

// Bases beyond 36 go on from '[' (digit 36); no text for a base below 2 or a null buffer.
TEST(StringRoutines, ItoaOutsideTheBasesOfToChars) {
  struct Row {
    int value, base;
    const char* text;
  };
  for (const Row& r : {Row{36, 37, "["}, Row{-(38 * 41 + 39), 41, "-]^"}, Row{7, INT_MAX, "7"},
                       Row{INT_MIN, INT_MAX, "-11"}, Row{5, 1, nullptr}, Row{5, 0, nullptr},
                       Row{5, INT_MIN, nullptr}}) {
    char buffer[40] = "keep";
    char* end = itoa(r.value, buffer, r.base);
    EXPECT_EQ(end, r.text ? buffer + std::strlen(r.text) : nullptr) << r.value << " in " << r.base;
    EXPECT_STREQ(buffer, r.text ? r.text : "keep") << r.value << " in " << r.base;
  }
  EXPECT_EQ(itoa(5, nullptr, 10), nullptr);
}

// Signed bytes with a to z folded to upper case: '_' (0x5F) above the letters,
// 0x80 and up below every ASCII byte. stricmp gives -1, 0 or 1; strnicmp sums
// the differences up to where either string ends. Null gives -1 and 0.
TEST(StringRoutines, CaseInsensitiveComparisonsOfSignedBytes) {
  struct Row {
    const char *a, *b;
    int n, order, sum;
  };
  for (const Row& r :
       {Row{"abc", "ABC", 3, 0, 0}, Row{"abc", "abd", 3, -1, -1}, Row{"abc", "ab", 9, 1, 0},
        Row{"", "a", 1, -1, 0}, Row{"_", "z", 1, 1, '_' - 'Z'}, Row{"\x80", "a", 1, -1, -128 - 'A'},
        Row{"a", "\xff", 1, 1, 'A' + 1}, Row{"ac", "bb", 2, -1, 0}, Row{"abc", "ABD", 2, -1, 0},
        Row{"b", "a", 0, 1, 0}, Row{"{", "[", 1, 1, '{' - '['}, Row{nullptr, "a", 1, -1, 0},
        Row{"a", nullptr, 1, -1, 0}, Row{nullptr, nullptr, 1, -1, 0}}) {
    const std::string row = std::string(r.a ? r.a : "null") + " " + (r.b ? r.b : "null");
    EXPECT_EQ(stricmp(r.a, r.b), r.order) << row;
    EXPECT_EQ(strcmpi(const_cast<char*>(r.a), const_cast<char*>(r.b)), r.order) << row;
    EXPECT_EQ(strnicmp(r.a, r.b, r.n), r.sum) << row;
  }
}

// After a partial match fails at index k of sub the search goes on at p + k + 1.
TEST(StringRoutines, FindSubStringResumesBehindAPartialMatch) {
  struct Row {
    const char *str, *sub;
    int start;
    bool ignore_case;
    int found;
  };
  for (const Row& r : {Row{"aaab", "aab", 0, false, -1}, Row{"aab", "ab", 0, false, -1},
                       Row{"xabc", "abc", 1, false, 1}, Row{"xabc", "bc", 3, false, -1},
                       Row{"xAbC", "aBc", 0, true, 1}, Row{"xabc", "ABC", 0, false, -1},
                       Row{"xabc", "", 3, false, 3}, Row{"xabc", "", 4, false, -1},
                       Row{"", "", 0, false, -1}, Row{"xabc", "x", -1, false, -1},
                       Row{"xabc", "a", INT_MIN, false, -1}, Row{"xabc", "a", INT_MAX, false, -1},
                       Row{nullptr, "a", 0, false, -1}, Row{"xabc", nullptr, 0, false, -1}}) {
    EXPECT_EQ(FindSubString(r.str, r.sub, r.start, r.ignore_case), r.found)
        << (r.str ? r.str : "null") << " " << (r.sub ? r.sub : "null") << " " << r.start;
  }
}

// Exactly n bytes as strncpy writes them (NUL padding for a short source),
// then a NUL at dst[n]; a limit never bounds a whole-string copy.
TEST(BoundedCopy, CountLimitAndPadding) {
  struct Row {
    const char* src;
    int count, limit;
    std::string written;
  };
  for (const Row& r : {Row{"abcdef", 3, 0, "abc\0xxxx"s}, Row{"abcdef", 5, 2, "ab\0xxxxx"s},
                       Row{"abcdef", 2, 5, "ab\0xxxxx"s}, Row{"abcdef", 0, 2, "abcdef\0x"s},
                       Row{"abcdef", -1, -1, "abcdef\0x"s}, Row{"ab", 5, 0, "ab\0\0\0\0xx"s},
                       Row{"", 5, 0, "\0\0\0\0\0\0xx"s}, Row{nullptr, 5, 3, "\0xxxxxxx"s}}) {
    char buffer[] = "xxxxxxxx";
    util_strncpy(buffer, r.src, r.count, r.limit);
    EXPECT_EQ(std::string(buffer, 8), r.written) << (r.src ? r.src : "null") << " " << r.count;
  }
}

TEST(StringRoutines, NullArgumentsChangeNothing) {
  char dst[] = "ab";
  EXPECT_EQ(strupr(static_cast<char*>(nullptr)), nullptr);
  EXPECT_EQ(strlwr(static_cast<char*>(nullptr)), nullptr);
  strrev(nullptr);
  util_strncpy(nullptr, "abc", 0, 0);
  util_strncat(nullptr, "cd", 0, 0);
  util_strncat(dst, static_cast<const char*>(nullptr), 0, 0);
  EXPECT_STREQ(dst, "ab");
}
