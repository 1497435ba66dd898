// Fuzzes the CRC buffer forms: get_crc_32 and get_crc_16 (both flags), and
// every path of their fast forms this processor has, against the plain byte
// recurrences written here. The input chooses the starting registers, the
// alignment of the buffer, how often its bytes repeat (so that long buffers
// come up) and the points where the buffer is cut into pieces.
#include <fuzzer/FuzzedDataProvider.h>
#include <vq0300/Crc.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "CrcFast_internal.h"
#include "FuzzSupport.h"

namespace {

size_t g_length = 0;  // of the current buffer, printed when a check fails

[[noreturn]] void Fail(int line, const char* what) {
  std::fprintf(stderr, "Crc_fuzz: check failed at line %d, buffer of %zu bytes: %s\n", line,
               g_length, what);
  std::abort();
}

uint32_t PlainCrc32(uint32_t r, const unsigned char* p, size_t n) {
  for (size_t i = 0; i < n; ++i) r = (r << 8) ^ static_cast<uint32_t>(CRCTable[(r >> 24) ^ p[i]]);
  return r;
}

uint16_t PlainCrc16(uint16_t crc, const unsigned char* p, size_t n, bool reverse) {
  uint32_t r = crc;
  for (size_t i = 0; i < n; ++i) {
    uint32_t b = p[i];
    if (reverse) {
      uint32_t m = 0;
      for (int k = 0; k < 8; ++k) m |= ((b >> k) & 1u) << (7 - k);
      b = m;
    }
    r ^= b;
    for (int k = 0; k < 8; ++k) r = (r & 1u) != 0 ? (r >> 1) ^ 0xA001u : r >> 1;
  }
  return static_cast<uint16_t>(r);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  using vq0300_internal::Crc32Path;
  FuzzedDataProvider fdp(input, size);
  const auto r32 = fdp.ConsumeIntegral<uint32_t>();
  const auto r16 = fdp.ConsumeIntegral<uint16_t>();
  const auto align = fdp.ConsumeIntegralInRange<size_t>(0, 63);
  const auto repeats = fdp.ConsumeIntegralInRange<size_t>(1, 40);
  std::vector<size_t> cuts(fdp.ConsumeIntegralInRange<size_t>(0, 4));
  for (size_t& c : cuts) c = fdp.ConsumeIntegral<uint16_t>();
  const std::vector<uint8_t> bytes = fdp.ConsumeRemainingBytes<uint8_t>();

  std::vector<unsigned char> storage(align + bytes.size() * repeats);
  for (size_t k = 0; k < repeats; ++k)
    std::copy(bytes.begin(), bytes.end(), storage.begin() + align + k * bytes.size());
  const unsigned char* p = storage.data() + align;
  const size_t n = bytes.size() * repeats;
  g_length = n;
  // The pieces: cut points taken modulo the length, in ascending order.
  std::vector<size_t> bounds = {0, n};
  for (size_t c : cuts) bounds.push_back(n == 0 ? 0 : c * repeats % (n + 1));
  std::sort(bounds.begin(), bounds.end());
  char* data = reinterpret_cast<char*>(const_cast<unsigned char*>(p));

  const uint32_t want32 = PlainCrc32(r32, p, n);
  for (Crc32Path path : {Crc32Path::kPortable, Crc32Path::kClmul, Crc32Path::kVclmul})
    if (vq0300_internal::BestCrc32Path() >= path)
      CHECK(vq0300_internal::Crc32Update(r32, p, n, path) == want32);
  for (bool flag : {false, true}) {
    g_dwCRC32_Register = r32;
    for (size_t k = 0; k + 1 < bounds.size(); ++k)
      get_crc_32(data + bounds[k], static_cast<int>(bounds[k + 1] - bounds[k]), flag);
    CHECK(return_crc32() == want32);
  }
  for (bool reverse : {false, true}) {
    const uint16_t want16 = PlainCrc16(r16, p, n, reverse);
    CHECK(vq0300_internal::Crc16Update(r16, p, n, reverse) == want16);
    uint16_t crc = r16;
    for (size_t k = 0; k + 1 < bounds.size(); ++k)
      crc = get_crc_16(crc, data + bounds[k], static_cast<int>(bounds[k + 1] - bounds[k]), reverse);
    CHECK(crc == want16);
  }
  return 0;
}
