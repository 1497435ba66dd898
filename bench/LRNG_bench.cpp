// LRNG::GetRandom beside std::mt19937 of the same compiler, drawing the same
// number of values per iteration.
#include <vq0300/LRNG.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>

namespace {

constexpr int kDraws = 4096;

void BM_LRNG_GetRandom(benchmark::State& state) {
  LRNG rng(5489);
  for (auto _ : state) {
    uint32_t sum = 0;
    for (int i = 0; i < kDraws; ++i) sum += rng.GetRandom();
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kDraws);
}
BENCHMARK(BM_LRNG_GetRandom);

void BM_std_mt19937(benchmark::State& state) {
  std::mt19937 rng(5489);
  for (auto _ : state) {
    uint32_t sum = 0;
    for (int i = 0; i < kDraws; ++i) sum += static_cast<uint32_t>(rng());
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kDraws);
}
BENCHMARK(BM_std_mt19937);

}  // namespace
