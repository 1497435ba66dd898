#include <vq0300/BoundedCopy.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using namespace std::string_literals;

// Exactly n bytes as strncpy writes them (NUL padding for a short source),
// then a NUL at dst[n]; nothing beyond.
TEST(BoundedCopy, CountLimitAndPadding) {
  struct Case {
    const char* src;
    int count, limit;
    std::string written;  // the first 8 bytes of a buffer filled with 'x'
  };
  for (const Case& c : {Case{"abcdef", 3, 0, "abc\0xxxx"s}, Case{"abcdef", 5, 2, "ab\0xxxxx"s},
                        Case{"abcdef", 2, 5, "ab\0xxxxx"s}, Case{"abcdef", 0, 2, "abcdef\0x"s},
                        Case{"abcdef", -1, -1, "abcdef\0x"s}, Case{"ab", 5, 0, "ab\0\0\0\0xx"s},
                        Case{"", 5, 0, "\0\0\0\0\0\0xx"s}, Case{nullptr, 5, 3, "\0xxxxxxx"s}}) {
    char buffer[16];
    std::memset(buffer, 'x', sizeof buffer);
    util_strncpy(buffer, c.src, c.count, c.limit);
    EXPECT_EQ(std::string(buffer, 8), c.written) << (c.src ? c.src : "null") << " " << c.count;
  }
  char buffer[8] = "", mutable_src[] = "abcdef";
  util_strncpy(buffer, mutable_src, 3, 0);  // the char* overload alike
  EXPECT_STREQ(buffer, "abc");
  util_strncpy(nullptr, "abc", 0, 0);  // no fault
}

TEST(BoundedCopy, ConcatenationAppendsAllOfTheSource) {
  char dst[16] = "ab", more[] = "h";
  util_strncat(dst, "cdefg", 1, 0);  // the count is not read
  util_strncat(dst, more, 0, 0);
  util_strncat(dst, static_cast<const char*>(nullptr), 0, 0);
  util_strncat(nullptr, "cd", 0, 0);  // no fault
  EXPECT_STREQ(dst, "abcdefgh");
}
