// The util_ conversions between bytes, bits and hexadecimal text.
#include "vq0300/HexConversion.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "ByteBits_internal.h"
#include "vq0300/LString.h"

unsigned char util_Hex2HexAnsi(unsigned char value) {
  static const char kDigits[] = "0123456789ABCDEF";
  return value <= 15 ? static_cast<unsigned char>(kDigits[value]) : 0;
}

unsigned char util_HexAnsi2Hex(char digit) {
  if (digit >= '0' && digit <= '9') return static_cast<unsigned char>(digit - '0');
  if (digit >= 'A' && digit <= 'F') return static_cast<unsigned char>(digit - 'A' + 10);
  if (digit >= 'a' && digit <= 'f') return static_cast<unsigned char>(digit - 'a' + 10);
  return 0;
}

void util_SplitBin2Char(unsigned char value, unsigned char& high, unsigned char& low) {
  high = util_Hex2HexAnsi(static_cast<unsigned char>(value >> 4));
  low = util_Hex2HexAnsi(static_cast<unsigned char>(value & 0x0F));
}

void util_Bin2HexAnsi(const unsigned char* source, unsigned char* target, int count) {
  if (source == nullptr || target == nullptr) return;
  if (count <= 0) {
    target[0] = '\0';
    return;
  }
  const size_t n = static_cast<size_t>(count);
  for (size_t i = 0; i < n; ++i) util_SplitBin2Char(source[i], target[2 * i], target[2 * i + 1]);
  target[2 * n] = '\0';
}

void util_FlipByte(char& value) {
  value = static_cast<char>(vq0300_internal::reverse_byte_bits(static_cast<uint8_t>(value)));
}

unsigned int util_HexStr2Hex16(char* text) {
  if (text == nullptr) return 0;
  int length = static_cast<int>(std::strlen(text));
  LString ls;
  if (length > 0 && ls.Find(text, "0x") != -1) {
    // The first two characters go, wherever the "0x" stood.
    length -= 2;
    ls.Right(text, text, length);
  }
  if (length <= 0) return 0;
  uint32_t value = 0;
  for (int i = 0; i < length; ++i) value = (value << 4) | util_HexAnsi2Hex(text[i]);
  return value;
}
