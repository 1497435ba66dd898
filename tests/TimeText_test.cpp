#include <vq0300/TimeText.h>

#include <gtest/gtest.h>

#include <ctime>
#include <string>

TEST(TimeText, AsctimeLayoutWithTwoTrailingBlanks) {
  LCString text("previous content that is longer than a time stamp");
  const std::time_t before = std::time(nullptr);
  util_GetTime(text);
  const std::time_t after = std::time(nullptr);

  const std::string got(text.c_str());
  ASSERT_EQ(text.GetLength(), 26);
  ASSERT_EQ(got.size(), 26u);
  EXPECT_EQ(got.substr(24), "  ");
  // The same text as the platform's own asctime of the same moment.
  bool matched = false;
  for (std::time_t t = before; t <= after && !matched; ++t) {
    std::string expected = std::asctime(std::localtime(&t));
    expected.back() = ' ';
    matched = got == expected + " ";
  }
  EXPECT_TRUE(matched) << got;
}
