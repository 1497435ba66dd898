#include <vq0300/LLog.h>

#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "TestSupport.h"

using testsupport::ReadFile;
using testsupport::TempDir;
using testsupport::WriteFile;

namespace {

// One time stamp in asctime's layout and its two blanks.
const char kStamp[] = "[A-Z][a-z]{2} [A-Z][a-z]{2} [ 0-9][0-9] [0-9]{2}:[0-9]{2}:[0-9]{2} [0-9]{4}  ";

bool Matches(const std::string& text, const std::string& pattern) {
  return std::regex_match(text, std::regex(pattern));
}

bool Exists(const std::string& path) { return std::filesystem::exists(path); }

}  // namespace

TEST(LLog, WithoutAPathNothingHappens) {
  TempDir dir;
  LLog log;
  EXPECT_STREQ(log.GetLogFilename(), "");
  EXPECT_FALSE(log.IsOpen());
  log.WriteMessage("lost");
  log.WriteMessage2("lost");
  log.LogHeader("lost");
  log.Clear();

  const std::string path = dir / "log.txt";
  LLog empty_mode(path.c_str(), "");
  LLog null_mode(path.c_str(), nullptr);
  LLog empty_path("", "w");
  EXPECT_STREQ(empty_mode.GetLogFilename(), "");
  EXPECT_STREQ(null_mode.GetLogFilename(), "");
  EXPECT_STREQ(empty_path.GetLogFilename(), "");
  EXPECT_FALSE(Exists(path));

  // A refused SetLogFilename keeps the path in force.
  LLog kept(path.c_str(), "a");
  kept.SetLogFilename((dir / "other").c_str(), "");
  EXPECT_EQ(kept.GetLogFilename(), path);
}

TEST(LLog, ModeTakesEffectOnceWhenThePathIsSet) {
  TempDir dir;
  const std::string path = dir / "log.txt";
  WriteFile(path, "old\n");
  LLog append(path.c_str(), "a");
  EXPECT_EQ(ReadFile(path), "old\n");
  LLog truncate(path.c_str(), "w");
  EXPECT_EQ(ReadFile(path), "");
  // Messages always append, whatever the mode.
  truncate.WriteMessage2("one");
  truncate.WriteMessage2("two");
  EXPECT_TRUE(Matches(ReadFile(path), std::string(kStamp) + "one" + kStamp + "two"));

  // A missing directory: the path is stored, writes are lost, IsOpen is false.
  const std::string lost = dir / "missing/log.txt";
  LLog nowhere(lost.c_str(), "w");
  EXPECT_EQ(nowhere.GetLogFilename(), lost);
  nowhere.WriteMessage("x");
  nowhere.Clear();
  EXPECT_FALSE(nowhere.IsOpen());
  EXPECT_FALSE(Exists(lost));
}

TEST(LLog, RecordsAndPercentSigns) {
  TempDir dir;
  const std::string path = dir / "log.txt";
  LLog log;
  log.SetLogFilename(path.c_str(), "a");
  log.LogHeader("Tool v1");
  log.WriteMessage(nullptr);
  log.WriteMessage("50%% done, %d left\n");  // a format without arguments
  log.WriteMessage2("50%% raw\n");
  EXPECT_TRUE(Matches(ReadFile(path), std::string("\t\t\tKorvane Semiconductor Corporation\n") +
                                          "\t\t\tTool v1\n\n" + kStamp + kStamp +
                                          "50% done, %d left\n" + kStamp + "50%% raw\n"))
      << ReadFile(path);
}

TEST(LLog, IsOpenAndClearCreateTheFile) {
  TempDir dir;
  const std::string path = dir / "log.txt";
  LLog log(path.c_str(), "a");
  std::filesystem::remove(path);
  EXPECT_TRUE(log.IsOpen());
  EXPECT_TRUE(Exists(path));
  log.WriteMessage2("text");
  log.Clear();
  EXPECT_TRUE(Exists(path));
  EXPECT_EQ(ReadFile(path), "");
}
