// Fuzzes LString: a sequence of searches, slices and trims driven by the
// input, each checked against a small std::string model. Every buffer handed
// to LString is a heap block of exactly the size the operation may touch, so
// the address sanitizer sees any access past it.
#include <fuzzer/FuzzedDataProvider.h>
#include <vq0300/LString.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "FuzzSupport.h"

namespace {

// What the current step does, printed when a check fails.
struct Step {
  const char* op = "";
  std::string s, t;
  long x = 0, y = 0;
} g_step;

[[noreturn]] void Fail(int line, const char* what) {
  std::fprintf(stderr,
               "LString_fuzz: check failed at line %d: %s\n  in %s(\"%s\", \"%s\", %ld, %ld)\n",
               line, what, g_step.op, Escaped(g_step.s).c_str(), Escaped(g_step.t).c_str(),
               g_step.x, g_step.y);
  std::abort();
}

// ---- The model ----------------------------------------------------------------

bool IsWhite(char c) {
  const unsigned char u = static_cast<unsigned char>(c);
  return u < 0x21 || u > 0x7E;
}

int Pos(size_t p) { return p == std::string::npos ? -1 : static_cast<int>(p); }

// Searches: an empty s misses before the other argument is looked at.
int Find(const std::string& s, const std::string& sub) { return s.empty() ? -1 : Pos(s.find(sub)); }
int FindOneOf(const std::string& s, const std::string& set) {
  return s.empty() ? -1 : Pos(s.find_first_of(set));
}
int ReverseFind(const std::string& s, const std::string& sub) {
  if (s.empty()) return -1;
  return sub.empty() ? static_cast<int>(s.size()) : Pos(s.rfind(sub));
}
int ReverseFindOneOf(const std::string& s, const std::string& set) {
  return s.empty() ? -1 : Pos(s.find_last_of(set));
}
// The one-character search string of c; NUL makes it empty.
std::string CharText(char c) { return c == '\0' ? std::string() : std::string(1, c); }

std::string Left(const std::string& s, long n) {
  return n < 1 ? std::string() : s.substr(0, std::min<size_t>(n, s.size()));
}
std::string Right(const std::string& s, long n) {
  return n < 1 ? std::string() : s.substr(s.size() - std::min<size_t>(n, s.size()));
}
std::string Mid(const std::string& s, long start, long count) {
  if (count < 1) return std::string();
  start = std::max(start, 0L);
  if (start >= static_cast<long>(s.size())) return std::string();
  return s.substr(start, std::min<long>(count, static_cast<long>(s.size()) - start));
}
std::string TrimLeft(std::string s) {
  s.erase(0, std::find_if_not(s.begin(), s.end(), IsWhite) - s.begin());
  return s;
}
std::string TrimRight(std::string s) {
  while (!s.empty() && IsWhite(s.back())) s.pop_back();
  return s;
}

// ---- Input --------------------------------------------------------------------

// A terminated text: the input bytes up to the first NUL.
std::string Text(FuzzedDataProvider& in) { return in.ConsumeRandomLengthString(48).c_str(); }

// An int argument, often at an edge: the extremes, around 0 and around len.
int IntArg(FuzzedDataProvider& in, int len) {
  return EdgeOrRange(in, {INT_MIN, INT_MIN + 1, INT_MAX, INT_MAX - 1, -1, 0, len - 1, len, len + 1},
                     1, -8, len + 8);
}

// A heap copy of s, exactly s.size() + 1 bytes.
std::unique_ptr<char[]> Heap(const std::string& s) {
  std::unique_ptr<char[]> p(new char[s.size() + 1]);
  std::memcpy(p.get(), s.c_str(), s.size() + 1);
  return p;
}

// ---- Steps --------------------------------------------------------------------

void Search(LString& ls, FuzzedDataProvider& in) {
  const std::string s = Text(in), t = Text(in);
  const char c = in.ConsumeIntegral<char>();
  g_step = {"search", s, t, c, 0};
  auto hs = Heap(s), ht = Heap(t);
  switch (in.ConsumeIntegralInRange(0, 5)) {
    case 0:
      g_step.op = "Find";
      CHECK(ls.Find(hs.get(), ht.get()) == Find(s, t));
      break;
    case 1:
      g_step.op = "Find(char)";
      CHECK(ls.Find(hs.get(), c) == Find(s, CharText(c)));
      break;
    case 2:
      g_step.op = "FindOneOf";
      CHECK(ls.FindOneOf(hs.get(), ht.get()) == FindOneOf(s, t));
      break;
    case 3:
      g_step.op = "ReverseFind";
      CHECK(ls.ReverseFind(hs.get(), ht.get()) == ReverseFind(s, t));
      break;
    case 4:
      g_step.op = "ReverseFind(char)";
      CHECK(ls.ReverseFind(hs.get(), c) == ReverseFind(s, CharText(c)));
      break;
    default:
      g_step.op = "ReverseFindOneOf";
      CHECK(ls.ReverseFindOneOf(hs.get(), ht.get()) == ReverseFindOneOf(s, t));
      break;
  }
  CHECK(std::strcmp(hs.get(), s.c_str()) == 0 && std::strcmp(ht.get(), t.c_str()) == 0);
}

void Slice(LString& ls, FuzzedDataProvider& in) {
  const std::string s = Text(in);
  const int len = static_cast<int>(s.size());
  const int kind = in.ConsumeIntegralInRange(0, 2);
  const int a = IntArg(in, len), b = kind == 2 ? IntArg(in, len) : 0;
  const bool same = in.ConsumeBool();  // dst == src
  g_step = {kind == 0 ? "Left" : kind == 1 ? "Right" : "Mid", s, "", a, b};
  const std::string want = kind == 0 ? Left(s, a) : kind == 1 ? Right(s, a) : Mid(s, a, b);

  auto src = Heap(s);
  // A separate dst has room for the result and its terminator, no more; it
  // starts as filler so that a missing terminator shows.
  std::unique_ptr<char[]> own(same ? nullptr : new char[want.size() + 1]);
  if (own) std::memset(own.get(), '#', want.size() + 1);
  char* dst = same ? src.get() : own.get();
  if (kind == 0) ls.Left(dst, src.get(), a);
  if (kind == 1) ls.Right(dst, src.get(), a);
  if (kind == 2) ls.Mid(dst, src.get(), a, b);
  CHECK(std::memcmp(dst, want.c_str(), want.size() + 1) == 0);
  if (!same) CHECK(std::strcmp(src.get(), s.c_str()) == 0);
}

void Trim(LString& ls, FuzzedDataProvider& in) {
  // Trims see any bytes, white space from 0x80 up included.
  const std::string s = Text(in);
  const bool left = in.ConsumeBool();
  g_step = {left ? "TrimLeft" : "TrimRight", s, "", 0, 0};
  auto buf = Heap(s);
  if (left) {
    ls.TrimLeft(buf.get());
    CHECK(buf.get() == TrimLeft(s));
  } else {
    ls.TrimRight(buf.get());
    const std::string want = TrimRight(s);
    CHECK(buf.get() == want);
    // Every removed byte is overwritten with NUL.
    for (size_t i = want.size(); i < s.size(); ++i) CHECK(buf[i] == '\0');
  }
}

// Null pointers: slices and trims write nothing, searches miss.
void Nulls(LString& ls, FuzzedDataProvider& in) {
  const std::string s = Text(in);
  const int n = IntArg(in, static_cast<int>(s.size()));
  g_step = {"null arguments", s, "", n, 0};
  auto buf = Heap(s);
  ls.Left(nullptr, buf.get(), n);
  ls.Right(nullptr, buf.get(), n);
  ls.Mid(nullptr, buf.get(), n, n);
  ls.Left(buf.get(), nullptr, n);
  ls.Right(buf.get(), nullptr, n);
  ls.Mid(buf.get(), nullptr, n, n);
  ls.TrimLeft(nullptr);
  ls.TrimRight(nullptr);
  CHECK(std::strcmp(buf.get(), s.c_str()) == 0);
  CHECK(ls.Find(nullptr, buf.get()) == -1 && ls.Find(buf.get(), nullptr) == -1);
  CHECK(ls.Find(nullptr, 'a') == -1 && ls.ReverseFind(nullptr, 'a') == -1);
  CHECK(ls.FindOneOf(nullptr, buf.get()) == -1 && ls.FindOneOf(buf.get(), nullptr) == -1);
  CHECK(ls.ReverseFind(nullptr, buf.get()) == -1 && ls.ReverseFind(buf.get(), nullptr) == -1);
  CHECK(ls.ReverseFindOneOf(nullptr, buf.get()) == -1);
  CHECK(ls.ReverseFindOneOf(buf.get(), nullptr) == -1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider in(data, size);
  LString ls;
  for (int steps = 0; steps < 64 && in.remaining_bytes() > 0; ++steps) {
    switch (in.ConsumeIntegralInRange(0, 9)) {
      case 0:
      case 1:
      case 2:
      case 3:
        Search(ls, in);
        break;
      case 4:
      case 5:
      case 6:
        Slice(ls, in);
        break;
      case 7:
      case 8:
        Trim(ls, in);
        break;
      default:
        Nulls(ls, in);
        break;
    }
  }
  return 0;
}
