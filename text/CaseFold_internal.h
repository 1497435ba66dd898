// The ASCII case fold of the text routines, written once: no locale, and
// every byte outside the 26 letters stays as it is. Private to the library.
#ifndef VQ0300_TEXT_CASEFOLD_INTERNAL_H
#define VQ0300_TEXT_CASEFOLD_INTERNAL_H

namespace vq0300_internal {

inline char ToUpperAscii(char c) {
  return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 0x20) : c;
}
inline char ToLowerAscii(char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<char>(c + 0x20) : c;
}

}  // namespace vq0300_internal

#endif  // VQ0300_TEXT_CASEFOLD_INTERNAL_H
