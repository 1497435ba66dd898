#include <vq0300/ErrorElement.h>
#include <vq0300/ErrorHandler.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "TestSupport.h"

using testsupport::TempDir;
using testsupport::WriteFile;

namespace {

const std::string kHead = "<ErrorMessageDefinition>\n";
constexpr unsigned short kNoBlock = 0xFFFE;  // offset half ahead of any offset statement

std::string Cwd() {
  std::vector<char> area(64);
  while (getcwd(area.data(), area.size()) == nullptr) {
    if (errno != ERANGE) return "(getcwd failed)";
    area.resize(area.size() * 2);
  }
  return area.data();
}

// "message|continue" of the definition found for number and offset, or "none".
std::string At(ErrorHandler& handler, unsigned short number, unsigned short offset = kNoBlock) {
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
  std::string At(unsigned short number, unsigned short offset = kNoBlock) {
    return ::At(handler, number, offset);
  }
  TempDir dir;
  std::string name = "defs.txt";
  ErrorHandler handler;
  int result = 99;
};

struct Lookup {
  unsigned short number, offset;
  const char* found;
};

// Loads body with selector; checks the result and what each lookup finds.
void Expect(const std::string& body, int selector, int result, std::initializer_list<Lookup> lookups) {
  Load l(body, selector);
  EXPECT_EQ(l.result, result) << body;
  for (const Lookup& x : lookups) EXPECT_EQ(l.At(x.number, x.offset), x.found) << body;
}

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
  const std::string example = "Device error table\n" + kHead +
                              "<!-- file access -->\nOffset<S/>100<E/>\n"
                              "1<S/>Cannot open the device file<S/>STOP<E/>\n"
                              "2<S/>Verify failed at this\n    address, retrying<S/>CONTINUE<E/>\n"
                              "Offset<S/>200<E/>\n1<S/>Unknown device<S/>STOP<E/>\n";
  const Lookup first{1, 100, "Cannot open the device file|0"};
  const Lookup second{2, 100, "Verify failed at thisaddress, retrying|1"};
  const Lookup third{1, 200, "Unknown device|0"};
  Expect(example, -1, 0, {first, second, third});
  Expect(example, 100, 0, {first, second, {1, 200, "none"}});
  Expect(example, 200, 0, {{1, 100, "none"}, third});
  Expect(example, 300, 0, {{1, 100, "none"}, {2, 100, "none"}, {1, 200, "none"}});
  Load l(example);
  EXPECT_EQ(l.handler.GetErrorElement(2, 100)->m_dwErrorCode, 0x640002u);
  EXPECT_EQ(l.handler.GetErrorElement(1, 200)->m_dwErrorCode, 0xC80001u);
}

TEST(ErrorDefinitionFile, ShippedSampleLoads) {
  ErrorHandler h;
  h.SetDefaultDir(VQ0300_SOURCE_DIR "/examples");
  std::string name = "errors.txt";
  ASSERT_EQ(h.Initialize(name.data(), -1), 0);
  EXPECT_EQ(At(h, 1, 100), "Cannot open the device file|0");
  EXPECT_EQ(At(h, 4, 200), "The device reports a checksum mismatch|0");
}

TEST(ErrorDefinitionFile, ResultsAndWhatTheyLeave) {
  ErrorHandler fresh;
  std::string empty;
  EXPECT_EQ(fresh.Initialize(nullptr, -1), -1);
  EXPECT_EQ(fresh.Initialize(empty.data(), -1), -1);

  // -2 before the change of directory: lists kept, stored name replaced.
  Load l(kHead + "1<S/>A<S/>STOP<E/>\n");
  std::string other = "other.txt", text = "noted";
  EXPECT_EQ(l.handler.Initialize(other.data(), -1), -2);
  EXPECT_EQ(l.At(1), "none");  // the file test of the new name fails
  WriteFile(l.dir / "other.txt", "1<S/>B<S/>STOP<E/>\n");
  EXPECT_EQ(l.At(1), "A|0");

  // No header: -1, both lists emptied, the handler still records.
  l.handler.SetErrorOccured(text.data());
  EXPECT_EQ(l.handler.Initialize(nullptr, -1), -1);
  EXPECT_EQ(l.At(1), "none");
  EXPECT_EQ(l.handler.GetNumberOfErrorOccured(), 0);
  l.handler.SetErrorOccured(text.data());
  EXPECT_EQ(l.handler.GetNumberOfErrorOccured(), 1);

  // The file ends inside a comment: -1, what was read before it stays.
  Expect(kHead + "1<S/>A<S/>STOP<E/>\n<!-- open\n2<S/>B<S/>STOP<E/>\n", -1, -1, {{1, kNoBlock, "A|0"}});
  Expect(kHead + "1<S/>A<S/>STOP<E/>\n<!-- x\ny -->", -1, -1, {{1, kNoBlock, "A|0"}});

  // An empty default directory: "/tmp" opens, chdir("") fails after the
  // lists were emptied; a name missing from the root gives -2.
  Load rooted(kHead + "1<S/>A<S/>STOP<E/>\n");
  rooted.handler.SetDefaultDir("");
  std::string tmp = "tmp", nothing = "no-such-entry-of-the-root";
  EXPECT_EQ(rooted.handler.Initialize(tmp.data(), -1), -3);
  EXPECT_EQ(rooted.At(1), "none");
  EXPECT_EQ(rooted.handler.Initialize(nothing.data(), -1), -2);
}

