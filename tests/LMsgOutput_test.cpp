#include <vq0300/LMsgOutput.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
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
  std::string seen;
  for (unsigned short options : {0, 1, 2, 3, 12}) {
    channel.SetOutputOptions(options);
    Console console;
    channel.Print("50%% %d %\n");  // no argument is looked for
    channel.Print(nullptr);
    seen += console.Release() + ";";
  }
  // Standard error wins when both console bits are set.
  EXPECT_EQ(seen, "|;50% %d %\n|;|50% %d %\n;|50% %d %\n;|;");
}

TEST(LMsgOutput, LogFileAndPrintLogReports) {
  TempDir dir;
  const std::string path = dir / "log";
  testsupport::WriteFile(path, "old\n");
  LMsgOutput channel;
  EXPECT_EQ(channel.PrintLog("off"), 0);  // log bit clear: no log needed
  channel.SetOutputOptions(kOutAndLog);
  Console console;
  EXPECT_EQ(channel.PrintLog("x"), -1);                    // no log file
  ASSERT_EQ(channel.InitLogFile(path.c_str(), false), 0);  // appends
  EXPECT_EQ(channel.PrintLog("50%% done\n"), 0);
  EXPECT_EQ(channel.PrintLog("%d"), -1);  // would need an argument
  EXPECT_EQ(channel.InitLogFile((dir / "none/log").c_str(), true), ENOENT);
  EXPECT_EQ(ReadFile(path), "old\n50% done\n");  // closed although the new one failed
  EXPECT_EQ(channel.PrintLog("x"), -1);          // not opened
  channel.SetOutputOptions(LMSG_OUTPUT_LOG);
  EXPECT_EQ(channel.PrintLog("%s"), -1);  // reported nowhere: in the result alone
  EXPECT_EQ(console.Release(), "Log File not initialized!\n" + kFormatReport +
                                   "Error Writing to Log File:\n\t\tFile not opened.|");
  EXPECT_EQ(channel.InitLogFile(path.c_str(), true), 0);
  EXPECT_EQ(ReadFile(path), "");  // fresh
  EXPECT_EQ(channel.InitLogFile(nullptr, true), LFILE_ERR_FILENAME);
}

TEST(LMsgOutput, LogFileOpensForWritingOnly) {
  TempDir dir;
  LMsgOutput channel;
  for (bool fresh : {false, true}) {
    ASSERT_EQ(channel.InitLogFile((dir / "log").c_str(), fresh), 0);
    // The log is the first field of the channel; its mode flags are 4, write.
    LFile* log = nullptr;
    std::memcpy(&log, &channel, sizeof log);
    ASSERT_NE(log, nullptr);
    EXPECT_TRUE(log->IsWrite()) << fresh;
    EXPECT_FALSE(log->IsRead()) << fresh;
    EXPECT_FALSE(log->IsBinary()) << fresh;
    EXPECT_FALSE(log->IsAppend()) << fresh;
  }
}

TEST(LMsgOutput, OutputSendsEachPieceToConsoleAndLogUntilAFailure) {
  TempDir dir;
  LMsgOutput channel;
  Console console;
  ASSERT_EQ(channel.InitLogFile((dir / "log").c_str(), true), 0);
  // Options 0 (InitLogFile sets none): scanned all the same, nothing written.
  EXPECT_EQ(channel.Output("%d", 1), 0);
  EXPECT_EQ(channel.Output("%u", 1), -1);
  const std::string same = "3 items, ab|ab|    7|0x1f|2.50e+00\n(null)";
  EXPECT_EQ(
      channel.Output(kOutAndLog, "%d items, %s|%5s|%5d|%#x|%.2e\n", 3, "ab", "ab", 7, 31, 2.5), 0);
  EXPECT_EQ(channel.Output("%s", static_cast<char const*>(nullptr)), 0);  // the options stay
  // The first failure ends the call; an unsupported conversion holds back
  // the piece ahead of it, a value over 255 characters is not written.
  EXPECT_EQ(channel.Output("a%d and %q", 7), -1);
  EXPECT_EQ(channel.Output("b%c %d", 7, 8), -1);
  EXPECT_EQ(channel.Output("c%255d|", 1), 0);
  EXPECT_EQ(channel.Output("d%256d|", 1), -1);
  // "%% d" leaves "% d" in the value buffer: Print writes it, PrintLog refuses it.
  EXPECT_EQ(channel.Output("50%% done", 1), -2);
  channel.SetOutputOptions(LMSG_OUTPUT_LOG);
  EXPECT_EQ(channel.Output("%s", "%d"), -2);                          // shows in the result alone
  EXPECT_EQ(channel.InitLogFile(nullptr, true), LFILE_ERR_FILENAME);  // closes the log
  const std::string written = same + "a7c" + std::string(254, ' ') + "1|d50";
  EXPECT_EQ(console.Release(), written + "% d" + kFormatReport + "|");
  EXPECT_EQ(ReadFile(dir / "log"), written);
}
