// LMsgOutput: the format scan of Output and PrintLog beside its model; the
// console bits and the log file.
#include <gtest/gtest.h>

#include <cerrno>

#include "FormatModel.h"

using testsupport::CaptureStream;
using testsupport::ReadFile;

TEST(FormatScan, WriteLineOutputAndPrintLogFollowTheModel) {
  model::RunSeeds(format_model::RunFormatOps, 30, 1000);
}

TEST(LMsgOutput, PrintWritesToOneConsole) {
  struct Row {
    unsigned short options;
    const char* out;
    const char* err;
  };
  for (const Row& row : {Row{0, "", ""}, Row{1, "50% %d %\n", ""}, Row{2, "", "50% %d %\n"},
                         Row{3, "", "50% %d %\n"}, Row{12, "", ""}}) {
    LMsgOutput channel;
    channel.SetOutputOptions(row.options);
    CaptureStream out(stdout), err(stderr);
    channel.Print("50%% %d %\n");  // no argument is looked for
    channel.Print(nullptr);
    EXPECT_EQ(out.Release(), row.out) << row.options;
    EXPECT_EQ(err.Release(), row.err) << row.options;
  }
}

TEST(LMsgOutput, LogFileIsFreshOrAppendedAndOptionsStay) {
  const testsupport::TempDir dir;
  const std::string path = dir / "log";
  testsupport::WriteFile(path, "old\n");
  LMsgOutput channel;
  EXPECT_EQ(channel.InitLogFile(path.c_str(), false), 0);
  EXPECT_EQ(channel.Output(LMSG_OUTPUT_LOG, "%d,", 1), 0);
  EXPECT_EQ(channel.Output("%d", 2), 0);  // the options of the call before
  EXPECT_EQ(channel.InitLogFile((dir / "none/log").c_str(), true), ENOENT);
  EXPECT_EQ(ReadFile(path), "old\n1,2");  // closed although the new one failed
  EXPECT_EQ(channel.InitLogFile(path.c_str(), true), 0);
  EXPECT_EQ(ReadFile(path), "");
  EXPECT_EQ(channel.InitLogFile(nullptr, true), LFILE_ERR_FILENAME);
}
