#include <vq0300/Crc.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "CrcFast_internal.h"  // compiled into this program, to run each path by name
#include "TestSupport.h"

namespace {

// A CRC of the catalogue's parameter model computed the plain way: one bit
// at a time, high bit first, input and output reflected as asked.
uint32_t Reference(const std::string& data, int width, uint32_t poly, uint32_t init, bool refin,
                   bool refout, uint32_t xorout) {
  const uint32_t top = 1u << (width - 1), mask = top | (top - 1);
  uint32_t reg = init;
  for (unsigned char c : data) {
    for (int i = 0; i < 8; ++i) {
      const bool feedback = ((reg & top) != 0) != (((c >> (refin ? i : 7 - i)) & 1u) != 0);
      reg = ((reg << 1) & mask) ^ (feedback ? poly : 0u);
    }
  }
  uint32_t out = refout ? 0 : reg;
  for (int i = 0; refout && i < width; ++i) out |= ((reg >> i) & 1u) << (width - 1 - i);
  return (out ^ xorout) & mask;
}
// CRC-16/ARC, CRC-16/X-25 and CRC-32/CKSUM. With refin false the bytes enter
// high bit first, which is what the reverse flag does.
uint32_t Arc(const std::string& s, bool in = true) { return Reference(s, 16, 0x8005, 0, in, 1, 0); }
uint32_t X25(const std::string& s, bool in = true) {
  return Reference(s, 16, 0x1021, 0xFFFF, in, true, 0xFFFF);
}
uint32_t Cksum(const std::string& s) { return Reference(s, 32, 0x04C11DB7, 0, false, false, ~0u); }

unsigned short Ccitt(std::string data, bool reverse) {
  init_crc_ccitt();
  for (char& c : data) get_crc_ccitt(&c, reverse);
  return return_crc_ccitt();
}

unsigned int Crc32(std::string data, bool flag = false) {
  init_crc32();
  get_crc_32(data.data(), static_cast<int>(data.size()), flag);
  return return_crc32();
}

// The 32-bit register after the bits of data, high bit first, and zeros more bits.
unsigned int BitCrc32(const std::string& data, int zeros) {
  init_crc32();
  for (unsigned char c : data)
    for (int i = 7; i >= 0; --i) get_bit_crc_32(static_cast<unsigned char>(c >> i));
  for (int i = 0; i < zeros; ++i) get_bit_crc_32(0xFE);  // only bit 0 counts
  return return_crc32();
}

// Register-level references for the buffer forms. The 32-bit one is the byte
// recurrence through CRCTable; the 16-bit one the four-bit steps through the
// nibble table; the bitwise ones share no table with the library.
uint32_t TableCrc32(uint32_t r, const unsigned char* p, size_t n) {
  for (size_t i = 0; i < n; ++i) r = (r << 8) ^ static_cast<uint32_t>(CRCTable[(r >> 24) ^ p[i]]);
  return r;
}
uint32_t BitwiseCrc32(uint32_t r, const unsigned char* p, size_t n) {
  for (size_t i = 0; i < n; ++i) {
    r ^= static_cast<uint32_t>(p[i]) << 24;
    for (int k = 0; k < 8; ++k) r = (r & 0x80000000u) != 0 ? (r << 1) ^ 0x04C11DB7u : r << 1;
  }
  return r;
}
unsigned char Entering(unsigned char b, bool reverse) {
  unsigned char m = 0;
  for (int i = 0; i < 8; ++i) m |= ((b >> i) & 1u) << (7 - i);
  return reverse ? m : b;
}
uint16_t NibbleCrc16(uint16_t crc, const unsigned char* p, size_t n, bool reverse) {
  static constexpr uint16_t kNibble[16] = {0x0000, 0xCC01, 0xD801, 0x1400, 0xF001, 0x3C00,
                                           0x2800, 0xE401, 0xA001, 0x6C00, 0x7800, 0xB401,
                                           0x5000, 0x9C01, 0x8801, 0x4400};
  uint32_t r = crc;
  for (size_t i = 0; i < n; ++i) {
    const uint32_t b = Entering(p[i], reverse);
    r = (r >> 4) ^ kNibble[r & 0xFu];
    r ^= kNibble[b & 0xFu];
    r = (r >> 4) ^ kNibble[r & 0xFu];
    r ^= kNibble[b >> 4];
  }
  return static_cast<uint16_t>(r);
}
uint16_t BitwiseCrc16(uint16_t crc, const unsigned char* p, size_t n, bool reverse) {
  uint32_t r = crc;
  for (size_t i = 0; i < n; ++i) {
    r ^= Entering(p[i], reverse);
    for (int k = 0; k < 8; ++k) r = (r & 1u) != 0 ? (r >> 1) ^ 0xA001u : r >> 1;
  }
  return static_cast<uint16_t>(r);
}

}  // namespace

