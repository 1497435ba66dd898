// Pieces every fuzz harness uses: the CHECK macro and a printable form of
// raw bytes for failure messages.
#ifndef VQ0300_FUZZ_FUZZSUPPORT_H
#define VQ0300_FUZZ_FUZZSUPPORT_H

#include <cstdio>
#include <string>

// Aborts through the harness's own Fail(line, text) when cond is false, so
// libFuzzer keeps the input. Each harness defines Fail with what it knows of
// the current step.
#define CHECK(cond)                     \
  do {                                  \
    if (!(cond)) Fail(__LINE__, #cond); \
  } while (0)

// A text for a failure message: bytes outside printable ASCII as \xNN.
inline std::string Escaped(const std::string& s) {
  std::string out;
  for (unsigned char c : s) {
    char hex[5];
    std::snprintf(hex, sizeof hex, c >= 0x20 && c < 0x7F && c != '\\' ? "%c" : "\\x%02X", c);
    out += hex;
  }
  return out;
}

#endif  // VQ0300_FUZZ_FUZZSUPPORT_H
