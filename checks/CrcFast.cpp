// Fast buffer forms of the high-bit-first CRC-32 register (polynomial
// 0x04C11DB7, no reflection) and of the low-bit-first 16-bit register
// (polynomial 0xA001).
//
// The 32-bit register after a buffer is M(x) * x^32 mod P(x), where M is the
// buffer read as one polynomial, first byte highest, with the starting
// register added into its first four bytes. That value depends on M only
// modulo P, so long buffers are first folded, 16 bytes to a 128-bit lane, by
// carry-less multiplication with constants x^k mod P: a lane X followed by D
// more bits is replaced by X_hi * (x^(D+64) mod P) + X_lo * (x^D mod P), which
// is congruent to X * x^D and added into the lane D bits further on. The last
// lane is then reduced to 32 bits (two folds and a Barrett step) and the
// remaining bytes go through the tables.
//
// Every path gives exactly the register of the byte-table recurrence; which
// one runs is asked of the processor once. The paths that use PCLMULQDQ or
// VPCLMULQDQ carry target attributes of their own, so the library is built for
// plain x86-64 and runs everywhere.
#include "CrcFast_internal.h"

#include <array>
#include <cstring>

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#include <immintrin.h>
#define VQ0300_CRC_HAS_CLMUL 1
#else
#define VQ0300_CRC_HAS_CLMUL 0
#endif

#include "ByteBits_internal.h"

