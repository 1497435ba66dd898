// Runs an operation decoder beside a model, from two kinds of input: bytes
// drawn from fixed seeds (the ctest programs) or bytes chosen by libFuzzer
// (the targets in fuzz/, built with VQ0300_FUZZ_TARGET). A decoder reads its
// operations and arguments from an OpInput and states every observable fact
// with MODEL_CHECK; the first fact that fails ends the run, as a test failure
// that names the seed, or as an abort that makes libFuzzer keep the input.
#ifndef VQ0300_TESTS_MODELRUN_H
#define VQ0300_TESTS_MODELRUN_H

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#ifndef VQ0300_FUZZ_TARGET
#include <gtest/gtest.h>
#endif

namespace model {

// Operations and arguments read from a run of bytes. Past the end every read
// gives its lowest value, so a decoder that loops while !Done() always ends.
class OpInput {
 public:
  OpInput(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  bool Done() const { return pos_ >= size_; }
  std::uint8_t Byte() { return pos_ < size_ ? data_[pos_++] : 0; }
  bool Bool() { return (Byte() & 1) != 0; }

  // A value from lo to hi, from as few bytes as the range needs.
  long long Range(long long lo, long long hi) {
    const unsigned long long span = static_cast<unsigned long long>(hi) - lo;
    unsigned long long raw = 0;
    for (unsigned long long seen = 0; seen < span && !Done(); seen = (seen << 8) | 0xFF) {
      raw = (raw << 8) | Byte();
    }
    const unsigned long long offset = span == ~0ULL ? raw : raw % (span + 1);
    return static_cast<long long>(static_cast<unsigned long long>(lo) + offset);
  }
  int Int(int lo, int hi) { return static_cast<int>(Range(lo, hi)); }

  // One of edges half of the time, else a value from lo to hi: positions and
  // counts are worth most at their limits.
  int Edge(std::initializer_list<int> edges, int lo, int hi) {
    const int pick = Int(0, 2 * static_cast<int>(edges.size()) - 1);
    return pick < static_cast<int>(edges.size()) ? edges.begin()[pick] : Int(lo, hi);
  }
  // An index into a container of size n, at the edges as often as inside.
  int Index(int n) { return Edge({INT_MIN, -1, 0, n - 1, n, n + 1, INT_MAX}, -2, n + 2); }

  // Up to max bytes, NUL bytes included; Text leaves NULs out. Bytes come
  // from alphabet where one is given, so that texts meet each other often.
  std::string Bytes(std::size_t max, std::string_view alphabet = {}) {
    std::string out(static_cast<std::size_t>(Range(0, static_cast<long long>(max))), '\0');
    for (char& c : out) {
      const std::uint8_t b = Byte();
      c = alphabet.empty() ? static_cast<char>(b) : alphabet[b % alphabet.size()];
    }
    return out;
  }
  std::string Text(std::size_t max, std::string_view alphabet = {}) {
    std::string out = Bytes(max, alphabet);
    for (char& c : out) c = c == '\0' ? 'a' : c;
    return out;
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t pos_ = 0;
};

// The step being run, printed with a failed check.
inline std::string& Step() {
  static std::string step;
  return step;
}

#ifdef VQ0300_FUZZ_TARGET
[[noreturn]] inline void Fail(const char* file, int line, const char* what) {
  std::fprintf(stderr, "%s:%d: check failed: %s in step %s\n", file, line, what, Step().c_str());
  std::abort();
}
#else
struct Stopped {};
[[noreturn]] inline void Fail(const char* file, int line, const char* what) {
  ADD_FAILURE_AT(file, line) << what << " in step " << Step();
  throw Stopped{};
}

// Runs decode over `bytes` bytes drawn from each of the seeds 1 to seeds,
// stopping at the first seed whose run fails.
template <typename Decoder>
void RunSeeds(Decoder decode, int seeds, std::size_t bytes) {
  for (int seed = 1; seed <= seeds; ++seed) {
    std::mt19937 gen(static_cast<unsigned>(seed));
    std::vector<std::uint8_t> data(bytes);
    for (std::uint8_t& b : data) b = static_cast<std::uint8_t>(gen());
    OpInput in(data.data(), data.size());
    try {
      decode(in);
    } catch (const Stopped&) {
      ADD_FAILURE() << "with the bytes of seed " << seed;
      return;
    }
  }
}
#endif

}  // namespace model

#define MODEL_CHECK(cond)                                  \
  do {                                                     \
    if (!(cond)) ::model::Fail(__FILE__, __LINE__, #cond); \
  } while (0)

// The libFuzzer entry of a target that runs decode over the fuzzer's bytes.
#define MODEL_FUZZ_TARGET(decode)                                                     \
  extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) { \
    ::model::OpInput in(data, size);                                                  \
    decode(in);                                                                       \
    return 0;                                                                         \
  }

#endif  // VQ0300_TESTS_MODELRUN_H
