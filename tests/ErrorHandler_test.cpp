// ErrorHandler and ErrorElement: recording, lookups and their file test, and
// the reader of definition files (Initialize, GetErrorList). Random input for
// the reader is left to the fuzz target fuzz/ErrorDefinitionFile_fuzz.cpp.
#include <vq0300/ErrorElement.h>
#include <vq0300/ErrorHandler.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "TestSupport.h"

using namespace std::string_literals;
using testsupport::TempDir;
using testsupport::WriteFile;

namespace {

const std::string kHead = "<ErrorMessageDefinition>\n";

std::string Cwd() {
  std::string area(1 << 16, '\0');
  return getcwd(area.data(), area.size()) != nullptr ? area.c_str() : "(none)";
}

// "message|continue" of the definition of number in block offset, or "none";
// block FFFE holds the definitions ahead of any offset statement.
std::string At(ErrorHandler& h, unsigned short number, unsigned short offset = 0xFFFE) {
  ErrorElement* e = h.GetErrorElement(number, offset);
  return e == nullptr ? "none" : e->GetErrorMessage() + "|"s + std::to_string(e->m_wContinue);
}

// Records a copy of text, after storing name if one is given; returns the
// count after.
int Record(ErrorHandler& h, std::string text, std::string name = "") {
  if (!name.empty()) h.SetErrorFilename(name.data());
  h.SetErrorOccured(text.data());
  return h.GetNumberOfErrorOccured();
}

// The recorded texts, each behind a "|"; an element without text shows "-".
std::string All(ErrorHandler& h) {
  std::string out;
  for (int i = 0; i < h.GetNumberOfErrorOccured(); ++i) {
    const char* text = h.GetErrorOccured(i);
    out += "|" + std::string(text != nullptr ? text : "-");
  }
  return out;
}

// A definition file in a fresh directory, loaded through that absolute
// directory. Every load must leave the working directory as it found it.
struct Load {
  explicit Load(const std::string& body, int selector = -1) {
    WriteFile(dir / "defs.txt", body);
    h.SetDefaultDir(dir.path().c_str());
    result = Run("defs.txt", selector);
  }
  int Run(std::string name, int selector) {  // an empty name passes null
    const std::string before = Cwd();
    const int r = h.Initialize(name.empty() ? nullptr : name.data(), selector);
    EXPECT_EQ(Cwd(), before) << name;
    return r;
  }
  TempDir dir;
  ErrorHandler h;
  int result = 99;
};

// Loads head + body, then gives the result and, behind a ";" each, what At
// finds for the keys: "7" is number 7 ahead of any offset statement, "7@100"
// number 7 in block 100.
std::string Defs(const std::string& body, const char* keys, int selector = -1,
                 const std::string& head = kHead) {
  Load l(head + body, selector);
  std::string out = std::to_string(l.result);
  std::istringstream in(keys);
  for (unsigned short number = 0; in >> number;) {
    unsigned short offset = 0xFFFE;
    if (in.peek() == '@') in.ignore() >> offset;
    out += ";" + At(l.h, number, offset);
  }
  return out;
}

struct Case {
  std::string body;
  const char* keys;
  std::string found;
  int selector = -1;
};

void Check(const std::vector<Case>& cases, const std::string& head = kHead) {
  for (const Case& c : cases) EXPECT_EQ(Defs(c.body, c.keys, c.selector, head), c.found) << c.body;
}

}  // namespace

TEST(ErrorElement, OwnsACopyOfItsMessage) {
  ErrorElement element;
  EXPECT_EQ(element.GetErrorMessage(), nullptr);
  std::string text = "disk full";
  element.SetErrorMessage(text.data());
  text[0] = 'D';
  element.SetErrorMessage(nullptr);  // keeps the old message
  EXPECT_STREQ(element.GetErrorMessage(), "disk full");
}

