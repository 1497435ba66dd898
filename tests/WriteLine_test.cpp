#include <vq0300/LFile.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <utility>

#include "TestSupport.h"

using testsupport::ReadFile;
using testsupport::TempDir;

namespace {

struct Written {
  int result;
  std::string text;
};

// Runs one WriteLine on a fresh file and returns its result and the bytes
// that reached the file.
template <typename... Args>
Written Write(char const* format, Args... args) {
  TempDir dir;
  const std::string path = dir / "out";
  LFile file(path.c_str(), "w");
  const int result = file.WriteLine(format, args...);
  file.Close();
  return {result, ReadFile(path)};
}

// What the platform's snprintf makes of a format with correctly typed arguments.
template <typename... Args>
std::string Printf(char const* format, Args... args) {
  char buffer[512];
  std::snprintf(buffer, sizeof buffer, format, args...);
  return buffer;
}

#define EXPECT_WRITES(expectedResult, expectedText, ...) \
  do {                                                  \
    const Written w = Write(__VA_ARGS__);               \
    EXPECT_EQ(w.result, expectedResult) << #__VA_ARGS__; \
    EXPECT_EQ(w.text, expectedText) << #__VA_ARGS__;    \
  } while (0)

}  // namespace

TEST(WriteLine, PiecesAndConversions) {
  EXPECT_WRITES(0, "3 items\n", "%d items\n", 3);
  EXPECT_WRITES(0, "a= 1.50 b=x\n", "a=%5.2f b=%s\n", 1.5, "x");
  EXPECT_WRITES(0, "", "");
  EXPECT_WRITES(0, "no conversion\n", "no conversion\n");
  EXPECT_WRITES(0, "12.", "%d%d.", 1, 2);
  EXPECT_WRITES(0, "100%d", "%s", "100%d");  // text is data, never a format
  EXPECT_WRITES(0, Printf("[%-8d|%08.3f|%5s|%.3s|%X|%#x|%+e]", 42, 3.14159, "ab", "abcdef", 255,
                          255, 1.5),
                "[%-8d|%08.3f|%5s|%.3s|%X|%#x|%+e]", 42, 3.14159, "ab", "abcdef", 255, 255, 1.5);
  EXPECT_WRITES(0, "(null)", "%s", static_cast<char const*>(nullptr));
}

TEST(WriteLine, ConversionsRunToTheFirstLetterOfTheSet) {
  EXPECT_WRITES(0, "50% done\n", "50%% done\n", 7);  // "%% d" shows no argument
  EXPECT_WRITES(0, "A done\n", "%c done\n", 'A');    // "%c d" with an int
  EXPECT_WRITES(0, "7 x|", "%i x|", 7);
  EXPECT_WRITES(0, "2.5 e", "%g e", 2.5);
  EXPECT_WRITES(0, "% 5|", "%% %d|", 5);
  EXPECT_WRITES(-2, "", "%u\n", 1);
  EXPECT_WRITES(-2, "7", "%d and %q", 7);  // " and " is not written
  EXPECT_WRITES(-2, "", "abc%");
  EXPECT_WRITES(-2, "", "%%");
}

TEST(WriteLine, IntegersAreThirtyTwoBitPatterns) {
  const long long u32 = 4294967295LL;
  EXPECT_WRITES(0, "4294967295", "%ld", -1);
  EXPECT_WRITES(0, "4294967295", "%lld", -1);
  EXPECT_WRITES(0, Printf("%lld", u32), "%jd", -1);
  EXPECT_WRITES(0, Printf("%llx", u32), "%zx", -1);
  EXPECT_WRITES(0, "ffffffff", "%tx", -1);
  EXPECT_WRITES(0, "-1 ffffffff", "%d %x", -1, -1);
  EXPECT_WRITES(0, Printf("%hd %hhx", 65537, 511), "%hd %hhx", 65537, 511);
  EXPECT_WRITES(0, "2.50", "%.2lf", 2.5);
}

TEST(WriteLine, UnsupportedConversionsFailBeforeTheirText) {
  const char* formats[] = {"ab%*d", "ab%.*d", "ab%nd", "ab%p s", "ab%Lf", "ab%ls", "ab%lc d",
                           "ab%.2c d", "ab%#d", "ab%0s", "ab%1$d", "ab%c %d", "ab%c e",
                           "ab%i s", "ab%5%d", "ab%2147483648d", "ab%'d", "ab%hs", "ab%hhf"};
  for (const char* format : formats) EXPECT_WRITES(-2, "", format, 1);
  EXPECT_WRITES(-2, "1", "%d then %Lf", 1, 2.0);

  const std::string fits = "%" + std::string(251, '0') + "1d";  // 254 characters
  const std::string tooLong = "%" + std::string(252, '0') + "1d";
  EXPECT_WRITES(0, "7", fits.c_str(), 7);
  EXPECT_WRITES(-2, "", tooLong.c_str(), 7);
  EXPECT_WRITES(-2, "", static_cast<char const*>(nullptr));

  TempDir dir;
  LFile file((dir / "f").c_str(), "w");
  EXPECT_EQ(file.WriteLine("%u"), LFILE_ERR_FORMAT);
  EXPECT_STREQ(file.GetErrorMessage(), "Unsupported print format.");
  EXPECT_EQ(file.WriteLine("fine"), 0);  // each call starts with code 0
}

TEST(WriteLine, ReadinessIsTestedBeforeTheFormat) {
  TempDir dir;
  const std::string path = dir / "f";
  LFile closed;
  EXPECT_EQ(closed.WriteLine("%u"), LFILE_ERR_NOT_OPEN);
  LFile file(path.c_str(), "w");
  file.Close();
  LFile readOnly(path.c_str(), "r");
  EXPECT_EQ(readOnly.WriteLine("%u"), LFILE_ERR_NOT_WRITABLE);
  EXPECT_STREQ(readOnly.GetErrorMessage(), "File not writable.");
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
  EXPECT_EQ(other.GetErrorCode(), 1);
}
