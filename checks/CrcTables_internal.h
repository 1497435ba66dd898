// The polynomials, the single steps and the byte tables of the library's
// CRCs, each written once and built at compile time, for the public forms
// (Crc.cpp), the portable slicing path and the folding path. Private to the
// library: nothing here is exported.
//
// Two bit orders: the 32-bit register takes bytes in at its top, high bit
// first; the 16-bit registers (CRC-16 and CCITT) take them in at the bottom,
// low bit first, with reflected polynomials.
#ifndef VQ0300_CHECKS_CRCTABLES_INTERNAL_H
#define VQ0300_CHECKS_CRCTABLES_INTERNAL_H

#include <array>
#include <cstddef>
#include <cstdint>

namespace vq0300_internal {

inline constexpr std::uint32_t kPoly32 = 0x04C11DB7u;  // high bit first
inline constexpr std::uint32_t kPoly16 = 0xA001u;      // 0x8005 reflected
inline constexpr std::uint32_t kPolyCcitt = 0x8408u;   // 0x1021 reflected
inline constexpr std::size_t kCrcSlices = 16;          // bytes a slicing step

// The 32-bit register shifted one bit to the left, with the polynomial added
// when a bit falls out of the top.
constexpr std::uint32_t Crc32Shift(std::uint32_t r) {
  return (r & 0x80000000u) != 0 ? (r << 1) ^ kPoly32 : r << 1;
}

// Eight low-bit-first steps of the byte b into the 16-bit register r.
constexpr std::uint32_t EightBitSteps(std::uint32_t r, std::uint32_t b, std::uint32_t poly) {
  for (int k = 0; k < 8; ++k) {
    r = ((r ^ b) & 1u) != 0 ? (r >> 1) ^ poly : r >> 1;
    b >>= 1;
  }
  return r;
}

// Slice k, entry i: the register after the byte i and k zero bytes from a
// zero register, that is i * x^(32 + 8k) mod P. Slice 0 is the byte table,
// whose entries CRCTable exports: the register after a byte b is
// (r << 8) XOR slice0[(r >> 24) XOR b].
constexpr std::array<std::array<std::uint32_t, 256>, kCrcSlices> MakeCrc32Slices() {
  std::array<std::array<std::uint32_t, 256>, kCrcSlices> t{};
  for (std::uint32_t i = 0; i < 256; ++i) {
    std::uint32_t r = i << 24;
    for (int k = 0; k < 8; ++k) r = Crc32Shift(r);
    t[0][i] = r;
  }
  for (std::size_t k = 1; k < kCrcSlices; ++k)
    for (std::size_t i = 0; i < 256; ++i) {
      const std::uint32_t prev = t[k - 1][i];
      t[k][i] = (prev << 8) ^ t[0][prev >> 24];
    }
  return t;
}
inline constexpr auto kCrc32Slices = MakeCrc32Slices();
static_assert(kCrc32Slices[0][1] == kPoly32, "CRC-32 byte table");

// The same for a low-bit-first 16-bit register: the register after a byte b
// is (r >> 8) XOR slice0[(r XOR b) & 0xFF], the value of its eight steps.
template <std::size_t Slices>
constexpr std::array<std::array<std::uint16_t, 256>, Slices> MakeCrc16Slices(std::uint32_t poly) {
  std::array<std::array<std::uint16_t, 256>, Slices> t{};
  for (std::uint32_t i = 0; i < 256; ++i)
    t[0][i] = static_cast<std::uint16_t>(EightBitSteps(i, 0, poly));
  for (std::size_t k = 1; k < Slices; ++k)
    for (std::size_t i = 0; i < 256; ++i) {
      const std::uint32_t prev = t[k - 1][i];
      t[k][i] = static_cast<std::uint16_t>((prev >> 8) ^ t[0][prev & 0xFFu]);
    }
  return t;
}
inline constexpr auto kCrc16Slices = MakeCrc16Slices<kCrcSlices>(kPoly16);
inline constexpr auto kCcittTable = MakeCrc16Slices<1>(kPolyCcitt)[0];
static_assert(kCrc16Slices[0][1] == 0xC0C1, "CRC-16 byte table");

}  // namespace vq0300_internal

#endif  // VQ0300_CHECKS_CRCTABLES_INTERNAL_H
