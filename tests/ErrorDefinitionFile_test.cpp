#include <vq0300/ErrorElement.h>
#include <vq0300/ErrorHandler.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "TestSupport.h"

using testsupport::TempDir;
using testsupport::WriteFile;

namespace {

const std::string kHead = "<ErrorMessageDefinition>\n";

std::string Cwd() {
  std::vector<char> area(64);
  while (getcwd(area.data(), area.size()) == nullptr) {
    if (errno != ERANGE) return "(getcwd failed)";
    area.resize(area.size() * 2);
  }
  return area.data();
}

// "message|continue" of the definition found for number and offset, or "none".
std::string At(ErrorHandler& handler, unsigned short number, unsigned short offset) {
  ErrorElement* element = handler.GetErrorElement(number, offset);
  if (element == nullptr) return "none";
  return std::string(element->GetErrorMessage()) + "|" + std::to_string(element->m_wContinue);
}

// A definition file written into a fresh directory and loaded through an
// absolute default directory. Every load must leave the working directory as
// it found it.
struct Load {
  explicit Load(const std::string& body, int selector = -1) {
    WriteFile(dir / "defs.txt", body);
    handler.SetDefaultDir(dir.path().c_str());
    const std::string before = Cwd();
    result = handler.Initialize(name.data(), selector);
    EXPECT_EQ(Cwd(), before);
  }
  std::string At(unsigned short number, unsigned short offset = 0xFFFE) {
    return ::At(handler, number, offset);
  }
  TempDir dir;
  std::string name = "defs.txt";
  ErrorHandler handler;
  int result = 99;
};

const std::string kExample =
    "Device error table\n" + kHead +
    "<!-- file access -->\n"
    "Offset<S/>100<E/>\n"
    "1<S/>Cannot open the device file<S/>STOP<E/>\n"
    "2<S/>Verify failed at this\n"
    "    address, retrying<S/>CONTINUE<E/>\n"
    "Offset<S/>200<E/>\n"
    "1<S/>Unknown device<S/>STOP<E/>\n";

// Returns to the test's own directory when it goes, whatever a test entered.
struct StayHere {
  StayHere() : fd(open(".", O_RDONLY | O_DIRECTORY)) {}
  ~StayHere() {
    EXPECT_EQ(fchdir(fd), 0);
    close(fd);
  }
  int fd;
};

}  // namespace

TEST(ErrorDefinitionFile, ExampleFileBySelector) {
  Load all(kExample);
  EXPECT_EQ(all.result, 0);
  EXPECT_EQ(all.handler.GetErrorElement(1, 100)->m_dwErrorCode, 0x640001u);
  EXPECT_EQ(all.handler.GetErrorElement(2, 100)->m_dwErrorCode, 0x640002u);
  EXPECT_EQ(all.handler.GetErrorElement(1, 200)->m_dwErrorCode, 0xC80001u);
  EXPECT_EQ(all.At(1, 100), "Cannot open the device file|0");
  EXPECT_EQ(all.At(2, 100), "Verify failed at thisaddress, retrying|1");
  EXPECT_EQ(all.At(1, 200), "Unknown device|0");

  Load first(kExample, 100);
  EXPECT_EQ(first.result, 0);
  EXPECT_EQ(first.At(1, 100), "Cannot open the device file|0");
  EXPECT_EQ(first.At(2, 100), "Verify failed at thisaddress, retrying|1");
  EXPECT_EQ(first.At(1, 200), "none");

  Load second(kExample, 200);
  EXPECT_EQ(second.result, 0);
  EXPECT_EQ(second.At(1, 100), "none");
  EXPECT_EQ(second.At(1, 200), "Unknown device|0");

  Load missing(kExample, 300);
  EXPECT_EQ(missing.result, 0);
  EXPECT_EQ(missing.At(1, 100), "none");
  EXPECT_EQ(missing.At(1, 200), "none");
}

TEST(ErrorDefinitionFile, ShippedSampleLoads) {
  ErrorHandler h;
  h.SetDefaultDir(VQ0300_SOURCE_DIR "/examples");
  std::string name = "errors.txt";
  ASSERT_EQ(h.Initialize(name.data(), -1), 0);
  EXPECT_EQ(At(h, 1, 100), "Cannot open the device file|0");
  EXPECT_EQ(At(h, 3, 100), "The device file is empty|1");
  EXPECT_EQ(At(h, 2, 200), "The device does not answer, retrying|1");
  EXPECT_EQ(At(h, 4, 200), "The device reports a checksum mismatch|0");
}

