// A model of the format scan that LFile::WriteLine and LMsgOutput::Output
// share, and the decoder that runs both (and PrintLog) beside it. A
// conversion runs from a "%" to the first letter of "dfxXes", which alone
// decides the argument taken; it is accepted when printf reads it as literal
// text ("%%" being one "%") around at most one directive of the grammar below
// whose letter takes the same kind of argument, minus the combinations that
// printf leaves undefined. The C library's snprintf is the oracle of a value.
#ifndef VQ0300_TESTS_FORMATMODEL_H
#define VQ0300_TESTS_FORMATMODEL_H

#include <vq0300/LFile.h>
#include <vq0300/LMsgOutput.h>

#include <cerrno>
#include <cmath>
#include <cstring>
#include <regex>
#include <variant>

#include "ModelRun.h"
#include "TestSupport.h"

namespace format_model {

inline bool In(const char* set, char c) { return c != '\0' && std::strchr(set, c) != nullptr; }

using Arg = std::variant<int, double, const char*>;
enum Kind : std::size_t { kInt, kDouble, kText };  // the index of each in Arg
// The argument a conversion letter takes.
inline Kind KindOf(char c) { return In("eEfFgGaA", c) ? kDouble : c == 's' ? kText : kInt; }
inline const char* Shown(const char* text) { return text ? text : "(null)"; }

// What printf writes for one directive. Widths and precisions stay below
// 10000 (larger ones only on short texts), so the buffer holds every value;
// a %c of 0 leaves a NUL byte in it.
template <typename T>
std::string Printf(const std::string& directive, T value) {
  std::vector<char> out(20000);
  return std::string(out.data(), std::snprintf(out.data(), out.size(), directive.c_str(), value));
}

// "%%" is one "%", nothing else changes.
inline std::string Literal(const std::string& text) {
  return std::regex_replace(text, std::regex("%%"), "%");
}

// Adds what printf writes for the conversion c (a "%" through letter) with
// the argument a (null: none may be shown) to out; false where it is refused.
inline bool Value(const std::string& c, char letter, const Arg* a, std::string& out) {
  // Literal text around at most one directive: flags, width, precision,
  // length modifier and conversion.
  static const std::regex grammar(
      "((?:[^%]|%%)*)(%([-+ #0]*)([0-9]*)(\\.([0-9]*))?(hh|ll|[hljzt])?(.))?((?:[^%]|%%)*)");
  std::smatch m;
  if (!std::regex_match(c, m, grammar) || c.size() > 254) return false;
  if (!m[2].matched) return out += Literal(c), true;
  const std::string flags = m[3], length = m[7];
  const char conv = m.str(8)[0];
  const Kind kind = KindOf(conv);
  if (!a || !In("diouxXceEfFgGaAs", conv) || kind != KindOf(letter) ||
      std::stod("0" + m.str(4)) > INT_MAX || std::stod("0" + m.str(6)) > INT_MAX ||
      (In(flags.c_str(), '#') && In("diucs", conv)) || (In(flags.c_str(), '0') && In("cs", conv)) ||
      (m[5].matched && conv == 'c') ||
      (!length.empty() && (In("cs", conv) || (kind == kDouble && length != "l"))))
    return false;
  // The int is a 32-bit pattern, zero-extended by the wide modifiers (all
  // of them 64 bits here, so "ll" stands for them).
  const bool wide = In("ljzt", length[0]) && kind == kInt, sign = In("dic", conv);
  const std::string d = "%" + flags + m.str(4) + m.str(5) + (wide ? "ll" : length) + conv;
  const unsigned u = kind == kInt ? std::get<kInt>(*a) : 0;
  out += Literal(m[1]);
  out += kind == kDouble ? Printf(d, std::get<kDouble>(*a))
         : kind == kText ? Printf(d, Shown(std::get<kText>(*a)))
         : wide          ? (sign ? Printf(d, 0LL + u) : Printf(d, 0ULL + u))
                         : (sign ? Printf(d, static_cast<int>(u)) : Printf(d, u));
  return out += Literal(m[9]), true;
}

// The scan of f: every literal piece and value goes to emit, which returns 0
// to go on. Returns 0, fail or the code of emit. args null: no arguments.
// output: Output's values (a text as it stands, else at most 255 characters,
// cut at a NUL).
template <typename Emit>
int Scan(const std::string& f, const std::vector<Arg>* args, int fail, bool output, Emit emit) {
  for (std::size_t pos = 0, k = 0;; ++k) {
    const std::size_t percent = f.find('%', pos), letter = f.find_first_of("dfxXes", percent);
    if (percent == std::string::npos) return emit(f.substr(pos));
    const Arg* a = args && k < args->size() ? &(*args)[k] : nullptr;  // none: no letter
    std::string value, c = f.substr(percent, letter - percent + 1);
    if (letter == std::string::npos || !Value(c, f[letter], a, value)) return fail;
    if (const int code = emit(f.substr(pos, percent - pos))) return code;
    if (output && a->index() == kText) value = Shown(std::get<kText>(*a));
    if (output && value.size() > 255) return fail;
    if (const int code = emit(output ? value.c_str() : value)) return code;
    pos = letter + 1;
  }
}

// The console (standard output or error) and the log file of an LMsgOutput.
struct Channel {
  int options;
  bool log = false;  // a log file is open
  std::string logText{}, out{}, err{};

