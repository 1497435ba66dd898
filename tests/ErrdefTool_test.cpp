// Runs the vq0300-errdef tool on small definition files and checks its table
// against what the library's loader gives for the same file.
#include <vq0300/ErrorElement.h>
#include <vq0300/ErrorHandler.h>

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "TestSupport.h"

using testsupport::ReadFile;
using testsupport::TempDir;
using testsupport::WriteFile;

namespace {

#ifdef VQ0300_ERRDEF  // the path of the built tool

#define HEAD "<ErrorMessageDefinition>\n"  // line 1 of every file below

struct ToolRun {
  int status = -1;
  std::string out;
  std::string err;
};

std::string Quote(const std::string& text) { return "'" + text + "'"; }

// Runs the tool with args (already quoted) from the directory cwd (dir when
// empty), after the shell command before, if any.
ToolRun RunTool(const TempDir& dir, const std::string& args, const std::string& cwd = "",
                const std::string& before = "") {
  const std::string command = "cd " + Quote(cwd.empty() ? dir.path() : cwd) + " && " + before +
                              Quote(VQ0300_ERRDEF) + " " + args + " >" + Quote(dir / "out") +
                              " 2>" + Quote(dir / "err");
  const int status = std::system(command.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(dir / "out"),
          ReadFile(dir / "err")};
}

// The table rows of the output as "line code continue message".
std::vector<std::string> Rows(const std::string& out) {
  static const std::regex row(R"re( *(\d+)  ([0-9A-F]{8}) +\d+ +\d+ +(\d)  "(.*)")re");
  std::vector<std::string> rows;
  std::istringstream lines(out);
  std::smatch m;
  for (std::string line; std::getline(lines, line);) {
    if (std::regex_match(line, m, row))
      rows.push_back(m[1].str() + " " + m[2].str() + " " + m[3].str() + " " + m[4].str());
  }
  return rows;
}

// Every row whose code comes first in the table is the element that the
// library's own load of the file finds for that code.
void ExpectLoaderAgrees(const TempDir& dir, int selector, const std::vector<std::string>& rows) {
  ErrorHandler handler;
  handler.SetDefaultDir(dir.path().c_str());
  std::string name = "defs.txt";
  ASSERT_EQ(handler.Initialize(name.data(), selector), 0);
  std::vector<unsigned long> seen;
  for (const std::string& row : rows) {
    std::istringstream fields(row);
    int line = 0, cont = 0;
    std::string code;
    fields >> line >> code >> cont;
    const unsigned long value = std::stoul(code, nullptr, 16);
    if (std::find(seen.begin(), seen.end(), value) != seen.end()) continue;
    seen.push_back(value);
    ErrorElement* element = handler.GetErrorElement(value & 0xFFFF, value >> 16);
    ASSERT_NE(element, nullptr) << row;
    EXPECT_EQ(row, std::to_string(line) + " " + code + " " + std::to_string(element->m_wContinue) +
                       " " + element->GetErrorMessage());
  }
}

struct WarningCase {
  const char* name;
  const char* file;
  int selector;
  std::vector<std::string> rows;      // "line code continue message"
  std::vector<std::string> warnings;  // "line: start of the warning text"
};

void PrintTo(const WarningCase& c, std::ostream* os) { *os << c.name; }

class ErrdefToolWarning : public testing::TestWithParam<WarningCase> {};

TEST_P(ErrdefToolWarning, FiresWhereTheLoaderMisreads) {
  const WarningCase& c = GetParam();
  TempDir dir;
  WriteFile(dir / "defs.txt", c.file);
  const std::string block = c.selector == -1 ? "" : " --block " + std::to_string(c.selector);
  const ToolRun run = RunTool(dir, "defs.txt" + block);
  EXPECT_EQ(run.status, 1) << run.out << run.err;
  EXPECT_EQ(Rows(run.out), c.rows) << run.out;
  ExpectLoaderAgrees(dir, c.selector, Rows(run.out));
  std::vector<std::string> warnings;
  std::istringstream lines(run.out);
  for (std::string line; std::getline(lines, line);) {
    if (line.find(": warning: ") != std::string::npos) warnings.push_back(line);
  }
  ASSERT_EQ(warnings.size(), c.warnings.size()) << run.out;
  for (size_t i = 0; i < warnings.size(); ++i) {
    const std::string& w = c.warnings[i];
    const size_t colon = w.find(": ");
    const std::string expected = "defs.txt" + (colon == 0 ? "" : ":" + w.substr(0, colon)) +
                                 ": warning: " + w.substr(colon + 2);
    EXPECT_EQ(warnings[i].substr(0, expected.size()), expected);
  }
  EXPECT_NE(run.out.find("\n" + std::to_string(warnings.size()) + " warning"), std::string::npos);
}

// clang-format off
const WarningCase kWarningCases[] = {
    {"OffsetInMessage", HEAD "Offset<S/>100<E/>\n1<S/>A<S/>STOP<E/>\n2<S/>No Offset<S/>STOP<E/>\n"
     "3<S/>C<S/>STOP<E/>\n", -1,
     {"3 00640001 0 A", "5 00000003 0 C"},
     {"4: read as an offset statement because it holds \"Offset\" (its value reads as 0)"}},
    {"OffsetInMessageEndsBlock", HEAD "Offset<S/>1<E/>\n1<S/>A<S/>STOP<E/>\n"
     "2<S/>No Offset<S/>STOP<E/>\n3<S/>C<S/>STOP<E/>\n", 1,
     {"3 00010001 0 A"}, {"4: read as an offset statement because it holds \"Offset\" (it ends "
      "the selected block)"}},
    {"CommentBehindStatement", HEAD "Offset<S/>1<E/>\n1<S/>A<S/>STOP<E/> <!-- note -->\n"
     "2<S/>B<S/>STOP<E/>\n", -1,
     {"4 00010002 0 B"}, {"3: a comment removes the text ahead of it: \"1<S/>A<S/>STOP<E/>\""}},
    {"CommentLineInsideStatement", HEAD "Offset<S/>1<E/>\n1<S/>Start\n<!-- x\n-->\n"
     "2<S/>B<S/>STOP<E/>\n", -1,
     {"6 00010002 0 B"}, {"4: a comment removes the text ahead of it (from line 3): "
      "\"1<S/>Start\""}},
    {"TwoEndMarks", HEAD "Offset<S/>1<E/>\n1<S/>A<S/>STOP<E/>2<S/>B<S/>STOP<E/>\n", -1,
     {"3 00010001 0 A"}, {"3: more than one \"<E/>\": only the first statement is read, "
      "\"2<S/>B<S/>STOP<E/>\" is lost"}},
    {"OneSeparator", HEAD "Offset<S/>1<E/>\n7<S/>Text<E/>\n", -1,
     {"3 00010007 1 "}, {"3: definition has 1 \"<S/>\" instead of 2: read as number 7, message "
      "\"\", continue 1"}},
    {"NumberNotDecimal", HEAD "Offset<S/>1<E/>\n12abc<S/>A<S/>STOP<E/>\n"
     "0x10<S/>B<S/>STOP<E/>\n", -1,
     {"3 0001000C 0 A", "4 00010000 0 B"},
     {"3: number text \"12abc\" is not a plain decimal number: read as 12",
      "4: number text \"0x10\" is not a plain decimal number: read as 0"}},
    {"NumberTooWide", HEAD "Offset<S/>1<E/>\n70000<S/>A<S/>STOP<E/>\n-1<S/>B<S/>STOP<E/>\n", -1,
     {"3 00011170 0 A", "4 0001FFFF 0 B"},
     {"3: number 70000 does not fit 16 bits: read as 4464", "4: number -1 does not fit 16 bits: "
      "read as 65535"}},
    {"OffsetNotDecimal", HEAD "Offset<S/>abc<E/>\n1<S/>A<S/>STOP<E/>\n", -1,
     {"3 00000001 0 A"}, {"2: offset text \"abc\" is not a plain decimal number: its block gets "
      "the offset 0"}},
    {"OffsetTooWide", HEAD "Offset<S/>70000<E/>\n1<S/>A<S/>STOP<E/>\n", -1,
     {"3 11700001 0 A"}, {"2: offset 70000 does not fit 16 bits: its block gets the offset 4464"}},
    {"StopMisspelt", HEAD "Offset<S/>1<E/>\n1<S/>A<S/>stop<E/>\n2<S/>B<S/>STOPP<E/>\n"
     "3<S/>C<S/>CONTINUE<E/>\n", -1,
     {"3 00010001 1 A", "4 00010002 1 B", "5 00010003 1 C"},
     {"3: action \"stop\" is not \"STOP\"", "4: action \"STOPP\" is not \"STOP\""}},
    {"SameCode", HEAD "Offset<S/>1<E/>\n1<S/>First<S/>STOP<E/>\n1<S/>Second<S/>CONTINUE<E/>\n", -1,
     {"3 00010001 0 First", "4 00010001 1 Second"},
     {"4: same code 00010001 as line 3: lookups find the definition of line 3"}},
    {"AheadOfBlocks", HEAD "1<S/>A<S/>STOP<E/>\n2<S/>B<S/>STOP<E/>\nOffset<S/>1<E/>\n"
     "3<S/>C<S/>STOP<E/>\n", -1,
     {"2 FFFE0001 0 A", "3 FFFE0002 0 B", "5 00010003 0 C"},
     {"2: 2 definitions (lines 2 to 3) stand ahead of the first offset statement: their codes "
      "get the offset 65534"}},
    {"AheadOfSelectedBlock", HEAD "1<S/>A<S/>STOP<E/>\nOffset<S/>1<E/>\n3<S/>C<S/>STOP<E/>\n", 1,
     {"4 00010003 0 C"},
     {"2: a definition stands ahead of the first offset statement: it belongs to no block and is "
      "not loaded"}},
    {"CutOffAtEnd", HEAD "Offset<S/>1<E/>\n1<S/>A<S/>STOP<E/>\n2<S/>B<S/>", -1,
     {"3 00010001 0 A"}, {"4: a statement cut off by the end of the file (no \"<E/>\") is "
      "dropped: \"2<S/>B<S/>\""}},
    // Findings beyond the list asked for: they, too, change what is loaded.
    {"TextCarriedBehindEnd", HEAD "Offset<S/>1<E/>\n1<S/>A<S/>STOP<E/>9\n2<S/>B<S/>STOP<E/>\n", -1,
     {"3 00010001 0 A", "3 0001005C 0 B"}, {"3: text behind \"<E/>\" is joined to the front of "
      "line 4: \"9\""}},
    {"CommentLeftInText", HEAD "Offset<S/>1<E/>\n<!-- a --><!-- b -->1<S/>A<S/>STOP<E/>\n", -1,
     {"3 00010000 0 A"},
     {"3: number text \"<!-- b -->1\" is not a plain decimal number: read as 0", "3: a comment "
      "mark stays in the statement text"}},
    {"EmptyMessageAndHeaderTail", "<ErrorMessageDefinition> Offset<S/>1<E/>\nOffset<S/>1<E/>\n"
     "1<S/><S/>STOP<E/>\n", -1,
     {"3 00010001 0 "}, {"1: text behind the header is not read: \"Offset<S/>1<E/>\"", "3: "
      "definition has an empty message"}},
    {"NoSuchBlock", HEAD "Offset<S/>1<E/>\n1<S/>A<S/>STOP<E/>\n", 5,
     {}, {": no offset statement has the value 5: nothing is loaded"}},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Each, ErrdefToolWarning, testing::ValuesIn(kWarningCases),
                         [](const testing::TestParamInfo<WarningCase>& info) {
                           return info.param.name;
                         });

TEST(ErrdefTool, SampleFileLoadsWithoutWarnings) {
  TempDir dir;
  const ToolRun run = RunTool(dir, "examples/errors.txt", VQ0300_SOURCE_DIR);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out,
            "examples/errors.txt: 7 definitions loaded (all blocks)\n"
            "\n"
            "line  code      offset  number  continue  message\n"
            "   8  00640001     100       1         0  \"Cannot open the device file\"\n"
            "   9  00640002     100       2         0  \"Cannot read the device file\"\n"
            "  10  00640003     100       3         1  \"The device file is empty\"\n"
            "  14  00C80001     200       1         0  \"Unknown device\"\n"
            "  15  00C80002     200       2         1  \"The device does not answer, retrying\"\n"
            "  16  00C80003     200       3         1  \"Verify failed at the given address\"\n"
            "  17  00C80004     200       4         0  \"The device reports a checksum mismatch\"\n"
            "\n"
            "no warnings\n");
  EXPECT_EQ(run.err, "");
  const ToolRun block = RunTool(dir, "--block 200 examples/errors.txt", VQ0300_SOURCE_DIR);
  EXPECT_EQ(block.status, 0);
  EXPECT_EQ(Rows(block.out).size(), 4u);
}

