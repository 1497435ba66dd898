/// @file
/// Conversions between bytes and their hexadecimal text, and the mirroring of
/// the bits of a byte.
///
/// Digits written are upper case, with no prefix and no separator. Digits
/// read may be of either case. No function reports an error: a bad digit or
/// an out-of-range value gives 0, as told at each one.
#ifndef VQ0300_HEXCONVERSION_H
#define VQ0300_HEXCONVERSION_H

#include "vq0300/vq0300_export.h"

/// The upper-case hexadecimal character of value. Above 15 the result is the
/// byte 0, not the character '0'.
/// Example: 10 gives 'A', 16 gives 0.
VQ0300_API unsigned char util_Hex2HexAnsi(unsigned char value);

/// The value 0 to 15 of a hexadecimal character 0-9, A-F or a-f. Any other
/// character gives 0, the same as the digit zero: there is no error result.
/// Example: 'a' and 'A' give 10; 'G', 'x' and ' ' give 0.
VQ0300_API unsigned char util_HexAnsi2Hex(char digit);

/// Writes the characters of the high four bits of value to high and of the
/// low four bits to low. Example: 0xA5 gives 'A' and '5'.
VQ0300_API void util_SplitBin2Char(unsigned char value, unsigned char& high, unsigned char& low);

/// Writes count bytes of source to target as a NUL-terminated text of
/// 2 * count characters; target must have room for 2 * count + 1 bytes.
/// A count of 0 or less writes only the NUL at target[0]. A null source or a
/// null target does nothing: target is not touched.
/// Example: the bytes 00 FF 1E give "00FF1E".
VQ0300_API void util_Bin2HexAnsi(const unsigned char* source, unsigned char* target, int count);

/// The value of a hexadecimal text, with or without "0x". Digits are read
/// from the left, each shifting the value four bits up; a character that is
/// no digit counts as 0, and digits shifted past bit 31 are lost. The result
/// carries all 32 bits (the four lowest digits are the same in any width).
/// WARNING: if "0x" stands anywhere in text, text is shortened in place by its
/// FIRST two characters, wherever the "0x" stood; an upper-case X makes no
/// match. A null text gives 0.
/// Examples: "1F" gives 31; "0x1F" gives 31 and leaves "1F"; "10x2" gives 2
/// and leaves "x2"; "0X1F" gives 31 and stays; "1G2" gives 0x102.
VQ0300_API unsigned int util_HexStr2Hex16(char* text);

/// Mirrors the eight bits of value in place: bit 0 changes place with bit 7,
/// bit 1 with bit 6, bit 2 with bit 5, bit 3 with bit 4.
/// Example: 0x12 becomes 0x48, 0xF0 becomes 0x0F.
VQ0300_API void util_FlipByte(char& value);

#endif  // VQ0300_HEXCONVERSION_H