// Loading leaves both registers at 0. Looked at in a fresh run of this
// program, so no other test can have moved them first.
TEST(CrcDeathTest, RegistersAreZeroAtLoad) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(std::exit(g_dwCRC32_Register == 0 ? 0 : 1), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(std::exit(g_wCRC_CCITT_Register == 0 ? 0 : 1), testing::ExitedWithCode(0), "");
}

TEST(Crc, CatalogueCheckValues) {
  std::string s = "123456789";
  ASSERT_TRUE(Arc(s) == 0xBB3D && X25(s) == 0x906E && Cksum(s) == 0x765E7680);  // the reference
  for (auto* f : {&get_crc_16, &get_crc_16_slow}) {
    EXPECT_EQ(f(0, s.data(), 9, false), 0xBB3D);
    EXPECT_EQ(f(0xFFFF, s.data(), 9, false), 0x4B37);
    EXPECT_EQ(f(0, s.data(), 9, true), 0x177F);
  }
  EXPECT_EQ(Ccitt(s, false), 0x906E);
  EXPECT_EQ(Ccitt(s, true), 0x726B);
  EXPECT_EQ(Crc32(s), 0x89A1897Fu);
  EXPECT_EQ(BitCrc32(s, 0), 0xCCBD34E2u);
  EXPECT_EQ(BitCrc32(s, 32), 0x89A1897Fu);
  EXPECT_EQ(CRCTable[1], 0x04C11DB7u);
  for (uint64_t entry : CRCTable) EXPECT_EQ(entry >> 32, 0u);
}

TEST(Crc, MatchesBitwiseReferenceOnRandomData) {
  std::mt19937 gen(2024);
  for (size_t n : {1, 2, 31, 255, 1000}) {
    std::string s(n, '\0');
    for (char& c : s) c = static_cast<char>(gen());  // 0x80 and up included
    const int len = static_cast<int>(n), cut = len / 3;
    for (bool rev : {false, true}) {
      // Over two buffers, the first result being the start of the second.
      const unsigned short part = get_crc_16(0, s.data(), cut, rev);
      EXPECT_EQ(get_crc_16(part, s.data() + cut, len - cut, rev), Arc(s, !rev)) << n;
      EXPECT_EQ(get_crc_16_slow(0, s.data(), len, rev), Arc(s, !rev)) << n;
      EXPECT_EQ(Ccitt(s, rev), X25(s, !rev)) << n;
      EXPECT_EQ(~Crc32(s, rev), Cksum(s)) << n;  // the flag of get_crc_32 is ignored
    }
    EXPECT_EQ(BitCrc32(s, 32), Crc32(s)) << n;
  }
}