namespace vq0300_internal {
namespace {

constexpr uint32_t kPoly32 = 0x04C11DB7u;
constexpr uint32_t kPoly16 = 0xA001u;

// --- Tables, built at compile time -------------------------------------------

// kCrc32Slices[k][i]: the register after the byte i and k zero bytes, from a
// zero register, that is i * x^(32 + 8k) mod P. Slice 0 is the byte table.
constexpr std::array<std::array<uint32_t, 256>, 16> MakeCrc32Slices() {
  std::array<std::array<uint32_t, 256>, 16> t{};
  for (uint32_t i = 0; i < 256; ++i) {
    uint32_t r = i << 24;
    for (int k = 0; k < 8; ++k) r = (r & 0x80000000u) != 0 ? (r << 1) ^ kPoly32 : r << 1;
    t[0][i] = r;
  }
  for (size_t k = 1; k < 16; ++k)
    for (size_t i = 0; i < 256; ++i) {
      const uint32_t prev = t[k - 1][i];
      t[k][i] = (prev << 8) ^ t[0][prev >> 24];
    }
  return t;
}
constexpr std::array<std::array<uint32_t, 256>, 16> kCrc32Slices = MakeCrc32Slices();
static_assert(kCrc32Slices[0][1] == kPoly32, "CRC-32 byte table");

// kCrc16Slices[k][i]: the register after the byte i and k zero bytes, from a
// zero register, low bit first.
constexpr std::array<std::array<uint16_t, 256>, 16> MakeCrc16Slices() {
  std::array<std::array<uint16_t, 256>, 16> t{};
  for (uint32_t i = 0; i < 256; ++i) {
    uint32_t r = i;
    for (int k = 0; k < 8; ++k) r = (r & 1u) != 0 ? (r >> 1) ^ kPoly16 : r >> 1;
    t[0][i] = static_cast<uint16_t>(r);
  }
  for (size_t k = 1; k < 16; ++k)
    for (size_t i = 0; i < 256; ++i) {
      const uint32_t prev = t[k - 1][i];
      t[k][i] = static_cast<uint16_t>((prev >> 8) ^ t[0][prev & 0xFFu]);
    }
  return t;
}
constexpr std::array<std::array<uint16_t, 256>, 16> kCrc16Slices = MakeCrc16Slices();
static_assert(kCrc16Slices[0][1] == 0xC0C1, "CRC-16 byte table");

// --- Portable paths ------------------------------------------------------------

inline uint32_t LoadBigEndian32(const unsigned char* p) {
  uint32_t v = 0;
  std::memcpy(&v, p, sizeof v);
  return __builtin_bswap32(v);
}

uint32_t Crc32Bytes(uint32_t r, const unsigned char* p, size_t n) {
  for (; n != 0; ++p, --n) r = (r << 8) ^ kCrc32Slices[0][(r >> 24) ^ *p];
  return r;
}

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

// --- Carry-less multiplication paths ---------------------------------------------

#if VQ0300_CRC_HAS_CLMUL

// x^n mod P.
constexpr uint64_t XPowMod(int n) {
  uint32_t r = 1;
  for (int i = 0; i < n; ++i) r = (r & 0x80000000u) != 0 ? (r << 1) ^ kPoly32 : r << 1;
  return r;
}

// The quotient x^64 / P (33 bits), for the Barrett step, by long division:
// after the dividend's terms down to degree d, bit i of rem is degree d + i.
constexpr uint64_t BarrettMu() {
  uint64_t rem = 0, quotient = 0;
  for (int d = 64; d >= 0; --d) {
    rem = (rem << 1) | (d == 64 ? 1u : 0u);
    if ((rem & (uint64_t{1} << 32)) != 0) {
      rem ^= uint64_t{kPoly32} | (uint64_t{1} << 32);
      quotient |= uint64_t{1} << d;
    }
  }
  return quotient;
}

constexpr uint64_t kP33 = uint64_t{kPoly32} | (uint64_t{1} << 32);
constexpr uint64_t kMu = BarrettMu();
static_assert(kMu == 0x104D101DFull, "Barrett constant of 0x04C11DB7");

#define VQ0300_CLMUL_TARGET __attribute__((target("pclmul,sse4.1")))
#define VQ0300_VCLMUL_TARGET __attribute__((target("avx512f,avx512bw,vpclmulqdq,pclmul,sse4.1")))

// The fold constants of a distance of D bits: the high quadword multiplies
// the high half of a lane, the low quadword the low half.
template <int D>
VQ0300_CLMUL_TARGET inline __m128i FoldBy() {
  constexpr uint64_t kHigh = XPowMod(D + 64), kLow = XPowMod(D);  // at compile time
  return _mm_set_epi64x(static_cast<long long>(kHigh), static_cast<long long>(kLow));
}

// Reverses the 16 bytes of a lane, so the first byte of memory is the highest.
VQ0300_CLMUL_TARGET inline __m128i ByteSwapMask() {
  return _mm_set_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
}

VQ0300_CLMUL_TARGET inline __m128i LoadLane(const unsigned char* p, __m128i swap) {
  __m128i v;
  std::memcpy(&v, p, sizeof v);
  return _mm_shuffle_epi8(v, swap);
}

// x * x^d + next, with x kept to 128 bits modulo P; k from FoldBy(d).
VQ0300_CLMUL_TARGET inline __m128i Fold(__m128i x, __m128i k, __m128i next) {
  return _mm_xor_si128(
      _mm_xor_si128(_mm_clmulepi64_si128(x, k, 0x00), _mm_clmulepi64_si128(x, k, 0x11)), next);
}

VQ0300_CLMUL_TARGET inline __m128i Clmul(uint64_t a, uint64_t b) {
  return _mm_clmulepi64_si128(_mm_cvtsi64_si128(static_cast<long long>(a)),
                              _mm_cvtsi64_si128(static_cast<long long>(b)), 0x00);
}

VQ0300_CLMUL_TARGET inline uint64_t Low(__m128i v) {
  return static_cast<uint64_t>(_mm_cvtsi128_si64(v));
}
VQ0300_CLMUL_TARGET inline uint64_t High(__m128i v) {
  return static_cast<uint64_t>(_mm_extract_epi64(v, 1));
}

// The register of a lane x: x * x^32 mod P.
VQ0300_CLMUL_TARGET uint32_t ReduceLane(__m128i x) {
  static constexpr uint64_t kX96 = XPowMod(96), kX64 = XPowMod(64);
  const uint64_t lo = Low(x), hi = High(x);
  // x * x^32 = hi * x^96 + lo * x^32: below 96 bits once hi * x^96 is reduced.
  const __m128i a = Clmul(hi, kX96);
  const uint64_t y_lo = Low(a) ^ (lo << 32), y_hi = High(a) ^ (lo >> 32);
  // y_hi * x^64 reduced the same way: below 64 bits.
  const uint64_t z = Low(Clmul(y_hi, kX64)) ^ y_lo;
  // Barrett: the quotient z / P is ((z >> 32) * mu) >> 32, and z - q * P the rest.
  const uint64_t q = Low(Clmul(z >> 32, kMu)) >> 32;
  return static_cast<uint32_t>(z ^ Low(Clmul(q, kP33)));
}

// The register after n bytes, n a multiple of 16 and at least 64: four lanes
// 64 bytes apart, folded 512 bits a step, then joined into one.
VQ0300_CLMUL_TARGET uint32_t FoldClmul(uint32_t r, const unsigned char* p, size_t n) {
  const __m128i swap = ByteSwapMask();
  __m128i x0 = _mm_xor_si128(LoadLane(p, swap), _mm_set_epi32(static_cast<int>(r), 0, 0, 0));
  __m128i x1 = LoadLane(p + 16, swap);
  __m128i x2 = LoadLane(p + 32, swap);
  __m128i x3 = LoadLane(p + 48, swap);
  p += 64;
  n -= 64;
  const __m128i k512 = FoldBy<512>();
  for (; n >= 64; p += 64, n -= 64) {
    x0 = Fold(x0, k512, LoadLane(p, swap));
    x1 = Fold(x1, k512, LoadLane(p + 16, swap));
    x2 = Fold(x2, k512, LoadLane(p + 32, swap));
    x3 = Fold(x3, k512, LoadLane(p + 48, swap));
  }
  const __m128i k128 = FoldBy<128>();
  x1 = Fold(x0, k128, x1);
  x2 = Fold(x1, k128, x2);
  x3 = Fold(x2, k128, x3);
  for (; n >= 16; p += 16, n -= 16) x3 = Fold(x3, k128, LoadLane(p, swap));
  return ReduceLane(x3);
}

// The masked forms of broadcast and extract, with every lane selected: the
// unmasked ones of some compilers read an undefined register and warn.
constexpr __mmask16 kAll = 0xFFFF;

VQ0300_VCLMUL_TARGET inline __m512i LoadLanes(const unsigned char* p, __m512i swap) {
  return _mm512_shuffle_epi8(_mm512_loadu_si512(p), swap);
}

VQ0300_VCLMUL_TARGET inline __m512i Fold4(__m512i x, __m512i k, __m512i next) {
  return _mm512_ternarylogic_epi64(_mm512_clmulepi64_epi128(x, k, 0x00),
                                   _mm512_clmulepi64_epi128(x, k, 0x11), next, 0x96);
}

// The register after n bytes, n a multiple of 16 and at least 256: four
// registers of four lanes each, folded 2048 bits a step, then joined into one
// register, its four lanes into one lane.
VQ0300_VCLMUL_TARGET uint32_t FoldVclmul(uint32_t r, const unsigned char* p, size_t n) {
  const __m128i swap128 = ByteSwapMask();
  const __m512i swap = _mm512_maskz_broadcast_i32x4(kAll, swap128);
  const __m512i start =
      _mm512_inserti32x4(_mm512_setzero_si512(), _mm_set_epi32(static_cast<int>(r), 0, 0, 0), 0);
  __m512i z0 = _mm512_xor_si512(LoadLanes(p, swap), start);
  __m512i z1 = LoadLanes(p + 64, swap);
  __m512i z2 = LoadLanes(p + 128, swap);
  __m512i z3 = LoadLanes(p + 192, swap);
  p += 256;
  n -= 256;
  const __m512i k2048 = _mm512_maskz_broadcast_i32x4(kAll, FoldBy<2048>());
  for (; n >= 256; p += 256, n -= 256) {
    z0 = Fold4(z0, k2048, LoadLanes(p, swap));
    z1 = Fold4(z1, k2048, LoadLanes(p + 64, swap));
    z2 = Fold4(z2, k2048, LoadLanes(p + 128, swap));
    z3 = Fold4(z3, k2048, LoadLanes(p + 192, swap));
  }
  const __m512i k512 = _mm512_maskz_broadcast_i32x4(kAll, FoldBy<512>());
  z1 = Fold4(z0, k512, z1);
  z2 = Fold4(z1, k512, z2);
  z3 = Fold4(z2, k512, z3);
  for (; n >= 64; p += 64, n -= 64) z3 = Fold4(z3, k512, LoadLanes(p, swap));
  // Lane 0 holds the highest bytes: 48 bytes follow it, 32 lane 1, 16 lane 2.
  __m128i x = _mm512_maskz_extracti32x4_epi32(0xF, z3, 3);
  x = Fold(_mm512_maskz_extracti32x4_epi32(0xF, z3, 2), FoldBy<128>(), x);
  x = Fold(_mm512_maskz_extracti32x4_epi32(0xF, z3, 1), FoldBy<256>(), x);
  x = Fold(_mm512_maskz_extracti32x4_epi32(0xF, z3, 0), FoldBy<384>(), x);
  const __m128i k128 = FoldBy<128>();
  for (; n >= 16; p += 16, n -= 16) x = Fold(x, k128, LoadLane(p, swap128));
  return ReduceLane(x);
}

Crc32Path DetectCrc32Path() {
  __builtin_cpu_init();
  if (__builtin_cpu_supports("pclmul") == 0 || __builtin_cpu_supports("sse4.1") == 0)
    return Crc32Path::kPortable;
  if (__builtin_cpu_supports("vpclmulqdq") != 0 && __builtin_cpu_supports("avx512f") != 0 &&
      __builtin_cpu_supports("avx512bw") != 0)
    return Crc32Path::kVclmul;
  return Crc32Path::kClmul;
}

#else

Crc32Path DetectCrc32Path() { return Crc32Path::kPortable; }

#endif  // VQ0300_CRC_HAS_CLMUL

// Below these lengths the folding costs more than it saves.
constexpr size_t kMinClmul = 64;
constexpr size_t kMinVclmul = 256;

}  // namespace

Crc32Path BestCrc32Path() {
  static const Crc32Path path = DetectCrc32Path();
  return path;
}

uint32_t Crc32Update(uint32_t r, const unsigned char* p, size_t n, Crc32Path path) {
#if VQ0300_CRC_HAS_CLMUL
  if (path != Crc32Path::kPortable && n >= kMinClmul) {
    const size_t folded = n & ~size_t{15};
    r = path == Crc32Path::kVclmul && n >= kMinVclmul ? FoldVclmul(r, p, folded)
                                                      : FoldClmul(r, p, folded);
    p += folded;
    n -= folded;
  }
#else
  (void)path;
#endif
  return Crc32Sliced(r, p, n);
}

uint16_t Crc16Update(uint16_t r, const unsigned char* p, size_t n, bool reverse) {
  return reverse ? Crc16Sliced<true>(r, p, n) : Crc16Sliced<false>(r, p, n);
}

}  // namespace vq0300_internal
