// LFile beside a model of its states, its stored code and the files it reads
// and writes; as tables, the codes and their texts and the failures of
// streams that the model keeps sound.
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <optional>

#include "FormatModel.h"

namespace {

// The folder of the table tests.
const testsupport::TempDir kDir;

// Mode texts with the flags Open raises (binary 1, read 2, write 4), or
// minus the errno of a refused fopen.
const std::pair<const char*, int> kModes[] = {{"r", 2},   {"rb", 3}, {"w", 4},  {"wb", 5},
                                              {"a", 4},   {"ab", 5}, {"r+", 6}, {"w+", 6},
                                              {"r+b", 7}, {"a+", 6}, {"at", 4}, {"", -EINVAL}};

// The object as it should be, over the files "a" and "b" (nullopt while
// missing); name 2 lies in a directory that does not exist.
struct FileModel {
  std::optional<std::string>* data;
  bool stream = false, eof = false, append = false;
  int flags = 0, code = 0, name = -1;
  std::size_t pos = 0;

  int Open(int which, const char* mode, int modeFlags, bool closeFirst) {
    flags = 0;
    if (which < 0) return code = LFILE_ERR_FILENAME;
    if (stream && !closeFirst) return code = LFILE_ERR_CONFLICT;
    if (stream && (Close(), code != 0)) return code;
    if (modeFlags < 0) return code = -modeFlags;
    if (which == 2 || (*mode == 'r' && !data[which])) return code = ENOENT;
    if (*mode == 'w' || !data[which]) data[which] = "";
    name = which, flags = modeFlags, stream = true, eof = false, append = *mode == 'a';
    return pos = 0, 0;
  }
  int Close() { return stream = false, name = -1, 0; }
  int Rewind() { return !stream ? code = -3 : (eof = false, pos = 0, code = 0); }
  int ValidRead() { return code ? code : code = !stream ? -3 : !(flags & 2) ? -4 : eof ? -6 : 0; }
  int ValidWrite() { return code ? code : code = !stream ? -3 : !(flags & 4) ? -5 : 0; }
  // Up to n bytes from pos, ending behind a line end when line; the end of
  // the file is met when fewer come and no line end stopped them.
  std::string Take(int n, bool line) {
    std::string out = data[name]->substr(pos, std::max(n, 0));
    if (line && out.find('\n') != std::string::npos) out.resize(out.find('\n') + 1);
    const bool stopped = line && !out.empty() && out.back() == '\n';
    eof = eof || (static_cast<int>(out.size()) < n && !stopped);
    return pos += out.size(), out;
  }
  int Put(const std::string& s) {
    if (code = 0, ValidWrite() != 0) return code;
    pos = append ? data[name]->size() : pos;
    return data[name]->replace(pos, s.size(), s), pos += s.size(), 0;
  }
};

void RunFileOps(model::OpInput& in) {
  const testsupport::TempDir dir;
  const std::string names[] = {dir / "a", dir / "b", dir / "none/c"};
  // "b" starts with a line longer than ReadLine(LCString&) takes at once.
  std::optional<std::string> files[2] = {std::nullopt, std::string(7000, 'x') + "\n"};
  testsupport::WriteFile(names[1], *files[1]);
  FileModel m{files};
  std::optional<LFile> file(std::in_place);
  char last = 0;  // 'r' or 'w': reads and writes meet only across a Rewind
  while (!in.Done()) {
    const int op = in.Int(0, 12), which = in.Int(-1, 3), n = in.Int(-1, 8);
    const auto [mode, modeFlags] = kModes[in.Int(0, std::size(kModes) - 1)];
    const std::string bytes = in.Bytes(6, "ab\n"), text = in.Text(4, "xy\n");
    const int name = which == 3 ? m.name : which;  // 3: the object's own name
    const char* path = which == 3 ? file->GetFilename() : name < 0 ? nullptr : names[name].c_str();
    model::Step() = "operation " + std::to_string(op) + " on " + std::to_string(name) + " " + mode;
    const char kind = op >= 9 ? 'w' : op >= 5 ? 'r' : 0;
    if (kind && last && kind != last) MODEL_CHECK(file->Rewind() == m.Rewind());
    last = op < 4 ? 0 : kind ? kind : last;
    // The model first.
    int expected = 0, result = 0;
    std::string got(12, '-'), want = got, s;
    if (op == 0) m = FileModel{files}, m.name = name;
    if (op <= 1) expected = m.Open(name, mode, modeFlags, op == 0 || n & 1);
    if (op == 4) expected = n & 1 ? m.ValidRead() : m.ValidWrite();
    if (op >= 5 && op <= 8) {
      expected = (m.code = 0, op == 8 && m.stream && m.eof) ? -1 : m.ValidRead();
      const int count[] = {n, n + 2, 5998, 1};
      s = expected ? "" : m.Take(count[op - 5], op == 6 || op == 7);
    }
    const std::string put[] = {std::string(1, bytes[0]), bytes.substr(0, std::max(n, 0)),
                               (text + '\0').substr(0, std::max(n, 0)), std::to_string(n) + "|"};
    if (op >= 9) expected = m.Put(op == 12 && n < 0 ? "" : put[op - 9]);
    // A null format is refused once the object is ready to write.
    if (op == 12 && n < 0 && expected == 0) expected = m.code = LFILE_ERR_FORMAT;
    if (op == 5) want.replace(0, s.size(), s);
    if (op == 6 && !s.empty()) want.replace(0, s.size() + 1, s.c_str(), s.size() + 1);
    if (op == 7) want = s.empty() ? "-" : s.c_str();
    if (op == 8) want[0] = expected ? '-' : s.empty() ? '\xFF' : s[0];
    // Then the object.
    LCString line("-");
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    // The constructor has no result of its own.
    if (op == 0) file.emplace(name < 0 ? nullptr : names[name].c_str(), mode), result = expected;
    if (op == 1) result = file->Open(path, mode, n & 1);
    if (op == 2) expected = m.Close(), result = file->Close();
    if (op == 3) expected = m.Rewind(), result = file->Rewind();
    if (op == 4) result = n & 1 ? file->ValidRead() : file->ValidWrite();
    if (op == 5) result = file->Read(n, reinterpret_cast<unsigned char*>(&got[0]));
    if (op == 6) result = file->ReadLine(n + 3, &got[0]);
    if (op == 7) result = file->ReadLine(line), got = line.c_str();
    if (op == 8) result = file->ReadChar(got[0]);
    if (op == 9) result = file->WriteChar(bytes[0]);
    if (op == 10) result = file->Write(std::min<int>(n, bytes.size()), data);
    if (op == 11) result = file->Write(n, LCString(text.c_str()));
    if (op == 12) result = file->WriteLine(n < 0 ? nullptr : "%d|", n);
    MODEL_CHECK(result == expected);
    MODEL_CHECK(got == want);
    MODEL_CHECK(file->GetErrorCode() == m.code);
    MODEL_CHECK(file->IsOpen() == m.stream);
    MODEL_CHECK(file->IsBinary() + 2 * file->IsRead() + 4 * file->IsWrite() == m.flags);
    MODEL_CHECK(!file->IsAppend());  // Open never raises it
    MODEL_CHECK(m.name < 0 ? !file->GetFilename() : names[m.name] == file->GetFilename());
    for (int i = 0; i < 2 && !m.stream; ++i) {
      MODEL_CHECK(LFile::exists(names[i].c_str()) == files[i].has_value());
      MODEL_CHECK(testsupport::ReadFile(names[i]) == files[i].value_or(""));
    }
  }
}

// Stores codes and raises the append flag as a derived class may.
struct Derived : LFile {
  Derived() { m_byMode = LFILE_MODE_APPEND; }
  char const* Text(int code) { return m_nErrorCode = code, GetErrorMessage(); }
  char const* OnGetErrorMessage() override { return "derived"; }
};

}  // namespace

