// Throughput of the CRC updates beside plain table forms written here, in one
// run: a byte table (one lookup per byte) and, for the 32-bit register, a
// slicing-by-8 table; the 32-bit update also beside the system's cksum, which
// computes the same CRC. Each path of the fast 32-bit form runs by name (the
// benchmark compiles its private source, as the tests do).
#include <vq0300/Crc.h>

#include <benchmark/benchmark.h>

#include <unistd.h>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "CrcFast_internal.h"

namespace {

using vq0300_internal::Crc32Path;

std::vector<char> Buffer(int64_t size) {
  std::mt19937 gen(1);
  std::vector<char> v(static_cast<size_t>(size));
  for (char& c : v) c = static_cast<char>(gen() & 0xFF);
  return v;
}

// --- The peers ---------------------------------------------------------------------

// kSlices32[k][i]: byte i followed by k zero bytes, high bit first; slice 0 is
// the byte table.
std::array<std::array<uint32_t, 256>, 8> MakeSlices32() {
  std::array<std::array<uint32_t, 256>, 8> t{};
  for (uint32_t i = 0; i < 256; ++i) {
    uint32_t r = i << 24;
    for (int k = 0; k < 8; ++k) r = (r & 0x80000000u) != 0 ? (r << 1) ^ 0x04C11DB7u : r << 1;
    t[0][i] = r;
  }
  for (size_t k = 1; k < 8; ++k)
    for (size_t i = 0; i < 256; ++i) t[k][i] = (t[k - 1][i] << 8) ^ t[0][t[k - 1][i] >> 24];
  return t;
}
const std::array<std::array<uint32_t, 256>, 8> kSlices32 = MakeSlices32();

// Byte table of a low-bit-first 16-bit register.
std::array<uint16_t, 256> MakeTable16(uint32_t poly) {
  std::array<uint16_t, 256> t{};
  for (uint32_t i = 0; i < 256; ++i) {
    uint32_t r = i;
    for (int k = 0; k < 8; ++k) r = (r & 1u) != 0 ? (r >> 1) ^ poly : r >> 1;
    t[i] = static_cast<uint16_t>(r);
  }
  return t;
}
const std::array<uint16_t, 256> kTable16 = MakeTable16(0xA001);
const std::array<uint16_t, 256> kTableCcitt = MakeTable16(0x8408);

uint32_t ByteTableCrc32(uint32_t r, const char* data, size_t n) {
  for (size_t i = 0; i < n; ++i)
    r = (r << 8) ^ kSlices32[0][(r >> 24) ^ static_cast<uint8_t>(data[i])];
  return r;
}

uint32_t Slicing8Crc32(uint32_t r, const char* data, size_t n) {
  const auto& t = kSlices32;
  for (; n >= 8; data += 8, n -= 8) {
    uint32_t a = 0, b = 0;
    std::memcpy(&a, data, 4);
    std::memcpy(&b, data + 4, 4);
    a = __builtin_bswap32(a) ^ r;
    b = __builtin_bswap32(b);
    r = t[7][a >> 24] ^ t[6][(a >> 16) & 0xFF] ^ t[5][(a >> 8) & 0xFF] ^ t[4][a & 0xFF] ^
        t[3][b >> 24] ^ t[2][(b >> 16) & 0xFF] ^ t[1][(b >> 8) & 0xFF] ^ t[0][b & 0xFF];
  }
  return ByteTableCrc32(r, data, n);
}

uint16_t ByteTableCrc16(uint16_t crc, const char* data, size_t n) {
  uint32_t r = crc;
  for (size_t i = 0; i < n; ++i)
    r = (r >> 8) ^ kTable16[(r ^ static_cast<uint8_t>(data[i])) & 0xFF];
  return static_cast<uint16_t>(r);
}

// One CCITT step in the shape of get_crc_ccitt: a global register, one byte,
// called through a pointer so that it is not inlined.
uint16_t g_peer_ccitt = 0;
void CcittStep(char* data, bool /*reverse*/) {
  g_peer_ccitt = static_cast<uint16_t>(
      (g_peer_ccitt >> 8) ^ kTableCcitt[(g_peer_ccitt ^ static_cast<uint8_t>(*data)) & 0xFF]);
}
void (*volatile g_ccitt_step)(char*, bool) = CcittStep;

template <typename F>
void RunOverBuffer(benchmark::State& state, F&& f) {
  const std::vector<char> buf = Buffer(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(f(buf.data(), buf.size()));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

// --- CRC-32 --------------------------------------------------------------------------

void BM_get_crc_32(benchmark::State& state) {
  std::vector<char> buf = Buffer(state.range(0));
  for (auto _ : state) {
    init_crc32();
    get_crc_32(buf.data(), static_cast<int>(buf.size()), false);
    benchmark::DoNotOptimize(return_crc32());
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

// Arguments: the path (0 portable, 1 PCLMULQDQ, 2 VPCLMULQDQ) and the size.
void BM_crc_32_path(benchmark::State& state) {
  const auto path = static_cast<Crc32Path>(state.range(0));
  if (vq0300_internal::BestCrc32Path() < path) {
    state.SkipWithError("the processor lacks this path");
    return;
  }
  const std::vector<char> buf = Buffer(state.range(1));
  const auto* p = reinterpret_cast<const unsigned char*>(buf.data());
  for (auto _ : state)
    benchmark::DoNotOptimize(vq0300_internal::Crc32Update(0, p, buf.size(), path));
  state.SetBytesProcessed(state.iterations() * state.range(1));
}

void BM_slicing8_crc_32(benchmark::State& state) {
  RunOverBuffer(state, [](const char* p, size_t n) { return Slicing8Crc32(0, p, n); });
}

void BM_byte_table_crc_32(benchmark::State& state) {
  RunOverBuffer(state, [](const char* p, size_t n) { return ByteTableCrc32(0, p, n); });
}

// The system's cksum over a 256 MiB file, read once before so that it is in
// the page cache, and get_crc_32 over the same bytes in memory (with the
// length appended as cksum does). Both rows count wall-clock time, since the
// command's time is not this process's. The file goes away at the end of the run.
constexpr int64_t kCksumSize = int64_t{256} << 20;

struct CksumFile {
  std::string path;
  std::vector<char> bytes;
  CksumFile() : bytes(Buffer(kCksumSize)) {
    char name[] = "/tmp/vq0300-crc-bench-XXXXXX";
    const int fd = mkstemp(name);
    if (fd < 0) return;
    close(fd);
    FILE* f = std::fopen(name, "wb");
    const bool written =
        f != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
    if (f != nullptr) std::fclose(f);
    if (written)
      path = name;
    else
      std::remove(name);
  }
  ~CksumFile() {
    if (!path.empty()) std::remove(path.c_str());
  }
  CksumFile(const CksumFile&) = delete;
  CksumFile& operator=(const CksumFile&) = delete;
};

CksumFile& TheCksumFile() {
  static CksumFile file;
  return file;
}

// The CRC cksum prints for the bytes: the data, its length low byte first,
// complemented.
unsigned long LibraryCksum(std::vector<char>& bytes) {
  init_crc32();
  get_crc_32(bytes.data(), static_cast<int>(bytes.size()), false);
  char length[8];
  int count = 0;
  for (uint64_t n = bytes.size(); n != 0; n >>= 8) length[count++] = static_cast<char>(n & 0xFF);
  get_crc_32(length, count, false);
  return ~return_crc32() & 0xFFFFFFFFul;
}

unsigned long RunCksum(const std::string& path) {
  FILE* pipe = popen(("cksum '" + path + "' 2>/dev/null").c_str(), "r");
  if (pipe == nullptr) return 0;
  unsigned long crc = 0;
  const int fields = std::fscanf(pipe, "%lu", &crc);
  return pclose(pipe) == 0 && fields == 1 ? crc : 0;
}

void BM_cksum_command(benchmark::State& state) {
  if (std::system("command -v cksum > /dev/null 2>&1") != 0) {
    state.SkipWithError("cksum not found");
    return;
  }
  CksumFile& file = TheCksumFile();
  if (file.path.empty()) {
    state.SkipWithError("cannot write the 256 MiB file in /tmp");
    return;
  }
  const unsigned long expected = RunCksum(file.path);  // also pulls the file into the page cache
  if (expected != LibraryCksum(file.bytes)) {
    state.SkipWithError("cksum and get_crc_32 disagree");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(RunCksum(file.path));
  state.SetBytesProcessed(state.iterations() * kCksumSize);
}

void BM_get_crc_32_cksum_bytes(benchmark::State& state) {
  CksumFile& file = TheCksumFile();
  for (auto _ : state) benchmark::DoNotOptimize(LibraryCksum(file.bytes));
  state.SetBytesProcessed(state.iterations() * kCksumSize);
}

// --- CRC-16 and CCITT ----------------------------------------------------------------

void BM_get_crc_16(benchmark::State& state) {
  std::vector<char> buf = Buffer(state.range(0));
  for (auto _ : state)
    benchmark::DoNotOptimize(get_crc_16(0, buf.data(), static_cast<int>(buf.size()), false));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_get_crc_16_reverse(benchmark::State& state) {
  std::vector<char> buf = Buffer(state.range(0));
  for (auto _ : state)
    benchmark::DoNotOptimize(get_crc_16(0, buf.data(), static_cast<int>(buf.size()), true));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_byte_table_crc_16(benchmark::State& state) {
  RunOverBuffer(state, [](const char* p, size_t n) { return ByteTableCrc16(0, p, n); });
}

// One call per byte, as the CCITT form demands.
void BM_get_crc_ccitt(benchmark::State& state) {
  std::vector<char> buf = Buffer(state.range(0));
  for (auto _ : state) {
    init_crc_ccitt();
    for (char& c : buf) get_crc_ccitt(&c, false);
    benchmark::DoNotOptimize(return_crc_ccitt());
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_byte_table_ccitt_by_pointer(benchmark::State& state) {
  std::vector<char> buf = Buffer(state.range(0));
  for (auto _ : state) {
    g_peer_ccitt = 0xFFFF;
    for (char& c : buf) g_ccitt_step(&c, false);
    benchmark::DoNotOptimize(static_cast<uint16_t>(~g_peer_ccitt));
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

const std::vector<int64_t> kSizes = {4096, 65536, int64_t{16} << 20};

BENCHMARK(BM_get_crc_32)->ArgsProduct({kSizes})->Arg(1)->Arg(4)->Arg(16)->Arg(64);
BENCHMARK(BM_crc_32_path)->ArgsProduct({{0, 1, 2}, kSizes});
BENCHMARK(BM_slicing8_crc_32)->ArgsProduct({kSizes});
BENCHMARK(BM_byte_table_crc_32)->ArgsProduct({kSizes})->Arg(1)->Arg(4)->Arg(16)->Arg(64);
BENCHMARK(BM_cksum_command)->Iterations(3)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_get_crc_32_cksum_bytes)->Iterations(3)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_get_crc_16)->Arg(4096)->Arg(65536)->Arg(1)->Arg(4)->Arg(16)->Arg(64);
BENCHMARK(BM_get_crc_16_reverse)->Arg(65536);
BENCHMARK(BM_byte_table_crc_16)->Arg(4096)->Arg(65536)->Arg(1)->Arg(4)->Arg(16)->Arg(64);
BENCHMARK(BM_get_crc_ccitt)->Arg(65536);
BENCHMARK(BM_byte_table_ccitt_by_pointer)->Arg(65536);

}  // namespace
