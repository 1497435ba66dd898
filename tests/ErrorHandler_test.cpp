// ErrorHandler: the loader against the reading of DefinitionModel.h, from
// fixed seeds and on files the seeds seldom make; the directories of a load;
// the record of errors and its file test.
#include <sys/stat.h>
#include <unistd.h>

#include "DefinitionModel.h"

#define H "<ErrorMessageDefinition>\n"

TEST(ErrorDefinitionFile, LoadsWhatTheModelReads) {
  model::RunSeeds(defmodel::RunDefinitionFile, 400, 80);
  // a message behind one blank, with bytes above 0x7E, and an action cut from
  // a field with blanks ahead of it, which the seeds seldom make
  defmodel::Check(
      H "-1<S/>c\t\x7f<S/>\n<E/>\r\n70000<S/> d\x7f\xff e\x80 <S/>STOP<E/>\n3<S/>  xSTOP<E/>\n",
      -1);
}

// Initialize from a working directory holding folders d, e, e/e, e/e/e and
// files that name where each lookup of a relative default directory goes;
// the caller's working directory is left as it was.
TEST(ErrorDefinitionFile, DirectoriesOfALoad) {
  const testsupport::TempDir root;
  const testsupport::WorkingDirGuard back;
  ASSERT_EQ(chdir(root.path().c_str()), 0);
  for (const char* folder : {"d", "e", "e/e", "e/e/e"}) std::filesystem::create_directory(folder);
  for (const char* f : {"f", "e/f", "e/e/f", "e/g", "e/e/g", "e/e/e/g", "e/e/h", "e/e/e/h", "e/k"})
    testsupport::WriteFile(f, H);
  const std::tuple<const char*, const char*, int> rows[] = {
      {nullptr, "f", 0},  // no directory stored
      {nullptr, "x", -2},
      {nullptr, "d", -1},  // a folder reads as a file without header
      // relative: the name e/NAME is tested from the caller's directory, then
      // from e/, and read from e/e/
      {"e", "f", -2},
      {"e", "g", 0},
      {"e", "h", -2},
      {"e", "k", -2},   // not from e/
      {"", "tmp", -3},  // "/tmp" opens; an empty directory is not entered
  };
  for (const auto& [dir, file, result] : rows) {
    ErrorHandler h;
    if (dir) h.SetDefaultDir(dir);
    std::string name = file;
    EXPECT_EQ(h.Initialize(name.data(), -1), result) << file;
    EXPECT_EQ(std::filesystem::current_path(), root.path());
  }
  // The caller's directory comes back also when it is longer than a single
  // chdir takes; one that cannot be saved is not left: -3.
  ErrorHandler h;
  h.SetDefaultDir(root.path().c_str());
  std::string name = "f", part(250, 'p');
  int depth = 0;
  while (depth < 20 && mkdir(part.c_str(), 0700) == 0 && chdir(part.c_str()) == 0) ++depth;
  const auto deep = std::filesystem::current_path();
  EXPECT_EQ(h.Initialize(name.data(), -1), 0);
  EXPECT_EQ(std::filesystem::current_path(), deep);
  while (depth > 0 && chdir("..") == 0 && rmdir(part.c_str()) == 0) --depth;
  EXPECT_EQ(depth, 0);  // else TempDir could not remove a path that long
  ASSERT_EQ(mkdir("gone", 0700), 0);
  ASSERT_EQ(chdir("gone"), 0);
  ASSERT_EQ(rmdir((root / "gone").c_str()), 0);
  EXPECT_EQ(h.Initialize(name.data(), -1), -3);
  EXPECT_EQ(getcwd(nullptr, 0), nullptr);  // still in the removed folder
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
  h.SetLastErrorOccured(b.data());  // none yet: records one
  h.SetLastErrorOccured(a.data());  // replaces the only one
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
