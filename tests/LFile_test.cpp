// LFile: states, the stored code and its texts, reading and writing, and the
// format scan of WriteLine.
#include <vq0300/LFile.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>

#include "TestSupport.h"

using testsupport::ReadFile;
using testsupport::TempDir;
using testsupport::WriteFile;

namespace {

// Stores any code, as a derived class using the hook below -100 would.
class CodedFile : public LFile {
 public:
  void Store(int code) { m_nErrorCode = code; }
  char const* OnGetErrorMessage() override { return "derived text"; }
};

// Raises mode flags the way a derived class may.
class FlagFile : public LFile {
 public:
  void Raise(std::uint8_t flags) { m_byMode |= flags; }
};

// m_byMode of any LFile, read through the protected member's pointer.
struct ModeReader : LFile {
  static int Of(const LFile& f) { return f.*(&ModeReader::m_byMode); }
};
int ModeOf(const LFile& f) { return ModeReader::Of(f); }

// "Empty", "Named" or "Open", the flags read, write, binary, append, and the
// stored code, as "Open +-+- 0".
std::string State(LFile& f) {
  std::string out = f.IsOpen() ? "Open " : f.GetFilename() != nullptr ? "Named " : "Empty ";
  for (bool flag : {f.IsRead(), f.IsWrite(), f.IsBinary(), f.IsAppend()}) out += flag ? '+' : '-';
  return out + " " + std::to_string(f.GetErrorCode());
}

// A call's result and the state it leaves, as "0 Open +--- 0".
std::string After(int result, LFile& f) { return std::to_string(result) + " " + State(f); }

// One WriteLine on a fresh file: "result:bytes written".
template <typename... Args>
std::string Write(char const* format, Args... args) {
  TempDir dir;
  LFile file((dir / "out").c_str(), "w");
  const int result = file.WriteLine(format, args...);
  file.Close();
  return std::to_string(result) + ":" + ReadFile(dir / "out");
}

// What the platform's snprintf makes of a format with correctly typed arguments.
template <typename... Args>
std::string Printf(char const* format, Args... args) {
  char buffer[256];
  std::snprintf(buffer, sizeof buffer, format, args...);
  return std::string("0:") + buffer;
}

}  // namespace

TEST(LFile, EveryCodeHasItsText) {
  CodedFile file;
  EXPECT_EQ(file.LFile::OnGetErrorMessage(), nullptr);
  std::string texts;
  for (int code : {0, -1, -2, -3, -4, -5, -6, -7, -8, -100, -101, EACCES}) {
    file.Store(code);
    texts += file.GetErrorMessage() + std::string("|");
  }
  EXPECT_EQ(texts,
            "No Error!|LFile conflict : Unable to open file.|Unsupported print format.|"
            "File not opened.|File not readable.|File not writable.|End Of File Reached.|"
            "Invalid Filename.|Unknown error.|Unknown error.|derived text|" +
                std::string(std::strerror(EACCES)) + "|");  // positive: strerror, no stream
}

TEST(LFile, StatesAndTheStoredCodeThatStopsOpen) {
  TempDir dir;
  const std::string path = dir / "f", enoent = std::to_string(ENOENT);
  LFile file((dir / "missing").c_str(), "r");
  EXPECT_EQ(State(file), "Named ---- " + enoent);
  // The code outlives Close, and a good Open does not touch it either.
  EXPECT_EQ(After(file.Close(), file), "0 Empty ---- " + enoent);
  WriteFile(path, "1");
  EXPECT_EQ(After(file.Open(path.c_str(), "r", true), file), "0 Open +--- " + enoent);
  EXPECT_EQ(file.ValidRead(), ENOENT);  // which tests nothing but the code
  unsigned char byte = 0;
  for (int expected : {0, 0, LFILE_ERR_EOF}) EXPECT_EQ(file.Read(1, &byte), expected);
  // The old file is closed, the new one not opened.
  EXPECT_EQ(After(file.Open(path.c_str(), "w", true), file), "-6 Empty ---- -6");
  // With no stream held the code is not looked at; Rewind clears it.
  EXPECT_EQ(file.Open(path.c_str(), "r", true), 0);
  EXPECT_EQ(After(file.Rewind(), file), "0 Open +--- 0");
  EXPECT_EQ(file.Open(path.c_str(), "w", true), 0);
  EXPECT_EQ(After(file.Close(), file), "0 Empty -+-- 0");  // the flags outlive Close
  LFile nameless(nullptr, "r");
  EXPECT_EQ(State(nameless), "Empty ---- -7");
}

