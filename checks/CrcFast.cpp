// The one dispatch point of the fast CRC forms: the path is asked of the
// processor once, and Crc32Update hands a buffer to the folding path or to
// the portable one.
#include "CrcFast_internal.h"

namespace vq0300_internal {

Crc32Path BestCrc32Path() {
  static const Crc32Path path = DetectCrc32Path();
  return path;
}

uint32_t Crc32Update(uint32_t r, const unsigned char* p, size_t n, Crc32Path path) {
  if (path != Crc32Path::kPortable && n >= kMinClmul) return Crc32Fold(r, p, n, path);
  return Crc32Sliced(r, p, n);
}

}  // namespace vq0300_internal
