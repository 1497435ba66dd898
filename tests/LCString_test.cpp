#include <vq0300/LCString.h>

#include <gtest/gtest.h>

#include "TextModel.h"

// Both string classes run their decoders here (see TextModel.h).
TEST(LString, AgreesWithTheModel) { model::RunSeeds(text_model::RunLStringOps, 200, 2000); }
TEST(LCString, AgreesWithTheModel) { model::RunSeeds(text_model::RunLCStringOps, 300, 3000); }

// The model checks these with the rest; here they stand for the reader. Left
// and Right asked for the whole string or more give its terminated view (of
// ten NULs: nothing); Mid keeps the counted bytes, NULs included.
TEST(LCString, LeftAndRightFallBackOnTheTerminatedViewMidDoesNot) {
  const LCString presized(10);
  EXPECT_EQ(presized.Left(10).GetLength(), 0);
  EXPECT_EQ(presized.Mid(0, 10).GetLength(), 10);
  EXPECT_STREQ(LCString("a").Mid(0, 1).c_str(), "a");
}