TEST(LFile, ModeTextsGiveTheFlagsOfTheirLetters) {
  TempDir dir;
  const std::string path = dir / "f";
  WriteFile(path, "");
  LFile file;
  // Every letter counts wherever it stands; "a" adds write and nothing else.
  // fopen refuses texts that do not start with r, w or a, and a refused
  // Open leaves no flags.
  struct Row {
    char const* mode;
    int result;
    int flags;
  };
  const Row table[] = {{"r", 0, 2},        {"rb", 0, 3},     {"w", 0, 4},   {"a", 0, 4},
                       {"wt", 0, 4},       {"at", 0, 4},     {"wb", 0, 5},  {"ab", 0, 5},
                       {"r+", 0, 6},       {"w+", 0, 6},     {"a+", 0, 6},  {"r+b", 0, 7},
                       {"rb+", 0, 7},      {"w+b", 0, 7},    {"a+b", 0, 7}, {"ba", EINVAL, 0},
                       {"tab", EINVAL, 0}, {"+a", EINVAL, 0}};
  for (const Row& row : table) {
    file.Close();
    EXPECT_EQ(file.Open(path.c_str(), row.mode, true), row.result) << row.mode;
    EXPECT_EQ(ModeOf(file), row.flags) << row.mode;
    EXPECT_FALSE(file.IsAppend()) << row.mode;
  }
}

TEST(LFile, IsAppendReadsTheFlagAsItStands) {
  TempDir dir;
  FlagFile file;
  ASSERT_EQ(file.Open((dir / "f").c_str(), "a", true), 0);
  EXPECT_FALSE(file.IsAppend());
  file.Raise(LFILE_MODE_APPEND);
  EXPECT_TRUE(file.IsAppend());
  EXPECT_TRUE(file.IsWrite());
  ASSERT_EQ(file.Open((dir / "f").c_str(), "a+", true), 0);  // Open starts from no flags
  EXPECT_FALSE(file.IsAppend());
}

TEST(LFile, ModeLettersGiveFlags) {
  TempDir dir;
  const std::string path = dir / "f";
  LFile file;
  for (const auto& [mode, state] : {std::pair{"wt", "0 Open -+-- 0"},
                                    {"r", "0 Open +--- 0"},
                                    {"a+b", "0 Open +++- 0"},
                                    {"rb+", "0 Open +++- 0"}}) {
    EXPECT_EQ(After(file.Open(path.c_str(), mode, true), file), state) << mode;
  }
  EXPECT_EQ(file.Open(file.GetFilename(), "r", true), 0);  // its own name is copied first
  EXPECT_STREQ(file.GetFilename(), path.c_str());
  // A refused Open wipes the flags of the stream it leaves open.
  EXPECT_EQ(After(file.Open(path.c_str(), "r+", false), file), "-1 Open ---- -1");
  EXPECT_EQ(file.Open(nullptr, "r", true), LFILE_ERR_FILENAME);
  unsigned char byte = 0;
  EXPECT_EQ(file.Read(1, &byte), LFILE_ERR_NOT_READABLE);
  EXPECT_EQ(file.WriteChar('x'), LFILE_ERR_NOT_WRITABLE);
  EXPECT_STREQ(file.GetFilename(), path.c_str());
}

