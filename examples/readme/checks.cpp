// CRCs, random numbers and hexadecimal text.
#include <vq0300/vq0300.h>

#include <cstdio>
#include <cstring>

int main() {
  char data[] = "123456789";
  const int n = static_cast<int>(std::strlen(data));

  // 16-bit CRC: a pure function, chained over buffers by feeding the result back.
  unsigned short crc16 = get_crc_16(0, data, 4, false);
  crc16 = get_crc_16(crc16, data + 4, n - 4, false);  // 0xBB3D

  // The 32-bit register as the cksum command uses it: data, then the length
  // least significant byte first, then the complement.
  init_crc32();
  get_crc_32(data, n, false);
  for (unsigned len = static_cast<unsigned>(n); len != 0; len >>= 8) {
    char byte = static_cast<char>(len & 0xFF);
    get_crc_32(&byte, 1, false);
  }
  const unsigned int cksum = ~return_crc32();  // 930766865

  LRNG rng(5489);                              // std::mt19937's sequence
  const unsigned int first = rng.GetRandom();  // 3499211612

  const unsigned char bytes[] = {static_cast<unsigned char>(crc16 >> 8),
                                 static_cast<unsigned char>(crc16 & 0xFF)};
  unsigned char hex[5];
  util_Bin2HexAnsi(bytes, hex, 2);  // "BB3D"
  char text[] = "0x1F";
  const unsigned int value = util_HexStr2Hex16(text);  // 31; text is now "1F"

  std::printf("crc16 %s  cksum %u  random %u  hex %u\n", reinterpret_cast<char*>(hex), cksum, first,
              value);
  return 0;
}
