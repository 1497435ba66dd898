#include <vq0300/LLog.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>

#include "TestSupport.h"

using testsupport::ReadFile;
using testsupport::TempDir;

namespace {

// The file's text with every time stamp (asctime's layout and two blanks)
// replaced by "@".
std::string Log(const std::string& path) {
  static const std::regex stamp(
      "[A-Z][a-z]{2} [A-Z][a-z]{2} [ 0-9][0-9] [0-9]{2}:[0-9]{2}:[0-9]{2} [0-9]{4}  ");
  return std::regex_replace(ReadFile(path), stamp, "@");
}

}  // namespace

TEST(LLog, NullOrEmptyPathOrModeChangesNothing) {
  TempDir dir;
  const std::string path = dir / "log.txt";
  EXPECT_FALSE(LLog().IsOpen());
  using Args = std::pair<const char*, const char*>;
  for (const auto& [name, mode] :
       {Args{path.c_str(), ""}, Args{path.c_str(), nullptr}, Args{"", "w"}, Args{nullptr, "w"}}) {
    EXPECT_STREQ(LLog(name, mode).GetLogFilename(), "");
  }
  EXPECT_FALSE(std::filesystem::exists(path));
  LLog kept(path.c_str(), "a");
  kept.SetLogFilename((dir / "other").c_str(), "");
  EXPECT_EQ(kept.GetLogFilename(), path);
}

TEST(LLog, ModeActsOnceAndRecordsAppend) {
  TempDir dir;
  const std::string path = dir / "log.txt";
  testsupport::WriteFile(path, "old\n");
  LLog append(path.c_str(), "a");
  EXPECT_EQ(ReadFile(path), "old\n");
  LLog log(path.c_str(), "w");
  EXPECT_EQ(ReadFile(path), "");
  log.LogHeader("Tool v1");
  log.WriteMessage(nullptr);
  log.WriteMessage("50%% done, %d left\n");  // a format that reads no argument
  log.WriteMessage2("50%% raw\n");
  EXPECT_EQ(Log(path),
            "\t\t\tKorvane Semiconductor Corporation\n\t\t\tTool v1\n\n@@50% done, %d left\n"
            "@50%% raw\n");
}

TEST(LLog, IsOpenAndClearCreateTheFile) {
  TempDir dir;
  const std::string path = dir / "log.txt", lost = dir / "missing/log.txt";
  LLog log(path.c_str(), "a"), nowhere(lost.c_str(), "w");
  std::filesystem::remove(path);
  EXPECT_TRUE(log.IsOpen());
  EXPECT_TRUE(std::filesystem::exists(path));
  log.WriteMessage2("text");
  log.Clear();
  EXPECT_TRUE(std::filesystem::exists(path));
  EXPECT_TRUE(ReadFile(path).empty());
  // A missing directory: the path is kept, and every write is lost.
  nowhere.WriteMessage("x");
  nowhere.Clear();
  EXPECT_EQ(nowhere.GetLogFilename(), lost);
  EXPECT_FALSE(nowhere.IsOpen());
  EXPECT_FALSE(std::filesystem::exists(lost));
}