TEST(LFile, ReadingToTheEnd) {
  TempDir dir;
  const std::string path = dir / "f";
  WriteFile(path, "abcdef\n");
  LFile lines(path.c_str(), "r");
  char buffer[8] = "";
  LCString text;
  EXPECT_EQ(lines.ReadLine(4, buffer), 0);
  EXPECT_EQ(lines.ReadLine(text), 0);
  EXPECT_EQ(lines.ReadLine(sizeof buffer, buffer), 0);  // nothing left, buffer kept
  EXPECT_EQ(lines.ReadLine(text), LFILE_ERR_EOF);
  EXPECT_EQ(buffer + std::string("|") + text.c_str(), "abc|def\n");
  // ReadChar stores 0xFF at the end, then gives -1 where Read and ReadLine give -6.
  char c = 0;
  std::string chars;
  LFile bytes(path.c_str(), "rb");
  int result = 0;
  while ((result = bytes.ReadChar(c)) == 0) chars += c;
  EXPECT_EQ(chars + " " + After(result, bytes), "abcdef\n\xFF -1 Open +-+- 0");
  EXPECT_EQ(bytes.Rewind(), 0);
  EXPECT_EQ(bytes.ReadChar(c), 0);
  EXPECT_EQ(c, 'a');
  EXPECT_EQ(LFile().ReadChar(c), LFILE_ERR_NOT_OPEN);
  // A longer line than ReadLine(LCString&) takes arrives over several calls.
  WriteFile(path, std::string(7000, 'x') + "\n");
  LFile longer(path.c_str(), "r");
  std::string lengths;
  while (longer.ReadLine(text) == 0) lengths += std::to_string(text.GetLength()) + " ";
  EXPECT_EQ(lengths, "5998 1003 1003 ");  // the third call delivers nothing
}

TEST(LFile, WritesReachTheFile) {
  TempDir dir;
  const std::string path = dir / "f";
  LFile file(path.c_str(), "wb");
  const unsigned char bytes[] = {'a', 0, 'b'};
  EXPECT_EQ(file.WriteChar('<'), 0);
  EXPECT_EQ(file.Write(3, bytes), 0);
  // An LCString gives count bytes of its buffer, NUL bytes included, but no
  // more than the buffer holds with its terminator.
  EXPECT_EQ(file.Write(2, LCString("xyz")), 0);
  EXPECT_EQ(file.Write(2, LCString(3)), 0);
  EXPECT_EQ(file.Write(100, LCString("q")), 0);
  EXPECT_EQ(file.Close(), 0);
  EXPECT_EQ(ReadFile(path), std::string("<a\0bxy\0\0q\0", 10));
  EXPECT_EQ(LFile(path.c_str(), "r").Write(1, LCString("x")), LFILE_ERR_NOT_WRITABLE);
}

TEST(LFile, StreamErrorsAreStoredAsFerror) {
  TempDir dir;
  const std::string path = dir / "f";
  WriteFile(path, "abc");
  // fopen reads the first letter only: "rw" opens read-only, "wr" write-only,
  // while the object takes both as readable and writable.
  unsigned char byte = 0;
  LCString text;
  EXPECT_GT(LFile(path.c_str(), "rw").WriteChar('x'), 0);
  EXPECT_GT(LFile(path.c_str(), "wr").Read(1, &byte), 0);
  EXPECT_GT(LFile(dir.path().c_str(), "r").ReadLine(text), 0);  // a directory
  // WriteLine tests every piece and value but the last piece.
  LFile file(path.c_str(), "rw");
  EXPECT_EQ(file.WriteLine("text only"), 0);
  EXPECT_EQ(file.WriteLine("x%d", 1), 1);  // the indicator stands: the first piece fails
  EXPECT_EQ(LFile(path.c_str(), "rw").WriteLine("%d", 1), 1);  // the value fails
}

TEST(LFile, FailedCloseDropsTheStreamOnce) {
  LFile file("/dev/full", "w");
  const std::string enospc = std::to_string(ENOSPC);
  EXPECT_EQ(file.WriteChar('x'), 0);  // buffered: the flush in fclose fails
  EXPECT_EQ(After(file.Close(), file), enospc + " Named -+-- " + enospc);
  EXPECT_EQ(After(file.Close(), file), "0 Empty -+-- " + enospc);  // no stream left to close
}

