// Reading a definition file in pieces that know their line. Private to the
// library: the definition scanner reads through it.
#ifndef VQ0300_ERRORS_PIECEREADER_INTERNAL_H
#define VQ0300_ERRORS_PIECEREADER_INTERNAL_H

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <vector>

namespace vq0300_internal {

// One read takes at most this many bytes, terminator included: a longer
// physical line arrives in pieces, and the statement loop joins them.
constexpr int kReadSize = 65536;

// Reads the file one piece at a time with fgets. A piece is a C string, so a
// NUL byte ends its text. A read that yields nothing, at the end of the file
// or on a read error (a directory, for one), ends the file.
//
// Lines are counted on the raw bytes, NUL bytes included: the read area is
// kept filled with '\n' outside what fgets wrote, and a '\n' can stand in
// what fgets wrote only as its last byte, so the first '\n' of the area tells
// where the piece ended and whether a line end ended it.
class PieceReader {
 public:
  explicit PieceReader(std::FILE* file);

  // The next piece, or null at the end of the file; line is its line.
  const char* Read(int& line);

  // The end state: set by a read that yielded nothing, and by one that
  // reached the end of the file on a last line without a line end.
  bool AtEnd() const { return ended_ || std::feof(file_) != 0; }
  bool ReadAny() const { return read_any_; }
  // errno of a read that failed; 0 when none did.
  int Error() const { return error_; }

 private:
  std::FILE* file_;
  std::vector<char> area_;
  std::size_t written_ = 0;  // bytes of the area that the last fgets may have written
  int next_line_ = 1;
  bool ended_ = false;
  bool read_any_ = false;
  int error_ = 0;
};

// Inline, as the statement loop calls it for every line.
inline const char* PieceReader::Read(int& line) {
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

#endif  // VQ0300_ERRORS_PIECEREADER_INTERNAL_H