TEST(ErrorDefinitionFile, HeaderAndLineEnds) {
  Expect("", -1, -1, {});
  Expect("1<S/>A<S/>STOP<E/>\n", -1, -1, {{1, kNoBlock, "none"}});
  Expect("x" + kHead, -1, 0, {});
  Expect("<ErrorMessageDefinition>", -1, -1, {});
  // The preamble means nothing; the rest of the header line is skipped.
  Expect("<!--\nOffset<S/>5<E/>\n<ErrorMessageDefinition>2<S/>B<S/><E/>\n3<S/>C<S/>STOP<E/>\n", -1, 0,
         {{2, kNoBlock, "none"}, {3, kNoBlock, "C|0"}});
  // With or without a final line end, with CR LF: the same list.
  for (const std::string& body : {kHead + "1<S/>A<S/>STOP<E/>\n2<S/>B<S/>GO<E/>\n",
                                  kHead + "1<S/>A<S/>STOP<E/>\n2<S/>B<S/>GO<E/>",
                                  std::string("x\r\n<ErrorMessageDefinition>\r\n1<S/>A<S/>STOP<E/>\r\n"
                                              "2<S/>B<S/>GO<E/>\r\n")}) {
    Expect(body, -1, 0, {{1, kNoBlock, "A|0"}, {2, kNoBlock, "B|1"}});
  }
  // A statement the end of the file leaves open is dropped.
  Expect(kHead + "2<S/>B<S/>STOP", -1, 0, {{2, kNoBlock, "none"}});
}

TEST(ErrorDefinitionFile, JoinsLinesAndCarriesTheRest) {
  Expect(kHead + "7<S/>Line one\n  line two <S/>STOP<E/>\n", -1, 0, {{7, kNoBlock, "Line oneline two|0"}});
  Expect(kHead + "1<S/>A<S/>ST\nOP<E\n/>\n", -1, 0, {{1, kNoBlock, "A|0"}});  // a cut mark
  Expect(kHead + "1<S/>A<S/>STOP<E/>9\n2<S/>B<S/>STOP<E/>\n", -1, 0,
         {{1, kNoBlock, "A|0"}, {92, kNoBlock, "B|0"}});
  // Two statements on a line: one element; the text between the marks is
  // not read, and the carried text is read once.
  Expect(kHead + "1<S/>A<S/>STOP<E/>2<S/>B<S/>STOP<E/>3\n4<S/>C<S/>STOP<E/>\n", -1, 0,
         {{1, kNoBlock, "A|0"}, {2, kNoBlock, "none"}, {34, kNoBlock, "C|0"}, {4, kNoBlock, "none"}});

  // A line over 65535 bytes arrives in two pieces, each trimmed: the blank
  // at the end of the first piece is lost, the one inside stays.
  const std::string filler(65535 - 8, 'a');
  Load l(kHead + "1<S/>a " + filler + " b<S/>STOP<E/>\n");
  EXPECT_EQ(l.At(1), "a " + filler + "b|0");
}

