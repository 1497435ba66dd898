// The fast buffer forms behind get_crc_32 and get_crc_16, private to the
// library: the portable slicing path (CrcPortable.cpp), the x86 folding path
// (CrcFold.cpp) and the one dispatch point between them (CrcFast.cpp). The
// CRC tests, fuzz target and benchmark link these objects to run every path
// by name, also the ones the dispatch would not pick, so the portable path
// is covered on a processor that has the carry-less multiply.
#ifndef VQ0300_CHECKS_CRCFAST_INTERNAL_H
#define VQ0300_CHECKS_CRCFAST_INTERNAL_H

#include <cstddef>
#include <cstdint>

namespace vq0300_internal {

// How Crc32Update runs over long buffers. Ordered: a processor that has one
// path has every path before it.
enum class Crc32Path {
  kPortable,  // slicing by 16 bytes through constexpr tables
  kClmul,     // PCLMULQDQ folding, 64 bytes a step
  kVclmul,    // VPCLMULQDQ folding on 512-bit registers, 256 bytes a step
};

// The fastest path this processor runs, asked of the processor once per
// process (thread-safely) and then remembered.
Crc32Path BestCrc32Path();

// The high-bit-first register of polynomial 0x04C11DB7 after the n bytes at p
// are taken in at the top of the register r, one byte after another: the same
// value as the byte-table recurrence. A path the processor lacks must not be
// asked for; any length and alignment is fine.
uint32_t Crc32Update(uint32_t r, const unsigned char* p, size_t n, Crc32Path path);

// The low-bit-first register of polynomial 0xA001 after the n bytes at p, each
// mirrored first when reverse is set: the value of the four-bit steps of
// get_crc_16, by slicing 16 bytes a step.
uint16_t Crc16Update(uint16_t r, const unsigned char* p, size_t n, bool reverse);

// --- The paths under the dispatch --------------------------------------------

// Crc32Update on the portable path: 16 bytes a step, the rest byte by byte.
uint32_t Crc32Sliced(uint32_t r, const unsigned char* p, size_t n);

// The path the processor offers, asked of it anew; BestCrc32Path remembers it.
Crc32Path DetectCrc32Path();

// Below these lengths folding costs more than it saves.
constexpr size_t kMinClmul = 64;
constexpr size_t kMinVclmul = 256;

// Crc32Update by folding, for n of at least kMinClmul, on kClmul or kVclmul
// (which folds from kMinVclmul on): the whole 16-byte lanes are folded and
// the rest goes through Crc32Sliced. Only where DetectCrc32Path has offered
// that path.
uint32_t Crc32Fold(uint32_t r, const unsigned char* p, size_t n, Crc32Path path);

}  // namespace vq0300_internal

#endif  // VQ0300_CHECKS_CRCFAST_INTERNAL_H