TEST(LFile, OperationsFollowTheModel) { model::RunSeeds(RunFileOps, 20, 2000); }

// Codes 0 to -7 have texts of their own, those to -100 none; those below are
// the hook's, positive ones errno values.
TEST(LFile, CodesHaveTheirTexts) {
  Derived file;
  int code = 1;
  for (const char* text : {"No Error!", "LFile conflict : Unable to open file.",
                           "Unsupported print format.", "File not opened.", "File not readable.",
                           "File not writable.", "End Of File Reached.", "Invalid Filename."})
    EXPECT_STREQ(file.Text(--code), text) << code;
  while (--code >= -100) EXPECT_STREQ(file.Text(code), "Unknown error.") << code;
  EXPECT_STREQ(file.Text(-101), "derived");
  EXPECT_STREQ(file.Text(EACCES), std::strerror(EACCES));
  EXPECT_TRUE(file.IsAppend());  // only a derived class raises it
}

TEST(LFile, StreamFailuresStoreTheirCodes) {
  unsigned char bytes[2] = {};
  // fopen reads "rw" as "r" and "wr" as "w"; the object takes both as read
  // and write, so the stream refuses the other direction (ferror).
  EXPECT_GT(LFile((kDir / "f").c_str(), "wr").Read(1, bytes), 0);
  EXPECT_GT(LFile((kDir / "f").c_str(), "wr").ReadLine(2, reinterpret_cast<char*>(bytes)), 0);
  EXPECT_GT(LFile((kDir / "f").c_str(), "rw").Write(1, bytes), 0);
  EXPECT_GT(LFile((kDir / "f").c_str(), "rw").WriteChar('x'), 0);
  EXPECT_GT(LFile((kDir / "f").c_str(), "rw").WriteLine("%d", 1), 0);
  EXPECT_EQ(LFile((kDir / "f").c_str(), "rw").WriteLine("no ferror test of the last piece"), 0);
  // A failed fclose drops the stream and keeps the name.
  LFile full("/dev/full", "w");
  EXPECT_EQ(full.WriteChar('x'), 0);
  EXPECT_EQ(full.Close(), ENOSPC);
  EXPECT_FALSE(full.IsOpen());
  EXPECT_STREQ(full.GetFilename(), "/dev/full");
}

TEST(LFile, ProbesOfTheFileSystem) {
  const std::string probe = kDir / "40.88.26.60.71";
  testsupport::WriteFile(probe, "old");
  EXPECT_EQ(LFile::IsDirectoryWritable((kDir.path() + "/").c_str()), 1);
  EXPECT_EQ(LFile::exists(probe.c_str()), 0);  // the file of the probe, truncated and removed
  EXPECT_EQ(LFile::IsDirectoryWritable((kDir / "none").c_str()), 0);
  EXPECT_EQ(LFile::exists(nullptr), 0);
  EXPECT_EQ(LFile::IsDirectoryWritable(nullptr), 0);
}
