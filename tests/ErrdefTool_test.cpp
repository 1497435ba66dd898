// vq0300-errdef, seen from outside: what it prints and how it exits, on a
// few small files and command lines.
#include <sys/wait.h>

#include <cstdlib>

#include <gtest/gtest.h>

#include "TestSupport.h"

#ifdef VQ0300_ERRDEF  // the path of the built tool

// Rows: defs.txt, arguments, exit status, all of stdout. The tool shows the
// scanner's line numbers and end state. The first file selects block 0, has
// text right behind the header and a statement on three lines ahead of a long
// one; its comment line arrives in two reads, a NUL byte ends the text of a
// long line, comments drop that line and a statement begun on the line before,
// text behind an "<E/>" moves to the next line, and the last line has no line
// end. In the second a statement of exactly 16 MiB behind a comment stands
// ahead of the blocks, and a lone comment end stays in a statement whose first
// line holds only its first character. An empty file and one without a header
// fail the load, each with its own reason.
TEST(ErrdefTool, ReportsAndExitStatus) {
  const std::string a(30000, 'a');
  const std::tuple<std::string, const char*, int, std::string> rows[] = {
      {"<ErrorMessageDefinition>x\nOffset<S/>0<E/>\n7 <S/>\nA\nB\n<S/>STOP<E/>\n8<S/>" +
           std::string(16, 'b') + "<S/>STOP<E/>\n<!-- " + std::string(70000, 'x') + " -->\n" + a +
           '\0' +
           "\n<!-- c --> 1<S/>A<S/>STOP<E/> 2<S/>B\nC<!-- c "
           "-->\n2<S/>%d\x1b[2Jb\n<S/>stop<E/>x<E/> tail",
       "defs.txt --block 0", 1,
       "defs.txt: 4 definitions loaded (block 0)\n\n"
       "line  code      offset  number  continue  message\n"
       "   3  00000007       0       7         0  \"AB\"\n"
       "   7  00000008       0       8         0  \"bbbbbbbbbbbbbbbb\"\n"
       "  10  00000001       0       1         0  \"A\"\n"
       "  12  00000002       0       2         1  \"%d\\x1B[2Jb\"\n\n"
       "defs.txt:1: warning: text behind the header is not read: \"x\"\n"
       "defs.txt:10: warning: a comment removes the text ahead of it (from line 9): \"" +
           a.substr(0, 57) +
           "...\"\n"
           "defs.txt:10: warning: text behind \"<E/>\" is joined to the front of line 11: "
           "\"2<S/>B\"\n"
           "defs.txt:11: warning: a comment removes the text ahead of it (from line 10): "
           "\"2<S/>BC\"\n"
           "defs.txt:12: warning: action \"stop\" is not \"STOP\": the definition continues (1)\n"
           "defs.txt:13: warning: more than one \"<E/>\": only the first statement is read, "
           "\"x<E/>\" is lost\n"
           "defs.txt:13: warning: a statement cut off by the end of the file (no \"<E/>\") is "
           "dropped: \"tail\"\n\n7 warnings\n"},
      {"<ErrorMessageDefinition>\n<!--c-->1<S/>" + std::string((1 << 24) - 17, 'x') +
           "<S/>STOP<E/>\nOffset<S/>1<E/>\n2\n<S/>-->b<S/>STOP<E/>\n",
       "defs.txt --block 5", 1,
       "defs.txt: 0 definitions loaded (block 5)\n\n"
       "defs.txt:2: warning: a definition stands ahead of the first offset statement: it belongs "
       "to no block and is not loaded\n"
       "defs.txt:4: warning: a comment mark stays in the statement text: "
       "\"2<S/>-->b<S/>STOP<E/>\"\n"
       "defs.txt: warning: no offset statement has the value 5: nothing is loaded\n\n3 warnings\n"},
      {"", "defs.txt", 2, "defs.txt: load failed with result -1: the file is empty\n"},
      {"x\n", "defs.txt", 2,
       "defs.txt: load failed with result -1: no line holds \"<ErrorMessageDefinition>\"\n"},
  };
  for (const auto& [file, args, status, out] : rows) {
    const testsupport::TempDir dir;
    testsupport::WriteFile(dir / "defs.txt", file);
    const std::string run = "cd '" + dir.path() + "' && '" VQ0300_ERRDEF "' " + args + " >o 2>e";
    const int exit = std::system(run.c_str());
    EXPECT_EQ(WIFEXITED(exit) ? WEXITSTATUS(exit) : -1, status) << args;
    EXPECT_EQ(testsupport::ReadFile(dir / "o"), out) << args;
  }
}
#endif
