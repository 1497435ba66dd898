// ErrorHandler: the loader against the reading of DefinitionModel.h, from
// fixed seeds and on the documented statements, selectors and results; the
// directories of a load; the record of errors and its file test.
#include <sys/stat.h>
#include <unistd.h>

#include <sstream>

#include "DefinitionModel.h"

#define H "<ErrorMessageDefinition>\n"

namespace {

// Each row's file must load as the model reads it (a disagreement ends the
// test), and the model must read: the result, then ";code message|continue"
// per element.
void CheckRows(const std::vector<std::tuple<std::string, int, const char*>>& rows) {
  for (const auto& [file, selector, loaded] : rows) {
    defmodel::Check(file, selector);
    defmodel::Defs defs;
    std::ostringstream out;
    out << defmodel::Read(file, selector, defs) << std::hex << std::uppercase;
    for (const auto& [code, message, cont] : defs)
      out << ";" << code << " " << message << "|" << cont;
    EXPECT_EQ(out.str(), loaded) << file;
  }
}

}  // namespace

TEST(ErrorDefinitionFile, LoadsWhatTheModelReads) {
  model::RunSeeds(defmodel::RunDefinitionFile, 400, 80);
}

// Missing marks shift or empty the fields; trimming, joining, comments.
TEST(ErrorDefinitionFile, DocumentedStatements) {
  CheckRows(
      {{H "Hello<E/>\n7<S/>Text<E/>\n8<S/><S/><E/>\n9<S/>a<S/>b<S/>STOP<E/>\n", -1,
        "0;FFFE0000 |1;FFFE0007 |1;FFFE0008 |1;FFFE0009 a|1"},
       {H "x<S/>T<S/> STOP <E/>\n12abc<S/>a<S/>stop<E/>\n0x10<S/>b<S/>STOPPED<E/>\n", -1,
        "0;FFFE0000 T|0;FFFE000C a|1;FFFE0000 b|1"},
       {H "-1<S/>c\t\x7f<S/>\n<E/>\r\n70000<S/> d\x7f\xff e\x80 <S/>STOP<E/>\n", -1,
        "0;FFFEFFFF c|1;FFFE1170 d\x7f\xff e|0"},
       {H "1<S/>A<S/><E/>9\n2<S/>B<S/><E/>\n7<S/>Line one\n line two <S/><E/>\n", -1,
        "0;FFFE0001 A|1;FFFE005C B|1;FFFE0007 Line oneline two|1"},
       {H "1<S/>A<S/><E/>2<S/>B<S/><E/>3\n4<S/>C<S/><E/>\n2<S/>B<S/>STOP", -1,
        "0;FFFE0001 A|1;FFFE0022 C|1"},
       {H "1<S/>A<S/><E/> <!-- c -->\n<!-- c --> 2<S/>B<S/><E/>\n<!-- a --><!-- b -->3<S/>C<E/>\n",
        -1, "0;FFFE0002 B|1;FFFE0000 |1"},
       {H
        "4<S/>A<!-- c -->B<S/>STOP<E/>\n3<S/>C<S/>\n<!-- c\n1<S/>A<S/><E/>\nc --> 2<S/>B<S/><E/>\n",
        -1, "0;FFFE0000 |1;FFFE0002 B|1"}});
}

TEST(ErrorDefinitionFile, ResultsSelectorsAndOffsets) {
  const std::string blocks =
      "x\n" H
      "0<S/>F<S/><E/>\nOffset<S/>100<E/>\n1<S/>A<S/><E/>\n"
      "Offset<S/>100<E/>\n2<S/>C<S/><E/>\nOffset<S/>200<E/>\n1<S/>B<S/><E/>\n";
  const std::string odd = H
      "Offset<S/>-7<E/>\n1<S/>G<S/><E/>\nOffset<S/>70000<E/>\n2<S/>A<S/><E/>\n"
      "Offset<S/>4294967297<E/>\n3<S/>B<S/><E/>\nOffset100<E/>\n4<S/>C<S/><E/>\n"
      "Offset<S/>abc<E/>\n5<S/>D<S/><E/>\n6<S/>Bad Offset<S/><E/>\n";
  CheckRows({{"", -1, "-1"},
             {"1<S/>A<S/><E/>\n<!--\n", -1, "-1"},
             {"x\n<ErrorMessageDefinition>", -1, "-1"},
             {"x\n" H, -1, "0"},
             {H "1<S/>A<S/><E/>\n<!-- open\n2<S/>B<S/><E/>\n", -1, "-1;FFFE0001 A|1"},
             {H "<!-- open\n-->", -1, "-1"},
             {blocks, -1, "0;FFFE0000 F|1;640001 A|1;640002 C|1;C80001 B|1"},
             {blocks, 100, "0;640001 A|1"},
             {blocks, 200, "0;C80001 B|1"},
             {blocks, 300, "0"},
             {odd, -1, "0;FFF90001 G|1;11700002 A|1;10003 B|1;4 C|1;5 D|1"},
             {odd, -7, "0"},
             {odd, 1, "0;10003 B|1"}});
}

