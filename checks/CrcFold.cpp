// The x86 folding path of the 32-bit CRC, by carry-less multiplication, and
// the question to the processor whether it has one.
//
// The register after a buffer is M(x) * x^32 mod P(x), where M is the
// buffer read as one polynomial, first byte highest, with the starting
// register added into its first four bytes. That value depends on M only
// modulo P, so long buffers are folded, 16 bytes to a 128-bit lane, by
// carry-less multiplication with constants x^k mod P: a lane X followed by D
// more bits is replaced by X_hi * (x^(D+64) mod P) + X_lo * (x^D mod P), which
// is congruent to X * x^D and added into the lane D bits further on. The last
// lane is then reduced to 32 bits (two folds and a Barrett step).
//
// The functions that use PCLMULQDQ or VPCLMULQDQ carry target attributes of
// their own, so the library is built for plain x86-64 and runs everywhere.
// Elsewhere the processor offers no folding, and Crc32Fold is never asked.
#include "CrcFast_internal.h"
#include "CrcTables_internal.h"

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#include <immintrin.h>

#include <cstring>

namespace vq0300_internal {
namespace {

// x^n mod P.
constexpr uint64_t XPowMod(int n) {
  uint32_t r = 1;
  for (int i = 0; i < n; ++i) r = Crc32Shift(r);
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

}  // namespace

Crc32Path DetectCrc32Path() {
  __builtin_cpu_init();
  if (__builtin_cpu_supports("pclmul") == 0 || __builtin_cpu_supports("sse4.1") == 0)
    return Crc32Path::kPortable;
  if (__builtin_cpu_supports("vpclmulqdq") != 0 && __builtin_cpu_supports("avx512f") != 0 &&
      __builtin_cpu_supports("avx512bw") != 0)
    return Crc32Path::kVclmul;
  return Crc32Path::kClmul;
}

uint32_t Crc32Fold(uint32_t r, const unsigned char* p, size_t n, Crc32Path path) {
  const size_t folded = n & ~size_t{15};
  r = path == Crc32Path::kVclmul && n >= kMinVclmul ? FoldVclmul(r, p, folded)
                                                    : FoldClmul(r, p, folded);
  return folded == n ? r : Crc32Sliced(r, p + folded, n - folded);
}

}  // namespace vq0300_internal

#else

namespace vq0300_internal {

Crc32Path DetectCrc32Path() { return Crc32Path::kPortable; }

uint32_t Crc32Fold(uint32_t r, const unsigned char* p, size_t n, Crc32Path /*path*/) {
  return Crc32Sliced(r, p, n);
}

}  // namespace vq0300_internal

#endif
