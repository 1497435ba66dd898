// Loading error definition files with ErrorHandler::Initialize.
#include <benchmark/benchmark.h>
#include <vq0300/ErrorHandler.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

// A fresh temporary directory, removed with its files when the program ends.
class BenchDir {
 public:
  BenchDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vq0300-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) std::abort();
    path_ = pattern;
  }
  ~BenchDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

BenchDir& Dir() {
  static BenchDir dir;
  return dir;
}

// 100,000 definitions in blocks of 1,000, one statement a line: about 5 MB.
const std::string& DefinitionsFile() {
  static const std::string name = [] {
    std::ofstream out(Dir().path() + "/definitions.txt", std::ios::binary);
    out << "Generated definitions\n<ErrorMessageDefinition>\n";
    for (int i = 0; i < 100000; ++i) {
      if (i % 1000 == 0)
        out << "<!-- block " << i / 1000 << " -->\nOffset<S/>" << i / 1000 << "<E/>\n";
      out << i % 1000 << "<S/>The operation number " << i << " failed here<S/>"
          << (i % 2 != 0 ? "STOP" : "CONTINUE") << "<E/>\n";
    }
    return std::string("definitions.txt");
  }();
  return name;
}

// One statement that never ends, over 100,000 lines: the reader must not
// rescan what it has joined so far at every line.
const std::string& UnterminatedFile() {
  static const std::string name = [] {
    std::ofstream out(Dir().path() + "/unterminated.txt", std::ios::binary);
    out << "<ErrorMessageDefinition>\n";
    for (int i = 0; i < 100000; ++i)
      out << "a line of a statement that has no end mark " << i << "\n";
    return std::string("unterminated.txt");
  }();
  return name;
}

void Load(benchmark::State& state, const std::string& file, int selector) {
  std::string name = file;
  ErrorHandler handler;
  handler.SetDefaultDir(Dir().path().c_str());
  const auto bytes = std::filesystem::file_size(Dir().path() + "/" + file);
  for (auto _ : state) {
    int result = handler.Initialize(name.data(), selector);
    benchmark::DoNotOptimize(result);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(bytes));
}

void BM_InitializeWholeFile(benchmark::State& state) { Load(state, DefinitionsFile(), -1); }
BENCHMARK(BM_InitializeWholeFile)->Unit(benchmark::kMillisecond);

void BM_InitializeLastBlock(benchmark::State& state) { Load(state, DefinitionsFile(), 99); }
BENCHMARK(BM_InitializeLastBlock)->Unit(benchmark::kMillisecond);

void BM_InitializeUnterminatedStatement(benchmark::State& state) {
  Load(state, UnterminatedFile(), -1);
}
BENCHMARK(BM_InitializeUnterminatedStatement)->Unit(benchmark::kMillisecond);

}  // namespace
