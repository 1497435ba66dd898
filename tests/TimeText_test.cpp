#include <vq0300/TimeText.h>

#include <gtest/gtest.h>

#include <ctime>

// The platform's asctime of the same moment with its line end turned into two
// blanks: 26 characters, whatever the string held before.
TEST(TimeText, AsctimeLayoutWithTwoTrailingBlanks) {
  LCString text("previous content that is longer than a time stamp");
  std::time_t t = std::time(nullptr);
  util_GetTime(text);
  std::string expected;
  for (const std::time_t after = std::time(nullptr); t <= after && expected != text.c_str(); ++t)
    expected = std::string(std::asctime(std::localtime(&t)), 24) + "  ";
  EXPECT_EQ(text.c_str(), expected);
}