TEST(ErrdefTool, PercentAndControlBytesPrintAsTheyStand) {
  TempDir dir;
  WriteFile(
      dir / "defs.txt", HEAD
      "Offset<S/>1<E/>\n1<S/>Disk 95% full %s %d %%<S/>STOP<E/>\n2<S/>a\x1b[2Jb<S/>STOP<E/>\n");
  std::filesystem::create_directory(dir / "sub%d");
  WriteFile(dir / "sub%d/defs.txt", ReadFile(dir / "defs.txt"));
  const ToolRun run = RunTool(dir, "sub%d/defs.txt");
  EXPECT_EQ(run.status, 0) << run.out;
  EXPECT_EQ(Rows(run.out), (std::vector<std::string>{"3 00010001 0 Disk 95% full %s %d %%",
                                                     "4 00010002 0 a\\x1B[2Jb"}));
  EXPECT_EQ(run.out.rfind("sub%d/defs.txt: 2 definitions loaded", 0), 0u) << run.out;
  EXPECT_EQ(run.out.find(dir.path()), std::string::npos);  // only the path as typed
}

TEST(ErrdefTool, FailedLoadsExitTwoWithTheReason) {
  const struct {
    const char* file;  // null: no file at all
    const char* out;
  } cases[] = {
      {nullptr,
       "defs.txt: load failed with result -2: cannot open the file: No such file or directory\n"},
      {"", "defs.txt: load failed with result -1: the file is empty\n"},
      {"no header\n",
       "defs.txt: load failed with result -1: no line holds \"<ErrorMessageDefinition>\"\n"},
      {"x\n<ErrorMessageDefinition>",
       "defs.txt: load failed with result -1: the header stands on the last line (2), which has no "
       "line end\n"},
      {HEAD "1<S/>A<S/>STOP<E/>\n<!-- open\n",
       "defs.txt: load failed with result -1: the comment opened at line 3 never ends\n"},
  };
  for (const auto& c : cases) {
    TempDir dir;
    if (c.file != nullptr) WriteFile(dir / "defs.txt", c.file);
    const ToolRun run = RunTool(dir, "defs.txt");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, c.out);
  }
  // The loader cannot save a working directory that is gone: -3.
  TempDir dir;
  WriteFile(dir / "defs.txt", HEAD);
  std::filesystem::create_directory(dir / "gone");
  const ToolRun run = RunTool(dir, Quote(dir / "defs.txt"), dir / "gone", "rmdir ../gone && ");
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.out.substr(run.out.find(": load failed")),
            ": load failed with result -3: cannot enter the directory of the file: the working "
            "directory cannot be saved\n");
}