TEST(ErrorHandler, EveryRecordingAndLookupTestsTheFile) {
  ErrorHandler nameless;
  EXPECT_EQ(Record(nameless, "lost"), 0);
  Load l(kHead + "1<S/>A<S/>STOP<E/>\n");
  EXPECT_EQ(Record(l.h, "one"), 1);
  std::remove((l.dir / "defs.txt").c_str());
  EXPECT_EQ(Record(l.h, "two"), 1);
  l.h.SetLastErrorOccured(nullptr);
  EXPECT_EQ(All(l.h) + At(l.h, 1), "|-none");
  WriteFile(l.dir / "defs.txt", "");
  EXPECT_EQ(All(l.h) + At(l.h, 1), "|oneA|0");
}

TEST(ErrorHandler, SetLastErrorOccuredReplacesTheNewest) {
  Load l(kHead);
  std::string a = "a", c = "c";
  l.h.SetLastErrorOccured(a.data());  // none yet: records one
  Record(l.h, "b");
  l.h.SetLastErrorOccured(c.data());
  l.h.SetLastErrorOccured(l.h.GetErrorOccured(1));  // its own text
  l.h.SetErrorOccured(nullptr);
  EXPECT_EQ(All(l.h), "|a|c|-");
  for (int i : {3, -1}) EXPECT_EQ(l.h.GetErrorOccured(i), nullptr) << i;
}

TEST(ErrorHandler, AppendStartsAtOwnCount) {
  Load mine(kHead), theirs(kHead);
  for (const char* text : {"t0", "t1", "t2"}) Record(theirs.h, text);
  Record(mine.h, "m0");
  mine.h.AppendErrorOccured(&mine.h);  // itself: nothing
  mine.h.AppendErrorOccured(nullptr);
  mine.h.AppendErrorOccured(&theirs.h);
  EXPECT_EQ(All(mine.h), "|m0|t1|t2");
  Record(theirs.h, "t3");
  theirs.h.AppendErrorOccured(&mine.h);  // the longer side gets nothing
  EXPECT_EQ(All(theirs.h), "|t0|t1|t2|t3");
}

TEST(ErrorHandler, FileNameIsBuiltFromTheStoredDirectory) {
  Load l(kHead);
  std::string empty;
  l.h.SetErrorFilename(nullptr);  // null and empty names keep the stored one
  l.h.SetErrorFilename(empty.data());
  l.h.SetDefaultDir(nullptr);  // stores "", the name is not rebuilt
  EXPECT_EQ(Record(l.h, "x"), 1);
  EXPECT_EQ(Record(l.h, "x", "defs.txt"), 1);  // "/defs.txt"
  EXPECT_EQ(Record(l.h, "x", "tmp"), 2);       // "/tmp"
  ErrorHandler no_dir;                         // the name as given
  EXPECT_EQ(Record(no_dir, "x", l.dir / "defs.txt"), 1);
}

// Definitions ahead of the first offset statement have the block FFFE; a
// selected block ends at the next offset statement, of any value.
TEST(ErrorDefinitionFile, SelectorPicksOneBlock) {
  const std::string example = "Device error table\n" + kHead +
                              "<!-- file access -->\n0<S/>Failure<S/>STOP<E/>\n"
                              "Offset<S/>100<E/>\n1<S/>Cannot open<S/>STOP<E/>\nOffset<S/>100<E/>\n"
                              "2<S/>Verify failed at\n    this address<S/>CONTINUE<E/>\n"
                              "Offset<S/>200<E/>\n1<S/>Unknown<S/>STOP<E/>\n";
  const char* keys = "0 1@100 2@100 1@200";
  Check({{example, keys, "0;Failure|0;Cannot open|0;Verify failed atthis address|1;Unknown|0"},
         {example, keys, "0;none;Cannot open|0;none;none", 100},
         {example, keys, "0;none;none;none;Unknown|0", 200},
         {example, keys, "0;none;none;none;none", 300},
         {example, keys, "0;none;none;none;none", -7}},  // below -1: nothing
        "");
  EXPECT_EQ(Load(example).h.GetErrorElement(2, 100)->m_dwErrorCode, 0x640002u);
}

