#include <vq0300/LFile.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "TestSupport.h"

using testsupport::ReadFile;
using testsupport::TempDir;
using testsupport::WriteFile;

namespace {

std::string Text(char const* s) { return s != nullptr ? s : "(null)"; }

// A derived file that can store any code, as the hook for codes below -100
// intends.
class CodedFile : public LFile {
 public:
  void Store(int code) { m_nErrorCode = code; }
  char const* OnGetErrorMessage() override { return "derived text"; }
};

}  // namespace

TEST(LFile, EveryCodeHasItsText) {
  LFile file;
  EXPECT_FALSE(file.IsOpen());
  EXPECT_EQ(file.GetFilename(), nullptr);
  EXPECT_EQ(file.GetErrorCode(), 0);
  EXPECT_STREQ(file.GetErrorMessage(), "No Error!");
  EXPECT_EQ(file.OnGetErrorMessage(), nullptr);

  CodedFile coded;
  const char* texts[] = {"", "LFile conflict : Unable to open file.", "Unsupported print format.",
                         "File not opened.", "File not readable.", "File not writable.",
                         "End Of File Reached.", "Invalid Filename."};
  for (int row = 1; row <= 7; ++row) {
    coded.Store(-row);
    EXPECT_STREQ(coded.GetErrorMessage(), texts[row]) << row;
  }
  for (int code : {-8, -100}) {
    coded.Store(code);
    EXPECT_STREQ(coded.GetErrorMessage(), "Unknown error.") << code;
  }
  coded.Store(-101);
  EXPECT_STREQ(coded.GetErrorMessage(), "derived text");
  coded.Store(EACCES);  // no stream: still strerror's text
  EXPECT_EQ(Text(coded.GetErrorMessage()), std::strerror(EACCES));
}

TEST(LFile, ConstructionAndCloseMoveBetweenStates) {
  TempDir dir;
  const std::string missing = dir / "missing";
  LFile named(missing.c_str(), "r");
  EXPECT_EQ(named.GetErrorCode(), ENOENT);
  EXPECT_EQ(Text(named.GetErrorMessage()), std::strerror(ENOENT));
  EXPECT_EQ(Text(named.GetFilename()), missing);
  EXPECT_FALSE(named.IsOpen());
  EXPECT_FALSE(named.IsRead() || named.IsWrite() || named.IsBinary() || named.IsAppend());
  EXPECT_EQ(named.Close(), 0);  // releases the name, keeps the code
  EXPECT_EQ(named.GetFilename(), nullptr);
  EXPECT_EQ(named.GetErrorCode(), ENOENT);

  LFile nameless(nullptr, "r");
  EXPECT_EQ(nameless.GetErrorCode(), LFILE_ERR_FILENAME);
  EXPECT_EQ(nameless.GetFilename(), nullptr);
  EXPECT_FALSE(nameless.IsOpen());

  const std::string path = dir / "f";
  LFile open(path.c_str(), "w");
  EXPECT_TRUE(open.IsOpen());
  EXPECT_EQ(open.Close(), 0);
  EXPECT_FALSE(open.IsOpen());
  EXPECT_EQ(open.GetFilename(), nullptr);
  EXPECT_TRUE(open.IsWrite());  // flags outlive Close
  EXPECT_EQ(open.Close(), 0);
}

TEST(LFile, ModeLettersGiveFlags) {
  TempDir dir;
  const std::string path = dir / "f";
  WriteFile(path, "x");
  struct Row {
    const char* mode;
    bool read, write, binary, append;
  } rows[] = {
      {"r", 1, 0, 0, 0},   {"rb", 1, 0, 1, 0},  {"w", 0, 1, 0, 0},   {"wt", 0, 1, 0, 0},
      {"a", 0, 1, 0, 1},   {"at", 0, 1, 0, 1},  {"wb", 0, 1, 1, 0},  {"ab", 0, 1, 1, 1},
      {"r+", 1, 1, 0, 0},  {"w+", 1, 1, 0, 0},  {"a+", 1, 1, 0, 1},  {"r+b", 1, 1, 1, 0},
      {"rb+", 1, 1, 1, 0}, {"w+b", 1, 1, 1, 0}, {"a+b", 1, 1, 1, 1},
  };
  LFile file;
  for (const Row& row : rows) {
    ASSERT_EQ(file.Open(path.c_str(), row.mode, true), 0) << row.mode;
    EXPECT_EQ(file.IsRead(), row.read) << row.mode;
    EXPECT_EQ(file.IsWrite(), row.write) << row.mode;
    EXPECT_EQ(file.IsBinary(), row.binary) << row.mode;
    EXPECT_EQ(file.IsAppend(), row.append) << row.mode;
  }
  // The stored name may be handed back to Open.
  EXPECT_EQ(file.Open(file.GetFilename(), "r", true), 0);
  EXPECT_EQ(Text(file.GetFilename()), path);
}