// Initialize from a working directory holding made ("x/" is a folder).
TEST(ErrorDefinitionFile, DirectoriesAndTheirResults) {
  const std::tuple<const char*, const char*, const char*, int> rows[] = {
      {nullptr, "f", "f", 0},  // no directory stored
      {nullptr, "f", "", -2},
      {nullptr, "d", "d/", -1},             // a folder reads as a file without header
      {"d", "f", "d/ d/f", -2},             // relative: the name is tested once more from d/
      {"d", "f", "d/ d/f d/d/ d/d/f", -2},  // and read from d/d/
      {"d", "f", "d/ d/f d/d/ d/d/f d/d/d/ d/d/d/f", 0},
      {"", "tmp", "", -3},  // "/tmp" opens; an empty directory is not entered
  };
  for (const auto& [dir, file, made, result] : rows) {
    const testsupport::TempDir root;
    const testsupport::WorkingDirGuard back;
    ASSERT_EQ(chdir(root.path().c_str()), 0);
    std::istringstream in(made);
    for (std::string m; in >> m;) {
      if (m.back() == '/') std::filesystem::create_directory(m);
      if (m.back() != '/') testsupport::WriteFile(m, H);
    }
    ErrorHandler h;
    if (dir) h.SetDefaultDir(dir);
    std::string name = file;
    EXPECT_EQ(h.Initialize(name.data(), -1), result) << made;
    EXPECT_EQ(std::filesystem::current_path(), root.path());
  }
}

// The caller's working directory comes back also when it is longer than a
// single chdir takes; one that cannot be saved is not left: -3.
TEST(ErrorDefinitionFile, CallersWorkingDirectory) {
  const testsupport::TempDir root;
  const testsupport::WorkingDirGuard back;
  testsupport::WriteFile(root / "f", H);
  ErrorHandler h;
  h.SetDefaultDir(root.path().c_str());
  std::string name = "f", part(250, 'p');
  ASSERT_TRUE(std::filesystem::create_directory(root / "gone"));
  ASSERT_EQ(chdir((root / "gone").c_str()), 0);
  ASSERT_EQ(rmdir((root / "gone").c_str()), 0);
  EXPECT_EQ(h.Initialize(name.data(), -1), -3);
  EXPECT_EQ(getcwd(nullptr, 0), nullptr);  // still in the removed folder
  ASSERT_EQ(chdir(root.path().c_str()), 0);
  int depth = 0;
  while (depth < 20 && mkdir(part.c_str(), 0700) == 0 && chdir(part.c_str()) == 0) ++depth;
  const auto deep = std::filesystem::current_path();
  EXPECT_EQ(h.Initialize(name.data(), -1), 0);
  EXPECT_EQ(std::filesystem::current_path(), deep);
  while (depth > 0 && chdir("..") == 0 && rmdir(part.c_str()) == 0) --depth;
  EXPECT_EQ(depth, 0);  // else TempDir could not remove a path that long
}

// Texts are copied; nothing is recorded or read while the stored name does
// not open; the newest text is replaced; an append starts at the own count.
TEST(ErrorHandler, RecordsWhileTheFileOpens) {
  const testsupport::TempDir dir;
  ErrorHandler h, other;
  std::string a = "a", b = "b", name = "f", path = dir.path().substr(1) + "/f", none;
  h.SetErrorOccured(a.data());  // no name stored
  h.SetDefaultDir(dir.path().c_str());
  other.SetDefaultDir(nullptr);  // stores "", which gives "/" and the name
  h.SetErrorFilename(name.data());
  other.SetErrorFilename(path.data());
  h.SetErrorFilename(none.data());  // an empty name keeps the stored one
  h.SetErrorOccured(a.data());      // the file does not exist yet
  testsupport::WriteFile(dir / "f", "");
  h.SetLastErrorOccured(a.data());  // none yet: records one
  h.SetErrorOccured(nullptr);
  for (char* text : {b.data(), a.data(), b.data(), a.data()}) other.SetErrorOccured(text);
  h.AppendErrorOccured(&other);
  h.SetLastErrorOccured(h.GetErrorOccured(2));
  h.SetLastErrorOccured(h.GetErrorOccured(3));  // its own text
  a = "x";
  EXPECT_EQ(h.GetNumberOfErrorOccured(), 4);
  const char* want[] = {nullptr, "a", nullptr, "b", "b", nullptr};
  for (int i = -1; i < 5; ++i) EXPECT_STREQ(h.GetErrorOccured(i), want[i + 1]) << i;
  std::remove((dir / "f").c_str());
  EXPECT_EQ(h.GetErrorOccured(0), nullptr);
}