  void Print(const std::string& text) {
    if (options & (LMSG_OUTPUT_STDERR | LMSG_OUTPUT_STDOUT))
      (options & LMSG_OUTPUT_STDERR ? err : out) += Literal(text);
  }
  int PrintLog(const std::string& text) {
    if ((options & LMSG_OUTPUT_LOG) == 0) return 0;
    if (!log) return Print("Log File not initialized!\n"), -1;
    const auto write = [&](const std::string& s) { return logText += s, 0; };
    if (Scan(text, nullptr, -2, false, write) == 0) return 0;
    return Print("Error Writing to Log File:\n\t\tUnsupported print format."), -1;
  }
};

// Hands the format f with args (one per conversion, at most three) to
// WriteLine (op 0), to Output after SetOutputOptions (op 1) or with the
// options (op 3), or, without them, to PrintLog (op 2), over a file that
// holds model.logText; the result, the console and the file must be those
// of the model.
inline void CheckFormat(int op, const std::string& f, std::vector<Arg> args, Channel model) {
  const testsupport::TempDir dir;
  const std::string path = dir / "out";
  model::Step() = "operation " + std::to_string(op) + " of \"" + f + "\"";
  testsupport::WriteFile(path, model.logText);
  LMsgOutput channel;
  // A fresh log when it holds no text.
  if (model.log) MODEL_CHECK(channel.InitLogFile(path.c_str(), model.logText.empty()) == 0);
  if (op != 3) channel.SetOutputOptions(model.options);
  // What WriteLine writes, or what Output shows and logs.
  const auto emit = [&](const std::string& s) {
    return op == 0 ? (model.logText += s, 0) : (model.Print(s), model.PrintLog(s) ? -2 : 0);
  };
  const int want = op == 2 ? model.PrintLog(f) : Scan(f, &args, op ? -1 : -2, op != 0, emit);
  testsupport::CaptureStream out(stdout), err(stderr);
  channel.Print(nullptr);  // writes nothing
  const auto call = [&](auto... a) {
    return op == 0   ? LFile(path.c_str(), "ab").WriteLine(f.c_str(), a...)
           : op == 1 ? channel.Output(f.c_str(), a...)
                     : channel.Output(model.options, f.c_str(), a...);
  };
  args.resize(3);  // each call passes three: printf ignores those it does not read
  const int got =
      op == 2 ? channel.PrintLog(f.c_str()) : std::visit(call, args[0], args[1], args[2]);
  MODEL_CHECK(out.Release() + "|" + err.Release() == model.out + "|" + model.err);
  MODEL_CHECK(got == want);
  // A new log that fails replaces the old, which is closed, and so flushed,
  // first.
  MODEL_CHECK(channel.InitLogFile((dir / "none/log").c_str(), true) == ENOENT);
  MODEL_CHECK(testsupport::ReadFile(path) == model.logText);
}

// Each operation: a format, its arguments and the state of the channel.
inline void RunFormatOps(model::OpInput& in) {
  static const char* const kTexts[] = {nullptr, "", "ab", "%d", "50% done", "a%%b"};
  static const double kDoubles[] = {0.0, -0.0, 1e300, 5e-324, INFINITY, -NAN};
  static const std::regex huge("[1-9][0-9]{4}");
  while (!in.Done()) {
    std::string f = in.Text(24, "%%%%%ddfxXesciougaEpn*$'.-+ #00129hhhlljztLa\n");
    std::vector<Arg> args;
    for (std::size_t p = f.find('%'); p != std::string::npos; p = f.find('%', p)) {
      if (args.size() == 3) f.resize(p);
      p = f.find_first_of("dfxXes", p);
      if (p == std::string::npos) break;
      const Arg values[] = {in.Edge({0, -1, INT_MIN, INT_MAX}, -300, 300),
                            in.Bool() ? kDoubles[in.Int(0, 5)] : in.Int(-9999, 9999) / 16.0,
                            kTexts[in.Int(0, 5)]};
      args.push_back(values[KindOf(f[p++])]);
    }
    const int op = in.Int(0, 3), log = in.Int(0, 2);  // log 2: adding to an old text
    const Channel model{in.Int(0, 0xFFFF), log > 0, log == 2 ? "old\n" : ""};
    // A width or precision of 10000 or more would write that many bytes.
    if (!std::regex_search(f, huge)) CheckFormat(op, f, args, model);
  }
}

}  // namespace format_model

#endif  // VQ0300_TESTS_FORMATMODEL_H
