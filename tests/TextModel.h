// The string classes beside models built on std::string. RunLStringOps and
// RunLCStringOps decode numbered operations from an OpInput and check every
// result; a failure names the operation by its number in the decoder.
// LString_test and LCString_test run them over fixed seeds, fuzz/LString_fuzz
// and fuzz/LCString_fuzz over fuzzer input.
#ifndef VQ0300_TESTS_TEXTMODEL_H
#define VQ0300_TESTS_TEXTMODEL_H

#include <vq0300/LCString.h>
#include <vq0300/LString.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

#include "ModelRun.h"

namespace text_model {

// Bytes over an alphabet where texts meet and the white-space and case
// boundaries stand; '0' becomes NUL.
constexpr char kAlphabet[] = "aabbab0 !~\x7f\x80zAZ_";
inline std::string Bytes(model::OpInput& in, std::size_t max) {
  std::string s = in.Bytes(max, kAlphabet);
  std::replace(s.begin(), s.end(), '0', '\0');
  return s;
}
inline char Char(model::OpInput& in) {
  const char c = kAlphabet[in.Int(0, sizeof kAlphabet - 2)];
  return c == '0' ? '\0' : c;
}

// A heap copy of s with its terminator and nothing more, so reads past it show.
inline std::unique_ptr<char[]> Heap(const std::string& s) {
  std::unique_ptr<char[]> p(new char[s.size() + 1]);
  std::memcpy(p.get(), s.c_str(), s.size() + 1);
  return p;
}

inline int Pos(std::size_t p, int base = 0) {
  return p == std::string::npos ? -1 : base + static_cast<int>(p);
}

// White space: every byte outside '!' to '~'.
inline bool IsWhite(char c) { return static_cast<unsigned char>(c) - 0x21u > 0x7Eu - 0x21u; }
inline std::string TrimmedLeft(std::string s) {
  s.erase(s.begin(), std::find_if_not(s.begin(), s.end(), IsWhite));
  return s;
}
inline std::string TrimmedRight(std::string s) {
  s.erase(std::find_if_not(s.rbegin(), s.rend(), IsWhite).base(), s.end());
  return s;
}

// ASCII case mapping: the 26 letters from `from` on move to `to` on.
inline std::string CaseMapped(std::string s, char from, char to) {
  for (char& c : s) c = c >= from && c <= from + 25 ? static_cast<char>(c - from + to) : c;
  return s;
}

// count bytes from start: a negative start counts as 0, a range past the end
// is cut there, a count below 1 or a start at the end gives nothing.
inline std::string Cut(const std::string& s, int start, int count) {
  const int len = static_cast<int>(s.size());
  if (count < 1 || start >= len) return "";
  start = std::max(start, 0);
  return s.substr(start, std::min(count, len - start));
}

// LString on texts with no NUL, each in a heap block of its own size; about
// one pointer in sixteen is null.
inline void RunLStringOps(model::OpInput& in) {
  LString ls;
  while (!in.Done()) {
    const int op = in.Int(0, 10);
    model::Step() = "operation " + std::to_string(op);
    const std::string s = in.Text(8, kAlphabet), sub = in.Text(3, "ab0");
    const int len = static_cast<int>(s.size()), x = in.Index(len), y = in.Index(len);
    const char ch = Char(in);
    const bool null_s = in.Int(0, 15) == 0, null_sub = in.Int(0, 15) == 0,
               by_char = op == 1 || op == 4;
    const auto hs = Heap(s), hsub = Heap(sub);
    char* src = null_s ? nullptr : hs.get();
    char const* arg = null_sub ? nullptr : hsub.get();
    // std::string's searches on s, where a NUL character is the empty text.
    const std::string as_text(ch == '\0' ? 0 : 1, ch);
    const int found[] = {Pos(s.find(sub)),  Pos(s.find(as_text)),  Pos(s.find_first_of(sub)),
                         Pos(s.rfind(sub)), Pos(s.rfind(as_text)), Pos(s.find_last_of(sub))};
    const int got[] = {ls.Find(src, arg),       ls.Find(src, ch),
                       ls.FindOneOf(src, arg),  ls.ReverseFind(src, arg),
                       ls.ReverseFind(src, ch), ls.ReverseFindOneOf(src, arg)};
    if (op < 6)
      MODEL_CHECK(got[op] == (null_s || s.empty() || (null_sub && !by_char) ? -1 : found[op]));
    // Left, Right, Mid into a block of the result's size filled with '#', into
    // src itself, or into null; a null src writes nothing.
    const std::string want = op == 6   ? Cut(s, 0, x)
                             : op == 7 ? Cut(s, len - std::min(std::max(x, 0), len), x)
                                       : Cut(s, x, y);
    std::string block(want.size() + 1, '#');
    const int into = in.Int(0, 3);
    char* dst = into == 0 ? src : into == 1 ? nullptr : &block[0];
    if (op == 6) ls.Left(dst, src, x);
    if (op == 7) ls.Right(dst, src, x);
    if (op == 8) ls.Mid(dst, src, x, y);
    if (op >= 6 && op <= 8 && dst == &block[0])
      MODEL_CHECK(block == (null_s ? std::string(want.size() + 1, '#') : want + '\0'));
    if (op >= 6 && op <= 8 && src) MODEL_CHECK(src == (dst == src ? want : s));
    // TrimRight overwrites what it removes with NUL.
    if (op == 9) ls.TrimLeft(src);
    if (op == 9 && src) MODEL_CHECK(src == TrimmedLeft(s));
    if (op == 10) ls.TrimRight(src);
    if (op == 10 && src)
      MODEL_CHECK(std::string(src, s.size() + 1) ==
                  TrimmedRight(s).append(s.size() + 1 - TrimmedRight(s).size(), '\0'));
  }
}

// LCString's model: the counted view and the add position.
struct Model {
  std::string bytes;  // the counted view
  int add = 0;        // where AddString writes next
  int Length() const { return static_cast<int>(bytes.size()); }
  std::string Text() const { return bytes.c_str(); }  // the terminated view
};

// What copies, operator=, += and the constructors from a text hold.
inline Model Full(const std::string& bytes) { return {bytes, static_cast<int>(bytes.size()) - 1}; }

struct Slot {
  std::unique_ptr<LCString> s = std::make_unique<LCString>();
  Model m;
  // Takes a string made from a prvalue, whose add position no copy has reset.
  void Set(LCString* fresh, Model want) {
    s.reset(fresh);
    m = std::move(want);
  }
};

// Three strings; after every operation each has its length, counted bytes and
// terminator checked. The add position shows whenever AddString runs.
inline void RunLCStringOps(model::OpInput& in) {
  using ByText = int (LCString::*)(char const*);
  using ByString = int (LCString::*)(LCString const&);
  const ByText by_text[] = {&LCString::Find, &LCString::FindOneOf, &LCString::ReverseFind,
                            &LCString::ReverseFindOneOf};
  const ByString by_string[] = {&LCString::Find, &LCString::FindOneOf, &LCString::ReverseFind,
                                &LCString::ReverseFindOneOf};
  Slot slots[3];
  while (!in.Done()) {
    Slot& a = slots[in.Int(0, 2)];
    const Slot& b = slots[in.Int(0, 2)];
    Slot& c = slots[in.Int(0, 2)];
    const int op = in.Int(0, 34);
    model::Step() = "operation " + std::to_string(op);
    LCString& s = *a.s;
    std::string& bytes = a.m.bytes;
    const int len = a.m.Length(), n = in.Int(-2, 9), x = in.Index(len), y = in.Index(len);
    const char ch = Char(in);
    const std::string t = Bytes(in, 5), text = t.c_str(), view = a.m.Text(), other = b.m.Text();
    const auto heap = Heap(text);
    const bool too_long = len + b.m.Length() > 64;  // += doubles; keep the strings short

    if (op == 0) c.Set(new LCString(), {});
    if (op == 1) c.Set(new LCString(n), {std::string(std::max(n, 0), '\0'), 0});
    if (op == 2) c.Set(new LCString(static_cast<char const*>(heap.get())), Full(text));
    if (op == 3) c.Set(new LCString(static_cast<char const*>(nullptr)), {});
    if (op == 4) c.Set(new LCString(t), Full(t));
    if (op == 5) c.Set(new LCString(ch), {std::string(1, ch), 0});
    if (op == 6) c.Set(new LCString(*b.s), Full(b.m.bytes));
    if (op == 7 && &s == b.s.get()) s = *b.s;  // self-assignment keeps the add position
    if (op == 7 && &s != b.s.get()) (s = *b.s), a.m = Full(b.m.bytes);
    if (op == 8) s.Reallocate(n), a.m = {std::string(std::max(n, 0), '\0'), 0};
    if (op == 9 && !too_long) c.Set(new LCString(s + *b.s), {bytes + b.m.bytes, 0});
    if (op == 10 && !too_long) s += *b.s, a.m = Full(bytes + b.m.bytes);
    if (op == 11 || op == 12) {
      std::string piece = t;  // exactly n readable bytes, NUL bytes among them
      piece.resize(static_cast<std::size_t>(std::max(n, 0)), 'b');
      const std::unique_ptr<char[]> p(new char[piece.size() + 1]);
      std::memcpy(p.get(), piece.data(), piece.size());
      char* got = s.AddString(n, op == 12 ? nullptr : p.get());
      const bool refused = n < 1 || op == 12 || a.m.add >= len - 1;  // full at L - 1
      MODEL_CHECK(got == (refused ? nullptr : s.c_str()));
      for (int i = 0; !refused && i < n && a.m.add < len - 1; ++i) bytes[a.m.add++] = piece[i];
      if (!refused) bytes[a.m.add] = '\0';
    }
    // Element access; operator[] gives the terminator cell at len, and any
    // other index outside the string falls back on the last character.
    const char last = len > 0 ? bytes[len - 1] : '\0';
    const bool inside = x >= 0 && x < len;
    const int cell = inside || x == len ? x : std::max(len - 1, 0);
    if (op == 13) MODEL_CHECK(s.GetAt(x) == (inside ? bytes[x] : last));
    if (op == 14) MODEL_CHECK(std::as_const(s)[x] == (x == len ? '\0' : inside ? bytes[x] : last));
    if (op == 15) MODEL_CHECK(s.SetAt(x, ch) == inside);
    if (op == 15 && inside) bytes[x] = ch;
    if (op == 16) MODEL_CHECK(&s[x] == s.c_str() + cell);
    if (op == 16 && cell < len) s[x] = ch, bytes[cell] = ch;  // only a NUL may go at len
    if (op == 17) s.MakeUpper(), bytes = CaseMapped(bytes, 'a', 'A');
    if (op == 18) s.MakeLower(), bytes = CaseMapped(bytes, 'A', 'a');
    if (op == 19) s.MakeReverse(), std::reverse(bytes.begin(), bytes.end());
    if (op >= 20 && op <= 23) {
      // The argument: a text, another string's terminated view, or null. The
      // reverse searches see only the bytes behind the last NUL (npos + 1 is 0).
      const int form = in.Int(0, 2);
      const std::string& needle = form == 1 ? other : text;
      const int tail = static_cast<int>(bytes.rfind('\0') + 1);
      const std::string behind = bytes.substr(tail);
      const int found[] = {Pos(view.find(needle)), Pos(view.find_first_of(needle)),
                           needle.empty() ? len : Pos(behind.rfind(needle), tail),
                           Pos(behind.find_last_of(needle), tail)};
      const int got = form == 1 ? (s.*by_string[op - 20])(*b.s)
                                : (s.*by_text[op - 20])(form == 0 ? heap.get() : nullptr);
      MODEL_CHECK(got == (len < 1 || form == 2 ? -1 : found[op - 20]));
    }
    const std::string terminated = view + '\0';  // strchr and strrchr find the terminator
    if (op == 24) MODEL_CHECK(s.Find(ch) == (len < 1 ? -1 : Pos(terminated.find(ch))));
    if (op == 25) MODEL_CHECK(s.ReverseFind(ch) == (len < 1 ? -1 : Pos(terminated.rfind(ch))));
    if (op == 26) s.TrimLeft(), bytes = TrimmedLeft(bytes);
    if (op == 27) s.TrimRight(), bytes = TrimmedRight(bytes);
    if (op == 28)
      s.RemoveWhiteSpaces(),
          bytes.erase(std::remove_if(bytes.begin(), bytes.end(), IsWhite), bytes.end());
    // Left and Right covering the whole string give its terminated view.
    const bool whole = len > 0 && x >= len;
    if (op == 29) c.Set(new LCString(s.Left(x)), whole ? Full(view) : Model{Cut(bytes, 0, x), 0});
    if (op == 30)
      c.Set(new LCString(s.Right(x)),
            whole ? Full(view) : Model{Cut(bytes, len - std::max(x, 0), x), 0});
    if (op == 31) c.Set(new LCString(s.Mid(x, y)), {Cut(bytes, x, y), 0});
    if (op == 32) {
      const int order = std::strcmp(view.c_str(), other.c_str());
      MODEL_CHECK(s.Compare(*b.s) == order);
      MODEL_CHECK(s.CompareNoCase(*b.s) == std::strcmp(CaseMapped(view, 'a', 'A').c_str(),
                                                       CaseMapped(other, 'a', 'A').c_str()));
      MODEL_CHECK((s == *b.s) == (order == 0));
      MODEL_CHECK((s != *b.s) == (order != 0));
      MODEL_CHECK((s < *b.s) == (order < 0));
      MODEL_CHECK((s > *b.s) == (order > 0));
      MODEL_CHECK((s <= *b.s) == (order <= 0));
      MODEL_CHECK((s >= *b.s) == (order >= 0));
    }
    const char* versus = n < 0 ? nullptr : heap.get();  // null is unequal to every string
    if (op == 33) MODEL_CHECK((s == versus) == (versus != nullptr && view == text));
    if (op == 33) MODEL_CHECK((s != versus) == (versus == nullptr || view != text));
    if (op == 34) {
      // One NUL for an empty string; else as many bytes of the terminated view
      // as count and limit allow, NUL-padded to that number, then a NUL.
      const int count = std::min(x, len + 4), limit = std::min(y, len + 4);
      const int size = len < 1                      ? 0
                       : count < 1                  ? static_cast<int>(view.size())
                       : limit > 0 && limit < count ? limit
                                                    : count;
      std::string want = view.substr(0, size);
      want.resize(static_cast<std::size_t>(size) + 1, '\0');
      const std::unique_ptr<char[]> dst(new char[want.size()]);
      util_strncpy(dst.get(), s, count, limit);
      MODEL_CHECK(std::string(dst.get(), want.size()) == want);
    }
    for (const Slot& each : slots) {
      const int length = each.m.Length();
      MODEL_CHECK(each.s->GetLength() == length);
      MODEL_CHECK(each.s->IsEmpty() == (length == 0));
      MODEL_CHECK(std::memcmp(each.s->c_str(), each.m.bytes.data(), each.m.bytes.size()) == 0);
      MODEL_CHECK(each.s->c_str()[length] == '\0');
      MODEL_CHECK(LTEXT(*each.s) == each.s->c_str());
    }
  }
}

}  // namespace text_model

#endif  // VQ0300_TESTS_TEXTMODEL_H
