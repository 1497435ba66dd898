#include <vq0300/Crc.h>

#include "CrcFast_internal.h"  // Crc32Path, BestCrc32Path, Crc32Update: each path by name
#include "ModelRun.h"
#include "TestSupport.h"

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

// The 32-bit register after the bits of data, high bit first, then `zeros` zero bits.
static unsigned BitCrc32(const std::string& data, int zeros) {
  init_crc32();
  for (unsigned char c : data)
    for (int i = 7; i >= 0; --i) get_bit_crc_32(static_cast<unsigned char>(c >> i));
  for (int i = 0; i < zeros; ++i) get_bit_crc_32(0xFE);  // only bit 0 counts
  return return_crc32();
}

// Updates of every form from buffers of any length and alignment, null and
// negative lengths among them, against the references from the register values
// kept here; each 32-bit update also runs every path this processor has.
static void RunCrcOps(model::OpInput& in) {
  std::string pool(70'100, '\0');
  for (size_t k = 0; k < pool.size(); ++k) pool[k] = static_cast<char>(k * k >> 7);
  init_crc32();
  init_crc_ccitt();
  uint32_t r32 = 0, rc = 0xFFFF;
  while (!in.Done()) {
    const int op = in.Int(0, 4), len = in.Edge({-1, 0, 1, 15, 16, 17, 256, 4111, 70'000}, 0, 1100);
    const bool rev = in.Bool();
    char* data = in.Int(0, 7) == 0 ? nullptr : pool.data() + in.Int(0, 63);
    const std::string bytes = data != nullptr && len > 0 ? std::string(data, len) : "";
    model::Step() = "op " + std::to_string(op) + ", length " + std::to_string(len);
    if (op == 0) {
      get_crc_32(data, len, rev);  // the flag changes nothing
      const auto* p = reinterpret_cast<const unsigned char*>(bytes.data());
      for (int path = 0; path <= static_cast<int>(vq0300_internal::BestCrc32Path()); ++path)
        MODEL_CHECK(vq0300_internal::Crc32Update(r32, p, bytes.size(),
                                                 static_cast<vq0300_internal::Crc32Path>(path)) ==
                    Ref32(r32, bytes));
      r32 = Ref32(r32, bytes);
    } else if (op == 1) {  // 32 zero bits after the message give the register of get_crc_32
      BitCrc32(bytes.substr(0, 9), 32);
      r32 = Ref32(0, bytes.substr(0, 9));
    } else if (op == 2) {
      get_crc_ccitt(data, rev);
      rc = Ref16(rc, data != nullptr ? std::string(1, *data) : "", 0x8408, rev);
    } else if (op == 3) {
      const auto start = static_cast<unsigned short>(in.Range(0, 0xFFFF));
      MODEL_CHECK(get_crc_16(start, data, len, rev) == Ref16(start, bytes, 0xA001, rev));
      MODEL_CHECK(get_crc_16_slow(start, data, len, rev) == Ref16(start, bytes, 0xA001, rev));
    } else {  // the registers are the caller's to set
      r32 = g_dwCRC32_Register = static_cast<uint32_t>(in.Range(0, 0xFFFFFFFF));
      rc = g_wCRC_CCITT_Register = static_cast<uint16_t>(in.Range(0, 0xFFFF));
    }
    MODEL_CHECK(return_crc32() == r32);
    MODEL_CHECK(g_wCRC_CCITT_Register == rc);
    MODEL_CHECK(return_crc_ccitt() == static_cast<uint16_t>(~rc));
  }
}

// The references against the catalogue, and the bit form's register without
// and with the 32 zero bits that make it the register of get_crc_32.
TEST(Crc, CatalogueCheckValues) {
  const std::string s = "123456789";
  EXPECT_EQ(Ref16(0, s, 0xA001, false), 0xBB3Du);                  // CRC-16/ARC
  EXPECT_EQ(~Ref16(0xFFFF, s, 0x8408, false) & 0xFFFFu, 0x906Eu);  // CRC-16/X-25
  EXPECT_EQ(~Ref32(0, s), 0x765E7680u);                            // CRC-32/CKSUM
  EXPECT_EQ(BitCrc32(s, 0), 0xCCBD34E2u);
  EXPECT_EQ(BitCrc32(s, 32), 0x89A1897Fu);
  for (int i = 0; i < 256; ++i)  // entry i: the byte i into a zero register
    EXPECT_EQ(CRCTable[i], Ref32(0, std::string(1, static_cast<char>(i)))) << i;
}

TEST(Crc, UpdatesMatchTheReferences) { model::RunSeeds(RunCrcOps, 10, 400); }

// The 32-bit register fed the data and then its length (low byte first, no
// byte for 0), complemented, is what the cksum command prints.
TEST(Crc, AgreesWithCksumCommand) {
  testsupport::TempDir dir;
  std::mt19937 gen(7);
  for (size_t n : {0, 1, 9, 256, 65537, 70001}) {
    std::string data(n, '\0');
    for (char& c : data) c = static_cast<char>(gen());
    testsupport::WriteFile(dir / "data", data);
    FILE* pipe = popen(("cksum < '" + (dir / "data") + "'").c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    unsigned long expected = 0;
    EXPECT_EQ(std::fscanf(pipe, "%lu", &expected), 1);
    EXPECT_EQ(pclose(pipe), 0);
    for (size_t len = n; len != 0; len >>= 8) data += static_cast<char>(len & 0xFF);
    init_crc32();
    get_crc_32(data.data(), static_cast<int>(data.size()), false);
    EXPECT_EQ(~return_crc32(), expected) << "size " << n;
  }
}
