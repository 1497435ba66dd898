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

// Stores any code, as a derived class using the hook below -100 would.
class CodedFile : public LFile {
 public:
  void Store(int code) { m_nErrorCode = code; }
  char const* OnGetErrorMessage() override { return "derived text"; }
};

}  // namespace

TEST(LFile, EveryCodeHasItsText) {
  CodedFile file;
  EXPECT_STREQ(file.GetErrorMessage(), "No Error!");
  EXPECT_EQ(file.LFile::OnGetErrorMessage(), nullptr);
  const std::pair<int, const char*> rows[] = {
      {-1, "LFile conflict : Unable to open file."},
      {-2, "Unsupported print format."},
      {-3, "File not opened."},
      {-4, "File not readable."},
      {-5, "File not writable."},
      {-6, "End Of File Reached."},
      {-7, "Invalid Filename."},
      {-8, "Unknown error."},
      {-100, "Unknown error."},
      {-101, "derived text"},
      {EACCES, std::strerror(EACCES)}};  // positive with no stream: strerror all the same
  for (const auto& [code, text] : rows) {
    file.Store(code);
    EXPECT_EQ(Text(file.GetErrorMessage()), text) << code;
  }
}

TEST(LFile, ConstructionAndCloseMoveBetweenStates) {
  TempDir dir;
  const std::string missing = dir / "missing";
  LFile named(missing.c_str(), "r");
  EXPECT_EQ(named.GetErrorCode(), ENOENT);
  EXPECT_EQ(Text(named.GetFilename()), missing);
  EXPECT_FALSE(named.IsOpen() || named.IsRead());
  EXPECT_EQ(named.Close(), 0);  // releases the name, keeps the code
  EXPECT_EQ(named.GetFilename(), nullptr);
  EXPECT_EQ(named.GetErrorCode(), ENOENT);

  LFile nameless(nullptr, "r");
  EXPECT_EQ(nameless.GetErrorCode(), LFILE_ERR_FILENAME);
  EXPECT_EQ(nameless.GetFilename(), nullptr);

  LFile open((dir / "f").c_str(), "w");
  EXPECT_EQ(open.Close(), 0);
  EXPECT_TRUE(open.IsWrite() && !open.IsOpen());  // the flags outlive Close
}

TEST(LFile, ModeLettersGiveFlags) {
  TempDir dir;
  const std::string path = dir / "f";
  WriteFile(path, "x");
  // Read, write, binary, append.
  const std::pair<const char*, std::string> rows[] = {
      {"r", "1000"},  {"rb", "1010"}, {"wt", "0100"}, {"at", "0101"},  {"wb", "0110"},
      {"ab", "0111"}, {"r+", "1100"}, {"a+", "1101"}, {"rb+", "1110"}, {"w+b", "1110"}};
  LFile file;
  for (const auto& [mode, flags] : rows) {
    ASSERT_EQ(file.Open(path.c_str(), mode, true), 0) << mode;
    std::string got;
    for (bool flag : {file.IsRead(), file.IsWrite(), file.IsBinary(), file.IsAppend()}) {
      got += flag ? '1' : '0';
    }
    EXPECT_EQ(got, flags) << mode;
  }
  EXPECT_EQ(file.Open(file.GetFilename(), "r", true), 0);  // its own name is copied first
  EXPECT_EQ(Text(file.GetFilename()), path);
}

TEST(LFile, RefusedOpenWipesTheFlagsOfTheOpenStream) {
  TempDir dir;
  const std::string path = dir / "f";
  WriteFile(path, "abc");
  LFile file(path.c_str(), "r+");
  EXPECT_EQ(file.Open(path.c_str(), "r", false), LFILE_ERR_CONFLICT);
  EXPECT_TRUE(file.IsOpen());
  unsigned char byte = 0;
  EXPECT_EQ(file.Read(1, &byte), LFILE_ERR_NOT_READABLE);
  EXPECT_EQ(file.WriteChar('x'), LFILE_ERR_NOT_WRITABLE);
  EXPECT_EQ(file.Open(nullptr, "r", true), LFILE_ERR_FILENAME);
  EXPECT_EQ(Text(file.GetFilename()), path);
}

TEST(LFile, StoredCodeOutlivesCloseAndStopsOpen) {
  TempDir dir;
  const std::string first = dir / "first", second = dir / "second";
  WriteFile(first, "1");
  WriteFile(second, "2");
  LFile file(first.c_str(), "r");
  unsigned char byte = 0;
  EXPECT_EQ(file.Read(1, &byte), 0);  // reaches exactly the last byte
  EXPECT_EQ(file.Read(1, &byte), 0);  // hits the end, nothing transferred
  EXPECT_EQ(file.Read(1, &byte), LFILE_ERR_EOF);
  EXPECT_EQ(file.Open(second.c_str(), "r", true), LFILE_ERR_EOF);
  EXPECT_FALSE(file.IsOpen());  // the old file closed, the new one not opened
  EXPECT_EQ(file.GetFilename(), nullptr);

  EXPECT_EQ(file.Open((dir / "missing").c_str(), "r", true), ENOENT);
  EXPECT_EQ(file.Open(first.c_str(), "r", true), 0);
  EXPECT_EQ(file.GetErrorCode(), ENOENT);  // kept by the good Open
  EXPECT_EQ(file.ValidRead(), ENOENT);     // tests nothing but the code
  EXPECT_EQ(file.Read(1, &byte), 0);       // clears it first
  EXPECT_EQ(file.Read(1, &byte), 0);
  EXPECT_EQ(file.Read(1, &byte), LFILE_ERR_EOF);
  EXPECT_EQ(file.Rewind(), 0);  // clears the end and the code
  EXPECT_EQ(file.Open(second.c_str(), "r", true), 0);
}