TEST(LFile, ProbesOfTheFileSystem) {
  TempDir dir;
  const std::string probe = dir / "40.88.26.60.71";
  WriteFile(probe, "old");
  EXPECT_EQ(LFile::exists(probe.c_str()), 1);
  EXPECT_EQ(LFile::IsDirectoryWritable((dir.path() + "/").c_str()), 1);
  EXPECT_EQ(LFile::exists(probe.c_str()), 0);  // truncated and removed
  EXPECT_EQ(LFile::IsDirectoryWritable((dir / "none").c_str()), 0);
  EXPECT_EQ(LFile::exists(nullptr) + LFile::IsDirectoryWritable(nullptr), 0);
}

TEST(WriteLine, PiecesAndConversions) {
  EXPECT_EQ(Write("%d items\n", 3), "0:3 items\n");
  EXPECT_EQ(Write("a=%5.2f b=%s\n", 1.5, "x"), "0:a= 1.50 b=x\n");
  EXPECT_EQ(Write("%s", "100%d"), "0:100%d");  // the text is data, never a format
  EXPECT_EQ(Write("%s", static_cast<char const*>(nullptr)), "0:(null)");
  EXPECT_EQ(Write("[%-8d|%08.3f|%.3s|%X|%#x|%+e]", 42, 3.14159, "abcdef", 255, 255, 1.5),
            Printf("[%-8d|%08.3f|%.3s|%X|%#x|%+e]", 42, 3.14159, "abcdef", 255, 255, 1.5));
  // A conversion runs to the first letter of "dfxXes", which alone takes the argument.
  EXPECT_EQ(Write("50%% done\n", 7), "0:50% done\n");  // "%% d" shows no argument
  EXPECT_EQ(Write("%c done\n", 'A'), "0:A done\n");    // "%c d" with an int
  EXPECT_EQ(Write("%g e|%% %d", 2.5, 5), "0:2.5 e|% 5");
  EXPECT_EQ(Write("%u\n", 1), "-2:");
  EXPECT_EQ(Write("%d and %q", 7), "-2:7");  // " and " is not written
  EXPECT_EQ(Write("abc%"), "-2:");
  // The int is a 32-bit pattern; l ll j z t widen it unsigned.
  EXPECT_EQ(Write("%ld %lld %jd %zd %tx", -1, -1, -1, -1, -1),
            "0:4294967295 4294967295 4294967295 4294967295 ffffffff");
  EXPECT_EQ(Write("%d %x %hd %hhx %.2lf", -1, -1, 65537, 511, 2.5),
            Printf("%d %x %hd %hhx %.2f", -1, -1, 65537, 511, 2.5));
}

TEST(WriteLine, UnsafeConversionsFailBeforeTheirText) {
  for (const char* format : {"ab%*d", "ab%.*d", "ab%nd", "ab%p s", "ab%Lf", "ab%ls", "ab%lc d",
                             "ab%.2c d", "ab%#d", "ab%0s", "ab%1$d", "ab%c %d", "ab%c e", "ab%i s",
                             "ab%5%d", "ab%2147483648d", "ab%'d", "ab%hhf"}) {
    EXPECT_EQ(Write(format, 1), "-2:") << format;
  }
  EXPECT_EQ(Write(("%" + std::string(251, '0') + "1d").c_str(), 7), "0:7");  // 254 characters
  EXPECT_EQ(Write(("%" + std::string(252, '0') + "1d").c_str(), 7), "-2:");
  EXPECT_EQ(Write(static_cast<char const*>(nullptr)), "-2:");
}

TEST(WriteLine, ReadinessComesBeforeTheFormat) {
  TempDir dir;
  EXPECT_EQ(LFile().WriteLine("%u"), LFILE_ERR_NOT_OPEN);
  LFile file((dir / "f").c_str(), "w");
  EXPECT_EQ(file.WriteLine("%u"), LFILE_ERR_FORMAT);
  EXPECT_EQ(file.WriteLine("fine"), 0);  // the old code does not block
  EXPECT_EQ(LFile((dir / "f").c_str(), "r").WriteLine("%u"), LFILE_ERR_NOT_WRITABLE);
}