TEST(ErrorDefinitionFile, ResultsAndWhatTheyLeave) {
  EXPECT_EQ(ErrorHandler().Initialize(nullptr, -1), -1);  // no name given or stored
  // -2 before the change of directory: the lists stay, the name is replaced.
  Load l(kHead + "1<S/>A<S/>STOP<E/>\n");
  EXPECT_EQ(l.Run("other.txt", -1), -2);
  EXPECT_EQ(At(l.h, 1), "none");  // the new name does not open yet
  WriteFile(l.dir / "other.txt", "");
  EXPECT_EQ(At(l.h, 1), "A|0");
  // No header: -1, both lists emptied; the handler records again.
  EXPECT_EQ(Record(l.h, "noted"), 1);
  EXPECT_EQ(l.Run("", -1), -1);
  EXPECT_EQ(At(l.h, 1), "none");
  EXPECT_EQ(Record(l.h, "noted"), 1);
  // An empty default directory: "/tmp" opens, chdir("") fails after the
  // lists were emptied.
  Load rooted(kHead + "1<S/>A<S/>STOP<E/>\n");
  rooted.h.SetDefaultDir("");
  EXPECT_EQ(rooted.Run("tmp", -1), -3);
  EXPECT_EQ(At(rooted.h, 1), "none");
}

TEST(ErrorDefinitionFile, HeaderAndLineEnds) {
  // The header on a last line without line end gives -1. The preamble means
  // nothing, nor does the rest of the header line; CR LF, no final line end.
  Check({{"<ErrorMessageDefinition>", "", "-1"},
         {"<!--\r\nOffset<S/>5<E/>\r\n<ErrorMessageDefinition>2<S/>B<S/><E/>\r\n"
          "1<S/>A<S/>STOP<E/>\r\n3<S/>C<S/>GO<E/>",
          "1 2 3", "0;A|0;none;C|1"},
         {kHead + "2<S/>B<S/>STOP", "2", "0;none"}},  // left open by the end of the file
        "");
}

TEST(ErrorDefinitionFile, JoinsTrimmedLinesAndCarriesTheRest) {
  const std::string filler(65535 - 8, 'a');
  Check({{"7<S/>Line one\n  line two <S/>ST\nOP<E\n/>\n", "7", "0;Line oneline two|0"},
         {"1<S/>A<S/>STOP<E/>9\n2<S/>B<S/>STOP<E/>\n", "1 92", "0;A|0;B|0"},
         // Two statements on a line: one element, the carried text read once.
         {"1<S/>A<S/>STOP<E/>2<S/>B<S/>STOP<E/>3\n4<S/>C<S/>STOP<E/>\n", "1 2 34 4",
          "0;A|0;none;C|0;none"},
         // A line over 65535 bytes arrives in two pieces, each trimmed.
         {"1<S/>a " + filler + " b<S/>STOP<E/>\n", "1", "0;a " + filler + "b|0"},
         // A NUL byte ends the text of its line.
         {"1<S/>A\0B<S/>STOP<E/>\n2<S/>C<S/>STOP<E/>\n"s, "1", "0;A2|1"}});
}

TEST(ErrorDefinitionFile, CommentRemovesWhatStandsAheadOfIt) {
  Check({{"1<S/>A<S/>STOP<E/> <!-- note -->\n", "1", "0;none"},
         {"1<S/>A<S/>\n<!-- inside -->\nSTOP<E/>\n", "1", "0;none"},
         {"<!-- a --><!-- b -->1<S/>A<S/>STOP<E/>\n", "0", "0;A|0"},  // one comment a line
         // Over lines: skipped up to the line holding "-->", whose rest is kept.
         {"3<S/>C<S/>\n<!-- open\n1<S/>A<S/>STOP<E/>\nend --> 2<S/>B<S/>STOP<E/>\n", "3 1 2",
          "0;none;none;B|0"},
         // "-->" is looked for in one line; the end inside a comment gives -1.
         {"1<S/>A<S/>STOP<E/>\n<!\n-- x -\n->2<S/>B<S/><E/>\n", "1", "-1;A|0"}});
}

