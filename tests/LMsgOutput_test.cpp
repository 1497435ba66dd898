// The format scan of LFile::WriteLine and of LMsgOutput's Output and PrintLog
// beside its model (console, log file and results), also over formats at the
// limits of the scan.
#include <gtest/gtest.h>

#include "FormatModel.h"

TEST(FormatScan, FollowsTheModel) { model::RunSeeds(format_model::RunFormatOps, 20, 800); }

// Formats the seeded run meets seldom or never, through WriteLine and Output
// beside the model: "hh", "ll", a character with and without a precision,
// numbers at and past INT_MAX, conversions of 254 and 255 characters, an empty value and
// values over 255 characters, which Output alone refuses.
TEST(FormatScan, LimitsOfTheScan) {
  const std::string zeros(251, '0');
  for (const std::string& f : std::vector<std::string>{
           "%hhx|%.0x|%.2147483647s|", "%lld", "%cd", "ab%2147483648d", "%.3cd", "%300d",
           "%" + zeros + "1d", "%0" + zeros + "1d", "%200i" + std::string(55, '-') + "d"})
    for (int op = 0; op < 2; ++op)
      EXPECT_NO_THROW(format_model::CheckFormat(op, f, {0x100FF, 0, "ab"}, {LMSG_OUTPUT_STDOUT}));
}
