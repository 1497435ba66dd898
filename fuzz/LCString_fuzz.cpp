// Fuzzes LCString: an input-driven sequence of operations on three strings,
// each checked against a model that keeps the counted view (the first
// GetLength() bytes, NUL bytes included) and the add position. After every
// step the stored length, the counted bytes and the terminator of all three
// strings are compared with the model; the add position shows in AddString.
#include <fuzzer/FuzzedDataProvider.h>
#include <vq0300/LCString.h>

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

const char* g_op = "";  // the current step, printed when a check fails

[[noreturn]] void Fail(int line, const char* what) {
  FailInStep("LCString_fuzz", line, g_op, what);
}

// ---- The model ----------------------------------------------------------------

struct Model {
  std::string bytes;  // the counted view
  int add = 0;        // the add position
  int Length() const { return static_cast<int>(bytes.size()); }
  std::string Terminated() const { return bytes.c_str(); }
  // Start of the bytes behind the last NUL of the counted view.
  size_t Tail() const {
    const size_t p = bytes.rfind('\0');
    return p == std::string::npos ? 0 : p + 1;
  }
};

// What a constructor from a terminated or counted text gives.
Model FullModel(std::string bytes) {
  const int add = static_cast<int>(bytes.size()) - 1;
  return {std::move(bytes), add};
}

bool IsWhite(char c) {
  const unsigned char u = static_cast<unsigned char>(c);
  return u < 0x21 || u > 0x7E;
}

int Pos(size_t p) { return p == std::string::npos ? -1 : static_cast<int>(p); }
int PosFrom(size_t base, size_t p) {
  return p == std::string::npos ? -1 : static_cast<int>(base + p);
}

std::string Upper(std::string s) {
  for (char& c : s) c = (c >= 'a' && c <= 'z') ? static_cast<char>(c - 0x20) : c;
  return s;
}
std::string Lower(std::string s) {
  for (char& c : s) c = (c >= 'A' && c <= 'Z') ? static_cast<char>(c + 0x20) : c;
  return s;
}

// Left and Right: n at or past the length falls back on the terminated view.
Model Slice(const Model& m, int n, bool left) {
  const int len = m.Length();
  if (len < 1 || n < 1) return {};
  if (n >= len) return FullModel(m.Terminated());
  return {left ? m.bytes.substr(0, n) : m.bytes.substr(len - n), 0};
}
Model Mid(const Model& m, int start, int count) {
  const int len = m.Length();
  if (len < 1 || count < 1 || start >= len) return {};
  start = std::max(start, 0);
  return {m.bytes.substr(start, std::min<long>(count, len - start)), 0};
}

// ---- Input --------------------------------------------------------------------

// Lengths stay small, so that repeated doubling by += cannot run away.
constexpr int kMaxLength = 2048;

std::string Bytes(FuzzedDataProvider& in) { return in.ConsumeRandomLengthString(32); }
std::string Text(FuzzedDataProvider& in) { return Bytes(in).c_str(); }

int IntArg(FuzzedDataProvider& in, int len) {
  return EdgeOrRange(in, {INT_MIN, INT_MAX, -1, 0, len - 1, len, len + 1}, 3, -4, len + 4);
}

// A heap copy of s, exactly s.size() + 1 bytes, so that reads past it show.
std::unique_ptr<char[]> Heap(const std::string& s) {
  std::unique_ptr<char[]> p(new char[s.size() + 1]);
  std::memcpy(p.get(), s.c_str(), s.size() + 1);
  return p;
}

// ---- The strings under test ---------------------------------------------------

struct Slot {
  std::unique_ptr<LCString> s = std::make_unique<LCString>();
  Model m;
  // Takes over a freshly made string; the model says what it should hold.
  void Set(LCString* fresh, Model want) {
    s.reset(fresh);
    m = std::move(want);
  }
};

void Verify(const Slot& slot) {
  const LCString& s = *slot.s;
  const int len = slot.m.Length();
  CHECK(s.GetLength() == len);
  CHECK(s.IsEmpty() == (len == 0));
  CHECK(std::memcmp(s.c_str(), slot.m.bytes.data(), len) == 0);
  CHECK(s.c_str()[len] == '\0');
  CHECK(LTEXT(s) == s.c_str());
}

