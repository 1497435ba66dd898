#include <vq0300/Crc.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "TestSupport.h"

namespace {

// A CRC of the catalogue's parameter model, computed the plain way: one bit
// at a time, high bit first, with the input and output reflected as asked.
struct Model {
  int width;
  uint32_t poly, init;
  bool refin, refout;
  uint32_t xorout;
};
constexpr Model kArc{16, 0x8005, 0x0000, true, true, 0x0000};
constexpr Model kX25{16, 0x1021, 0xFFFF, true, true, 0xFFFF};
constexpr Model kCksum{32, 0x04C11DB7, 0, false, false, 0xFFFFFFFF};

uint32_t Reflect(uint32_t v, int width) {
  uint32_t r = 0;
  for (int i = 0; i < width; ++i) r |= ((v >> i) & 1u) << (width - 1 - i);
  return r;
}

uint32_t Reference(const Model& m, const std::string& data) {
  const uint32_t mask = m.width == 32 ? 0xFFFFFFFFu : (1u << m.width) - 1;
  uint32_t reg = m.init;
  for (unsigned char c : data) {
    for (int i = 0; i < 8; ++i) {
      const uint32_t in = m.refin ? (c >> i) & 1u : (c >> (7 - i)) & 1u;
      const uint32_t feedback = ((reg >> (m.width - 1)) & 1u) ^ in;
      reg = (reg << 1) & mask;
      if (feedback != 0) reg ^= m.poly;
    }
  }
  if (m.refout) reg = Reflect(reg, m.width);
  return (reg ^ m.xorout) & mask;
}

std::string RandomBytes(std::mt19937& gen, size_t n) {
  std::string s(n, '\0');
  for (char& c : s) c = static_cast<char>(gen() & 0xFF);
  return s;
}

unsigned short Ccitt(std::string data, bool reverse) {
  init_crc_ccitt();
  for (char& c : data) get_crc_ccitt(&c, reverse);
  return return_crc_ccitt();
}

unsigned int Crc32Register(std::string data, bool flag = false) {
  init_crc32();
  get_crc_32(data.data(), static_cast<int>(data.size()), flag);
  return return_crc32();
}

std::string Check() { return "123456789"; }

}  // namespace

// Runs first in the program, so it sees the registers as loading left them.
TEST(Crc, RegistersAreZeroAtLoad) {
  EXPECT_EQ(g_dwCRC32_Register, 0u);
  EXPECT_EQ(g_wCRC_CCITT_Register, 0u);
}

TEST(Crc, CatalogueCheckValues) {
  std::string s = Check();
  for (auto* f : {&get_crc_16, &get_crc_16_slow}) {
    EXPECT_EQ(f(0, s.data(), 9, false), 0xBB3D);
    EXPECT_EQ(f(0xFFFF, s.data(), 9, false), 0x4B37);
    EXPECT_EQ(f(0, s.data(), 9, true), 0x177F);
  }
  EXPECT_EQ(Ccitt(s, false), 0x906E);
  EXPECT_EQ(Ccitt(s, true), 0x726B);
  EXPECT_EQ(Crc32Register(s), 0x89A1897Fu);
  EXPECT_EQ(Reference(kArc, s), 0xBB3Du);
  EXPECT_EQ(Reference(kX25, s), 0x906Eu);
  EXPECT_EQ(Reference(kCksum, s), 0x765E7680u);

  init_crc32();
  for (unsigned char c : s)
    for (int i = 7; i >= 0; --i) get_bit_crc_32(static_cast<unsigned char>(c >> i));
  EXPECT_EQ(return_crc32(), 0xCCBD34E2u);
  for (int i = 0; i < 32; ++i) get_bit_crc_32(0);
  EXPECT_EQ(return_crc32(), 0x89A1897Fu);
}

