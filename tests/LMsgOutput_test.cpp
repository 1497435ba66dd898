// The format scan of LFile::WriteLine and of LMsgOutput's Output and
// PrintLog beside its model (console, log file and results); what the model
// leaves out of LMsgOutput: values of 0 and 256 characters, a log replaced,
// and a null text.
#include <gtest/gtest.h>

#include <cerrno>

#include "FormatModel.h"

TEST(FormatScan, WriteLineOutputAndPrintLogFollowTheModel) {
  model::RunSeeds(format_model::RunFormatOps, 20, 800);
}

TEST(LMsgOutput, LongValuesAndANewLogThatFails) {
  const testsupport::TempDir dir;
  LMsgOutput channel;
  channel.SetOutputOptions(LMSG_OUTPUT_STDOUT | LMSG_OUTPUT_LOG);
  testsupport::CaptureStream out(stdout);
  EXPECT_EQ(channel.InitLogFile((dir / "log").c_str(), true), 0);
  EXPECT_EQ(channel.Output("%.0x|", 0), 0);  // an empty value
  // A value text of 256 characters (200 digits and a suffix) is refused.
  EXPECT_EQ(channel.Output(("%200i" + std::string(55, '-') + "d").c_str(), 7), -1);
  channel.Print(nullptr);  // writes nothing
  EXPECT_EQ(channel.InitLogFile((dir / "none/log").c_str(), true), ENOENT);
  EXPECT_EQ(out.Release(), "|");
  EXPECT_EQ(testsupport::ReadFile(dir / "log"), "|");  // flushed by the close
}
