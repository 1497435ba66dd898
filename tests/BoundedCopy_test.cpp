#include <vq0300/BoundedCopy.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

// A buffer pre-filled with 'x' so that every byte written is visible.
struct Buffer {
  Buffer() { std::memset(bytes, 'x', sizeof bytes); }
  char bytes[128];
};

}  // namespace

TEST(BoundedCopy, CountAndLimit) {
  struct Case {
    int count, limit;
    const char* expected;
  };
  const char* src = "abcdef";
  for (const Case& c : {Case{3, 0, "abc"}, Case{5, 2, "ab"}, Case{2, 5, "ab"}, Case{0, 2, "abcdef"},
                        Case{-1, -1, "abcdef"}, Case{6, 0, "abcdef"}}) {
    Buffer b;
    util_strncpy(b.bytes, src, c.count, c.limit);
    EXPECT_STREQ(b.bytes, c.expected) << c.count << "," << c.limit;
    EXPECT_EQ(b.bytes[std::strlen(c.expected) + 1], 'x') << "wrote past the terminator";
  }
  // The char* overload behaves alike.
  Buffer b;
  char mutable_src[] = "abcdef";
  util_strncpy(b.bytes, mutable_src, 3, 0);
  EXPECT_STREQ(b.bytes, "abc");
}

TEST(BoundedCopy, PadsShortSourcesWithNul) {
  Buffer b;
  util_strncpy(b.bytes, "ab", 5, 0);
  EXPECT_EQ(std::string(b.bytes, 7), std::string("ab\0\0\0\0x", 7));

  Buffer e;
  util_strncpy(e.bytes, "", 5, 0);
  EXPECT_EQ(std::string(e.bytes, 7), std::string("\0\0\0\0\0\0x", 7));
}

TEST(BoundedCopy, NullArguments) {
  Buffer b;
  util_strncpy(b.bytes, static_cast<const char*>(nullptr), 5, 3);
  EXPECT_EQ(b.bytes[0], '\0');
  EXPECT_EQ(b.bytes[1], 'x');
  util_strncpy(nullptr, "abc", 0, 0);  // no fault

  char dst[16] = "ab";
  util_strncat(dst, static_cast<const char*>(nullptr), 0, 0);
  util_strncat(nullptr, "cd", 0, 0);
  EXPECT_STREQ(dst, "ab");
}

TEST(BoundedCopy, ConcatenationAppendsAllOfTheSource) {
  char dst[16] = "ab";
  util_strncat(dst, "cdefg", 1, 0);  // the count is not read
  EXPECT_STREQ(dst, "abcdefg");
  char more[] = "h";
  util_strncat(dst, more, 0, 0);
  EXPECT_STREQ(dst, "abcdefgh");
}