void Construct(Slot& a, const Slot& b, FuzzedDataProvider& in) {
  g_op = "construct";
  switch (in.ConsumeIntegralInRange(0, 6)) {
    case 0:
      a.Set(new LCString(), {});
      break;
    case 1: {
      const int n = in.ConsumeIntegralInRange(-3, 40);
      a.Set(new LCString(n), {std::string(std::max(n, 0), '\0'), 0});
      break;
    }
    case 2: {
      const std::string t = Text(in);
      a.Set(new LCString(static_cast<char const*>(Heap(t).get())), FullModel(t));
      break;
    }
    case 3:
      a.Set(new LCString(static_cast<char const*>(nullptr)), {});
      break;
    case 4: {
      const std::string t = Bytes(in);  // NUL bytes included
      a.Set(new LCString(t), FullModel(t));
      break;
    }
    case 5: {
      const char c = in.ConsumeIntegral<char>();
      a.Set(new LCString(c), {std::string(1, c), 0});
      break;
    }
    default:
      a.Set(new LCString(*b.s), FullModel(b.m.bytes));
      break;
  }
}

void Store(Slot& a, Slot& b, Slot& c, FuzzedDataProvider& in) {
  switch (in.ConsumeIntegralInRange(0, 3)) {
    case 0:
      g_op = "operator=";
      *a.s = *b.s;
      if (&a != &b) a.m = FullModel(b.m.bytes);  // self-assignment keeps the add position
      break;
    case 1: {
      g_op = "Reallocate";
      const int n = in.ConsumeIntegralInRange(-3, 40);
      a.s->Reallocate(n);
      a.m = {std::string(std::max(n, 0), '\0'), 0};
      break;
    }
    case 2:
      g_op = "operator+";
      if (a.m.Length() + b.m.Length() > kMaxLength) return;
      c.Set(new LCString(*a.s + *b.s), {a.m.bytes + b.m.bytes, 0});
      break;
    default:
      g_op = "operator+=";
      if (a.m.Length() + b.m.Length() > kMaxLength) return;
      *a.s += *b.s;
      a.m = FullModel(a.m.bytes + b.m.bytes);
      break;
  }
}

void AddString(Slot& a, FuzzedDataProvider& in) {
  g_op = "AddString";
  const int n = in.ConsumeIntegralInRange(-2, 24);
  const bool null_text = in.ConsumeIntegralInRange(0, 15) == 0;
  // Exactly n readable bytes, any of them NUL.
  const std::string t = in.ConsumeBytesAsString(std::max(n, 0));
  std::unique_ptr<char[]> text(null_text ? nullptr : new char[t.size() + 1]);
  if (text) std::memcpy(text.get(), t.data(), t.size());
  if (text && static_cast<int>(t.size()) < n) return;  // the input ran out
  char* got = a.s->AddString(n, text.get());

  Model& m = a.m;
  const int len = m.Length();
  if (n < 1 || m.add >= len - 1 || !text) {
    CHECK(got == nullptr);
    return;
  }
  CHECK(m.add >= 0);  // the model itself: a string that is not full has a real add position
  for (int i = 0; i < n && m.add < len - 1; ++i) m.bytes[m.add++] = t[i];
  m.bytes[m.add] = '\0';
  CHECK(got == a.s->c_str());
}

void Access(Slot& a, FuzzedDataProvider& in) {
  LCString& s = *a.s;
  std::string& bytes = a.m.bytes;
  const int len = a.m.Length();
  const int i = IntArg(in, len);
  const char c = in.ConsumeIntegral<char>();
  // The cell operator[] gives, with len standing for the terminator.
  const int cell = (i >= 0 && i <= len) ? i : std::max(len - 1, 0);
  const char last = len > 0 ? bytes[len - 1] : '\0';
  switch (in.ConsumeIntegralInRange(0, 3)) {
    case 0:
      g_op = "GetAt";
      CHECK(s.GetAt(i) == (i >= 0 && i < len ? bytes[i] : last));
      break;
    case 1:
      g_op = "operator[] const";
      CHECK(static_cast<const LCString&>(s)[i] == (cell < len ? bytes[cell] : '\0'));
      break;
    case 2:
      g_op = "SetAt";
      CHECK(s.SetAt(i, c) == (i >= 0 && i < len));
      if (i >= 0 && i < len) bytes[i] = c;
      break;
    default:
      g_op = "operator[]";
      CHECK(&s[i] == s.c_str() + cell);
      // Only NUL may go into the terminator cell; anything else would leave
      // the string unterminated, which the class allows but nothing can read.
      if (cell < len) {
        s[i] = c;
        bytes[cell] = c;
      }
      break;
  }
}