TEST(ErrorDefinitionFile, ResultsAndWhatTheyLeave) {
  ErrorHandler fresh;
  EXPECT_EQ(fresh.Initialize(nullptr, -1), -1);
  std::string empty;
  EXPECT_EQ(fresh.Initialize(empty.data(), -1), -1);

  // -2 before the change of directory: lists kept, stored name replaced.
  Load l(kHead + "1<S/>A<S/>STOP<E/>\n");
  std::string other = "other.txt";
  EXPECT_EQ(l.handler.Initialize(other.data(), -1), -2);
  EXPECT_EQ(l.At(1), "none");  // the file test of the new name fails
  WriteFile(l.dir / "other.txt", "");
  EXPECT_EQ(l.At(1), "A|0");

  // No header, or an empty file: -1, lists emptied, handler still usable.
  std::string text = "noted";
  l.handler.SetErrorOccured(text.data());
  EXPECT_EQ(l.handler.Initialize(nullptr, -1), -1);
  EXPECT_EQ(l.At(1), "none");
  EXPECT_EQ(l.handler.GetNumberOfErrorOccured(), 0);
  l.handler.SetErrorOccured(text.data());
  EXPECT_EQ(l.handler.GetNumberOfErrorOccured(), 1);
  WriteFile(l.dir / "other.txt", "1<S/>A<S/>STOP<E/>\n");
  EXPECT_EQ(l.handler.Initialize(nullptr, -1), -1);

  // The file ends inside a comment: -1, what was read before stays.
  Load open_comment(kHead + "1<S/>A<S/>STOP<E/>\n<!-- never closed\n2<S/>B<S/>STOP<E/>\n");
  EXPECT_EQ(open_comment.result, -1);
  EXPECT_EQ(open_comment.At(1), "A|0");
  EXPECT_EQ(open_comment.At(2), "none");
  Load closed_at_end(kHead + "1<S/>A<S/>STOP<E/>\n<!-- x\ny -->");
  EXPECT_EQ(closed_at_end.result, -1);

  // An empty default directory: "/tmp" opens, chdir("") fails; the lists
  // were already emptied. A name missing from the root gives -2.
  Load rooted(kHead + "1<S/>A<S/>STOP<E/>\n");
  rooted.handler.SetDefaultDir("");
  std::string tmp = "tmp", nothing = "no-such-entry-of-the-root";
  EXPECT_EQ(rooted.handler.Initialize(tmp.data(), -1), -3);
  EXPECT_EQ(rooted.handler.Initialize(nothing.data(), -1), -2);
  rooted.handler.SetDefaultDir(rooted.dir.path().c_str());
  EXPECT_EQ(rooted.handler.Initialize(rooted.name.data(), -1), 0);
  EXPECT_EQ(rooted.At(1), "A|0");
}

TEST(ErrorDefinitionFile, HeaderAndLineEnds) {
  EXPECT_EQ(Load("").result, -1);
  EXPECT_EQ(Load("1<S/>A<S/>STOP<E/>\n").result, -1);
  EXPECT_EQ(Load("x" + kHead).result, 0);
  EXPECT_EQ(Load("<ErrorMessageDefinition>").result, -1);

  // The preamble means nothing; the rest of the header line is skipped.
  Load pre("1<S/>A<S/>STOP<E/>\n<!--\nOffset<S/>5<E/>\n<ErrorMessageDefinition>2<S/>B<E/>\n"
           "3<S/>C<S/>STOP<E/>\n");
  EXPECT_EQ(pre.result, 0);
  EXPECT_EQ(pre.At(1), "none");
  EXPECT_EQ(pre.At(2), "none");
  EXPECT_EQ(pre.At(3), "C|0");

  for (const std::string& body :
       {kHead + "1<S/>A<S/>STOP<E/>\n2<S/>B<S/>GO<E/>\n", kHead + "1<S/>A<S/>STOP<E/>\n2<S/>B<S/>GO<E/>",
        std::string("x\r\n<ErrorMessageDefinition>\r\n1<S/>A<S/>STOP<E/>\r\n2<S/>B<S/>GO<E/>\r\n")}) {
    Load l(body);
    EXPECT_EQ(l.result, 0);
    EXPECT_EQ(l.At(1), "A|0");
    EXPECT_EQ(l.At(2), "B|1");
  }
  // A statement the end of the file leaves open is dropped.
  Load open(kHead + "1<S/>A<S/>STOP<E/>\n2<S/>B<S/>STOP");
  EXPECT_EQ(open.result, 0);
  EXPECT_EQ(open.At(2), "none");
}