TEST(Crc, MatchesBitwiseReferenceOnRandomData) {
  std::mt19937 gen(2024);
  // The reverse flag feeds each byte high bit first into the reflected register.
  const Model arc_reversed{16, 0x8005, 0, false, true, 0};
  const Model x25_reversed{16, 0x1021, 0xFFFF, false, true, 0xFFFF};
  for (size_t n : {1, 2, 3, 31, 64, 255, 1000}) {
    std::string s = RandomBytes(gen, n);  // bytes of 0x80 and up included
    const int len = static_cast<int>(n);
    const auto start = static_cast<unsigned short>(gen());
    const uint32_t start_model = Reflect(start, 16);
    Model arc = kArc;
    arc.init = start_model;
    EXPECT_EQ(get_crc_16(start, s.data(), len, false), Reference(arc, s)) << n;
    EXPECT_EQ(get_crc_16_slow(start, s.data(), len, false), Reference(arc, s)) << n;
    EXPECT_EQ(get_crc_16(0, s.data(), len, true), Reference(arc_reversed, s)) << n;
    EXPECT_EQ(get_crc_16_slow(0, s.data(), len, true), Reference(arc_reversed, s)) << n;
    EXPECT_EQ(Ccitt(s, false), Reference(kX25, s)) << n;
    EXPECT_EQ(Ccitt(s, true), Reference(x25_reversed, s)) << n;
    EXPECT_EQ(~Crc32Register(s), Reference(kCksum, s)) << n;
    // The flag of get_crc_32 is ignored.
    EXPECT_EQ(Crc32Register(s, true), Crc32Register(s, false)) << n;
    // Chaining: the register of one part is the start of the next.
    const int cut = len / 3;
    EXPECT_EQ(get_crc_16(get_crc_16(0, s.data(), cut, false), s.data() + cut, len - cut, false),
              get_crc_16(0, s.data(), len, false));
    // Bits high first plus 32 zero bits equal the byte form.
    init_crc32();
    for (unsigned char c : s)
      for (int i = 7; i >= 0; --i) get_bit_crc_32(static_cast<unsigned char>(c >> i));
    for (int i = 0; i < 32; ++i) get_bit_crc_32(0xFE);
    EXPECT_EQ(return_crc32(), Crc32Register(s)) << n;
  }
}

TEST(Crc, TableEntries) {
  static_assert(sizeof(CRCTable) == 2048, "256 entries of 64 bits");
  EXPECT_EQ(CRCTable[0], 0u);
  EXPECT_EQ(CRCTable[1], 0x04C11DB7u);
  const Model no_final{32, 0x04C11DB7, 0, false, false, 0};
  for (int i = 0; i < 256; ++i)
    EXPECT_EQ(CRCTable[i], Reference(no_final, std::string(1, static_cast<char>(i)))) << i;
}

TEST(Crc, EmptyInputsAndRegisterAccess) {
  char byte = 'x';
  for (int len : {0, -1}) {
    EXPECT_EQ(get_crc_16(0x1234, nullptr, len, false), 0x1234);
    EXPECT_EQ(get_crc_16_slow(0x1234, nullptr, len, true), 0x1234);
    g_dwCRC32_Register = 0xDEADBEEF;
    get_crc_32(&byte, len, false);
    EXPECT_EQ(return_crc32(), 0xDEADBEEFu);
  }
  // A null buffer reads nothing, whatever the length.
  EXPECT_EQ(get_crc_16(0x1234, nullptr, 5, false), 0x1234);
  get_crc_32(nullptr, 5, false);
  EXPECT_EQ(return_crc32(), 0xDEADBEEFu);
  init_crc_ccitt();
  get_crc_ccitt(nullptr, false);
  EXPECT_EQ(return_crc_ccitt(), 0);  // right after init
  // Return operations only read: the computation goes on after them.
  get_crc_ccitt(&byte, false);
  const unsigned short once = return_crc_ccitt();
  EXPECT_EQ(return_crc_ccitt(), once);
  EXPECT_EQ(g_wCRC_CCITT_Register, static_cast<uint16_t>(~once));
  // Only bit 0 of get_bit_crc_32's argument counts.
  init_crc32();
  get_bit_crc_32(0xFF);
  EXPECT_EQ(return_crc32(), 1u);
  get_bit_crc_32(0xFE);
  EXPECT_EQ(return_crc32(), 2u);
}

// The 32-bit register, fed the data and then its length, complemented, is
// what the cksum command prints.
TEST(Crc, AgreesWithCksumCommand) {
  testsupport::TempDir dir;
  std::mt19937 gen(7);
  for (size_t n : {0, 1, 9, 255, 256, 4097, 65535, 65536, 65537, 70001}) {
    const std::string data = RandomBytes(gen, n);
    const std::string path = dir / "data.bin";
    testsupport::WriteFile(path, data);
    FILE* pipe = popen(("cksum < '" + path + "'").c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    unsigned long expected = 0, size = 0;
    const int fields = std::fscanf(pipe, "%lu %lu", &expected, &size);
    ASSERT_EQ(pclose(pipe), 0);
    ASSERT_EQ(fields, 2);
    ASSERT_EQ(size, n);

    std::string copy = data;
    init_crc32();
    get_crc_32(copy.data(), static_cast<int>(n), false);
    for (size_t len = n; len != 0; len >>= 8) {
      char c = static_cast<char>(len & 0xFF);
      get_crc_32(&c, 1, false);
    }
    EXPECT_EQ(~return_crc32(), expected) << "size " << n;
  }
}
