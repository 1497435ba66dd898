/// @file
/// CRC family: three cyclic redundancy checks, each with its own calling form.
///
/// @code{.unparsed}
///   check              width  polynomial                 bit order   start   final step
///   get_crc_16(_slow)  16     0xA001 (0x8005 reflected)  low first   caller  none
///   get_crc_ccitt      16     0x8408 (0x1021 reflected)  low first   0xFFFF  complement
///   get_crc_32         32     0x04C11DB7                 high first  0       none
/// @endcode
///
/// Started from 0, get_crc_16 is CRC-16/ARC; the CCITT sequence is
/// CRC-16/X-25; the 32-bit register is that of CRC-32/CKSUM before its final
/// complement. Check values over the nine bytes "123456789": 0xBB3D, 0x906E,
/// and a register of 0x89A1897F (complemented: 0x765E7680).
///
/// SHARED STATE: the CCITT and the 32-bit checks keep their register in one
/// exported global each, g_wCRC_CCITT_Register and g_dwCRC32_Register, with no
/// lock. Only one CCITT and one 32-bit computation can run at a time in the
/// whole process; two interleaved computations (in one thread or in two) mix
/// into one wrong result. Nothing resets a register but its init operation,
/// and a caller may read or set the registers directly. get_crc_16 and
/// get_crc_16_slow have no state.
///
/// Bytes enter as unsigned 8-bit values: a char of 0x80 or more gives the same
/// result as the same bit pattern taken unsigned. The reverse flag of the
/// 16-bit updates mirrors each byte's bits (bit 0 <-> bit 7, 1 <-> 6, ...)
/// before it enters; either way the register takes bits from the low end of
/// the byte.
#ifndef VQ0300_CRC_H
#define VQ0300_CRC_H

#include <cstdint>

#include "vq0300/vq0300_export.h"

/// The running CCITT register; 0 when the library loads, so init_crc_ccitt
/// must come first.
VQ0300_API extern uint16_t g_wCRC_CCITT_Register;

/// The running 32-bit register; 0 when the library loads.
VQ0300_API extern uint32_t g_dwCRC32_Register;

/// The high-bit-first table of polynomial 0x04C11DB7: entry i is i * 2^24
/// after eight shifts left, each with a conditional XOR of the polynomial
/// (entry 1 is 0x04C11DB7). The value stands in the low 32 bits of each 64-bit
/// entry; the high 32 bits are 0. Read-only.
VQ0300_API extern const uint64_t CRCTable[256];

/// Adds length bytes of data to the register crc and returns the new register.
/// Table-driven, 16 bytes a step; the same register as four-bit steps through
/// a 16-entry table. To run over several buffers, feed each result in as the
/// next crc.
/// A length of 0 or less, or a null data, returns crc and reads nothing.
/// Example: get_crc_16(0, "123456789", 9, false) is 0xBB3D; from 0xFFFF it is
/// 0x4B37; from 0 with reverse true it is 0x177F.
VQ0300_API unsigned short get_crc_16(unsigned short crc, char* data, int length, bool reverse);

/// The same arguments and always the same result as get_crc_16, computed bit
/// by bit with no table.
VQ0300_API unsigned short get_crc_16_slow(unsigned short crc, char* data, int length, bool reverse);

/// Starts a CCITT computation: sets g_wCRC_CCITT_Register to 0xFFFF.
VQ0300_API void init_crc_ccitt();

/// Adds exactly one byte, *data, to the CCITT register. This is no string
/// operation: there is no length, and a NUL is a byte like any other.
/// A null data does nothing.
VQ0300_API void get_crc_ccitt(char* data, bool reverse);

/// The complement of the CCITT register. The register itself is unchanged, so
/// the computation can go on after it. Right after init_crc_ccitt it gives 0.
VQ0300_API unsigned short return_crc_ccitt();

/// Starts a 32-bit computation: sets g_dwCRC32_Register to 0.
VQ0300_API void init_crc32();

/// Adds length bytes of data, in buffer order, to the 32-bit register: the
/// register of one CRCTable lookup per byte, for any length and alignment.
/// Long buffers are folded by carry-less multiplication where the processor
/// has it (asked once per process), else sliced 16 bytes a step. Each byte enters at the top of the
/// register, so the register is that of the message followed by 32 zero bits. The flag is ignored:
/// true and false feed the bytes alike, never mirrored. A length of 0 or less, or a null data,
/// leaves the register alone.
VQ0300_API void get_crc_32(char* data, int length, bool flag);

/// Adds one bit, bit 0 of bit (the other bits are ignored), at the LOW end of
/// the 32-bit register: this divides the message alone, unlike get_crc_32.
/// Feeding a message high bit first and then 32 zero bits gives the register
/// get_crc_32 gives for that message. Example: from 0, the 72 bits of
/// "123456789" give 0xCCBD34E2, and 32 further zero bits 0x89A1897F.
VQ0300_API void get_bit_crc_32(unsigned char bit);

/// The 32-bit register, unchanged.
/// To get the CRC the cksum command prints for some data: init_crc32, feed the
/// data, then its length least significant byte first in as many bytes as the
/// length needs (none for an empty input), and complement the result.
VQ0300_API unsigned int return_crc32();

#endif  // VQ0300_CRC_H