TEST(ErrorDefinitionFile, JoinsLinesAndCarriesTheRest) {
  Load joined(kHead + "7<S/>Line one\n  line two <S/>STOP<E/>\n");
  EXPECT_EQ(joined.At(7), "Line oneline two|0");
  // Marks cut by line ends are whole again once the lines are joined.
  Load cut(kHead + "1<S/>A<S/>ST\nOP<E\n/>\n");
  EXPECT_EQ(cut.At(1), "A|0");
  // The search for the end of a comment that spans lines looks at one line
  // at a time: a "-->" cut by a line end is not seen.
  EXPECT_EQ(Load(kHead + "<!\n-- x -\n->2<S/>B<S/><E/>\n").result, -1);

  Load carried(kHead + "1<S/>A<S/>STOP<E/>9\n2<S/>B<S/>STOP<E/>\n");
  EXPECT_EQ(carried.At(1), "A|0");
  EXPECT_EQ(carried.At(92), "B|0");

  // Two statements on a line: one element, the text between the marks is
  // not read, and what is carried is read once.
  Load two(kHead + "1<S/>A<S/>STOP<E/>2<S/>B<S/>STOP<E/>3\n4<S/>C<S/>STOP<E/>\n");
  EXPECT_EQ(two.At(1), "A|0");
  EXPECT_EQ(two.At(2), "none");
  EXPECT_EQ(two.At(34), "C|0");
  EXPECT_EQ(two.At(4), "none");

  // A physical line over 65535 bytes arrives in two pieces, each trimmed:
  // the blank at the end of the first piece is lost, the one inside stays.
  const std::string first = "1<S/>a " + std::string(65535 - 8, 'a') + " ";
  ASSERT_EQ(first.size(), 65535u);
  Load longline(kHead + first + "b<S/>STOP<E/>\n");
  EXPECT_EQ(longline.At(1), "a " + std::string(65535 - 8, 'a') + "b|0");
}

TEST(ErrorDefinitionFile, Comments) {
  const std::string def = "1<S/>A<S/>STOP<E/>";
  EXPECT_EQ(Load(kHead + def + " <!-- note -->\n").At(1), "none");
  EXPECT_EQ(Load(kHead + "<!-- note --> " + def + "\n").At(1), "A|0");
  EXPECT_EQ(Load(kHead + "<!-- a --><!-- b -->" + def + "\n").At(0), "A|0");
  EXPECT_EQ(Load(kHead + "1<S/>A<!-- c -->B<S/>STOP<E/>\n").At(0), "|1");
  EXPECT_EQ(Load(kHead + "1<S/>A<S/>\n<!-- inside -->\nSTOP<E/>\n").At(0), "|1");

  // A comment far into a long line: the text behind it is joined as usual.
  EXPECT_EQ(Load(kHead + std::string(5000, 'j') + "<!--x-->7\n<S/>A<S/>STOP<E/>\n").At(7), "A|0");

  Load spanning(kHead + "<!-- opened\n1<S/>A<S/>STOP<E/>\nend --> 2<S/>B<S/>STOP<E/>\n");
  EXPECT_EQ(spanning.result, 0);
  EXPECT_EQ(spanning.At(1), "none");
  EXPECT_EQ(spanning.At(2), "B|0");
  // An unfinished statement ahead of a comment spanning lines goes too.
  Load lost(kHead + "3<S/>C<S/>\n<!-- x\n-->STOP<E/>\n");
  EXPECT_EQ(lost.At(3), "none");
  EXPECT_EQ(lost.At(0), "|1");
}

TEST(ErrorDefinitionFile, DefectiveStatements) {
  struct Row {
    const char* statement;
    unsigned short number;
    const char* expected;
  };
  for (const Row& row : {Row{"Hello<E/>", 0, "|1"}, Row{"<E/>", 0, "|1"}, Row{"7<S/>Text<E/>", 7, "|1"},
                         Row{"7<S/><S/><E/>", 7, "|1"}, Row{"7<S/>a<S/>b<S/>STOP<E/>", 7, "a|1"},
                         Row{"x<S/>Text<S/>STOP<E/>", 0, "Text|0"}}) {
    EXPECT_EQ(Load(kHead + row.statement + "\n").At(row.number), row.expected) << row.statement;
  }
  // Offset statements with the value 0: the definition behind lands at 0.
  for (const char* statement : {"Offset100<E/>", "Offset<S/>abc<E/>", "Offset<S/><E/>",
                                "12<S/>Bad Offset value<S/>STOP<E/>"}) {
    Load l(kHead + statement + "\n5<S/>E<S/>STOP<E/>\n");
    EXPECT_EQ(l.At(5, 0), "E|0") << statement;
    EXPECT_EQ(l.At(12, 0xFFFE), "none") << statement;
    EXPECT_EQ(l.At(12, 0), "none") << statement;
  }
}

