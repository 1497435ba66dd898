#include <vq0300/Crc.h>

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>

#include "CrcFast_internal.h"  // Crc32Path, BestCrc32Path, Crc32Update: each path by name
#include "ModelRun.h"

// The references take one bit at a time and share no table with the library.
// A 16-bit register shifts right and takes each byte low bit first (high bit
// first when mirrored), the polynomial given reflected: 0xA001 for ARC, 0x8408
// for X-25. The 32-bit register shifts left and takes each byte at its top.
static uint32_t Ref16(uint32_t r, const std::string& data, uint32_t poly, bool mirror) {
  for (unsigned char c : data)
    for (int i = 0; i < 8; ++i)
      r = ((r ^ (c >> (mirror ? 7 - i : i))) & 1u) != 0 ? (r >> 1) ^ poly : r >> 1;
  return r;
}
static uint32_t Ref32(uint32_t r, const std::string& data) {
  for (unsigned char c : data)
    for (int i = 7; i >= 0; --i)
      r = (((r >> 31) ^ (c >> i)) & 1u) != 0 ? (r << 1) ^ 0x04C11DB7u : r << 1;
  return r;
}

// Each step takes one buffer of any length and alignment (null and negative
// lengths among them) into every form at once, against the references from
// register values kept here; the 32-bit update also runs every path this
// processor has. Now and then the caller sets the registers, which are theirs.
static void RunCrcOps(model::OpInput& in) {
  // The pool ends where an unreadable page begins: a read past the end of a
  // buffer that ends with it faults.
  const size_t size = 70'100, page = static_cast<size_t>(sysconf(_SC_PAGESIZE)),
               span = (size + page - 1) / page * page;
  void* const map =
      mmap(nullptr, span + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  MODEL_CHECK(map != MAP_FAILED && mprotect(static_cast<char*>(map) + span, page, PROT_NONE) == 0);
  char* const pool = static_cast<char*>(map) + span - size;
  for (size_t k = 0; k < size; ++k) pool[k] = static_cast<char>(k * k >> 7);
  init_crc32();
  init_crc_ccitt();
  uint32_t r32 = 0, rc = 0xFFFF;
  while (!in.Done()) {
    const int len = in.Edge({-1, 0, 1, 15, 16, 17, 256, 4111, 70'000}, 0, 1100);
    const bool rev = in.Bool();
    const int pick = in.Int(0, 7);  // 0: null, 1: ending at the unreadable page
    char* data = pick == 0 ? nullptr : pool + (pick == 1 ? size - std::max(len, 1) : in.Int(0, 63));
    const std::string bytes = data != nullptr && len > 0 ? std::string(data, len) : "";
    const auto start = static_cast<unsigned short>(in.Range(0, 0xFFFF));
    if (in.Int(0, 7) == 0) {
      r32 = g_dwCRC32_Register = static_cast<uint32_t>(in.Range(0, 0xFFFFFFFF));
      rc = g_wCRC_CCITT_Register = start;
    }
    get_crc_32(data, len, rev);  // the flag changes nothing
    get_crc_ccitt(data, rev);    // one byte, whatever the length
    const uint32_t want = Ref32(r32, bytes);
    for (int k = 0; k <= static_cast<int>(vq0300_internal::BestCrc32Path()); ++k) {
      const auto path = static_cast<vq0300_internal::Crc32Path>(k);
      const auto* p = reinterpret_cast<const unsigned char*>(data);
      MODEL_CHECK(vq0300_internal::Crc32Update(r32, p, bytes.size(), path) == want);
    }
    r32 = want;
    rc = Ref16(rc, data != nullptr ? std::string(1, *data) : "", 0x8408, rev);
    MODEL_CHECK(return_crc32() == r32);
    MODEL_CHECK(g_wCRC_CCITT_Register == rc);
    MODEL_CHECK(return_crc_ccitt() == static_cast<uint16_t>(~rc));
    MODEL_CHECK(get_crc_16(start, data, len, rev) == Ref16(start, bytes, 0xA001, rev));
    MODEL_CHECK(get_crc_16_slow(start, data, len, rev) == Ref16(start, bytes, 0xA001, rev));
  }
  munmap(map, span + page);
}

// The references against the catalogue; the bit form's register without and
// with the 32 zero bits that make it the register of get_crc_32.
TEST(Crc, CatalogueCheckValues) {
  const std::string s = "123456789";
  EXPECT_EQ(Ref16(0, s, 0xA001, false), 0xBB3Du);                  // CRC-16/ARC
  EXPECT_EQ(~Ref16(0xFFFF, s, 0x8408, false) & 0xFFFFu, 0x906Eu);  // CRC-16/X-25
  EXPECT_EQ(~Ref32(0, s), 0x765E7680u);                            // CRC-32/CKSUM
  init_crc32();
  for (unsigned char c : s)  // high bit first; only bit 0 of each call counts
    for (int i = 7; i >= 0; --i) get_bit_crc_32(static_cast<unsigned char>(c >> i));
  EXPECT_EQ(return_crc32(), 0xCCBD34E2u);
  for (int i = 0; i < 32; ++i) get_bit_crc_32(0xFE);
  EXPECT_EQ(return_crc32(), 0x89A1897Fu);
}

TEST(Crc, UpdatesMatchTheReferences) { model::RunSeeds(RunCrcOps, 10, 400); }

// The 32-bit register fed the data and then its length (low byte first, no
// byte for 0), complemented, is what the cksum command prints; the data is the
// output of seq, from empty to beyond 64 KiB (three length bytes).
TEST(Crc, AgreesWithCksumCommand) {
  for (int n : {0, 1, 9, 100, 13000}) {
    std::string data;
    for (int k = 1; k <= n; ++k) data += std::to_string(k) + "\n";
    FILE* pipe = popen(("seq 1 " + std::to_string(n) + " | cksum").c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    unsigned long expected = 0;
    EXPECT_EQ(std::fscanf(pipe, "%lu", &expected), 1);
    EXPECT_EQ(pclose(pipe), 0);
    for (size_t len = data.size(); len != 0; len >>= 8) data += static_cast<char>(len & 0xFF);
    init_crc32();
    get_crc_32(data.data(), static_cast<int>(data.size()), false);
    EXPECT_EQ(~return_crc32(), expected) << "seq 1 " << n;
  }
}
