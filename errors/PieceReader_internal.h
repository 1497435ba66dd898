// Reading a definition file in pieces that know their line. Private to the
// library: the definition scanner reads through it.
#ifndef VQ0300_ERRORS_PIECEREADER_INTERNAL_H
#define VQ0300_ERRORS_PIECEREADER_INTERNAL_H

#include <cstddef>
#include <cstdio>
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

}  // namespace vq0300_internal

#endif  // VQ0300_ERRORS_PIECEREADER_INTERNAL_H