TEST(ErrorDefinitionFile, FieldsAreTrimmedAndConverted) {
  Load l(kHead + "12abc<S/>a<S/>STOP<E/>\n0x10<S/>b<S/> STOP <E/>\n-1<S/>c<S/>stop<E/>\n" +
         "70000<S/>d<S/>STOPPED<E/>\n 3 <S/>\t e\x7f\xff x\x80\x7f\t<S/><E/>\n" +
         "Offset<S/>70000<E/>\n1<S/>f<S/>STOP<E/>\nOffset<S/>4294967297<E/>\n1<S/>g<S/>STOP<E/>\n");
  EXPECT_EQ(l.At(12), "a|0");
  EXPECT_EQ(l.At(0), "b|0");
  EXPECT_EQ(l.At(65535), "c|1");
  EXPECT_EQ(l.At(4464), "d|1");
  EXPECT_EQ(l.At(3), "e\x7f\xff x|1");
  EXPECT_EQ(l.At(1, 4464), "f|0");
  EXPECT_EQ(l.At(1, 1), "g|0");  // the low 32 bits of 2^32 + 1

  // Two definitions with one code are both read; lookups find the first.
  Load twice(kHead + "1<S/>first<S/>STOP<E/>\n1<S/>second<S/>STOP<E/>\n");
  EXPECT_EQ(twice.At(1), "first|0");
}

TEST(ErrorDefinitionFile, Selectors) {
  const std::string repeated =
      kHead + "0<S/>before<S/><E/>\nOffset<S/>1<E/>\n1<S/>A<S/><E/>\nOffset<S/>1<E/>\n2<S/>B<S/><E/>\n";
  Load one(repeated, 1);
  EXPECT_EQ(one.At(1, 1), "A|1");
  EXPECT_EQ(one.At(2, 1), "none");
  EXPECT_EQ(one.At(0), "none");
  Load every(repeated, -1);
  EXPECT_EQ(every.At(0), "before|1");
  EXPECT_EQ(every.At(2, 1), "B|1");

  // The selected block ends at the next offset statement of any value.
  Load ended(kHead + "Offset<S/>3<E/>\n1<S/>A<S/><E/>\nOffset<S/>9<E/>\nOffset<S/>3<E/>\n2<S/>B<S/><E/>\n", 3);
  EXPECT_EQ(ended.At(1, 3), "A|1");
  EXPECT_EQ(ended.At(2, 3), "none");

  const std::string minus7 = kHead + "Offset<S/>-7<E/>\n1<S/>A<S/><E/>\n";
  Load below(minus7, -7);
  EXPECT_EQ(below.result, 0);
  EXPECT_EQ(below.At(1, 0xFFF9), "none");
  EXPECT_EQ(Load(minus7, -1).At(1, 0xFFF9), "A|1");
  EXPECT_EQ(Load(minus7, 4).At(1, 0xFFF9), "none");
}

TEST(ErrorDefinitionFile, GetErrorListAppendsAlone) {
  ErrorHandler nameless;
  EXPECT_EQ(nameless.GetErrorList(-1), -1);

  TempDir dir;
  WriteFile(dir / "defs.txt", kHead + "1<S/>A<S/>STOP<E/>\n");
  ErrorHandler h;
  h.SetDefaultDir(dir.path().c_str());
  std::string name = "defs.txt";
  h.SetErrorFilename(name.data());
  EXPECT_EQ(h.GetErrorList(-1), 0);
  ErrorElement* first = h.GetErrorElement(1, 0xFFFE);
  ASSERT_NE(first, nullptr);
  WriteFile(dir / "defs.txt", kHead + "1<S/>B<S/>STOP<E/>\n2<S/>C<S/>STOP<E/>\n");
  EXPECT_EQ(h.GetErrorList(-1), 0);
  EXPECT_EQ(h.GetErrorElement(1, 0xFFFE), first);
  EXPECT_EQ(At(h, 2, 0xFFFE), "C|0");
}