TEST(ErrorDefinitionFile, DefectiveStatementsAndFields) {
  // Missing marks shift or empty the fields; each field is trimmed; values
  // are strtol's, cut to 16 bits; only "STOP" stops.
  Check({{"7<S/>Text<E/>\nHello<E/>\n", "7 0", "0;|1;|1"},
         {"7<S/>a<S/>b<S/>STOP<E/>\n", "7", "0;a|1"},
         {"12abc<S/>a<S/>STOP<E/>\n0x10<S/>b<S/> STOP <E/>\n", "12 0", "0;a|0;b|0"},
         {"-1<S/>c<S/>stop<E/>\n70000<S/>d<S/>STOPPED<E/>\n", "65535 4464", "0;c|1;d|1"},
         {" 3 <S/>\t e\x7f\xff x\x80\x7f\t<S/><E/>\n", "3", "0;e\x7f\xff x|1"},
         {"Offset<S/>70000<E/>\n1<S/>f<S/><E/>\nOffset<S/>4294967297<E/>\n1<S/>g<S/><E/>\n",
          "1@4464 1@1", "0;f|1;g|1"},
         // Any statement holding "Offset" is an offset statement.
         {"Offset100<E/>\n5<S/>E<S/><E/>\n", "5@0", "0;E|1"},
         {"12<S/>Bad Offset<S/><E/>\n5<S/>E<S/><E/>\n", "12@0 12 5@0", "0;none;none;E|1"}});
}

TEST(ErrorDefinitionFile, GetErrorListAppendsAlone) {
  EXPECT_EQ(ErrorHandler().GetErrorList(-1), -1);  // no name stored
  Load l(kHead + "1<S/>A<S/>STOP<E/>\n");
  WriteFile(l.dir / "defs.txt", kHead + "1<S/>B<S/>STOP<E/>\n2<S/>C<S/>STOP<E/>\n");
  EXPECT_EQ(l.h.GetErrorList(-1), 0);
  EXPECT_EQ(At(l.h, 1) + At(l.h, 2), "A|0C|0");  // the earlier copy comes first
}

TEST(ErrorDefinitionFile, WorkingDirectory) {
  TempDir root;
  const testsupport::WorkingDirGuard home;
  ASSERT_EQ(chdir(root.path().c_str()), 0);
  // A relative default directory is entered by Initialize and once more by
  // the reading pass, and the stored name is tested from each place.
  ErrorHandler relative;
  relative.SetDefaultDir("d");
  std::string name = "defs.txt";
  for (const std::string where : {"d/", "d/d/", "d/d/d/"}) {
    ASSERT_EQ(mkdir(where.c_str(), 0700), 0);
    WriteFile(where + name, kHead + "1<S/>" + where + "<S/><E/>\n");
    EXPECT_EQ(relative.Initialize(name.data(), -1), where.size() == 6 ? 0 : -2);
    EXPECT_EQ(Cwd(), root.path());
  }
  EXPECT_EQ(At(relative, 1), "d/d/d/|1");
  // Working directories past 254 bytes, and past what one chdir takes, are
  // restored whole (Load checks).
  const std::string part(200, 'p');
  const char* p = part.c_str();
  for (int depth : {2, 25}) {
    int made = 0;
    for (; made < depth && mkdir(p, 0700) == 0 && chdir(p) == 0; ++made) {
    }
    EXPECT_EQ(made, depth);
    EXPECT_EQ(Load(kHead).result, 0);
    for (; made > 0 && chdir("..") == 0 && rmdir(p) == 0; --made) {
    }
    ASSERT_EQ(made, 0) << "directories left behind";
  }
  // A working directory that cannot be saved is not left: -3.
  ASSERT_EQ(mkdir("gone", 0700), 0);
  ASSERT_EQ(chdir("gone"), 0);
  ASSERT_EQ(rmdir("../gone"), 0);
  EXPECT_EQ(Load(kHead).result, -3);
  EXPECT_EQ(Cwd(), "(none)");
}

TEST(ErrorDefinitionFile, BadInputHasADefinedResult) {
  Load l(kHead);  // a directory in place of the file reads as one without header
  ASSERT_EQ(mkdir((l.dir / "sub").c_str(), 0700), 0);
  EXPECT_EQ(l.Run("sub", -1), -1);
  // Accumulated text that would pass 16 MiB is dropped before the next line.
  std::string huge;
  for (int i = 0; i < 4096; ++i) huge += std::string(4096, 'a') + "\n";
  EXPECT_EQ(Defs(huge + "1<S/>A<S/>STOP<E/>\n", "1 0"), "0;A|0;none");
}