// The buffer forms against the references over random buffers: every length
// up to 300, then sampled lengths to beyond 70,000, at every alignment from 0
// to 63, from random registers, in random pieces. Each path of the fast forms
// runs by name (the portable one on every processor), and the public
// functions through whatever path the dispatch picked.
TEST(Crc, BufferFormsMatchReferences) {
  using vq0300_internal::Crc32Path;
  std::mt19937 gen(13);
  std::vector<unsigned char> pool(70'500 + 64);
  for (unsigned char& c : pool) c = static_cast<unsigned char>(gen());
  std::vector<Crc32Path> paths = {Crc32Path::kPortable};
  for (Crc32Path p : {Crc32Path::kClmul, Crc32Path::kVclmul})
    if (vq0300_internal::BestCrc32Path() >= p) paths.push_back(p);
  std::vector<size_t> lengths;
  for (size_t n = 0; n <= 300; ++n) lengths.push_back(n);
  for (size_t n : {511, 512, 513, 1023, 4096, 4111, 65536, 70'000, 70'500}) lengths.push_back(n);
  for (int i = 0; i < 40; ++i) lengths.push_back(gen() % 70'500);
  for (size_t i = 0; i < lengths.size(); ++i) {
    const size_t n = lengths[i], align = i % 64;
    unsigned char* p = pool.data() + align;
    char* data = reinterpret_cast<char*>(p);
    const auto r32 = static_cast<uint32_t>(gen());
    const auto r16 = static_cast<uint16_t>(gen());
    const bool flag = (gen() & 1u) != 0;
    std::array<size_t, 2> cut = {gen() % (n + 1), gen() % (n + 1)};  // three pieces
    if (cut[0] > cut[1]) std::swap(cut[0], cut[1]);
    const std::array<size_t, 4> bounds = {0, cut[0], cut[1], n};

    const uint32_t want32 = BitwiseCrc32(r32, p, n);
    EXPECT_EQ(TableCrc32(r32, p, n), want32) << n;
    for (Crc32Path path : paths)
      EXPECT_EQ(vq0300_internal::Crc32Update(r32, p, n, path), want32)
          << n << " path " << static_cast<int>(path);
    g_dwCRC32_Register = r32;
    for (size_t k = 0; k < 3; ++k)
      get_crc_32(data + bounds[k], static_cast<int>(bounds[k + 1] - bounds[k]), flag);
    EXPECT_EQ(return_crc32(), want32) << n << " in pieces at " << cut[0] << ", " << cut[1];

    for (bool reverse : {false, true}) {
      const uint16_t want16 = BitwiseCrc16(r16, p, n, reverse);
      EXPECT_EQ(NibbleCrc16(r16, p, n, reverse), want16) << n;
      EXPECT_EQ(vq0300_internal::Crc16Update(r16, p, n, reverse), want16) << n;
      uint16_t crc = r16;
      for (size_t k = 0; k < 3; ++k)
        crc =
            get_crc_16(crc, data + bounds[k], static_cast<int>(bounds[k + 1] - bounds[k]), reverse);
      EXPECT_EQ(crc, want16) << n << " in pieces at " << cut[0] << ", " << cut[1];
    }
  }
}

// Nothing to read leaves every register alone; the return functions only read.
TEST(Crc, EmptyInputsAndRegisterAccess) {
  char byte = 'x';
  g_dwCRC32_Register = 0xDEADBEEF;
  for (auto [data, len] : {std::pair<char*, int>{&byte, 0}, {&byte, -1}, {nullptr, 5}}) {
    EXPECT_EQ(get_crc_16(0x1234, data, len, false), 0x1234) << len;
    EXPECT_EQ(get_crc_16_slow(0x1234, data, len, true), 0x1234) << len;
    get_crc_32(data, len, false);
  }
  EXPECT_EQ(return_crc32(), 0xDEADBEEFu);
  init_crc_ccitt();
  get_crc_ccitt(nullptr, false);
  EXPECT_EQ(return_crc_ccitt(), 0);
  get_crc_ccitt(&byte, false);
  EXPECT_EQ(g_wCRC_CCITT_Register, static_cast<uint16_t>(~return_crc_ccitt()));
  EXPECT_EQ(return_crc_ccitt(), X25("x"));  // the register went on after a return
}

// The 32-bit register, fed the data and then its length (low byte first, no
// byte for 0), complemented, is what the cksum command prints.
TEST(Crc, AgreesWithCksumCommand) {
  testsupport::TempDir dir;
  std::mt19937 gen(7);
  for (size_t n : {0, 1, 9, 256, 65535, 65536, 65537, 70001}) {
    std::string data(n, '\0');
    for (char& c : data) c = static_cast<char>(gen());
    testsupport::WriteFile(dir / "data.bin", data);
    FILE* pipe = popen(("cksum < '" + (dir / "data.bin") + "'").c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    unsigned long expected = 0, size = 0;
    const int fields = std::fscanf(pipe, "%lu %lu", &expected, &size);
    ASSERT_TRUE(pclose(pipe) == 0 && fields == 2 && size == n);
    for (size_t len = n; len != 0; len >>= 8) data += static_cast<char>(len & 0xFF);
    EXPECT_EQ(~Crc32(data), expected) << "size " << n;
  }
}
