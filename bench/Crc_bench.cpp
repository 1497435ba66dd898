// Throughput of the table-driven CRC updates beside plain bit-by-bit loops
// over the same buffer, so the gain of the tables shows in one run.
#include <vq0300/Crc.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

namespace {

std::vector<char> Buffer(int64_t size) {
  std::mt19937 gen(1);
  std::vector<char> v(static_cast<size_t>(size));
  for (char& c : v) c = static_cast<char>(gen() & 0xFF);
  return v;
}

// Plain high-bit-first CRC-32 register update, one bit at a time.
uint32_t BitwiseCrc32(uint32_t r, const char* data, int length) {
  for (int i = 0; i < length; ++i) {
    r ^= static_cast<uint32_t>(static_cast<uint8_t>(data[i])) << 24;
    for (int k = 0; k < 8; ++k) r = (r & 0x80000000u) != 0 ? (r << 1) ^ 0x04C11DB7u : r << 1;
  }
  return r;
}

// Plain low-bit-first 16-bit update of a reflected polynomial.
uint16_t BitwiseCrc16(uint16_t crc, uint32_t poly, const char* data, int length) {
  uint32_t r = crc;
  for (int i = 0; i < length; ++i) {
    r ^= static_cast<uint8_t>(data[i]);
    for (int k = 0; k < 8; ++k) r = (r & 1u) != 0 ? (r >> 1) ^ poly : r >> 1;
  }
  return static_cast<uint16_t>(r);
}

void BM_get_crc_32(benchmark::State& state) {
  std::vector<char> buf = Buffer(state.range(0));
  for (auto _ : state) {
    init_crc32();
    get_crc_32(buf.data(), static_cast<int>(buf.size()), false);
    benchmark::DoNotOptimize(return_crc32());
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_bitwise_crc_32(benchmark::State& state) {
  std::vector<char> buf = Buffer(state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(BitwiseCrc32(0, buf.data(), static_cast<int>(buf.size())));
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_get_crc_16(benchmark::State& state) {
  std::vector<char> buf = Buffer(state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(get_crc_16(0, buf.data(), static_cast<int>(buf.size()), false));
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_bitwise_crc_16(benchmark::State& state) {
  std::vector<char> buf = Buffer(state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(BitwiseCrc16(0, 0xA001, buf.data(), static_cast<int>(buf.size())));
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
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

void BM_bitwise_crc_ccitt(benchmark::State& state) {
  std::vector<char> buf = Buffer(state.range(0));
  for (auto _ : state) {
    const uint16_t r = BitwiseCrc16(0xFFFF, 0x8408, buf.data(), static_cast<int>(buf.size()));
    benchmark::DoNotOptimize(static_cast<uint16_t>(~r));
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

BENCHMARK(BM_get_crc_32)->Arg(4096)->Arg(65536);
BENCHMARK(BM_bitwise_crc_32)->Arg(4096)->Arg(65536);
BENCHMARK(BM_get_crc_16)->Arg(4096)->Arg(65536);
BENCHMARK(BM_bitwise_crc_16)->Arg(4096)->Arg(65536);
BENCHMARK(BM_get_crc_ccitt)->Arg(4096)->Arg(65536);
BENCHMARK(BM_bitwise_crc_ccitt)->Arg(4096)->Arg(65536);

}  // namespace