TEST(LFile, RefusedOpenWipesFlagsOfTheOpenStream) {
  TempDir dir;
  const std::string path = dir / "f";
  WriteFile(path, "abc");
  LFile file(path.c_str(), "r+");
  EXPECT_EQ(file.Open(path.c_str(), "r", false), LFILE_ERR_CONFLICT);
  EXPECT_STREQ(file.GetErrorMessage(), "LFile conflict : Unable to open file.");
  EXPECT_TRUE(file.IsOpen());
  EXPECT_EQ(Text(file.GetFilename()), path);
  unsigned char buffer[4];
  EXPECT_EQ(file.Read(1, buffer), LFILE_ERR_NOT_READABLE);
  EXPECT_EQ(file.WriteChar('x'), LFILE_ERR_NOT_WRITABLE);
  char c = 0;
  EXPECT_EQ(file.ReadChar(c), LFILE_ERR_NOT_READABLE);
  EXPECT_EQ(file.Open(nullptr, "r", true), LFILE_ERR_FILENAME);
  EXPECT_TRUE(file.IsOpen());
}

TEST(LFile, StoredCodeOutlivesCloseAndStopsOpen) {
  TempDir dir;
  const std::string first = dir / "first", second = dir / "second";
  WriteFile(first, "");
  WriteFile(second, "2");
  LFile file(first.c_str(), "r");
  unsigned char byte = 0;
  EXPECT_EQ(file.Read(1, &byte), 0);  // hits the end, nothing transferred
  EXPECT_EQ(file.Read(1, &byte), LFILE_ERR_EOF);
  EXPECT_EQ(file.Open(second.c_str(), "r", true), LFILE_ERR_EOF);
  EXPECT_FALSE(file.IsOpen());  // the old file is closed, the new not opened
  EXPECT_EQ(file.GetFilename(), nullptr);

  // A failed Open leaves its code; the next good Open keeps it; a read clears it.
  EXPECT_EQ(file.Open((dir / "missing").c_str(), "r", true), ENOENT);
  EXPECT_EQ(file.Open(second.c_str(), "r", true), 0);
  EXPECT_EQ(file.GetErrorCode(), ENOENT);
  EXPECT_EQ(file.ValidRead(), ENOENT);  // only the stored code is tested
  EXPECT_EQ(file.Read(1, &byte), 0);
  EXPECT_EQ(byte, '2');

  // Rewind clears the code, and Open goes through.
  EXPECT_EQ(file.Read(1, &byte), 0);
  EXPECT_EQ(file.Read(1, &byte), LFILE_ERR_EOF);
  EXPECT_EQ(file.Rewind(), 0);
  EXPECT_EQ(file.Open(first.c_str(), "r", true), 0);
  EXPECT_TRUE(file.IsOpen());
}

TEST(LFile, ReadCharEndsWithMinusOneWhereReadGivesEof) {
  TempDir dir;
  const std::string path = dir / "f";
  WriteFile(path, "ab");
  LFile file(path.c_str(), "rb");
  char c = 0;
  EXPECT_EQ(file.ReadChar(c), 0);
  EXPECT_EQ(c, 'a');
  EXPECT_EQ(file.ReadChar(c), 0);
  EXPECT_EQ(file.ReadChar(c), 0);  // hits the end
  EXPECT_EQ(static_cast<unsigned char>(c), 0xFF);
  EXPECT_EQ(file.ReadChar(c), -1);
  EXPECT_EQ(file.GetErrorCode(), 0);
  EXPECT_EQ(file.Rewind(), 0);
  EXPECT_EQ(file.ReadChar(c), 0);
  EXPECT_EQ(c, 'a');

  LFile none;
  EXPECT_EQ(none.ReadChar(c), LFILE_ERR_NOT_OPEN);
  EXPECT_EQ(none.Rewind(), LFILE_ERR_NOT_OPEN);
  EXPECT_EQ(none.WriteChar('x'), LFILE_ERR_NOT_OPEN);
  LFile writeOnly((dir / "w").c_str(), "w");
  EXPECT_EQ(writeOnly.ReadChar(c), LFILE_ERR_NOT_READABLE);
}

TEST(LFile, ReadLineStopsAtLineEndsAndAtTheEnd) {
  TempDir dir;
  const std::string ended = dir / "ended", open = dir / "open", longLine = dir / "long";
  WriteFile(ended, "one\ntwo\n");
  WriteFile(open, "abcdef");
  WriteFile(longLine, std::string(7000, 'x') + "\n");

  LFile file(ended.c_str(), "r");
  char buffer[16] = "";
  EXPECT_EQ(file.ReadLine(sizeof buffer, buffer), 0);
  EXPECT_STREQ(buffer, "one\n");
  EXPECT_EQ(file.ReadLine(sizeof buffer, buffer), 0);
  EXPECT_STREQ(buffer, "two\n");
  EXPECT_EQ(file.ReadLine(sizeof buffer, buffer), 0);  // nothing left: untouched
  EXPECT_STREQ(buffer, "two\n");
  EXPECT_EQ(file.ReadLine(sizeof buffer, buffer), LFILE_ERR_EOF);

  LCString text("before");
  LFile unended(open.c_str(), "r");
  EXPECT_EQ(unended.ReadLine(4, buffer), 0);
  EXPECT_STREQ(buffer, "abc");
  EXPECT_EQ(unended.ReadLine(text), 0);
  EXPECT_STREQ(text.c_str(), "def");
  EXPECT_EQ(unended.ReadLine(text), LFILE_ERR_EOF);  // no line end: at the end at once

  LFile longer(longLine.c_str(), "r");
  EXPECT_EQ(longer.ReadLine(text), 0);
  EXPECT_EQ(text.GetLength(), 5998);
  EXPECT_EQ(longer.ReadLine(text), 0);
  EXPECT_EQ(text.GetLength(), 7001 - 5998);
  EXPECT_EQ(longer.ReadLine(text), 0);
  EXPECT_EQ(text.GetLength(), 7001 - 5998);  // kept
  EXPECT_EQ(longer.ReadLine(text), LFILE_ERR_EOF);
}