void Mapping(Slot& a, FuzzedDataProvider& in) {
  switch (in.ConsumeIntegralInRange(0, 2)) {
    case 0:
      g_op = "MakeUpper";
      a.s->MakeUpper();
      a.m.bytes = Upper(a.m.bytes);
      break;
    case 1:
      g_op = "MakeLower";
      a.s->MakeLower();
      a.m.bytes = Lower(a.m.bytes);
      break;
    default:
      g_op = "MakeReverse";
      a.s->MakeReverse();
      std::reverse(a.m.bytes.begin(), a.m.bytes.end());
      break;
  }
}

void Search(Slot& a, Slot& b, FuzzedDataProvider& in) {
  LCString& s = *a.s;
  const Model& m = a.m;
  // The argument: a text of the input, or the terminated view of another string.
  const bool by_string = in.ConsumeBool();
  const std::string t = by_string ? b.m.Terminated() : Text(in);
  const auto text = Heap(t);
  const char c = in.ConsumeIntegral<char>();
  const bool none = m.Length() < 1;  // every search misses on a stored length below 1
  const std::string view = m.Terminated();
  const std::string tail = m.bytes.substr(m.Tail());
  int got = 0, want = 0;
  switch (in.ConsumeIntegralInRange(0, 5)) {
    case 0:
      g_op = "Find";
      got = by_string ? s.Find(*b.s) : s.Find(static_cast<char const*>(text.get()));
      want = none ? -1 : Pos(view.find(t));
      break;
    case 1:
      g_op = "Find(char)";
      got = s.Find(c);
      want = none ? -1 : c == '\0' ? static_cast<int>(view.size()) : Pos(view.find(c));
      break;
    case 2:
      g_op = "FindOneOf";
      got = by_string ? s.FindOneOf(*b.s) : s.FindOneOf(static_cast<char const*>(text.get()));
      want = none ? -1 : Pos(view.find_first_of(t));
      break;
    case 3:
      g_op = "ReverseFind";
      got = by_string ? s.ReverseFind(*b.s) : s.ReverseFind(static_cast<char const*>(text.get()));
      want = none ? -1 : t.empty() ? m.Length() : PosFrom(m.Tail(), tail.rfind(t));
      break;
    case 4:
      g_op = "ReverseFind(char)";
      got = s.ReverseFind(c);
      want = none ? -1 : c == '\0' ? static_cast<int>(view.size()) : Pos(view.rfind(c));
      break;
    default:
      g_op = "ReverseFindOneOf";
      got = by_string ? s.ReverseFindOneOf(*b.s)
                      : s.ReverseFindOneOf(static_cast<char const*>(text.get()));
      want = none ? -1 : PosFrom(m.Tail(), tail.find_last_of(t));
      break;
  }
  CHECK(got == want);
  // A null search argument misses.
  CHECK(s.Find(static_cast<char const*>(nullptr)) == -1);
  CHECK(s.FindOneOf(static_cast<char const*>(nullptr)) == -1);
  CHECK(s.ReverseFind(static_cast<char const*>(nullptr)) == -1);
  CHECK(s.ReverseFindOneOf(static_cast<char const*>(nullptr)) == -1);
}

void Trim(Slot& a, FuzzedDataProvider& in) {
  std::string& bytes = a.m.bytes;
  switch (in.ConsumeIntegralInRange(0, 2)) {
    case 0:
      g_op = "TrimLeft";
      a.s->TrimLeft();
      bytes.erase(0, std::find_if_not(bytes.begin(), bytes.end(), IsWhite) - bytes.begin());
      break;
    case 1:
      g_op = "TrimRight";
      a.s->TrimRight();
      while (!bytes.empty() && IsWhite(bytes.back())) bytes.pop_back();
      break;
    default:
      g_op = "RemoveWhiteSpaces";
      a.s->RemoveWhiteSpaces();
      bytes.erase(std::remove_if(bytes.begin(), bytes.end(), IsWhite), bytes.end());
      break;
  }
}

