// vq0300-errdef, seen from outside: what it prints and how it exits, on a
// few small files and command lines.
#include <sys/wait.h>

#include <cstdlib>

#include <gtest/gtest.h>

#include "TestSupport.h"

#ifdef VQ0300_ERRDEF  // the path of the built tool
#define H "<ErrorMessageDefinition>\n"
#define TABLE "\nline  code      offset  number  continue  message\n"

// Rows: defs.txt, arguments, exit status, all of stdout (of --help its
// first line; empty: a usage error, with the usage on stderr). In the first
// file the comment line arrives in two reads, comments drop a long line and
// a statement begun behind a comment, and the last line has no line end.
TEST(ErrdefTool, ReportsAndExitStatus) {
  const std::string usage = "usage: vq0300-errdef FILE [--block N]\n", a(5000, 'a');
  const std::tuple<std::string, const char*, int, std::string> rows[] = {
      {"<ErrorMessageDefinition> x \nOffset<S/>1<E/>\n<!-- " + std::string(70000, 'x') + " -->\n" +
           a +
           "\n<!-- c --> 1<S/>A<S/>STOP<E/>\n<!-- c -->\n3<S/>C\nD<!-- d --> "
           "2<S/>%d\x1b[2Jb<S/>stop<E/>",
       "defs.txt", 1,
       "defs.txt: 2 definitions loaded (all blocks)\n" TABLE
       "   5  00010001       1       1         0  \"A\"\n"
       "   8  00010002       1       2         1  \"%d\\x1B[2Jb\"\n\n"
       "defs.txt:1: warning: text behind the header is not read: \"x\"\n"
       "defs.txt:5: warning: a comment removes the text ahead of it (from line 4): \"" +
           a.substr(0, 57) +
           "...\"\ndefs.txt:8: warning: a comment removes the text ahead of it (from line 7): "
           "\"3<S/>CD\"\ndefs.txt:8: warning: action \"stop\" is not \"STOP\": the definition "
           "continues (1)\n\n4 warnings\n"},
      {H "Offset<S/>1<E/>\n1<S/>A<S/>STOP<E/>\n", "--block=1 -- defs.txt", 0,
       "defs.txt: 1 definition loaded (block 1)\n" TABLE
       "   3  00010001       1       1         0  \"A\"\n\nno warnings\n"},
      {H "Offset<S/>1<E/>\n", "defs.txt --block 5", 1,
       "defs.txt: 0 definitions loaded (block 5)\n\ndefs.txt: warning: no offset statement has "
       "the value 5: nothing is loaded\n\n1 warning\n"},
      {"", "missing.txt", 2,
       "missing.txt: load failed with result -2: cannot open the file: No such file or "
       "directory\n"},
      {"", "defs.txt", 2, "defs.txt: load failed with result -1: the file is empty\n"},
      {"", ".", 2, ".: load failed with result -1: the file cannot be read: Is a directory\n"},
      {H "<!-- open\n-->", "defs.txt", 2,
       "defs.txt: load failed with result -1: the comment opened at line 2 closes on the last "
       "line (3), which has no line end\n"},
      {"", "--help", 0, usage},
      {"", "defs.txt --block -2", 2, ""},
      {"", "defs.txt defs.txt", 2, ""},
  };
  for (const auto& [file, args, status, out] : rows) {
    const testsupport::TempDir dir;
    testsupport::WriteFile(dir / "defs.txt", file);
    const std::string run = "cd '" + dir.path() + "' && '" VQ0300_ERRDEF "' " + args + " >o 2>e";
    const int exit = std::system(run.c_str());
    EXPECT_EQ(WIFEXITED(exit) ? WEXITSTATUS(exit) : -1, status) << args;
    const std::string o = testsupport::ReadFile(dir / "o"), e = testsupport::ReadFile(dir / "e");
    EXPECT_EQ(args == std::string("--help") ? o.substr(0, usage.size()) : o, out) << args;
    EXPECT_EQ(e.find(usage) != std::string::npos, out.empty()) << args;  // usage errors only
  }
}
#endif