TEST(LFile, WritesReachTheFile) {
  TempDir dir;
  const std::string path = dir / "f";
  {
    LFile file(path.c_str(), "wb");
    EXPECT_EQ(file.WriteChar('<'), 0);
    const unsigned char bytes[] = {'a', 0, 'b'};
    EXPECT_EQ(file.Write(3, bytes), 0);
    EXPECT_EQ(file.Write(-1, bytes), 0);
    EXPECT_EQ(file.Write(2, LCString("xyz")), 0);
    LCString sized(3);  // three NUL bytes of text, counted all the same
    EXPECT_EQ(file.Write(3, sized), 0);
    EXPECT_EQ(file.Write(100, LCString("q")), 0);  // cut to "q" and its NUL
  }
  EXPECT_EQ(ReadFile(path), std::string("<a\0bxy\0\0\0q\0", 11));

  LFile readOnly(path.c_str(), "r");
  EXPECT_EQ(readOnly.WriteChar('x'), LFILE_ERR_NOT_WRITABLE);
  EXPECT_EQ(readOnly.Write(1, LCString("x")), LFILE_ERR_NOT_WRITABLE);
}

TEST(LFile, StreamErrorsAreStoredAsFerror) {
  TempDir dir;
  const std::string path = dir / "f";
  WriteFile(path, "abc");
  // fopen reads only the first letter: "rw" opens read-only, "wr" write-only.
  LFile readOnly(path.c_str(), "rw");
  ASSERT_TRUE(readOnly.IsWrite());
  const int code = readOnly.WriteChar('x');
  EXPECT_GT(code, 0);
  EXPECT_EQ(Text(readOnly.GetErrorMessage()), std::strerror(code));
  EXPECT_GT(readOnly.Write(1, LCString("x")), 0);

  LFile writeOnly(path.c_str(), "wr");
  unsigned char byte = 0;
  EXPECT_GT(writeOnly.Read(1, &byte), 0);
  char line[8];
  EXPECT_GT(writeOnly.ReadLine(sizeof line, line), 0);

  LFile directory(dir.path().c_str(), "r");  // reading a directory fails
  LCString text;
  EXPECT_GT(directory.ReadLine(text), 0);
}

TEST(LFile, FailedCloseDropsTheStreamOnce) {
  LFile file("/dev/full", "w");
  ASSERT_TRUE(file.IsOpen());
  EXPECT_EQ(file.WriteChar('x'), 0);  // buffered; the flush in fclose fails
  EXPECT_EQ(file.Close(), ENOSPC);
  EXPECT_EQ(file.GetErrorCode(), ENOSPC);
  EXPECT_FALSE(file.IsOpen());
  EXPECT_STREQ(file.GetFilename(), "/dev/full");
  EXPECT_EQ(file.WriteChar('x'), LFILE_ERR_NOT_OPEN);
  EXPECT_EQ(file.Close(), 0);  // no stream left to close
  EXPECT_EQ(file.GetFilename(), nullptr);
}

TEST(LFile, ProbesOfTheFileSystem) {
  TempDir dir;
  const std::string path = dir / "f";
  const std::string probe = dir / "40.88.26.60.71";
  EXPECT_EQ(LFile::exists(nullptr), 0);
  EXPECT_EQ(LFile::exists(path.c_str()), 0);
  WriteFile(path, "");
  EXPECT_EQ(LFile::exists(path.c_str()), 1);

  EXPECT_EQ(LFile::IsDirectoryWritable(dir.path().c_str()), 1);
  EXPECT_EQ(LFile::exists(probe.c_str()), 0);
  WriteFile(probe, "old");
  EXPECT_EQ(LFile::IsDirectoryWritable((dir.path() + "/").c_str()), 1);
  EXPECT_EQ(LFile::exists(probe.c_str()), 0);  // an earlier file is removed too
  EXPECT_EQ(LFile::IsDirectoryWritable((dir / "none").c_str()), 0);
  EXPECT_EQ(LFile::exists((dir / "none").c_str()), 0);
  EXPECT_EQ(LFile::IsDirectoryWritable(nullptr), 0);
}