TEST(LFile, ReadCharAndReadLineAtTheEnd) {
  TempDir dir;
  WriteFile(dir / "ended", "one\n");
  WriteFile(dir / "open", "abcdef");
  WriteFile(dir / "long", std::string(7000, 'x') + "\n");
  LFile ended((dir / "ended").c_str(), "r");
  char buffer[8] = "";
  EXPECT_EQ(ended.ReadLine(sizeof buffer, buffer), 0);
  EXPECT_STREQ(buffer, "one\n");
  EXPECT_EQ(ended.ReadLine(sizeof buffer, buffer), 0);  // nothing left, buffer kept
  EXPECT_STREQ(buffer, "one\n");
  EXPECT_EQ(ended.ReadLine(sizeof buffer, buffer), LFILE_ERR_EOF);

  LFile open((dir / "open").c_str(), "r");
  LCString text;
  EXPECT_EQ(open.ReadLine(4, buffer), 0);
  EXPECT_STREQ(buffer, "abc");
  EXPECT_EQ(open.ReadLine(text), 0);
  EXPECT_STREQ(text.c_str(), "def");
  EXPECT_EQ(open.ReadLine(text), LFILE_ERR_EOF);  // no line end: the end at once

  LFile longer((dir / "long").c_str(), "r");
  for (int length : {5998, 1003, 1003}) {  // the third call delivers nothing
    EXPECT_EQ(longer.ReadLine(text), 0);
    EXPECT_EQ(text.GetLength(), length);
  }
  EXPECT_EQ(longer.ReadLine(text), LFILE_ERR_EOF);

  char c = 0;
  LFile chars((dir / "open").c_str(), "rb");
  for (char expected : std::string("abcdef\xFF")) {  // the call that hits the end stores 0xFF
    EXPECT_EQ(chars.ReadChar(c), 0);
    EXPECT_EQ(c, expected);
  }
  EXPECT_EQ(chars.ReadChar(c), -1);  // where Read and ReadLine give -6
  EXPECT_EQ(chars.GetErrorCode(), 0);
  EXPECT_EQ(LFile().ReadChar(c), LFILE_ERR_NOT_OPEN);
  EXPECT_EQ(LFile().Rewind(), LFILE_ERR_NOT_OPEN);
  EXPECT_EQ(LFile((dir / "w").c_str(), "w").ReadChar(c), LFILE_ERR_NOT_READABLE);
}

TEST(LFile, WritesReachTheFile) {
  TempDir dir;
  const std::string path = dir / "f";
  {
    LFile file(path.c_str(), "wb");
    const unsigned char bytes[] = {'a', 0, 'b'};
    EXPECT_EQ(file.WriteChar('<'), 0);
    EXPECT_EQ(file.Write(3, bytes), 0);
    EXPECT_EQ(file.Write(2, LCString("xyz")), 0);
    EXPECT_EQ(file.Write(2, LCString(3)), 0);      // NUL text, counted all the same
    EXPECT_EQ(file.Write(100, LCString("q")), 0);  // cut to "q" and its NUL
  }
  EXPECT_EQ(ReadFile(path), std::string("<a\0bxy\0\0q\0", 10));
  LFile readOnly(path.c_str(), "r");
  EXPECT_EQ(readOnly.Write(1, LCString("x")), LFILE_ERR_NOT_WRITABLE);
}

TEST(LFile, StreamErrorsAreStoredAsFerror) {
  TempDir dir;
  const std::string path = dir / "f";
  WriteFile(path, "abc");
  // fopen reads the first letter only: "rw" opens read-only, "wr" write-only.
  LFile readOnly(path.c_str(), "rw");
  const int code = readOnly.WriteChar('x');
  EXPECT_GT(code, 0);
  EXPECT_EQ(Text(readOnly.GetErrorMessage()), std::strerror(code));
  LFile writeOnly(path.c_str(), "wr");
  unsigned char byte = 0;
  EXPECT_GT(writeOnly.Read(1, &byte), 0);
  LFile directory(dir.path().c_str(), "r");
  LCString text;
  EXPECT_GT(directory.ReadLine(text), 0);
}

TEST(LFile, FailedCloseDropsTheStreamOnce) {
  LFile file("/dev/full", "w");
  EXPECT_EQ(file.WriteChar('x'), 0);  // buffered: the flush in fclose fails
  EXPECT_EQ(file.Close(), ENOSPC);
  EXPECT_FALSE(file.IsOpen());
  EXPECT_STREQ(file.GetFilename(), "/dev/full");
  EXPECT_EQ(file.Close(), 0);  // no stream left to close
  EXPECT_EQ(file.GetFilename(), nullptr);
}

TEST(LFile, ProbesOfTheFileSystem) {
  TempDir dir;
  const std::string probe = dir / "40.88.26.60.71";
  EXPECT_EQ(LFile::exists(nullptr), 0);
  EXPECT_EQ(LFile::exists(probe.c_str()), 0);
  WriteFile(probe, "old");
  EXPECT_EQ(LFile::exists(probe.c_str()), 1);
  EXPECT_EQ(LFile::IsDirectoryWritable((dir.path() + "/").c_str()), 1);
  EXPECT_EQ(LFile::exists(probe.c_str()), 0);  // truncated and removed
  EXPECT_EQ(LFile::IsDirectoryWritable((dir / "none").c_str()), 0);
  EXPECT_EQ(LFile::exists((dir / "none").c_str()), 0);
  EXPECT_EQ(LFile::IsDirectoryWritable(nullptr), 0);
}
