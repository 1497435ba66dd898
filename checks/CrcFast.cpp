// The one dispatch point of the fast CRC forms: the path is asked of the
// processor once, and Crc32Update folds what it can on that path and slices
// the rest.
#include "CrcFast_internal.h"

namespace vq0300_internal {

Crc32Path BestCrc32Path() {
  static const Crc32Path path = DetectCrc32Path();
  return path;
}

uint32_t Crc32Update(uint32_t r, const unsigned char* p, size_t n, Crc32Path path) {
  if (path != Crc32Path::kPortable && n >= kMinClmul) {
    const size_t folded = n & ~size_t{15};
    r = Crc32Fold(r, p, folded, path);
    p += folded;
    n -= folded;
  }
  return Crc32Sliced(r, p, n);
}

}  // namespace vq0300_internal
