// RBTree beside std::set<std::string> and std::map<std::string, void*>:
// Insert, Search and Delete of n random string keys, n the benchmark
// argument. The intrusive tree links nodes the caller already holds, with the
// key text inside the node; the standard containers allocate a node and copy
// the key (a heap block of its own when longer than the short-string buffer)
// on every insertion.
#include <vq0300/RBTree.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

constexpr std::size_t kKeyRoom = 24;  // the longest key, 20, and room to spare

// A node as a caller lays it out: links and key buffer in one block.
struct KeyedNode {
  RBTreeNode node;
  char key[kKeyRoom];
};

// n distinct keys of 6 to 20 lower-case letters, in random order.
const std::vector<std::string>& Keys(std::size_t n) {
  static std::map<std::size_t, std::vector<std::string>> cache;
  std::vector<std::string>& keys = cache[n];
  if (keys.empty()) {
    std::mt19937 rng(42);
    std::uniform_int_distribution<int> length(6, 20);
    std::uniform_int_distribution<int> letter('a', 'z');
    std::unordered_set<std::string> seen;
    while (keys.size() < n) {
      std::string key(static_cast<std::size_t>(length(rng)), ' ');
      for (char& c : key) c = static_cast<char>(letter(rng));
      if (seen.insert(key).second) keys.push_back(std::move(key));
    }
  }
  return keys;
}

// The same keys in another random order, for lookups and removals.
std::vector<std::string> Queries(std::size_t n) {
  std::vector<std::string> queries = Keys(n);
  std::shuffle(queries.begin(), queries.end(), std::mt19937(7));
  return queries;
}

// Resets every node to its key, unlinked, and links them all into tree.
void Build(RBTree& tree, std::vector<KeyedNode>& nodes, const std::vector<std::string>& keys) {
  tree.root = nullptr;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    nodes[i].node = RBTreeNode{};
    std::memcpy(nodes[i].key, keys[i].c_str(), keys[i].size() + 1);
    nodes[i].node.key = nodes[i].key;
    tree.Insert(&tree, &nodes[i].node);
  }
}

void RBTreeInsert(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  const std::vector<std::string>& keys = Keys(n);
  std::vector<KeyedNode> nodes(n);
  for (std::size_t i = 0; i < n; ++i) {
    std::memcpy(nodes[i].key, keys[i].c_str(), keys[i].size() + 1);
  }
  RBTree tree{};
  for (auto _ : state) {
    state.PauseTiming();
    tree.root = nullptr;
    for (KeyedNode& k : nodes) {
      k.node = RBTreeNode{};
      k.node.key = k.key;
    }
    state.ResumeTiming();
    for (KeyedNode& k : nodes) tree.Insert(&tree, &k.node);
    benchmark::DoNotOptimize(tree.root);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void StdSetInsert(benchmark::State& state) {
  const std::vector<std::string>& keys = Keys(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    std::set<std::string> set;
    for (const std::string& key : keys) set.insert(key);
    benchmark::DoNotOptimize(set);
    state.PauseTiming();
    set.clear();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void StdMapInsert(benchmark::State& state) {
  const std::vector<std::string>& keys = Keys(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    std::map<std::string, void*> map;
    for (const std::string& key : keys) map.emplace(key, nullptr);
    benchmark::DoNotOptimize(map);
    state.PauseTiming();
    map.clear();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void RBTreeSearch(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  std::vector<KeyedNode> nodes(n);
  RBTree tree{};
  Build(tree, nodes, Keys(n));
  std::vector<std::string> queries = Queries(n);
  for (auto _ : state) {
    for (std::string& query : queries) benchmark::DoNotOptimize(tree.Search(tree.root, &query[0]));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void StdSetSearch(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  const std::set<std::string> set(Keys(n).begin(), Keys(n).end());
  const std::vector<std::string> queries = Queries(n);
  for (auto _ : state) {
    for (const std::string& query : queries) benchmark::DoNotOptimize(set.find(query));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void StdMapSearch(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  std::map<std::string, void*> map;
  for (const std::string& key : Keys(n)) map.emplace(key, nullptr);
  const std::vector<std::string> queries = Queries(n);
  for (auto _ : state) {
    for (const std::string& query : queries) benchmark::DoNotOptimize(map.find(query));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Removal by key, as erase(key) does it: find the node, then unlink it.
void RBTreeDelete(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  std::vector<KeyedNode> nodes(n);
  std::vector<std::string> queries = Queries(n);
  RBTree tree{};
  for (auto _ : state) {
    state.PauseTiming();
    Build(tree, nodes, Keys(n));  // Delete moves keys between nodes: refill
    state.ResumeTiming();
    for (std::string& query : queries) {
      benchmark::DoNotOptimize(tree.Delete(&tree, tree.Search(tree.root, &query[0])));
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void StdSetDelete(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  const std::vector<std::string> queries = Queries(n);
  for (auto _ : state) {
    state.PauseTiming();
    std::set<std::string> set(Keys(n).begin(), Keys(n).end());
    state.ResumeTiming();
    for (const std::string& query : queries) benchmark::DoNotOptimize(set.erase(query));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void StdMapDelete(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  const std::vector<std::string> queries = Queries(n);
  for (auto _ : state) {
    state.PauseTiming();
    std::map<std::string, void*> map;
    for (const std::string& key : Keys(n)) map.emplace(key, nullptr);
    state.ResumeTiming();
    for (const std::string& query : queries) benchmark::DoNotOptimize(map.erase(query));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Sizes: a small one to try quickly, and the million the comparison is for.
// Pick one with --benchmark_filter, e.g. 'Insert/10000$'.
void Sizes(benchmark::internal::Benchmark* b) {
  b->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK(RBTreeInsert)->Apply(Sizes);
BENCHMARK(StdSetInsert)->Apply(Sizes);
BENCHMARK(StdMapInsert)->Apply(Sizes);
BENCHMARK(RBTreeSearch)->Apply(Sizes);
BENCHMARK(StdSetSearch)->Apply(Sizes);
BENCHMARK(StdMapSearch)->Apply(Sizes);
BENCHMARK(RBTreeDelete)->Apply(Sizes);
BENCHMARK(StdSetDelete)->Apply(Sizes);
BENCHMARK(StdMapDelete)->Apply(Sizes);
