// The format scan of LFile::WriteLine and of LMsgOutput's Output and
// PrintLog beside its model (console, log file and results); as tables, the
// limits of the scan that the model meets seldom or never, and a log
// replaced.
#include <gtest/gtest.h>

#include <cerrno>
#include <optional>
#include <tuple>

#include "FormatModel.h"

TEST(FormatScan, WriteLineOutputAndPrintLogFollowTheModel) {
  model::RunSeeds(format_model::RunFormatOps, 20, 800);
}

// What the seeded run meets seldom or never: "hh", numbers at and past
// INT_MAX, a precision on a character, conversions of 254 and 255 characters,
// an empty value, values over 255 characters, which Output alone refuses, a
// null format, and readiness tested before the format.
TEST(FormatScan, LimitsOfTheScan) {
  const testsupport::TempDir dir;
  const std::string zeros(251, '0'), dashes(55, '-'), path = dir / "f";
  // The format; what WriteLine writes and what Output shows (nullopt: refused).
  const std::tuple<std::string, std::optional<std::string>, std::optional<std::string>> rows[] = {
      {"%hhx|%.0x|%.2147483647s|", "ff||ab|", "ff||ab|"},
      {"ab%2147483648d", std::nullopt, std::nullopt},            // refused before its text
      {"%.3cd", std::nullopt, std::nullopt},                     // no precision for a character
      {"%300d", std::string(295, ' ') + "65791", std::nullopt},  // a value over 255 characters
      {"%" + zeros + "1d", "65791", "65791"},
      {"%0" + zeros + "1d", std::nullopt, std::nullopt},
      {"%200i" + dashes + "d", std::string(195, ' ') + "65791" + dashes + "d", std::nullopt}};
  LMsgOutput channel;
  channel.SetOutputOptions(LMSG_OUTPUT_STDOUT);
  for (const auto& [format, written, shown] : rows) {
    EXPECT_EQ(LFile(path.c_str(), "w").WriteLine(format.c_str(), 0x100FF, 0, "ab"),
              written ? 0 : LFILE_ERR_FORMAT)
        << format;
    EXPECT_EQ(testsupport::ReadFile(path), written.value_or("")) << format;
    testsupport::CaptureStream out(stdout);
    EXPECT_EQ(channel.Output(format.c_str(), 0x100FF, 0, "ab"), shown ? 0 : -1) << format;
    EXPECT_EQ(out.Release(), shown.value_or("")) << format;
  }
  EXPECT_EQ(LFile(path.c_str(), "w").WriteLine(nullptr), LFILE_ERR_FORMAT);
  EXPECT_EQ(LFile().WriteLine("%u"), LFILE_ERR_NOT_OPEN);  // readiness before the format
  EXPECT_EQ(LFile(path.c_str(), "r").WriteLine("%u"), LFILE_ERR_NOT_WRITABLE);
}

// The old log is closed, and so flushed, before the new one fails.
TEST(LMsgOutput, ANewLogThatFailsReplacesTheOld) {
  const testsupport::TempDir dir;
  LMsgOutput channel;
  channel.SetOutputOptions(LMSG_OUTPUT_LOG);
  EXPECT_EQ(channel.InitLogFile((dir / "log").c_str(), true), 0);
  EXPECT_EQ(channel.PrintLog("|"), 0);
  EXPECT_EQ(channel.InitLogFile((dir / "none/log").c_str(), true), ENOENT);
  EXPECT_EQ(testsupport::ReadFile(dir / "log"), "|");
  channel.Print(nullptr);  // writes nothing
}
