// The portable path of the fast CRC forms: slicing by 16 bytes a step
// through the compile-time tables, for the 32-bit and the 16-bit register.
#include <cstring>

#include "ByteBits_internal.h"
#include "CrcFast_internal.h"
#include "CrcTables_internal.h"

namespace vq0300_internal {
namespace {

inline uint32_t LoadBigEndian32(const unsigned char* p) {
  uint32_t v = 0;
  std::memcpy(&v, p, sizeof v);
  return __builtin_bswap32(v);
}

uint32_t Crc32Bytes(uint32_t r, const unsigned char* p, size_t n) {
  for (; n != 0; ++p, --n) r = (r << 8) ^ kCrc32Slices[0][(r >> 24) ^ *p];
  return r;
}

// Eight bytes in the order they enter the 16-bit register, the first in the
// low byte, mirrored when Reverse is set.
template <bool Reverse>
inline uint64_t LoadEntering64(const unsigned char* p) {
  uint64_t v = 0;
  if (Reverse) {
    for (int j = 7; j >= 0; --j) v = (v << 8) | kReversedBytes[p[j]];
  } else {
    std::memcpy(&v, p, sizeof v);
  }
  return v;
}

// Sixteen bytes a step, as for the 32-bit register, but low bit first: the
// register is added into the first two bytes.
template <bool Reverse>
uint16_t Crc16Sliced(uint32_t r, const unsigned char* p, size_t n) {
  const auto& t = kCrc16Slices;
  for (; n >= 16; p += 16, n -= 16) {
    const uint64_t a = LoadEntering64<Reverse>(p) ^ r;
    const uint64_t b = LoadEntering64<Reverse>(p + 8);
    r = t[15][a & 0xFFu] ^ t[14][(a >> 8) & 0xFFu] ^ t[13][(a >> 16) & 0xFFu] ^
        t[12][(a >> 24) & 0xFFu] ^ t[11][(a >> 32) & 0xFFu] ^ t[10][(a >> 40) & 0xFFu] ^
        t[9][(a >> 48) & 0xFFu] ^ t[8][a >> 56] ^ t[7][b & 0xFFu] ^ t[6][(b >> 8) & 0xFFu] ^
        t[5][(b >> 16) & 0xFFu] ^ t[4][(b >> 24) & 0xFFu] ^ t[3][(b >> 32) & 0xFFu] ^
        t[2][(b >> 40) & 0xFFu] ^ t[1][(b >> 48) & 0xFFu] ^ t[0][b >> 56];
  }
  for (; n != 0; ++p, --n) {
    const uint32_t b = Reverse ? kReversedBytes[*p] : *p;
    r = (r >> 8) ^ t[0][(r ^ b) & 0xFFu];
  }
  return static_cast<uint16_t>(r);
}

}  // namespace

// Sixteen bytes a step: the register is added into the first four, and byte j
// of the step, followed by 15 - j more bytes, goes through slice 15 - j.
uint32_t Crc32Sliced(uint32_t r, const unsigned char* p, size_t n) {
  const auto& t = kCrc32Slices;
  for (; n >= 16; p += 16, n -= 16) {
    const uint32_t w0 = LoadBigEndian32(p) ^ r;
    const uint32_t w1 = LoadBigEndian32(p + 4);
    const uint32_t w2 = LoadBigEndian32(p + 8);
    const uint32_t w3 = LoadBigEndian32(p + 12);
    r = t[15][w0 >> 24] ^ t[14][(w0 >> 16) & 0xFFu] ^ t[13][(w0 >> 8) & 0xFFu] ^ t[12][w0 & 0xFFu] ^
        t[11][w1 >> 24] ^ t[10][(w1 >> 16) & 0xFFu] ^ t[9][(w1 >> 8) & 0xFFu] ^ t[8][w1 & 0xFFu] ^
        t[7][w2 >> 24] ^ t[6][(w2 >> 16) & 0xFFu] ^ t[5][(w2 >> 8) & 0xFFu] ^ t[4][w2 & 0xFFu] ^
        t[3][w3 >> 24] ^ t[2][(w3 >> 16) & 0xFFu] ^ t[1][(w3 >> 8) & 0xFFu] ^ t[0][w3 & 0xFFu];
  }
  return Crc32Bytes(r, p, n);
}

uint16_t Crc16Update(uint16_t r, const unsigned char* p, size_t n, bool reverse) {
  return reverse ? Crc16Sliced<true>(r, p, n) : Crc16Sliced<false>(r, p, n);
}

}  // namespace vq0300_internal
