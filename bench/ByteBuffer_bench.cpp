// Throughput of the byte stores: appending to and reading back a chained
// buffer, and streaming through a ring, each over 100 MB, next to a
// std::string doing the same append.
#include <vq0300/LByteBuffer.h>
#include <vq0300/LCirByteBuffer.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

namespace {

constexpr std::int64_t kVolume = 100 * 1000 * 1000;
constexpr std::size_t kChunk = 1000 * 1000;

// One chunk of text without a NUL, appended kVolume / kChunk times.
const std::string& Chunk() {
  static const std::string chunk = [] {
    std::string text(kChunk, '\0');
    for (std::size_t i = 0; i < kChunk; ++i) text[i] = static_cast<char>('!' + i % 90);
    return text;
  }();
  return chunk;
}

void Fill(LByteBuffer& head) {
  LByteBuffer* end = &head;
  char* text = const_cast<char*>(Chunk().c_str());
  for (std::int64_t done = 0; done < kVolume; done += static_cast<std::int64_t>(kChunk)) {
    end = end->WriteData(text);
  }
}

void BM_LByteBuffer_WriteText(benchmark::State& state) {
  for (auto _ : state) {
    LByteBuffer head;  // default block size
    Fill(head);
    benchmark::DoNotOptimize(head.GetDataBlock());
  }
  state.SetBytesProcessed(state.iterations() * kVolume);
}
BENCHMARK(BM_LByteBuffer_WriteText)->Unit(benchmark::kMillisecond);

void BM_StdString_Append(benchmark::State& state) {
  for (auto _ : state) {
    std::string run;
    for (std::int64_t done = 0; done < kVolume; done += static_cast<std::int64_t>(kChunk)) {
      run += Chunk();
    }
    benchmark::DoNotOptimize(run.data());
  }
  state.SetBytesProcessed(state.iterations() * kVolume);
}
BENCHMARK(BM_StdString_Append)->Unit(benchmark::kMillisecond);

// ReadData walks index / block size links from the receiver, so a long run
// is read block by block, each from its own offset 0.
void BM_LByteBuffer_ReadByIndex(benchmark::State& state) {
  LByteBuffer head;
  Fill(head);
  for (auto _ : state) {
    unsigned sum = 0;
    for (LByteBuffer* block = &head; block != nullptr; block = block->GetNextBlock()) {
      const int size = block->GetDataSize();
      for (int i = 0; i < size; ++i) sum += block->ReadData(i);
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetBytesProcessed(state.iterations() * kVolume);
}
BENCHMARK(BM_LByteBuffer_ReadByIndex)->Unit(benchmark::kMillisecond);

// The same read counted from the head: the cost of the walk grows with the
// position, so the range is kept small.
void BM_LByteBuffer_ReadByIndexFromHead(benchmark::State& state) {
  const int range = static_cast<int>(state.range(0));
  LByteBuffer head;
  Fill(head);
  for (auto _ : state) {
    unsigned sum = 0;
    for (int i = 0; i < range; ++i) sum += head.ReadData(i);
    benchmark::DoNotOptimize(sum);
  }
  state.SetBytesProcessed(state.iterations() * range);
}
BENCHMARK(BM_LByteBuffer_ReadByIndexFromHead)
    ->Arg(1 << 20)
    ->Arg(4 << 20)
    ->Unit(benchmark::kMillisecond);

void BM_LCirByteBuffer_Write(benchmark::State& state) {
  LCirByteBuffer ring(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    ring.ClearBuffer();
    for (std::int64_t i = 0; i < kVolume; ++i) ring.WriteData(static_cast<unsigned char>(i));
    benchmark::DoNotOptimize(ring.GetLinearIndex());
  }
  state.SetBytesProcessed(state.iterations() * kVolume);
}
BENCHMARK(BM_LCirByteBuffer_Write)->Arg(64 << 10)->Unit(benchmark::kMillisecond);

}  // namespace
