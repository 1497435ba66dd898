// Pieces every fuzz harness uses: the CHECK macro and a printable form of
// raw bytes for failure messages.
#ifndef VQ0300_FUZZ_FUZZSUPPORT_H
#define VQ0300_FUZZ_FUZZSUPPORT_H

#include <cstdio>
#include <cstdlib>
#include <string>

// Aborts through the harness's own Fail(line, text) when cond is false, so
// libFuzzer keeps the input. Each harness defines Fail with what it knows of
// the current step.
#define CHECK(cond)                     \
  do {                                  \
    if (!(cond)) Fail(__LINE__, #cond); \
  } while (0)

// Reports a failed check of harness at line, during step, and aborts, so
// that libFuzzer keeps the input.
[[noreturn]] inline void FailInStep(const char* harness, int line, const char* step,
                                    const char* what) {
  std::fprintf(stderr, "%s: check failed at line %d in %s: %s\n", harness, line, step, what);
  std::abort();
}

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
