#include <vq0300/TimeText.h>

#include <gtest/gtest.h>

#include <ctime>
#include <string>

// The platform's asctime of the same moment with its line end turned into
// two blanks: 26 characters, whatever the string held before.
TEST(TimeText, AsctimeLayoutWithTwoTrailingBlanks) {
  LCString text("previous content that is longer than a time stamp");
  std::time_t t = std::time(nullptr);
  util_GetTime(text);
  const std::time_t after = std::time(nullptr);
  ASSERT_EQ(text.GetLength(), 26);
  const std::string got(text.c_str(), 27);  // the terminator included
  std::string expected;
  for (; t <= after && expected != got; ++t) {
    expected = std::string(std::asctime(std::localtime(&t)), 24) + "  " + '\0';
  }
  EXPECT_EQ(got, expected);
}