void Slices(const Slot& a, Slot& c, FuzzedDataProvider& in) {
  const int len = a.m.Length();
  const int x = IntArg(in, len);
  switch (in.ConsumeIntegralInRange(0, 2)) {
    case 0:
      g_op = "Left";
      c.Set(new LCString(a.s->Left(x)), Slice(a.m, x, true));
      break;
    case 1:
      g_op = "Right";
      c.Set(new LCString(a.s->Right(x)), Slice(a.m, x, false));
      break;
    default: {
      g_op = "Mid";
      const int y = IntArg(in, len);
      c.Set(new LCString(a.s->Mid(x, y)), Mid(a.m, x, y));
      break;
    }
  }
}

void Compare(const Slot& a, const Slot& b, FuzzedDataProvider& in) {
  const LCString& s = *a.s;
  const std::string x = a.m.Terminated();
  if (in.ConsumeBool()) {
    g_op = "comparison with a text";
    const bool null_text = in.ConsumeIntegralInRange(0, 7) == 0;
    const std::string y = Text(in);
    const auto text = Heap(y);
    const char* p = null_text ? nullptr : text.get();
    CHECK((s == p) == (!null_text && x == y));
    CHECK((s != p) == (null_text || x != y));
    return;
  }
  g_op = "comparison";
  const std::string y = b.m.Terminated();
  const int order = std::strcmp(x.c_str(), y.c_str());
  CHECK(s.Compare(*b.s) == order);
  CHECK(s.CompareNoCase(*b.s) == std::strcmp(Upper(x).c_str(), Upper(y).c_str()));
  CHECK((s == *b.s) == (order == 0) && (s != *b.s) == (order != 0));
  CHECK((s < *b.s) == (order < 0) && (s > *b.s) == (order > 0));
  CHECK((s <= *b.s) == (order <= 0) && (s >= *b.s) == (order >= 0));
}

// util_strncpy from an LCString: one NUL for an empty string, else a strncpy
// of the terminated view under count and limit.
void CopyOut(const Slot& a, FuzzedDataProvider& in) {
  g_op = "util_strncpy";
  const int len = a.m.Length();
  const int count = in.ConsumeIntegralInRange(-2, len + 8);
  const int limit = in.ConsumeIntegralInRange(-2, len + 8);
  const std::string view = a.m.Terminated();
  std::string want(1, '\0');
  if (len > 0) {
    const int n =
        count < 1 ? static_cast<int>(view.size()) : (limit >= 1 && limit < count ? limit : count);
    want = view.substr(0, n);
    want.resize(n + 1, '\0');
  }
  std::unique_ptr<char[]> dst(new char[want.size()]);
  util_strncpy(dst.get(), *a.s, count, limit);
  CHECK(std::memcmp(dst.get(), want.data(), want.size()) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider in(data, size);
  Slot slots[3];
  for (int steps = 0; steps < 64 && in.remaining_bytes() > 0; ++steps) {
    Slot& a = slots[in.ConsumeIntegralInRange(0, 2)];
    Slot& b = slots[in.ConsumeIntegralInRange(0, 2)];
    Slot& c = slots[in.ConsumeIntegralInRange(0, 2)];
    switch (in.ConsumeIntegralInRange(0, 10)) {
      case 0:
        Construct(a, b, in);
        break;
      case 1:
      case 2:
        Store(a, b, c, in);
        break;
      case 3:
        AddString(a, in);
        break;
      case 4:
        Access(a, in);
        break;
      case 5:
        Mapping(a, in);
        break;
      case 6:
      case 7:
        Search(a, b, in);
        break;
      case 8:
        Trim(a, in);
        break;
      case 9:
        Slices(a, c, in);
        break;
      default:
        in.ConsumeBool() ? Compare(a, b, in) : CopyOut(a, in);
        break;
    }
    for (const Slot& slot : slots) Verify(slot);
  }
  return 0;
}
