// A reading of the error definition format written apart from the loader,
// straight from the steps of the format, on whole strings; and the decoder
// that builds a definition file from operation bytes, loads it with
// ErrorHandler and checks the result and every element against that reading.
// ErrorHandler_test runs it from fixed seeds, the fuzz target
// ErrorDefinitionFile_fuzz over fuzzer input.
#ifndef VQ0300_TESTS_DEFINITIONMODEL_H
#define VQ0300_TESTS_DEFINITIONMODEL_H

#include <vq0300/ErrorHandler.h>

#include <algorithm>
#include <tuple>
#include <utility>

#include "ModelRun.h"
#include "TestSupport.h"

namespace defmodel {

using std::string;
using Defs = std::vector<std::tuple<std::uint32_t, string, int>>;  // code, message, continue
constexpr auto kNone = string::npos;

// Drops at both ends every byte outside 0x21..0x7E.
inline string Trim(string s) {
  const auto blank = [](char c) { return c <= ' ' || c >= '\x7f'; };
  while (!s.empty() && blank(s.back())) s.pop_back();
  return s.substr(std::find_if_not(s.begin(), s.end(), blank) - s.begin());
}
// The text ahead of the first mark; empty without one.
inline string Ahead(const string& s, const char* mark) {
  return s.substr(0, s.find(mark) == kNone ? 0 : s.find(mark));
}
// The text behind the first "<S/>"; without one, all but 3 characters.
inline string Behind(const string& s) {
  return s.substr(s.find("<S/>") == kNone ? std::min<std::size_t>(3, s.size())
                                          : s.find("<S/>") + 4);
}
// strtol's value of the trimmed text, its low 32 bits.
inline std::uint32_t Value(const string& s) {
  return static_cast<std::uint32_t>(std::strtol(Trim(s).c_str(), nullptr, 10));
}

// The result of a pass with selector over file; defs gets what it loads.
// The 16 MiB limit of a statement is left out: no file made here nears it.
inline int Read(const string& file, int selector, Defs& defs) {
  std::size_t pos = 0;
  bool end = false;  // the stream's end state
  string line, acc, carried;
  // One fgets of 65536 bytes: through a line end, 65535 bytes at most, its
  // text ending at a NUL. The end state comes with a read that finds
  // nothing, or one that stops short of a line end at the end of the file.
  const auto next = [&] {
    end = end || pos == file.size();
    if (end) return false;
    const auto n =
        std::min<std::size_t>(std::min(file.find('\n', pos), file.size() - 1) + 1 - pos, 65535);
    line = file.substr(pos, n).c_str();
    pos += n;
    end = pos == file.size() && file.back() != '\n' && n < 65535;
    return true;
  };
  while (next() && line.find("<ErrorMessageDefinition>") == kNone) continue;
  if (end) return -1;
  for (int offset = -2; !end && next();) {
    acc += Trim(std::exchange(carried, "") + line);
    if (acc.find("<!--") != kNone && acc.find("-->") != kNone) {
      acc.erase(0, acc.find("-->") + 3);
    } else if (acc.find("<!--") != kNone) {  // skipped up to a line that closes it
      while (next() && line.find("-->") == kNone) continue;
      if (end) return -1;
      acc = Trim(line).substr(Trim(line).find("-->") + 3);
    }
    if (acc.find("<E/>") == kNone) continue;
    const string text = Trim(std::exchange(acc, "")), s = text.substr(0, text.find("<E/>") + 4);
    carried = Trim(text.substr(text.rfind("<E/>") + 4));
    if (s.find("Offset") != kNone) {
      if (offset >= 0 && selector >= 0) return 0;
      const auto value = static_cast<std::int32_t>(Value(Ahead(Behind(s), "<E/>")));
      offset = selector == -1 || value == selector ? value : -2;
    } else if (offset >= 0 || selector == -1) {
      const string rest = Trim(Behind(s)), action = Trim(Ahead(Trim(Behind(rest)), "<E/>"));
      defs.emplace_back(
          static_cast<std::uint32_t>(offset) << 16 | (Value(Ahead(s, "<S/>")) & 0xFFFF),
          Trim(Ahead(rest, "<S/>")), action == "STOP" ? 0 : 1);
    }
  }
  return 0;
}

// The first byte gives the selector, -2 to 5, and the kind of file: '0' to
// '9' make the rest of the input the file itself (the text seeds of the fuzz
// target); else the file is made of pieces. The file is loaded from an
// absolute directory, then read once more with GetErrorList: each pass must
// give the result and the elements of Read, in order. An element found gets a
// code that no definition has, so the next lookup of its code finds its next
// copy, and at the end none is found.
inline void RunDefinitionFile(model::OpInput& in) {
  // clang-format off
  static const string kPieces[] = {"\n", "\n", "\r\n", "<S/>", "<S/>", "<E/>", "<E/>", "<!--", "-->",
      "Offset", "1", "2", "-1", "70000", "STOP", "7<S/>T<S/> STOP <E/>\n", " ", "\n\t", " A ", "\x7f", "\xff",
      string(1, '\0'), "<ErrorMessageDefinition>", "<ErrorMessageDefinition>\n", "Offset<S/>1<E/>\n",
      "Offset<S/>2<E/>\n", "1<S/>A<S/>STOP<E/>\n", "2<S/>B<S/>GO<E/>\n", "12<S/>", "0", "<!--c-->"};
  // clang-format on
  const std::uint8_t first = in.Byte();
  const bool text = first >= '0' && first <= '9';
  string file = text || first & 8 ? "" : "<ErrorMessageDefinition>\n";
  while (text && !in.Done()) file += static_cast<char>(in.Byte());
  for (int n = text ? 0 : in.Int(0, 63); n > 0; --n) {
    const int pick = in.Int(0, 31);  // runs of x up to 8 KiB, now and then 64 KiB
    file += pick < 31 ? kPieces[pick] : string(in.Byte() < 32 ? 65530 : in.Byte() * 32, 'x');
  }
  const int selector = first % 8 - 2;
  static const testsupport::TempDir dir;
  std::remove((dir / "defs.txt").c_str());  // rewriting in place waits for the disk on ext4
  testsupport::WriteFile(dir / "defs.txt", file);
  model::Step() = "selector " + std::to_string(selector) + ", file \"" + file.substr(0, 999) + "\"";
  Defs want;
  const int result = Read(file, selector, want);
  ErrorHandler h;
  h.SetDefaultDir(dir.path().c_str());
  string name = "defs.txt";
  MODEL_CHECK(h.Initialize(name.data(), selector) == result);
  std::uint32_t mark = 0xDEAD0000;
  while (std::any_of(want.begin(), want.end(), [&](auto& d) { return std::get<0>(d) == mark; }))
    ++mark;
  const auto find = [&](std::uint32_t c) { return h.GetErrorElement(c & 0xFFFF, c >> 16); };
  for (int pass = 0; pass < 2; ++pass) {
    if (pass == 1) MODEL_CHECK(h.GetErrorList(selector) == result);
    for (const auto& [code, message, cont] : want) {
      ErrorElement* e = find(code);
      MODEL_CHECK(e != nullptr);
      MODEL_CHECK(e->GetErrorMessage() == message);  // never null: a null one crashes here
      MODEL_CHECK(e->m_wContinue == cont);
      e->m_dwErrorCode = mark;
    }
    for (const auto& d : want) MODEL_CHECK(find(std::get<0>(d)) == nullptr);
    for (std::uint32_t offset : {0xFFFEu, 0u, 1u, 2u, 0xFFFFu})
      for (std::uint32_t n : {0u, 1u, 2u, 12u, 4464u, 0xFFFFu})
        MODEL_CHECK(!find(offset << 16 | n));
  }
}

}  // namespace defmodel

#endif  // VQ0300_TESTS_DEFINITIONMODEL_H
