#include <vq0300/LMsgOutput.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <string>

#include "TestSupport.h"

using testsupport::CaptureStream;
using testsupport::ReadFile;
using testsupport::TempDir;
using testsupport::WriteFile;

namespace {

// Standard output and standard error of one stretch of calls.
struct Console {
  CaptureStream out{stdout};
  CaptureStream err{stderr};
  std::string Out() { return out.Release(); }
  std::string Err() { return err.Release(); }
};

}  // namespace

TEST(LMsgOutput, PrintFollowsTheConsoleBits) {
  LMsgOutput channel;
  struct Row {
    unsigned short options;
    const char* out;
    const char* err;
  } rows[] = {{0, "", ""}, {1, "50% %d %\n", ""}, {2, "", "50% %d %\n"}, {3, "", "50% %d %\n"},
              {4, "", ""}, {8, "", ""}};
  for (const Row& row : rows) {
    channel.SetOutputOptions(row.options);
    Console console;
    channel.Print("50%% %d %\n");  // no argument is looked for
    channel.Print(nullptr);
    EXPECT_EQ(console.Out(), row.out) << row.options;
    EXPECT_EQ(console.Err(), row.err) << row.options;
  }
}

TEST(LMsgOutput, PrintLogReportsThroughPrint) {
  TempDir dir;
  const std::string path = dir / "log";
  LMsgOutput channel;
  EXPECT_EQ(channel.PrintLog("off"), 0);  // log bit clear: no log needed
  channel.SetOutputOptions(LMSG_OUTPUT_STDOUT | LMSG_OUTPUT_LOG);
  {
    Console console;
    EXPECT_EQ(channel.PrintLog("x"), -1);
    EXPECT_EQ(console.Out(), "Log File not initialized!\n");
  }
  EXPECT_EQ(channel.InitLogFile((dir / "none/log").c_str(), true), ENOENT);
  {
    Console console;
    EXPECT_EQ(channel.PrintLog("x"), -1);
    EXPECT_EQ(console.Out(), "Error Writing to Log File:\n\t\tFile not opened.");
  }
  ASSERT_EQ(channel.InitLogFile(path.c_str(), true), 0);
  {
    Console console;
    EXPECT_EQ(channel.PrintLog("50%% done\n"), 0);
    EXPECT_EQ(channel.PrintLog("%d"), -1);    // would need an argument
    EXPECT_EQ(channel.PrintLog("100%"), -1);  // as WriteLine("100%") does
    EXPECT_EQ(console.Out(),
              "Error Writing to Log File:\n\t\tUnsupported print format."
              "Error Writing to Log File:\n\t\tUnsupported print format.");
  }
  channel.SetOutputOptions(LMSG_OUTPUT_LOG);
  {
    Console console;
    EXPECT_EQ(channel.PrintLog("%s"), -1);  // visible in the result alone
    EXPECT_EQ(console.Out() + console.Err(), "");
  }
  EXPECT_EQ(channel.InitLogFile(nullptr, true), LFILE_ERR_FILENAME);
  EXPECT_EQ(ReadFile(path), "50% done\n");  // the first log was closed
}

TEST(LMsgOutput, InitLogFileStartsAfreshOrAppends) {
  TempDir dir;
  const std::string path = dir / "log";
  WriteFile(path, "old\n");
  LMsgOutput channel;
  ASSERT_EQ(channel.InitLogFile(path.c_str(), false), 0);
  EXPECT_EQ(channel.Output(LMSG_OUTPUT_STDERR, "not logged\n"), 0);  // no log bit yet
  {
    Console console;
    EXPECT_EQ(channel.Output(LMSG_OUTPUT_LOG, "added %d\n", 1), 0);
    EXPECT_EQ(console.Out() + console.Err(), "");
  }
  EXPECT_EQ(channel.InitLogFile((dir / "none/log").c_str(), true), ENOENT);
  EXPECT_EQ(ReadFile(path), "old\nadded 1\n");
  ASSERT_EQ(channel.InitLogFile(path.c_str(), true), 0);
  EXPECT_EQ(ReadFile(path), "");
}

TEST(LMsgOutput, OutputSendsTheSameTextToConsoleAndLog) {
  TempDir dir;
  const std::string path = dir / "log";
  const char* expected = "3 items, ab|ab|    7|0x1f|2.50e+00\n";
  {
    LMsgOutput channel;
    ASSERT_EQ(channel.InitLogFile(path.c_str(), true), 0);
    Console console;
    EXPECT_EQ(channel.Output(LMSG_OUTPUT_STDOUT | LMSG_OUTPUT_LOG,
                             "%d items, %s|%5s|%5d|%#x|%.2e\n", 3, "ab", "ab", 7, 31, 2.5),
              0);
    EXPECT_EQ(channel.Output("%s", static_cast<char const*>(nullptr)), 0);  // options stay
    EXPECT_EQ(console.Out(), std::string(expected) + "(null)");
  }
  EXPECT_EQ(ReadFile(path), std::string(expected) + "(null)");
}

TEST(LMsgOutput, OutputStopsAtTheFirstFailure) {
  LMsgOutput channel;
  EXPECT_EQ(channel.Output("%d", 1), 0);  // options 0: scanned, not written
  EXPECT_EQ(channel.Output("%u", 1), -1);
  Console console;
  EXPECT_EQ(channel.Output(LMSG_OUTPUT_STDOUT, "a%d and %q", 7), -1);
  EXPECT_EQ(channel.Output("b%c %d", 7, 8), -1);  // unsupported: its piece is held back
  EXPECT_EQ(channel.Output("c%255d|", 1), 0);
  EXPECT_EQ(channel.Output("d%256d|", 1), -1);  // 256 characters do not fit
  channel.SetOutputOptions(LMSG_OUTPUT_STDOUT | LMSG_OUTPUT_LOG);
  EXPECT_EQ(channel.Output("e%d", 1), -2);  // no log: the first piece fails
  EXPECT_EQ(console.Out(), "a7c" + std::string(254, ' ') + "1|d" + "eLog File not initialized!\n");

  channel.SetOutputOptions(LMSG_OUTPUT_LOG);
  EXPECT_EQ(channel.Output("%d", 1), -2);  // the failure shows in the result alone
  EXPECT_EQ(console.Err(), "");
}

TEST(LMsgOutput, PercentPairsReachThePiecesAsText) {
  TempDir dir;
  LMsgOutput channel;
  ASSERT_EQ(channel.InitLogFile((dir / "log").c_str(), true), 0);
  Console console;
  // "%% d" leaves "% d" in the value buffer: Print writes it, PrintLog refuses it.
  EXPECT_EQ(channel.Output(LMSG_OUTPUT_STDOUT | LMSG_OUTPUT_LOG, "50%% done", 1), -2);
  EXPECT_EQ(console.Out(), "50% dError Writing to Log File:\n\t\tUnsupported print format.");
}
