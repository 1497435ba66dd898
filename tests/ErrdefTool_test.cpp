// vq0300-errdef, seen from outside: what it prints and how it exits, on a
// few small files and command lines.
#include <sys/wait.h>

#include <cstdlib>

#include <gtest/gtest.h>

#include "TestSupport.h"

#ifdef VQ0300_ERRDEF  // the path of the built tool
#define H "<ErrorMessageDefinition>\n"

// Rows: defs.txt, arguments, exit status, all of stdout. The tool shows the
// scanner's line numbers and end state. In the first file the comment line
// arrives in two reads, comments drop a long line and a statement begun
// behind a comment, and the last line has no line end.
TEST(ErrdefTool, ReportsAndExitStatus) {
  const std::string a(5000, 'a');
  const std::tuple<std::string, const char*, int, std::string> rows[] = {
      {"<ErrorMessageDefinition> x \nOffset<S/>1<E/>\n<!-- " + std::string(70000, 'x') + " -->\n" +
           a +
           "\n<!-- c --> 1<S/>A<S/>STOP<E/>\n<!-- c -->\n3<S/>C\nD<!-- d --> "
           "2<S/>%d\x1b[2Jb<S/>stop<E/>",
       "defs.txt", 1,
       "defs.txt: 2 definitions loaded (all blocks)\n\n"
       "line  code      offset  number  continue  message\n"
       "   5  00010001       1       1         0  \"A\"\n"
       "   8  00010002       1       2         1  \"%d\\x1B[2Jb\"\n\n"
       "defs.txt:1: warning: text behind the header is not read: \"x\"\n"
       "defs.txt:5: warning: a comment removes the text ahead of it (from line 4): \"" +
           a.substr(0, 57) +
           "...\"\ndefs.txt:8: warning: a comment removes the text ahead of it (from line 7): "
           "\"3<S/>CD\"\ndefs.txt:8: warning: action \"stop\" is not \"STOP\": the definition "
           "continues (1)\n\n4 warnings\n"},
      {H "Offset<S/>1<E/>\n", "defs.txt --block 5", 1,
       "defs.txt: 0 definitions loaded (block 5)\n\ndefs.txt: warning: no offset statement has "
       "the value 5: nothing is loaded\n\n1 warning\n"},
      {"", "defs.txt", 2, "defs.txt: load failed with result -1: the file is empty\n"},
      {"", ".", 2, ".: load failed with result -1: the file cannot be read: Is a directory\n"},
      {H "<!-- open\n-->", "defs.txt", 2,
       "defs.txt: load failed with result -1: the comment opened at line 2 closes on the last "
       "line (3), which has no line end\n"},
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
