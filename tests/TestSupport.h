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
#include <memory>
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
  explicit CaptureStream(FILE* stream) : stream_(stream) {
    std::fflush(stream_);
    dup2(fileno(file_.get()), fileno(stream_));
  }
  ~CaptureStream() { Release(); }

  // Restores the stream and returns everything written while captured.
  std::string Release() {
    if (saved_ >= 0) {
      std::fflush(stream_);
      dup2(saved_, fileno(stream_));
      close(saved_);
      saved_ = -1;
      std::rewind(file_.get());
      for (int c; (c = std::fgetc(file_.get())) != EOF;) text_ += static_cast<char>(c);
    }
    return text_;
  }

 private:
  FILE* stream_;
  std::unique_ptr<FILE, int (*)(FILE*)> file_{std::tmpfile(), &std::fclose};
  int saved_ = dup(fileno(stream_));
  std::string text_;
};

}  // namespace testsupport

#endif  // VQ0300_TESTS_TESTSUPPORT_H
