#include <vq0300/LCString.h>

#include <gtest/gtest.h>

#include <tuple>

#include "TextModel.h"

using namespace std::string_literals;

TEST(LCString, AgreesWithTheModel) { model::RunSeeds(text_model::RunLCStringOps, 300, 3000); }

// Left and Right asked for the whole string or more give its terminated view;
// a shorter cut, and Mid for any range, keep the counted bytes, NULs included.
TEST(LCString, LeftAndRightFallBackOnTheTerminatedViewMidDoesNot) {
  using Row = std::tuple<std::string, char, int, int, std::string>;  // text, slice, a, b, counted
  const std::string presized(10, '\0');                              // what LCString(10) holds
  for (const Row& row : {Row{presized, 'L', 5, 0, std::string(5, '\0')},
                         Row{presized, 'L', 10, 0, ""}, Row{presized, 'M', 0, 10, presized},
                         Row{"ab\0cd"s, 'R', 9, 0, "ab"}, Row{"a", 'M', 0, 1, "a"}}) {
    const auto& [text, slice, a, b, counted] = row;
    const LCString s(text);
    const LCString got = slice == 'L' ? s.Left(a) : slice == 'R' ? s.Right(a) : s.Mid(a, b);
    EXPECT_EQ(std::string(got.c_str(), got.GetLength()), counted) << testing::PrintToString(row);
  }
}
