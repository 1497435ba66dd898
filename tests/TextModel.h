// The string classes beside models built on std::string. RunTextOps decodes
// numbered operations from an OpInput and checks every result; a failure
// names the operation by its number in the decoder. LCString_test runs it
// over fixed seeds, fuzz/LCString_fuzz over fuzzer input.
#ifndef VQ0300_TESTS_TEXTMODEL_H
#define VQ0300_TESTS_TEXTMODEL_H

#include <vq0300/LCString.h>
#include <vq0300/LString.h>
#include <vq0300/StringRoutines.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ModelRun.h"

namespace text_model {

// An alphabet where texts meet and the white-space and case boundaries
// stand, NUL among them.
constexpr std::string_view kBytes{"aabbab\0 !~\x7f\x80zAZ_", 16};

// A heap copy of s with its terminator and nothing more, so reads past it show.
inline std::vector<char> Heap(const std::string& s) { return {&s[0], &s[s.size()] + 1}; }

inline int Pos(std::size_t p, int base = 0) { return p == std::string::npos ? -1 : base + int(p); }

// s without its leading (or trailing) white space: every byte outside '!' to '~'.
inline bool IsWhite(char c) { return static_cast<unsigned char>(c) - 0x21u > 0x7Eu - 0x21u; }
inline std::string Trimmed(std::string s, bool left) {
  if (left) return s.erase(0, std::find_if_not(s.begin(), s.end(), IsWhite) - s.begin());
  return s.erase(std::find_if_not(s.rbegin(), s.rend(), IsWhite).base() - s.begin());
}

// ASCII case mapping: the 26 letters from `from` on move to `to` on.
inline std::string Mapped(std::string s, char from = 'a', char to = 'A') {
  for (char& c : s) c = c >= from && c <= from + 25 ? static_cast<char>(c - from + to) : c;
  return s;
}

// count bytes from start: a negative start counts as 0, a range past the end
// is cut there, a count below 1 or a start at the end gives nothing.
inline std::string Cut(const std::string& s, int start, int count) {
  start = std::max(start, 0);
  return count < 1 || start >= static_cast<int>(s.size()) ? "" : s.substr(start, count);
}

// An LCString beside its model: the counted view, and where AddString writes
// next (L - 1 after a copy, operator=, += or a constructor from a text).
struct Slot {
  std::unique_ptr<LCString> s = std::make_unique<LCString>();
  std::string bytes;
  int add = 0;
  int Length() const { return static_cast<int>(bytes.size()); }
  void Hold(std::string want, bool full) { bytes = std::move(want), add = full ? Length() - 1 : 0; }
  // Takes a string made from a prvalue, whose add position no copy has reset.
  void Set(LCString* p, std::string want, bool full = false) { s.reset(p), Hold(want, full); }
};

// Three strings; after every operation each has its length, counted bytes and
// terminator checked. The add position shows whenever AddString runs.
inline void RunTextOps(model::OpInput& in) {
  int (LCString::*const search[])(LCString const&) = {
      &LCString::Find, &LCString::FindOneOf, &LCString::ReverseFind, &LCString::ReverseFindOneOf};
  Slot slots[3];
  LString ls;
  while (!in.Done()) {
    Slot &a = slots[in.Int(0, 2)], &c = slots[in.Int(0, 2)], &b = slots[in.Int(0, 2)];
    const int op = in.Int(0, 34);
    model::Step() = "operation " + std::to_string(op);
    LCString& s = *a.s;
    std::string& bytes = a.bytes;
    const int len = a.Length(), n = in.Int(-2, 9), x = in.Index(len), y = in.Index(len);
    const char ch = kBytes[in.Int(0, 15)];
    const std::string t = in.Bytes(5, kBytes), text = t.c_str(), view = bytes.c_str(),
                      other = b.bytes.c_str();
    // First LString and the free routines, on copies of the bytes as they are
    // before the operation: src is a heap copy of their terminated view (null
    // when n is -2), sub one of text (null when n is -1). lop picks what is
    // checked.
    const int lop = op % 14, vlen = static_cast<int>(view.size());
    auto hs = Heap(view), htext = Heap(text);
    char* src = n == -2 ? nullptr : hs.data();
    char const* sub = n == -1 ? nullptr : htext.data();
    const int hits[] = {Pos(view.find(text)), Pos(view.find_first_of(text)), Pos(view.rfind(text)),
                        Pos(view.find_last_of(text))};
    const int seen[] = {ls.Find(src, sub), ls.FindOneOf(src, sub), ls.ReverseFind(src, sub),
                        ls.ReverseFindOneOf(src, sub)};
    if (lop < 4) MODEL_CHECK(seen[lop] == (src && sub && vlen > 0 ? hits[lop] : -1));
    // Left, Right and Mid into a block of the result's size filled with '#',
    // into src itself, or into null; a null src writes nothing.
    const int from = lop == 4 ? 0 : lop == 5 ? vlen - std::max(x, 0) : x;
    const std::string part = Cut(view, from, lop == 6 ? y : x), blank(part.size() + 1, '#');
    std::string block = blank, changed = bytes;
    char* dst = n == 8 ? src : n == 9 ? nullptr : &block[0];
    if (lop == 4) ls.Left(dst, src, x);
    if (lop == 5) ls.Right(dst, src, x);
    if (lop == 6) ls.Mid(dst, src, x, y);
    if (lop >= 4 && lop <= 6) MODEL_CHECK(block == (src && dst == &block[0] ? part + '\0' : blank));
    if (lop >= 4 && lop <= 6 && src) MODEL_CHECK(src == (dst == src ? part : view));
    // TrimRight overwrites what it removes with NUL.
    if (lop == 7) ls.TrimLeft(src);
    if (lop == 8) ls.TrimRight(src);
    if (lop == 7 && src) MODEL_CHECK(src == Trimmed(view, true));
    const std::string kept = Trimmed(view, false);
    if (lop == 8 && src)
      MODEL_CHECK(std::string(src, vlen) == kept + std::string(vlen - kept.size(), 0));
    // The case mappings and strrev: the char* forms on src, the std::string
    // forms on changed, a copy of all the bytes.
    if (lop == 9) MODEL_CHECK(strupr(src) == src);
    if (lop == 10) MODEL_CHECK(strlwr(src) == src);
    if (lop == 11) strupr(changed);
    if (lop == 12) strlwr(changed);
    if (lop == 13) strrev(src);
    const std::string mapped[] = {Mapped(view), Mapped(view, 'A', 'a'), Mapped(bytes),
                                  Mapped(bytes, 'A', 'a'), std::string(view.rbegin(), view.rend())};
    if (lop == 11 || lop == 12) MODEL_CHECK(changed == mapped[lop - 9]);
    if (lop >= 9 && lop != 11 && lop != 12 && src) MODEL_CHECK(src == mapped[lop - 9]);

    if (op == 1) c.Set(new LCString(n), std::string(std::max(n, 0), '\0'));
    if (op == 2) c.Set(new LCString(text.c_str()), text, true);
    if (op == 0 || op == 3) c.Set(op == 0 ? new LCString() : new LCString(nullptr), "");
    if (op == 4) c.Set(new LCString(t), t, true);
    if (op == 5) c.Set(new LCString(ch), std::string(1, ch));
    if (op == 6) c.Set(new LCString(*b.s), b.bytes, true);
    if (op == 7) s = *b.s;  // onto itself it changes nothing
    if (op == 7 && &a != &b) a.Hold(b.bytes, true);
    if (op == 8) s.Reallocate(n), a.Hold(std::string(std::max(n, 0), '\0'), false);
    // += doubles a string; they stay short.
    if (op == 9 && len + b.Length() <= 64) c.Set(new LCString(s + *b.s), bytes + b.bytes);
    if (op == 10 && len + b.Length() <= 64) s += *b.s, a.Hold(bytes + b.bytes, true);
    if (op == 11 || op == 12) {
      const std::string piece = t + "bbbbbbbbb";  // n readable bytes, NUL bytes among them
      char* got = s.AddString(n, op == 12 ? nullptr : piece.data());
      const bool refused = n < 1 || op == 12 || a.add >= len - 1;  // full at L - 1
      MODEL_CHECK(got == (refused ? nullptr : s.c_str()));
      for (int i = 0; !refused && i < n && a.add < len - 1; ++i) bytes[a.add++] = piece[i];
      if (!refused) bytes[a.add] = '\0';
    }
    // Element access; operator[] gives the terminator cell at len, and any
    // other index outside the string falls back on the last character.
    const bool inside = x >= 0 && x < len;
    const int last = std::max(len - 1, 0), cell = inside || x == len ? x : last;
    if (op == 13) MODEL_CHECK(s.GetAt(x) == (bytes + '\0')[inside ? x : last]);
    if (op == 14) MODEL_CHECK(std::as_const(s)[x] == (bytes + '\0')[cell]);
    if (op == 15) MODEL_CHECK(s.SetAt(x, ch) == inside);
    if (op == 15 && inside) bytes[x] = ch;
    if (op == 16) MODEL_CHECK(&s[x] == s.c_str() + cell);
    if (op == 16 && cell < len) s[x] = ch, bytes[cell] = ch;  // only a NUL may go at len
    if (op == 17) s.MakeUpper(), bytes = Mapped(bytes);
    if (op == 18) s.MakeLower(), bytes = Mapped(bytes, 'A', 'a');
    if (op == 19) s.MakeReverse(), std::reverse(bytes.begin(), bytes.end());
    if (op >= 20 && op <= 23) {
      // The argument: a text, another string's terminated view, or a piece of
      // the string's own bytes (up to a NUL), which is sure to be found. The
      // reverse searches see only the bytes behind the last NUL (npos + 1 is 0).
      const std::string needles[] = {text, other, Cut(bytes, x, y).c_str()};
      const std::string& needle = needles[in.Int(0, 2)];
      const int tail = static_cast<int>(bytes.rfind('\0') + 1);
      const int found[] = {Pos(view.find(needle)), Pos(view.find_first_of(needle)),
                           needle.empty() ? len : Pos(bytes.substr(tail).rfind(needle), tail),
                           Pos(bytes.substr(tail).find_last_of(needle), tail)};
      MODEL_CHECK((s.*search[op - 20])(LCString(needle)) == (len < 1 ? -1 : found[op - 20]));
    }
    // Find(char) and ReverseFind(char) are strchr and strrchr: they see the terminator.
    if (op == 24) MODEL_CHECK(s.Find(ch) == (len < 1 ? -1 : Pos((view + '\0').find(ch))));
    if (op == 25) MODEL_CHECK(s.ReverseFind(ch) == (len < 1 ? -1 : Pos((view + '\0').rfind(ch))));
    if (op == 26) s.TrimLeft(), bytes = Trimmed(bytes, true);
    if (op == 27) s.TrimRight(), bytes = Trimmed(bytes, false);
    if (op == 28) s.RemoveWhiteSpaces();
    if (op == 28) bytes.erase(std::remove_if(bytes.begin(), bytes.end(), IsWhite), bytes.end());
    // Left and Right covering the whole string give its terminated view.
    const bool whole = x >= len && len > 0;
    const std::string left = Cut(bytes, 0, x), right = Cut(bytes, len - std::max(x, 0), x);
    if (op == 29) c.Set(new LCString(s.Left(x)), whole ? view : left, whole);
    if (op == 30) c.Set(new LCString(s.Right(x)), whole ? view : right, whole);
    if (op == 31) c.Set(new LCString(s.Mid(x, y)), Cut(bytes, x, y));
    if (op == 32) {
      const int order = std::strcmp(view.c_str(), other.c_str());
      MODEL_CHECK(s.Compare(*b.s) == order);
      MODEL_CHECK(s.CompareNoCase(*b.s) ==
                  std::strcmp(Mapped(view).c_str(), Mapped(other).c_str()));
      const bool relations[] = {s == *b.s, s != *b.s, (s < *b.s), (s > *b.s), s <= *b.s, s >= *b.s};
      const bool want[] = {order == 0, order != 0, 0 > order, 0 < order, order <= 0, order >= 0};
      for (int i = 0; i < 6; ++i) MODEL_CHECK(relations[i] == want[i]);
    }
    // sub, null when n is -1, is unequal to every string then.
    if (op == 33) MODEL_CHECK((s == sub) == (sub != nullptr && view == text));
    if (op == 33) MODEL_CHECK((s != sub) == (sub == nullptr || view != text));
    if (op == 34) {
      // One NUL for an empty string; else as many bytes of the terminated view
      // as count and limit allow, NUL-padded to that number, then a NUL.
      const int count = std::min(x, len + 4), limit = std::min(y, len + 4);
      const int size = count < 1 ? int(view.size()) : limit > 0 && limit < count ? limit : count;
      std::string want = view.substr(0, size);
      want.resize(len < 1 ? 1 : size + 1, '\0');
      std::vector<char> dst(want.size(), 'x');
      util_strncpy(dst.data(), s, count, limit);
      MODEL_CHECK(std::string(dst.begin(), dst.end()) == want);
    }
    for (const Slot& each : slots) {
      MODEL_CHECK(each.s->GetLength() == each.Length());
      // The counted bytes, then the terminator, as LTEXT gives them.
      MODEL_CHECK(std::memcmp(LTEXT(*each.s), each.bytes.c_str(), each.bytes.size() + 1) == 0);
    }
  }
}

}  // namespace text_model

#endif  // VQ0300_TESTS_TEXTMODEL_H
