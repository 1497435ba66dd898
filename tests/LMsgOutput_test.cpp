#include <vq0300/LMsgOutput.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <string>

#include "TestSupport.h"

using testsupport::CaptureStream;
using testsupport::ReadFile;
using testsupport::TempDir;

namespace {

constexpr unsigned short kOutAndLog = LMSG_OUTPUT_STDOUT | LMSG_OUTPUT_LOG;
const std::string kFormatReport = "Error Writing to Log File:\n\t\tUnsupported print format.";

// Standard output and standard error of a stretch of calls, as "out|err".
struct Console {
  CaptureStream out{stdout};
  CaptureStream err{stderr};
  std::string Release() { return out.Release() + "|" + err.Release(); }
};

}  // namespace

TEST(LMsgOutput, PrintFollowsTheConsoleBits) {
  LMsgOutput channel;
  const std::pair<unsigned short, std::string> rows[] = {
      {0, "|"}, {1, "50% %d %\n|"}, {2, "|50% %d %\n"}, {3, "|50% %d %\n"}, {12, "|"}};
  for (const auto& [options, expected] : rows) {
    channel.SetOutputOptions(options);
    Console console;
    channel.Print("50%% %d %\n");  // no argument is looked for
    channel.Print(nullptr);
    EXPECT_EQ(console.Release(), expected) << options;
  }
}

TEST(LMsgOutput, PrintLogReportsThroughPrint) {
  TempDir dir;
  const std::string path = dir / "log";
  LMsgOutput channel;
  EXPECT_EQ(channel.PrintLog("off"), 0);  // log bit clear: no log needed
  channel.SetOutputOptions(kOutAndLog);
  Console console;
  EXPECT_EQ(channel.PrintLog("x"), -1);
  EXPECT_EQ(channel.InitLogFile((dir / "none/log").c_str(), true), ENOENT);
  EXPECT_EQ(channel.PrintLog("x"), -1);
  ASSERT_EQ(channel.InitLogFile(path.c_str(), true), 0);
  EXPECT_EQ(channel.PrintLog("50%% done\n"), 0);
  EXPECT_EQ(channel.PrintLog("%d"), -1);    // would need an argument
  EXPECT_EQ(channel.PrintLog("100%"), -1);  // as WriteLine("100%") does
  channel.SetOutputOptions(LMSG_OUTPUT_LOG);
  EXPECT_EQ(channel.PrintLog("%s"), -1);  // shows in the result alone
  EXPECT_EQ(console.Release(),
            "Log File not initialized!\n"
            "Error Writing to Log File:\n\t\tFile not opened." +
                kFormatReport + kFormatReport + "|");
  EXPECT_EQ(channel.InitLogFile(nullptr, true), LFILE_ERR_FILENAME);
  EXPECT_EQ(ReadFile(path), "50% done\n");  // the first log was closed
}

TEST(LMsgOutput, InitLogFileStartsAfreshOrAppends) {
  TempDir dir;
  const std::string path = dir / "log";
  testsupport::WriteFile(path, "old\n");
  LMsgOutput channel;
  ASSERT_EQ(channel.InitLogFile(path.c_str(), false), 0);
  Console console;
  EXPECT_EQ(channel.Output(LMSG_OUTPUT_STDERR, "not logged\n"), 0);  // no log bit yet
  EXPECT_EQ(channel.Output(LMSG_OUTPUT_LOG, "added %d\n", 1), 0);
  EXPECT_EQ(console.Release(), "|not logged\n");
  EXPECT_EQ(channel.InitLogFile((dir / "none/log").c_str(), true), ENOENT);
  EXPECT_EQ(ReadFile(path), "old\nadded 1\n");  // closed although the new one failed
  ASSERT_EQ(channel.InitLogFile(path.c_str(), true), 0);
  EXPECT_EQ(ReadFile(path), "");
}

TEST(LMsgOutput, OutputSendsTheSameTextToConsoleAndLog) {
  TempDir dir;
  const std::string expected = "3 items, ab|ab|    7|0x1f|2.50e+00\n(null)";
  Console console;
  {
    LMsgOutput channel;
    ASSERT_EQ(channel.InitLogFile((dir / "log").c_str(), true), 0);
    EXPECT_EQ(
        channel.Output(kOutAndLog, "%d items, %s|%5s|%5d|%#x|%.2e\n", 3, "ab", "ab", 7, 31, 2.5),
        0);
    EXPECT_EQ(channel.Output("%s", static_cast<char const*>(nullptr)), 0);  // options stay
  }
  EXPECT_EQ(console.Release(), expected + "|");
  EXPECT_EQ(ReadFile(dir / "log"), expected);
}

TEST(LMsgOutput, OutputStopsAtTheFirstFailure) {
  TempDir dir;
  LMsgOutput channel;
  EXPECT_EQ(channel.Output("%d", 1), 0);  // options 0: scanned, not written
  EXPECT_EQ(channel.Output("%u", 1), -1);
  Console console;
  EXPECT_EQ(channel.Output(LMSG_OUTPUT_STDOUT, "a%d and %q", 7), -1);
  EXPECT_EQ(channel.Output("b%c %d", 7, 8), -1);  // unsupported: its piece is held back
  EXPECT_EQ(channel.Output("c%255d|", 1), 0);
  EXPECT_EQ(channel.Output("d%256d|", 1), -1);  // does not fit the value buffer
  channel.SetOutputOptions(kOutAndLog);
  EXPECT_EQ(channel.Output("e%d", 1), -2);  // no log: the first piece fails
  ASSERT_EQ(channel.InitLogFile((dir / "log").c_str(), true), 0);
  // "%% d" leaves "% d" in the value buffer: Print writes it, PrintLog refuses it.
  EXPECT_EQ(channel.Output("50%% done", 1), -2);
  channel.SetOutputOptions(LMSG_OUTPUT_LOG);
  EXPECT_EQ(channel.Output("%s", "%d"), -2);  // shows in the result alone
  EXPECT_EQ(console.Release(), "a7c" + std::string(254, ' ') + "1|d" +
                                   "eLog File not initialized!\n50% d" + kFormatReport + "|");
}