// The tool's own reading must follow the loader on any text: on files made of
// statements, their parts, comments and odd bytes it never reports a disagreement.
TEST(ErrdefTool, ReadingAgreesWithTheLoaderOnRandomFiles) {
  const std::vector<std::string> pieces = {"1<S/>A<S/>STOP<E/>",
                                           "Offset<S/>1<E/>",
                                           "<S/>",
                                           "<E/>",
                                           "<!--",
                                           "-->",
                                           "Offset",
                                           "STOP",
                                           "1",
                                           "70000",
                                           "-1",
                                           " ",
                                           "\t",
                                           "A",
                                           "%d",
                                           std::string(1, '\0'),
                                           "\x7f",
                                           "<ErrorMessageDefinition>"};
  std::mt19937 random(7);
  TempDir dir;
  for (int round = 0; round < 60; ++round) {
    std::string file = HEAD;
    for (int line = random() % 12; line > 0; --line) {
      for (int n = random() % 5; n > 0; --n) file += pieces[random() % pieces.size()];
      file += random() % 4 == 0 ? "\r\n" : "\n";
    }
    if (random() % 2 == 0) file += pieces[random() % pieces.size()];  // no line end
    WriteFile(dir / "defs.txt", file);
    const ToolRun run = RunTool(dir, round % 4 == 0 ? "defs.txt --block 1" : "defs.txt");
    EXPECT_GE(run.status, 0) << run.status << run.err;
    EXPECT_LE(run.status, 2) << run.status << run.err;
    EXPECT_TRUE(run.err.empty()) << run.status << run.err;
    for (const char* disagreement : {"this reading", "the loader holds", "this checker"}) {
      EXPECT_EQ(run.out.find(disagreement), std::string::npos) << file << "\n" << run.out;
    }
  }
}

TEST(ErrdefTool, UsageErrorsExitTwo) {
  TempDir dir;
  const ToolRun help = RunTool(dir, "--help");
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.out.rfind("usage: vq0300-errdef FILE [--block N]\n", 0), 0u);
  for (const char* args : {"", "--bogus defs.txt", "defs.txt other.txt", "defs.txt --block",
                           "defs.txt --block x", "defs.txt --block -2"}) {
    const ToolRun run = RunTool(dir, args);
    EXPECT_EQ(run.status, 2) << args;
    EXPECT_EQ(run.out, "") << args;
    EXPECT_NE(run.err.find("usage: vq0300-errdef"), std::string::npos) << args;
  }
}

#else
TEST(ErrdefTool, NotBuilt) { GTEST_SKIP() << "vq0300-errdef is not built"; }
#endif

}  // namespace
