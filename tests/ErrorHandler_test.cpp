// ErrorHandler: the loader against the reading of DefinitionModel.h, from
// fixed seeds; the directories of a load; the record of errors and its file
// test.
#include <unistd.h>

#include "DefinitionModel.h"

TEST(ErrorDefinitionFile, LoadsWhatTheModelReads) {
  model::RunSeeds(defmodel::RunDefinitionFile, 400, 80);
}

// Initialize from a working directory holding folders d, e, e/e, e/e/e and
// files that name where each lookup of a relative default directory goes;
// the caller's working directory is left as it was.
TEST(ErrorDefinitionFile, DirectoriesOfALoad) {
  const testsupport::TempDir root;
  const testsupport::WorkingDirGuard back;
  ASSERT_EQ(chdir(root.path().c_str()), 0);
  for (const char* folder : {"d", "e", "e/e", "e/e/e"}) std::filesystem::create_directory(folder);
  for (const char* f : {"f", "e/f", "e/e/f", "e/g", "e/e/g", "e/e/e/g", "e/e/h", "e/e/e/h"})
    testsupport::WriteFile(f, "<ErrorMessageDefinition>\n");
  const std::tuple<const char*, const char*, int> rows[] = {
      {nullptr, "f", 0},  // no directory stored
      {nullptr, "x", -2},
      {nullptr, "d", -1},  // a folder reads as a file without header
      // relative: the name e/NAME is tested from the caller's directory, then
      // from e/, and read from e/e/
      {"e", "f", -2},
      {"e", "g", 0},
      {"e", "h", -2},
      {"", "tmp", -3},  // "/tmp" opens; an empty directory is not entered
  };
  for (const auto& [dir, file, result] : rows) {
    ErrorHandler h;
    if (dir) h.SetDefaultDir(dir);
    std::string name = file;
    EXPECT_EQ(h.Initialize(name.data(), -1), result) << file;
    EXPECT_EQ(std::filesystem::current_path(), root.path());
  }
}

// Texts are copied; nothing is recorded or read while the stored name does
// not open; the newest text is replaced; an append starts at the own count.
TEST(ErrorHandler, RecordsWhileTheFileOpens) {
  const testsupport::TempDir dir;
  ErrorHandler h, other;
  std::string a = "a", b = "b", name = "f", path = dir.path().substr(1) + "/f", none;
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
  h.SetLastErrorOccured(h.GetErrorOccured(3));  // its own text
  a = "x";
  EXPECT_EQ(h.GetNumberOfErrorOccured(), 4);
  const char* want[] = {nullptr, "a", nullptr, "b", "a", nullptr};
  for (int i = -1; i < 5; ++i) EXPECT_STREQ(h.GetErrorOccured(i), want[i + 1]) << i;
  std::remove((dir / "f").c_str());
  EXPECT_EQ(h.GetErrorOccured(0), nullptr);
}
