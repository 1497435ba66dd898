#include <vq0300/LFile.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "TestSupport.h"

using testsupport::TempDir;

namespace {

// One WriteLine on a fresh file: its result, then the bytes that reached the
// file, as "result:text".
template <typename... Args>
std::string Write(char const* format, Args... args) {
  TempDir dir;
  const std::string path = dir / "out";
  LFile file(path.c_str(), "w");
  const int result = file.WriteLine(format, args...);
  file.Close();
  return std::to_string(result) + ":" + testsupport::ReadFile(path);
}

// What the platform's snprintf makes of a format with correctly typed arguments.
template <typename... Args>
std::string Printf(char const* format, Args... args) {
  char buffer[256];
  std::snprintf(buffer, sizeof buffer, format, args...);
  return std::string("0:") + buffer;
}

}  // namespace

TEST(WriteLine, PiecesAndConversions) {
  EXPECT_EQ(Write("%d items\n", 3), "0:3 items\n");
  EXPECT_EQ(Write("a=%5.2f b=%s\n", 1.5, "x"), "0:a= 1.50 b=x\n");
  EXPECT_EQ(Write(""), "0:");
  EXPECT_EQ(Write("%d%d.", 1, 2), "0:12.");
  EXPECT_EQ(Write("%s", "100%d"), "0:100%d");  // the text is data, never a format
  EXPECT_EQ(Write("%s", static_cast<char const*>(nullptr)), "0:(null)");
  EXPECT_EQ(Write("[%-8d|%08.3f|%.3s|%X|%#x|%+e]", 42, 3.14159, "abcdef", 255, 255, 1.5),
            Printf("[%-8d|%08.3f|%.3s|%X|%#x|%+e]", 42, 3.14159, "abcdef", 255, 255, 1.5));
}

TEST(WriteLine, ConversionsRunToTheFirstLetterOfTheSet) {
  EXPECT_EQ(Write("50%% done\n", 7), "0:50% done\n");  // "%% d" shows no argument
  EXPECT_EQ(Write("%c done\n", 'A'), "0:A done\n");    // "%c d" with an int
  EXPECT_EQ(Write("%g e|%% %d", 2.5, 5), "0:2.5 e|% 5");
  EXPECT_EQ(Write("%u\n", 1), "-2:");
  EXPECT_EQ(Write("%d and %q", 7), "-2:7");  // " and " is not written
  EXPECT_EQ(Write("abc%"), "-2:");
  EXPECT_EQ(Write("%%"), "-2:");
}

TEST(WriteLine, IntegersAreThirtyTwoBitPatterns) {
  EXPECT_EQ(Write("%ld %lld %jd %zd", -1, -1, -1, -1),
            "0:4294967295 4294967295 4294967295 4294967295");
  EXPECT_EQ(Write("%d %x %tx %lx", -1, -1, -1, -1), "0:-1 ffffffff ffffffff ffffffff");
  EXPECT_EQ(Write("%hd %hhx %.2lf", 65537, 511, 2.5), Printf("%hd %hhx %.2f", 65537, 511, 2.5));
}

TEST(WriteLine, UnsupportedConversionsFailBeforeTheirText) {
  for (const char* format : {"ab%*d", "ab%.*d", "ab%nd", "ab%p s", "ab%Lf", "ab%ls", "ab%lc d",
                             "ab%.2c d", "ab%#d", "ab%0s", "ab%1$d", "ab%c %d", "ab%c e", "ab%i s",
                             "ab%5%d", "ab%2147483648d", "ab%'d", "ab%hhf"}) {
    EXPECT_EQ(Write(format, 1), "-2:") << format;
  }
  EXPECT_EQ(Write("%d then %Lf", 1, 2.0), "-2:1");
  EXPECT_EQ(Write(("%" + std::string(251, '0') + "1d").c_str(), 7), "0:7");  // 254 characters
  EXPECT_EQ(Write(("%" + std::string(252, '0') + "1d").c_str(), 7), "-2:");
  EXPECT_EQ(Write(static_cast<char const*>(nullptr)), "-2:");
}

TEST(WriteLine, ReadinessComesBeforeTheFormatAndCodesStartAtZero) {
  TempDir dir;
  const std::string path = dir / "f";
  LFile closed;
  EXPECT_EQ(closed.WriteLine("%u"), LFILE_ERR_NOT_OPEN);
  LFile file(path.c_str(), "w");
  EXPECT_EQ(file.WriteLine("%u"), LFILE_ERR_FORMAT);
  EXPECT_STREQ(file.GetErrorMessage(), "Unsupported print format.");
  EXPECT_EQ(file.WriteLine("fine"), 0);
  LFile readOnly(path.c_str(), "r");
  EXPECT_EQ(readOnly.WriteLine("%u"), LFILE_ERR_NOT_WRITABLE);
}

TEST(WriteLine, StreamErrorsEndTheScanExceptAfterTheLastPiece) {
  TempDir dir;
  const std::string path = dir / "f";
  testsupport::WriteFile(path, "");
  // "rw" opens read-only underneath, while the object takes it as writable.
  LFile file(path.c_str(), "rw");
  EXPECT_EQ(file.WriteLine("%d", 1), 1);  // the empty piece passes, the value fails
  LFile other(path.c_str(), "rw");
  EXPECT_EQ(other.WriteLine("text only"), 0);  // the last piece is not tested
  EXPECT_EQ(other.WriteLine("x%d", 1), 1);     // the indicator stands: first piece
}
