// The bounded copy primitives (util_strncpy and its kin).
#include "vq0300/BoundedCopy.h"

#include <cstring>

void util_strncpy(char* dst, char const* src, int count, int limit) {
  if (dst == nullptr) return;
  if (src == nullptr) {
    dst[0] = '\0';
    return;
  }
  int n;
  if (count > 0) {
    n = (limit > 0 && limit < count) ? limit : count;
  } else {
    n = static_cast<int>(std::strlen(src));
  }
  // strncpy semantics: copy up to the terminator, pad with NUL up to n.
  int i = 0;
  for (; i < n && src[i] != '\0'; ++i) dst[i] = src[i];
  for (; i < n; ++i) dst[i] = '\0';
  dst[n] = '\0';
}

void util_strncpy(char* dst, char* src, int count, int limit) {
  util_strncpy(dst, static_cast<char const*>(src), count, limit);
}

void util_strncat(char* dst, char const* src, int /*count*/, int /*limit*/) {
  if (dst == nullptr || src == nullptr) return;
  const size_t dst_len = std::strlen(dst);
  const size_t src_len = std::strlen(src);
  std::memcpy(dst + dst_len, src, src_len);
  dst[dst_len + src_len] = '\0';
}

void util_strncat(char* dst, char* src, int count, int limit) {
  util_strncat(dst, static_cast<char const*>(src), count, limit);
}
