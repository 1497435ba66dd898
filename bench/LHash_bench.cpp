// LHash::getKey is a linear search from the first row: its cost grows with
// the number of keys. Measured at 10, 1,000 and 100,000 keys, each lookup a
// hit at a random row.
//
// Building the largest table takes about ten seconds before its measurement
// starts: every createKey first searches the rows the table already has, so
// n rows cost some n * n / 2 row visits. Leave it out with a filter such as
// --benchmark_filter='LHashGetKey/(10|1000)$'.
#include <vq0300/LHash.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

// n distinct keys of 6 to 20 lower-case letters.
std::vector<std::string> Keys(int n) {
  std::mt19937 rng(42);
  std::uniform_int_distribution<int> length(6, 20);
  std::uniform_int_distribution<int> letter('a', 'z');
  std::unordered_set<std::string> seen;
  std::vector<std::string> keys;
  while (static_cast<int>(keys.size()) < n) {
    std::string key(static_cast<std::size_t>(length(rng)), ' ');
    for (char& c : key) c = static_cast<char>(letter(rng));
    if (seen.insert(key).second) keys.push_back(std::move(key));
  }
  return keys;
}

// One table per size, built on first use and kept for the rest of the run.
const LHash& TableOf(int n) {
  static std::map<int, std::unique_ptr<LHash>> cache;
  std::unique_ptr<LHash>& table = cache[n];
  if (!table) {
    table = std::make_unique<LHash>();
    for (const std::string& key : Keys(n)) table->createKey(key.c_str());
  }
  return *table;
}

void LHashGetKey(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  const LHash& table = TableOf(n);
  const std::vector<std::string> keys = Keys(n);
  std::mt19937 rng(5);
  std::uniform_int_distribution<std::size_t> pick(0, keys.size() - 1);
  std::vector<std::string> queries;
  for (int i = 0; i < 1024; ++i) queries.push_back(keys[pick(rng)]);
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(table.getKey(queries[next].c_str()));
    next = (next + 1) % queries.size();
  }
  state.SetItemsProcessed(state.iterations());
}

}  // namespace

BENCHMARK(LHashGetKey)->Arg(10)->Arg(1000)->Arg(100000);
