// Saving, entering and restoring the working directory of the process.
#include "WorkingDirectory_internal.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <vector>

namespace vq0300_internal {
namespace {

// A working directory longer than the system takes in one chdir is entered
// again in pieces of at most this many bytes, cut at slashes.
constexpr std::size_t kPathPiece = 1024;

}  // namespace

bool SaveWorkingDirectory(std::string& saved) {
  std::vector<char> area(256);
  while (getcwd(area.data(), area.size()) == nullptr) {
    if (errno != ERANGE) return false;
    area.resize(area.size() * 2);
  }
  saved = area.data();
  return true;
}

void ReturnToDirectory(const std::string& path) {
  if (chdir(path.c_str()) == 0) return;
  if (errno != ENAMETOOLONG || path.empty() || path[0] != '/') return;
  if (chdir("/") != 0) return;
  std::size_t from = 1;
  while (from < path.size()) {
    std::size_t to = path.size();
    if (to - from > kPathPiece) {
      to = path.rfind('/', from + kPathPiece);
      if (to == std::string::npos || to <= from) return;
    }
    if (chdir(path.substr(from, to - from).c_str()) != 0) return;
    from = to + 1;
  }
}

DirectoryVisit::~DirectoryVisit() {
  if (entered_) ReturnToDirectory(saved_);
}

bool DirectoryVisit::Enter(const char* dir) {
  if (!SaveWorkingDirectory(saved_)) return false;
  entered_ = chdir(dir) == 0;
  return entered_;
}

}  // namespace vq0300_internal
