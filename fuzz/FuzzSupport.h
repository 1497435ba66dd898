// Pieces every fuzz harness uses: the CHECK macro and a printable form of
// raw bytes for failure messages.
#ifndef VQ0300_FUZZ_FUZZSUPPORT_H
#define VQ0300_FUZZ_FUZZSUPPORT_H

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
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

// An int argument that is often at an edge: one of edges, or, in others of
// every edges.size() + others draws, a value from lo to hi.
inline int EdgeOrRange(FuzzedDataProvider& in, std::initializer_list<int> edges, int others, int lo,
                       int hi) {
  const std::size_t pick = in.ConsumeIntegralInRange<std::size_t>(0, edges.size() + others - 1);
  if (pick < edges.size()) return edges.begin()[pick];
  return in.ConsumeIntegralInRange(lo, hi);
}

#endif  // VQ0300_FUZZ_FUZZSUPPORT_H
