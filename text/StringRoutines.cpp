// The free string routines: case mapping, number text, case-blind
// comparison, reversal and substring search on NUL-terminated strings.
#include "vq0300/StringRoutines.h"

#include <cctype>
#include <cstdint>
#include <cstring>
#include <string>

#include "CaseFold_internal.h"

namespace {

// The byte folded to upper case, as a signed value: bytes of 0x80 and up
// stay negative.
int FoldedSigned(char c) {
  // NOLINTNEXTLINE(bugprone-signed-char-misuse): the signed value is meant
  return static_cast<signed char>(vq0300_internal::ToUpperAscii(c));
}

template <typename Map>
void MapBytes(char* s, size_t length, Map map) {
  for (size_t i = 0; i < length; ++i) {
    s[i] = static_cast<char>(map(static_cast<unsigned char>(s[i])));
  }
}

int ToLower(int c) { return std::tolower(c); }
int ToUpper(int c) { return std::toupper(c); }

}  // namespace

char* strlwr(char* s) {
  if (s != nullptr) MapBytes(s, std::strlen(s), ToLower);
  return s;
}

char* strupr(char* s) {
  if (s != nullptr) MapBytes(s, std::strlen(s), ToUpper);
  return s;
}

void strlwr(std::string& s) { MapBytes(s.data(), s.size(), ToLower); }

void strupr(std::string& s) { MapBytes(s.data(), s.size(), ToUpper); }

char* itoa(int value, char* buffer, int base) {
  if (base < 2 || buffer == nullptr) return nullptr;
  char* out = buffer;
  // The magnitude in a width that holds 2147483648.
  uint64_t magnitude = static_cast<uint64_t>(value < 0 ? -static_cast<int64_t>(value) : value);
  if (value < 0) *out++ = '-';
  const uint64_t radix = static_cast<uint64_t>(base);
  uint64_t d = 1;
  while (magnitude / d >= radix) d *= radix;
  for (; d != 0; d /= radix) {
    const uint64_t digit = magnitude / d;
    magnitude %= d;
    *out++ = static_cast<char>(digit <= 9 ? digit + 0x30 : digit + 0x37);
  }
  *out = '\0';
  return out;
}

int stricmp(char const* a, char const* b) {
  if (a == nullptr || b == nullptr) return -1;
  for (; *a != '\0' && *b != '\0'; ++a, ++b) {
    const int x = FoldedSigned(*a);
    const int y = FoldedSigned(*b);
    if (x != y) return x > y ? 1 : -1;
  }
  if (*a == '\0' && *b == '\0') return 0;
  return *a == '\0' ? -1 : 1;
}

int strcmpi(char* a, char* b) { return stricmp(a, b); }

int strnicmp(char const* a, char const* b, int n) {
  if (n < 1 || a == nullptr || b == nullptr) return 0;
  // Summed wide and clamped, so that very long strings cannot overflow.
  int64_t sum = 0;
  for (int i = 0; i < n && a[i] != '\0' && b[i] != '\0'; ++i) {
    sum += FoldedSigned(a[i]) - FoldedSigned(b[i]);
  }
  if (sum > INT32_MAX) return INT32_MAX;
  if (sum < INT32_MIN) return INT32_MIN;
  return static_cast<int>(sum);
}

void strrev(char* s) {
  if (s == nullptr) return;
  const size_t length = std::strlen(s);
  for (size_t i = 0; i < length / 2; ++i) {
    const char kept = s[i];
    s[i] = s[length - 1 - i];
    s[length - 1 - i] = kept;
  }
}

int FindSubString(char const* str, char const* sub, int start, bool ignoreCase) {
  if (str == nullptr || sub == nullptr || start < 0) return -1;
  const size_t length = std::strlen(str);
  const size_t sub_length = std::strlen(sub);
  if (sub_length + static_cast<size_t>(start) > length) return -1;

  std::string text(str, length);
  std::string wanted(sub, sub_length);
  if (ignoreCase) {
    strlwr(text.data());
    strlwr(wanted.data());
  }
  // After a mismatch at index k the search resumes at p + k + 1: the
  // characters that matched are not tried again as the start of a match.
  size_t p = static_cast<size_t>(start);
  while (p < length) {
    size_t k = 0;
    while (k < sub_length && text[p + k] == wanted[k]) ++k;
    if (k == sub_length) return static_cast<int>(p);
    p += k + 1;
  }
  return -1;
}
