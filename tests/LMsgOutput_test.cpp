// The format scan of LFile::WriteLine and of LMsgOutput's Output and
// PrintLog beside its model (console, log file and results); what the model
// leaves out of LMsgOutput: a log replaced, and a null text.
#include <gtest/gtest.h>

#include <cerrno>

#include "FormatModel.h"

TEST(FormatScan, WriteLineOutputAndPrintLogFollowTheModel) {
  model::RunSeeds(format_model::RunFormatOps, 20, 800);
}

TEST(LMsgOutput, ANewLogClosesTheOldOneEvenWhenItFails) {
  const testsupport::TempDir dir;
  LMsgOutput channel;
  channel.SetOutputOptions(LMSG_OUTPUT_STDOUT | LMSG_OUTPUT_LOG);
  testsupport::CaptureStream out(stdout);
  const int opened = channel.InitLogFile((dir / "log").c_str(), true);
  const int number = channel.Output("%d", 1), empty = channel.Output("%.0x|", 0);
  const int character = channel.Output("%c done|", 'A');  // "%c d": " d" behind the directive
  channel.Print(nullptr);                                 // writes nothing
  const int replaced = channel.InitLogFile((dir / "none/log").c_str(), true);
  EXPECT_EQ(out.Release(), "1|A done|");  // the console, released before any failure is printed
  EXPECT_EQ(opened, 0);
  EXPECT_EQ(number, 0);
  EXPECT_EQ(empty, 0);  // an empty value
  EXPECT_EQ(character, 0);
  EXPECT_EQ(replaced, ENOENT);
  EXPECT_EQ(testsupport::ReadFile(dir / "log"), "1|A done|");
}
