// Small helpers that several parts of the library (and the vq0300-errdef
// tool, which compiles against the library's private headers) share, so each
// is written once. Private: nothing here is exported or installed.
#ifndef VQ0300_CORE_HELPERS_INTERNAL_H
#define VQ0300_CORE_HELPERS_INTERNAL_H

#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

#include "vq0300/BoundedCopy.h"
#include "vq0300/LObjList.h"

namespace vq0300_internal {

// White space, for every trim of the library: each byte outside '!' (0x21)
// to '~' (0x7E), so NUL, controls, space, DEL and all bytes from 0x80 up.
inline bool IsWhiteSpace(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x21 || byte > 0x7E;
}

// Closes a stream held by a unique_ptr, so that a stream opened within a call
// is closed on every way out of it, an exception included.
struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

// The one probe of a path: true when path is not null and fopen(path, mode)
// succeeds; the stream is closed again at once. A mode that writes creates
// the file, which the probes of LLog and LFile::IsDirectoryWritable rely on.
inline bool FileOpens(const char* path, const char* mode) {
  if (path == nullptr) return false;
  std::FILE* file = std::fopen(path, mode);
  if (file == nullptr) return false;
  std::fclose(file);
  return true;
}

// Hands an owned object to list, which holds it from then on, and returns
// it. When the list cannot grow, the object goes with the unique_ptr and
// the list is unchanged: a failed allocation leaks nothing.
template <typename T>
T* AddOwned(LObjList* list, std::unique_ptr<T> owned) {
  list->AddTail(owned.get());
  return owned.release();
}

// An owned copy of a terminated text in a buffer of its own size, from new[],
// made with the whole-string bounded copy. Hand it over with release().
inline std::unique_ptr<char[]> CopyText(const char* text) {
  std::unique_ptr<char[]> copy(new char[std::strlen(text) + 1]);
  util_strncpy(copy.get(), text, 0, 0);
  return copy;
}

// Reserves room for one more entry by the library's own growth rule (1, 2,
// 4, 8, ...), rather than leaving the factor to the standard library. When
// the reservation fails, the vector is unchanged.
template <typename T>
void ReserveOneMore(std::vector<T>& entries) {
  if (entries.size() < entries.capacity()) return;
  entries.reserve(entries.empty() ? 1 : entries.size() * 2);
}

}  // namespace vq0300_internal

#endif  // VQ0300_CORE_HELPERS_INTERNAL_H
