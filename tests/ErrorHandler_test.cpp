#include <vq0300/ErrorElement.h>
#include <vq0300/ErrorHandler.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "TestSupport.h"

using testsupport::TempDir;
using testsupport::WriteFile;

namespace {

char* Text(std::string& s) { return s.data(); }

// A handler whose definition file exists in a fresh directory.
struct Fixture {
  Fixture() {
    WriteFile(dir / "errors.txt", "definitions\n");
    handler.SetDefaultDir(dir.path().c_str());
    handler.SetErrorFilename(file_name.data());
  }
  TempDir dir;
  std::string file_name = "errors.txt";
  ErrorHandler handler;
};

std::string Occurred(ErrorHandler& h, int i) {
  const char* text = h.GetErrorOccured(i);
  return text != nullptr ? text : "(null)";
}

}  // namespace

TEST(ErrorElement, OwnsACopyOfItsMessage) {
  ErrorElement element;
  EXPECT_EQ(element.m_dwErrorCode, 0u);
  EXPECT_EQ(element.m_wContinue, 1u);
  EXPECT_EQ(element.GetErrorMessage(), nullptr);

  std::string text = "disk full";
  element.SetErrorMessage(Text(text));
  text[0] = 'D';
  EXPECT_STREQ(element.GetErrorMessage(), "disk full");
  element.SetErrorMessage(nullptr);  // keeps the old message
  EXPECT_STREQ(element.GetErrorMessage(), "disk full");
  std::string other = "";
  element.SetErrorMessage(Text(other));
  EXPECT_STREQ(element.GetErrorMessage(), "");
}

TEST(ErrorHandler, NothingWorksWithoutAFileThatOpens) {
  ErrorHandler fresh;
  std::string text = "lost";
  fresh.SetErrorOccured(Text(text));
  fresh.SetLastErrorOccured(Text(text));
  EXPECT_EQ(fresh.GetNumberOfErrorOccured(), 0);
  EXPECT_EQ(fresh.GetErrorOccured(0), nullptr);
  EXPECT_EQ(fresh.GetErrorElement(1, 1), nullptr);

  // The file test runs at every call: removing the file silences the handler,
  // restoring it brings everything back.
  Fixture f;
  std::string one = "one";
  f.handler.SetErrorOccured(Text(one));
  ASSERT_EQ(Occurred(f.handler, 0), "one");
  std::remove((f.dir / "errors.txt").c_str());
  f.handler.SetErrorOccured(Text(one));
  EXPECT_EQ(f.handler.GetNumberOfErrorOccured(), 1);
  EXPECT_EQ(f.handler.GetErrorOccured(0), nullptr);
  WriteFile(f.dir / "errors.txt", "");
  EXPECT_EQ(Occurred(f.handler, 0), "one");
}

TEST(ErrorHandler, RecordingAndReadingBack) {
  Fixture f;
  std::string a = "a", b = "b", c = "c";
  f.handler.SetLastErrorOccured(Text(a));  // on an empty list: records one
  EXPECT_EQ(f.handler.GetNumberOfErrorOccured(), 1);
  f.handler.SetErrorOccured(Text(b));
  f.handler.SetErrorOccured(nullptr);  // counts, reads back as null
  EXPECT_EQ(f.handler.GetNumberOfErrorOccured(), 3);
  EXPECT_EQ(f.handler.GetErrorOccured(2), nullptr);
  EXPECT_EQ(f.handler.GetErrorOccured(3), nullptr);   // index == count
  EXPECT_EQ(f.handler.GetErrorOccured(-1), nullptr);  // negative: null
  f.handler.SetLastErrorOccured(Text(c));
  EXPECT_EQ(f.handler.GetNumberOfErrorOccured(), 3);
  EXPECT_EQ(Occurred(f.handler, 1), "b");
  EXPECT_EQ(Occurred(f.handler, 2), "c");
  // The text handed out for the newest entry may be passed back in.
  f.handler.SetLastErrorOccured(f.handler.GetErrorOccured(2));
  EXPECT_EQ(Occurred(f.handler, 2), "c");
}

TEST(ErrorHandler, AppendStartsAtOwnCount) {
  Fixture mine, theirs;
  std::string texts[] = {"t0", "t1", "t2", "m0"};
  for (int i = 0; i < 3; ++i) theirs.handler.SetErrorOccured(Text(texts[i]));
  mine.handler.SetErrorOccured(Text(texts[3]));

  mine.handler.AppendErrorOccured(&mine.handler);  // itself: nothing
  EXPECT_EQ(mine.handler.GetNumberOfErrorOccured(), 1);
  mine.handler.AppendErrorOccured(nullptr);
  mine.handler.AppendErrorOccured(&theirs.handler);
  ASSERT_EQ(mine.handler.GetNumberOfErrorOccured(), 3);
  EXPECT_EQ(Occurred(mine.handler, 0), "m0");
  EXPECT_EQ(Occurred(mine.handler, 1), "t1");
  EXPECT_EQ(Occurred(mine.handler, 2), "t2");
  // The longer side gives nothing to the shorter one's tail.
  theirs.handler.AppendErrorOccured(&mine.handler);
  EXPECT_EQ(theirs.handler.GetNumberOfErrorOccured(), 3);
}

TEST(ErrorHandler, FileNameIsBuiltFromTheStoredDirectory) {
  TempDir dir;
  WriteFile(dir / "defs", "");
  std::string name = "defs";
  std::string text = "x";

  // An empty directory gives "/" + name: that file does not exist, so the
  // handler cannot record.
  ErrorHandler empty_dir;
  empty_dir.SetDefaultDir("");
  empty_dir.SetErrorFilename(Text(name));
  empty_dir.SetErrorOccured(Text(text));
  EXPECT_EQ(empty_dir.GetNumberOfErrorOccured(), 0);

  // A trailing slash doubles, which still opens.
  ErrorHandler slash;
  slash.SetDefaultDir((dir.path() + "/").c_str());
  slash.SetErrorFilename(Text(name));
  slash.SetErrorOccured(Text(text));
  EXPECT_EQ(slash.GetNumberOfErrorOccured(), 1);

  // Null or empty names keep the stored one; a later SetDefaultDir does not
  // rebuild it.
  std::string empty;
  slash.SetErrorFilename(nullptr);
  slash.SetErrorFilename(Text(empty));
  slash.SetDefaultDir(nullptr);
  slash.SetErrorOccured(Text(text));
  EXPECT_EQ(slash.GetNumberOfErrorOccured(), 2);
  // Now the empty directory takes effect.
  slash.SetErrorFilename(Text(name));
  slash.SetErrorOccured(Text(text));
  EXPECT_EQ(slash.GetNumberOfErrorOccured(), 2);

  // Without a directory the name is taken as given.
  ErrorHandler no_dir;
  std::string full = dir / "defs";
  no_dir.SetErrorFilename(Text(full));
  no_dir.SetErrorOccured(Text(text));
  EXPECT_EQ(no_dir.GetNumberOfErrorOccured(), 1);
}