TEST(ErrorDefinitionFile, Comments) {
  const std::string def = "1<S/>A<S/>STOP<E/>";
  Expect(kHead + def + " <!-- note -->\n", -1, 0, {{1, kNoBlock, "none"}});
  Expect(kHead + "<!-- note --> " + def + "\n", -1, 0, {{1, kNoBlock, "A|0"}});
  Expect(kHead + "<!-- a --><!-- b -->" + def + "\n", -1, 0, {{0, kNoBlock, "A|0"}});
  Expect(kHead + "1<S/>A<!-- c -->B<S/>STOP<E/>\n", -1, 0, {{0, kNoBlock, "|1"}});
  Expect(kHead + "1<S/>A<S/>\n<!-- inside -->\nSTOP<E/>\n", -1, 0, {{0, kNoBlock, "|1"}});
  Expect(kHead + std::string(5000, 'j') + "<!--x-->7\n<S/>A<S/>STOP<E/>\n", -1, 0, {{7, kNoBlock, "A|0"}});
  // Over lines: skipped up to the line holding "-->", which is looked for
  // one line at a time; what is read ahead of the comment goes too.
  Expect(kHead + "<!-- opened\n" + def + "\nend --> 2<S/>B<S/>STOP<E/>\n", -1, 0,
         {{1, kNoBlock, "none"}, {2, kNoBlock, "B|0"}});
  Expect(kHead + "3<S/>C<S/>\n<!-- x\n-->STOP<E/>\n", -1, 0, {{3, kNoBlock, "none"}, {0, kNoBlock, "|1"}});
  Expect(kHead + "<!\n-- x -\n->2<S/>B<S/><E/>\n", -1, -1, {});
}

TEST(ErrorDefinitionFile, DefectiveStatementsAndFields) {
  Expect(kHead + "Hello<E/>\n", -1, 0, {{0, kNoBlock, "|1"}});
  Expect(kHead + "<E/>\n", -1, 0, {{0, kNoBlock, "|1"}});
  Expect(kHead + "7<S/>Text<E/>\n", -1, 0, {{7, kNoBlock, "|1"}});
  Expect(kHead + "7<S/><S/><E/>\n", -1, 0, {{7, kNoBlock, "|1"}});
  Expect(kHead + "7<S/>a<S/>b<S/>STOP<E/>\n", -1, 0, {{7, kNoBlock, "a|1"}});
  Expect(kHead + "x<S/>Text<S/>STOP<E/>\n", -1, 0, {{0, kNoBlock, "Text|0"}});
  // Offset statements with the value 0: the definition behind lands at 0.
  for (const char* offset :
       {"Offset100<E/>", "Offset<S/>abc<E/>", "Offset<S/><E/>", "12<S/>Bad Offset value<S/>STOP<E/>"}) {
    Expect(kHead + offset + "\n5<S/>E<S/>STOP<E/>\n", -1, 0,
           {{5, 0, "E|0"}, {12, 0, "none"}, {12, kNoBlock, "none"}});
  }
  Expect(kHead + "12abc<S/>a<S/>STOP<E/>\n0x10<S/>b<S/> STOP <E/>\n-1<S/>c<S/>stop<E/>\n" +
             "70000<S/>d<S/>STOPPED<E/>\n 3 <S/>\t e\x7f\xff x\x80\x7f\t<S/><E/>\n" +
             "Offset<S/>70000<E/>\n1<S/>f<S/>STOP<E/>\nOffset<S/>4294967297<E/>\n1<S/>g<S/>STOP<E/>\n" +
             "1<S/>second<S/>STOP<E/>\n",
         -1, 0,
         {{12, kNoBlock, "a|0"}, {0, kNoBlock, "b|0"}, {65535, kNoBlock, "c|1"}, {4464, kNoBlock, "d|1"},
          {3, kNoBlock, "e\x7f\xff x|1"}, {1, 4464, "f|0"}, {1, 1, "g|0"}});
}

TEST(ErrorDefinitionFile, Selectors) {
  const std::string twice = kHead + "0<S/>before<S/><E/>\nOffset<S/>1<E/>\n1<S/>A<S/><E/>\n" +
                            "Offset<S/>1<E/>\n2<S/>B<S/><E/>\n";
  Expect(twice, 1, 0, {{1, 1, "A|1"}, {2, 1, "none"}, {0, kNoBlock, "none"}});
  Expect(twice, -1, 0, {{0, kNoBlock, "before|1"}, {1, 1, "A|1"}, {2, 1, "B|1"}});
  Expect(kHead + "Offset<S/>3<E/>\n1<S/>A<S/><E/>\nOffset<S/>9<E/>\nOffset<S/>3<E/>\n2<S/>B<S/><E/>\n", 3,
         0, {{1, 3, "A|1"}, {2, 3, "none"}});
  const std::string minus7 = kHead + "Offset<S/>-7<E/>\n1<S/>A<S/><E/>\n";
  Expect(minus7, -7, 0, {{1, 0xFFF9, "none"}});
  Expect(minus7, -1, 0, {{1, 0xFFF9, "A|1"}});
  Expect(minus7, 4, 0, {{1, 0xFFF9, "none"}});
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
  ErrorElement* first = h.GetErrorElement(1, kNoBlock);
  ASSERT_NE(first, nullptr);
  WriteFile(dir / "defs.txt", kHead + "1<S/>B<S/>STOP<E/>\n2<S/>C<S/>STOP<E/>\n");
  EXPECT_EQ(h.GetErrorList(-1), 0);
  EXPECT_EQ(h.GetErrorElement(1, kNoBlock), first);
  EXPECT_EQ(At(h, 2), "C|0");
}

