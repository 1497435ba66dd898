// The CRC family's public forms: the exported registers and CRCTable, the
// byte-at-a-time updates, and the hand-over of long buffers to the fast forms.
#include "vq0300/Crc.h"

#include <array>

#include "ByteBits_internal.h"
#include "CrcFast_internal.h"
#include "CrcTables_internal.h"

VQ0300_API uint16_t g_wCRC_CCITT_Register = 0;
VQ0300_API uint32_t g_dwCRC32_Register = 0;

namespace {

using vq0300_internal::Crc32Shift;
using vq0300_internal::EightBitSteps;
using vq0300_internal::kCcittTable;
using vq0300_internal::kPoly16;

// A byte of the caller's buffer as it enters a 16-bit register.
inline uint32_t InputByte(char c, bool reverse) {
  const auto b = static_cast<uint8_t>(c);
  return reverse ? vq0300_internal::kReversedBytes[b] : b;
}

// The byte table of get_crc_16, which runs short buffers through it in
// place, where the call into the sliced form would cost more than it saves.
constexpr const std::array<uint16_t, 256>& kCrc16Table = vq0300_internal::kCrc16Slices[0];
// The byte table of the 32-bit register, which CRCTable exports.
constexpr const std::array<uint32_t, 256>& kCrc32Table = vq0300_internal::kCrc32Slices[0];

// Below this length get_crc_16 and get_crc_32 run the byte recurrence in place.
constexpr int kShortCrc = 16;

}  // namespace

#define VQ0300_E4(n) \
  kCrc32Table[(n)], kCrc32Table[(n) + 1], kCrc32Table[(n) + 2], kCrc32Table[(n) + 3]
#define VQ0300_E16(n) VQ0300_E4((n)), VQ0300_E4((n) + 4), VQ0300_E4((n) + 8), VQ0300_E4((n) + 12)
#define VQ0300_E64(n) \
  VQ0300_E16((n)), VQ0300_E16((n) + 16), VQ0300_E16((n) + 32), VQ0300_E16((n) + 48)
// Constant-initialised, so the table is in place before any code of the
// process runs. "extern" keeps the export attribute on this const definition.
VQ0300_API extern const uint64_t CRCTable[256] = {VQ0300_E64(0), VQ0300_E64(64), VQ0300_E64(128),
                                                  VQ0300_E64(192)};
#undef VQ0300_E64
#undef VQ0300_E16
#undef VQ0300_E4

unsigned short get_crc_16(unsigned short crc, char* data, int length, bool reverse) {
  if (length <= 0 || data == nullptr) return crc;
  if (length < kShortCrc) {
    uint32_t r = crc;
    for (int i = 0; i < length; ++i)
      r = (r >> 8) ^ kCrc16Table[(r ^ InputByte(data[i], reverse)) & 0xFFu];
    return static_cast<unsigned short>(r);
  }
  // Sliced 16 bytes a step. Either way the register is that of the four-bit
  // steps through the 16-entry nibble table, which the tests keep as the reference.
  return vq0300_internal::Crc16Update(crc, reinterpret_cast<const unsigned char*>(data),
                                      static_cast<size_t>(length), reverse);
}

unsigned short get_crc_16_slow(unsigned short crc, char* data, int length, bool reverse) {
  if (length <= 0 || data == nullptr) return crc;
  uint32_t r = crc;
  for (int i = 0; i < length; ++i) r = EightBitSteps(r, InputByte(data[i], reverse), kPoly16);
  return static_cast<unsigned short>(r);
}

void init_crc_ccitt() { g_wCRC_CCITT_Register = 0xFFFF; }

void get_crc_ccitt(char* data, bool reverse) {
  if (data == nullptr) return;
  const uint32_t r = g_wCRC_CCITT_Register;
  g_wCRC_CCITT_Register =
      static_cast<uint16_t>((r >> 8) ^ kCcittTable[(r ^ InputByte(*data, reverse)) & 0xFFu]);
}

unsigned short return_crc_ccitt() { return static_cast<unsigned short>(~g_wCRC_CCITT_Register); }

void init_crc32() { g_dwCRC32_Register = 0; }

void get_crc_32(char* data, int length, bool /*flag*/) {
  if (length <= 0 || data == nullptr) return;
  const auto* p = reinterpret_cast<const unsigned char*>(data);
  uint32_t r = g_dwCRC32_Register;
  if (length < kShortCrc) {
    // Short buffers: the byte recurrence itself, no dispatch.
    const uint64_t* const table = CRCTable;
    for (int i = 0; i < length; ++i) r = (r << 8) ^ static_cast<uint32_t>(table[(r >> 24) ^ p[i]]);
  } else {
    r = vq0300_internal::Crc32Update(r, p, static_cast<size_t>(length),
                                     vq0300_internal::BestCrc32Path());
  }
  g_dwCRC32_Register = r;
}

void get_bit_crc_32(unsigned char bit) {
  const uint32_t r = g_dwCRC32_Register;
  const uint32_t in = bit & 1u;
  g_dwCRC32_Register = Crc32Shift(r) ^ in;
}

unsigned int return_crc32() { return g_dwCRC32_Register; }
