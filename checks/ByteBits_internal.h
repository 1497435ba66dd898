// Mirroring the eight bits of a byte: bit 0 changes place with bit 7, bit 1
// with bit 6, bit 2 with bit 5, bit 3 with bit 4. Shared by the reverse flag
// of the 16-bit CRC updates and by util_FlipByte. Private to the library.
#ifndef VQ0300_CHECKS_BYTEBITS_INTERNAL_H
#define VQ0300_CHECKS_BYTEBITS_INTERNAL_H

#include <array>
#include <cstdint>

namespace vq0300_internal {

// Swaps the nibbles, then the bit pairs within them, then the single bits.
constexpr uint8_t reverse_byte_bits(uint8_t b) {
  b = static_cast<uint8_t>(((b & 0xF0u) >> 4) | ((b & 0x0Fu) << 4));
  b = static_cast<uint8_t>(((b & 0xCCu) >> 2) | ((b & 0x33u) << 2));
  b = static_cast<uint8_t>(((b & 0xAAu) >> 1) | ((b & 0x55u) << 1));
  return b;
}

static_assert(reverse_byte_bits(0x12) == 0x48 && reverse_byte_bits(0xF0) == 0x0F &&
                  reverse_byte_bits(0x01) == 0x80,
              "bit mirror");

// reverse_byte_bits of every byte, for loops that mirror byte after byte.
constexpr std::array<uint8_t, 256> MakeReversedBytes() {
  std::array<uint8_t, 256> t{};
  for (uint32_t i = 0; i < 256; ++i) t[i] = reverse_byte_bits(static_cast<uint8_t>(i));
  return t;
}
inline constexpr std::array<uint8_t, 256> kReversedBytes = MakeReversedBytes();

}  // namespace vq0300_internal

#endif  // VQ0300_CHECKS_BYTEBITS_INTERNAL_H