TEST(ErrorDefinitionFile, WorkingDirectory) {
  StayHere stay;
  // A relative default directory is entered by Initialize and once more by
  // the reading pass, and the stored name is looked up from each place.
  TempDir root;
  ASSERT_EQ(chdir(root.path().c_str()), 0);
  ASSERT_EQ(mkdir("d", 0700) | mkdir("d/d", 0700) | mkdir("d/d/d", 0700), 0);
  ErrorHandler relative;
  relative.SetDefaultDir("d");
  std::string name = "defs.txt";
  WriteFile("d/defs.txt", kHead + "1<S/>outer<S/><E/>\n");
  EXPECT_EQ(relative.Initialize(name.data(), -1), -2);
  WriteFile("d/d/defs.txt", kHead + "1<S/>middle<S/><E/>\n");
  EXPECT_EQ(relative.Initialize(name.data(), -1), -2);
  WriteFile("d/d/d/defs.txt", kHead + "1<S/>inner<S/><E/>\n");
  EXPECT_EQ(relative.Initialize(name.data(), -1), 0);
  EXPECT_EQ(Cwd(), root.path());
  EXPECT_EQ(At(relative, 1), "inner|1");

  // Deep working directories, past 254 bytes and past what one chdir takes,
  // are restored whole.
  const std::string part(200, 'p');
  std::string absolute = "d/d/d/defs.txt";
  for (int depth : {2, 25}) {
    ASSERT_EQ(chdir(root.path().c_str()), 0);
    for (int i = 0; i < depth; ++i) ASSERT_TRUE(mkdir(part.c_str(), 0700) == 0 && chdir(part.c_str()) == 0);
    const std::string deep = Cwd();
    ASSERT_GT(deep.size(), depth * 200u);
    ErrorHandler h;
    h.SetDefaultDir(root.path().c_str());
    EXPECT_EQ(h.Initialize(absolute.data(), -1), 0);
    EXPECT_EQ(Cwd(), deep);
    for (int i = 0; i < depth; ++i) ASSERT_TRUE(chdir("..") == 0 && rmdir(part.c_str()) == 0);
  }

  // A working directory that cannot be saved is not left: -3.
  ASSERT_EQ(mkdir((root / "gone").c_str(), 0700), 0);
  ASSERT_EQ(chdir((root / "gone").c_str()), 0);
  ASSERT_EQ(rmdir((root / "gone").c_str()), 0);
  ErrorHandler h;
  h.SetDefaultDir(root.path().c_str());
  EXPECT_EQ(h.Initialize(absolute.data(), -1), -3);
  char area[4096];
  errno = 0;
  EXPECT_EQ(getcwd(area, sizeof area), nullptr);
  EXPECT_EQ(errno, ENOENT);
}

TEST(ErrorDefinitionFile, BadInputHasADefinedResult) {
  // A NUL byte ends the text of its line; the next line is joined to it.
  const char with_nul[] = "1<S/>A\0B<S/>STOP<E/>\n2<S/>C<S/>STOP<E/>\n";
  Expect(kHead + std::string(with_nul, sizeof with_nul - 1), -1, 0, {{1, kNoBlock, "A2|1"}});

  // A directory in place of the file reads as a file without header.
  Load directory(kHead);
  ASSERT_EQ(mkdir((directory.dir / "sub").c_str(), 0700), 0);
  std::string sub = "sub";
  EXPECT_EQ(directory.handler.Initialize(sub.data(), -1), -1);

  // Accumulated text that would pass 16 MiB is dropped before the next line.
  std::string huge = kHead;
  for (int i = 0; i < 4096; ++i) huge += std::string(4096, 'a') + "\n";
  Expect(huge + "1<S/>A<S/>STOP<E/>\n", -1, 0, {{1, kNoBlock, "A|0"}, {0, kNoBlock, "none"}});

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
