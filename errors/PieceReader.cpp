// The piece reader of definition files: fgets pieces with exact line counts.
#include "PieceReader_internal.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace vq0300_internal {

PieceReader::PieceReader(std::FILE* file) : file_(file), area_(kReadSize, '\n') {}

const char* PieceReader::Read(int& line) {
  if (ended_) return nullptr;
  std::fill(area_.begin(), area_.begin() + static_cast<std::ptrdiff_t>(written_), '\n');
  if (std::fgets(area_.data(), kReadSize, file_) == nullptr) {
    if (std::ferror(file_) != 0) error_ = errno != 0 ? errno : EIO;
    ended_ = true;
    written_ = 0;
    return nullptr;
  }
  read_any_ = true;
  line = next_line_;
  const std::size_t length = std::strlen(area_.data());
  if (length > 0 && area_[length - 1] == '\n') {
    written_ = length + 1;
    ++next_line_;
  } else {
    // The text stops short of a line end: a NUL byte, the end of the file
    // or a full area. The first '\n' at or behind the terminator tells.
    const char* first =
        static_cast<const char*>(std::memchr(area_.data() + length, '\n', area_.size() - length));
    const std::size_t at =
        first != nullptr ? static_cast<std::size_t>(first - area_.data()) : area_.size();
    const bool line_end = at + 1 < area_.size() && area_[at + 1] == '\0';
    if (line_end) ++next_line_;
    written_ = std::min(area_.size(), at + 2);
  }
  return area_.data();
}

}  // namespace vq0300_internal
