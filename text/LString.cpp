// LString: stateless search, slicing and trimming of caller buffers.
#include "vq0300/LString.h"

#include <cstring>

#include "core/Helpers_internal.h"

namespace {

using vq0300_internal::IsWhiteSpace;

// Copies n characters of src to dst and terminates them; the two may
// overlap (Left, Right and Mid accept dst == src).
void CopyPiece(char* dst, const char* src, size_t n) {
  std::memmove(dst, src, n);
  dst[n] = '\0';
}

// The first (or, from_end, the last) n characters of src into dst, clamped
// to the length of src; n below 1 gives an empty string.
void CopyEnd(char* dst, const char* src, int n, bool from_end) {
  if (dst == nullptr || src == nullptr) return;
  const size_t length = std::strlen(src);
  if (n < 1 || length == 0) {
    dst[0] = '\0';
    return;
  }
  const size_t take = static_cast<size_t>(n) < length ? static_cast<size_t>(n) : length;
  CopyPiece(dst, src + (from_end ? length - take : 0), take);
}

}  // namespace

LString::~LString() = default;

int LString::Find(char const* s, char const* sub) {
  if (s == nullptr || sub == nullptr || s[0] == '\0') return -1;
  const char* hit = std::strstr(s, sub);
  return hit != nullptr ? static_cast<int>(hit - s) : -1;
}

int LString::Find(char const* s, char c) {
  const char sub[2] = {c, '\0'};
  return Find(s, sub);
}

int LString::FindOneOf(char const* s, char const* set) {
  if (s == nullptr || set == nullptr || s[0] == '\0') return -1;
  const char* hit = std::strpbrk(s, set);
  return hit != nullptr ? static_cast<int>(hit - s) : -1;
}

int LString::ReverseFind(char const* s, char const* sub) {
  if (s == nullptr || sub == nullptr || s[0] == '\0') return -1;
  if (sub[0] == '\0') return static_cast<int>(std::strlen(s));
  // Each search resumes one character behind the start of the last match,
  // so overlapping occurrences are all seen.
  int last = -1;
  for (const char* hit = std::strstr(s, sub); hit != nullptr; hit = std::strstr(hit + 1, sub)) {
    last = static_cast<int>(hit - s);
  }
  return last;
}

int LString::ReverseFind(char const* s, char c) {
  const char sub[2] = {c, '\0'};
  return ReverseFind(s, sub);
}

int LString::ReverseFindOneOf(char const* s, char const* set) {
  if (s == nullptr || set == nullptr || s[0] == '\0') return -1;
  int last = -1;
  for (int i = 0; s[i] != '\0'; ++i) {
    if (std::strchr(set, s[i]) != nullptr) last = i;
  }
  return last;
}

void LString::Left(char* dst, char const* src, int n) { CopyEnd(dst, src, n, false); }

void LString::Right(char* dst, char const* src, int n) { CopyEnd(dst, src, n, true); }

void LString::Mid(char* dst, char const* src, int start, int count) {
  if (dst == nullptr || src == nullptr) return;
  const size_t length = std::strlen(src);
  if (count < 1 || length == 0) {
    dst[0] = '\0';
    return;
  }
  const size_t from = start < 0 ? 0 : static_cast<size_t>(start);
  if (from >= length) {
    dst[0] = '\0';
    return;
  }
  // Worked out in size_t, where start + count cannot overflow.
  size_t take = static_cast<size_t>(count);
  if (from + take > length) take = length - from;
  CopyPiece(dst, src + from, take);
}

void LString::TrimLeft(char* s) {
  if (s == nullptr) return;
  size_t first = 0;
  while (s[first] != '\0' && IsWhiteSpace(s[first])) ++first;
  if (first > 0) std::memmove(s, s + first, std::strlen(s + first) + 1);
}

void LString::TrimRight(char* s) {
  if (s == nullptr) return;
  for (size_t i = std::strlen(s); i > 0 && IsWhiteSpace(s[i - 1]); --i) s[i - 1] = '\0';
}
