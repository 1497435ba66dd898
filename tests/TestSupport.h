// Helpers shared by the test programs: a fresh temporary directory per test,
// small file helpers, and capture of a standard stream by redirecting its
// file descriptor.
#ifndef VQ0300_TESTS_TESTSUPPORT_H
#define VQ0300_TESTS_TESTSUPPORT_H

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace testsupport {

// A directory under the system's temporary folder, removed with everything
// in it when the object goes.
class TempDir {
 public:
  TempDir() : path_((std::filesystem::temp_directory_path() / "vq0300-test-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) std::abort();
  }
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// Restores the working directory of its construction when it goes, so a test
// that changes directory leaves the process where it found it, also when an
// assertion ends the test early.
struct WorkingDirGuard {
  const std::filesystem::path path = std::filesystem::current_path();
  ~WorkingDirGuard() {
    std::error_code ignored;
    std::filesystem::current_path(path, ignored);
  }
};

// Removes the file first: truncating a file that exists costs a flush here.
inline void WriteFile(const std::string& path, const std::string& content) {
  std::remove(path.c_str());
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << content;
}

inline std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Captures what is written to a C stream (stdout or stderr) between
// construction and Release(), at the level of the file descriptor, so output
// of the library through printf-family calls is seen as well.
class CaptureStream {
 public:
  explicit CaptureStream(FILE* stream) : stream_(stream), file_(std::tmpfile()) {
    std::fflush(stream_);
    saved_ = dup(fileno(stream_));
    if (file_ == nullptr || saved_ < 0) std::abort();
    dup2(fileno(file_), fileno(stream_));
  }
  ~CaptureStream() { Release(); }
  CaptureStream(const CaptureStream&) = delete;
  CaptureStream& operator=(const CaptureStream&) = delete;

  // Restores the stream and returns everything written while captured.
  std::string Release() {
    if (file_ != nullptr) {
      std::fflush(stream_);
      dup2(saved_, fileno(stream_));
      close(saved_);
      std::rewind(file_);
      for (int c; (c = std::fgetc(file_)) != EOF;) text_ += static_cast<char>(c);
      std::fclose(file_);
      file_ = nullptr;
    }
    return text_;
  }

 private:
  FILE* stream_;
  FILE* file_;
  int saved_;
  std::string text_;
};

}  // namespace testsupport

#endif  // VQ0300_TESTS_TESTSUPPORT_H
