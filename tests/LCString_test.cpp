#include <vq0300/LCString.h>

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "TextModel.h"

using namespace std::string_literals;

TEST(LCString, AgreesWithTheModel) { model::RunSeeds(text_model::RunLCStringOps, 300, 3000); }

// Left and Right asked for the whole string or more give its terminated view;
// a shorter cut, and Mid for any range, keep the counted bytes, NULs included.
TEST(LCString, LeftAndRightFallBackOnTheTerminatedViewMidDoesNot) {
  struct Row {
    std::string text;
    char slice;  // 'L', 'R' or 'M'
    int a, b;
    std::string counted;
  };
  const std::string presized(10, '\0');  // what LCString(10) holds
  for (const Row& r : std::vector<Row>{{presized, 'L', 5, 0, std::string(5, '\0')},
                                       {presized, 'L', 10, 0, ""},
                                       {presized, 'R', INT_MAX, 0, ""},
                                       {presized, 'M', 0, 10, presized},
                                       {"ab\0cd"s, 'L', 4, 0, "ab\0c"s},
                                       {"ab\0cd"s, 'L', 5, 0, "ab"},
                                       {"ab\0cd"s, 'R', 5, 0, "ab"},
                                       {"ab\0cd"s, 'R', 3, 0, "\0cd"s},
                                       {"ab\0cd"s, 'M', 0, 5, "ab\0cd"s},
                                       {"ab\0cd"s, 'M', -2, 3, "ab\0"s},
                                       {"a", 'M', 0, 1, "a"},
                                       {"a", 'M', -1, INT_MAX, "a"},
                                       {"a", 'M', 1, 1, ""},
                                       {"a", 'L', 1, 0, "a"},
                                       {"abcdef", 'M', 2, INT_MAX, "cdef"},
                                       {"abcdef", 'M', INT_MAX, 1, ""}}) {
    const LCString s(r.text);
    const LCString got = r.slice == 'L'   ? s.Left(r.a)
                         : r.slice == 'R' ? s.Right(r.a)
                                          : s.Mid(r.a, r.b);
    EXPECT_EQ(std::string(got.c_str(), static_cast<std::size_t>(got.GetLength())), r.counted)
        << testing::PrintToString(r.text) << " " << r.slice << " " << r.a << " " << r.b;
  }
}