TEST(ErrorDefinitionFile, WorkingDirectory) {
  StayHere stay;
  // A relative default directory is entered by Initialize and once more by
  // the reading pass, and the stored name is looked up from each place.
  TempDir root;
  ASSERT_EQ(chdir(root.path().c_str()), 0);
  mkdir("d", 0700);
  mkdir("d/d", 0700);
  mkdir("d/d/d", 0700);
  WriteFile("d/defs.txt", kHead + "1<S/>outer<S/><E/>\n");
  ErrorHandler relative;
  relative.SetDefaultDir("d");
  std::string name = "defs.txt";
  EXPECT_EQ(relative.Initialize(name.data(), -1), -2);
  WriteFile("d/d/defs.txt", kHead + "1<S/>middle<S/><E/>\n");
  EXPECT_EQ(relative.Initialize(name.data(), -1), -2);
  WriteFile("d/d/d/defs.txt", kHead + "1<S/>inner<S/><E/>\n");
  EXPECT_EQ(relative.Initialize(name.data(), -1), 0);
  EXPECT_EQ(Cwd(), root.path());
  EXPECT_EQ(At(relative, 1, 0xFFFE), "inner|1");

  // Deep working directories, past 254 bytes and past what one chdir takes,
  // are restored whole.
  const std::string part(200, 'p');
  for (int depth : {2, 25}) {
    ASSERT_EQ(chdir(root.path().c_str()), 0);
    for (int i = 0; i < depth; ++i) ASSERT_TRUE(mkdir(part.c_str(), 0700) == 0 && chdir(part.c_str()) == 0);
    const std::string deep = Cwd();
    ASSERT_GT(deep.size(), depth * 200u);
    ErrorHandler h;
    h.SetDefaultDir(root.path().c_str());
    EXPECT_EQ(h.Initialize(&std::string("d/d/d/defs.txt")[0], -1), 0);
    EXPECT_EQ(Cwd(), deep);
    for (int i = 0; i < depth; ++i) ASSERT_TRUE(chdir("..") == 0 && rmdir(part.c_str()) == 0);
  }

  // A working directory that cannot be saved is not left: -3.
  ASSERT_EQ(mkdir((root / "gone").c_str(), 0700), 0);
  ASSERT_EQ(chdir((root / "gone").c_str()), 0);
  ASSERT_EQ(rmdir((root / "gone").c_str()), 0);
  ErrorHandler h;
  h.SetDefaultDir(root.path().c_str());
  EXPECT_EQ(h.Initialize(&std::string("d/defs.txt")[0], -1), -3);
  char area[4096];
  errno = 0;
  EXPECT_EQ(getcwd(area, sizeof area), nullptr);
  EXPECT_EQ(errno, ENOENT);
}

TEST(ErrorDefinitionFile, BadInputHasADefinedResult) {
  // A NUL byte ends the text of its line; the next line is joined to it.
  const char with_nul[] = "1<S/>A\0B<S/>STOP<E/>\n";
  Load nul(kHead + std::string(with_nul, sizeof with_nul - 1) + "2<S/>C<S/>STOP<E/>\n");
  EXPECT_EQ(nul.At(1), "A2|1");

  // A directory in place of the file reads as a file without header.
  Load directory(kHead);
  mkdir((directory.dir / "sub").c_str(), 0700);
  std::string sub = "sub";
  EXPECT_EQ(directory.handler.Initialize(sub.data(), -1), -1);

  // Accumulated text that would pass 16 MiB is dropped before the next line.
  const std::string junk_line = std::string(4096, 'a') + "\n";
  std::string huge = kHead;
  for (int i = 0; i < 4096; ++i) huge += junk_line;
  Load capped(huge + "1<S/>A<S/>STOP<E/>\n");
  EXPECT_EQ(capped.At(1), "A|0");
  EXPECT_EQ(capped.At(0), "none");

  // Random bytes with marks among them: a result of 0 or -1, and no fault.
  const char* pieces[] = {"<E/>", "<S/>", "<!--", "-->", "Offset", "\n", "\r\n", "STOP", " "};
  std::mt19937 random(7);
  for (int round = 0; round < 20; ++round) {
    std::string body = kHead;
    for (int i = 0; i < 4000; ++i) {
      if (random() % 3 == 0) body += pieces[random() % 9];
      body += static_cast<char>(random() % 256);
    }
    const int result = Load(body, static_cast<int>(random() % 4) - 2).result;
    EXPECT_TRUE(result == 0 || result == -1) << round;
  }
}
