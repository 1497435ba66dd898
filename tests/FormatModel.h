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

#include <cmath>
#include <cstring>
#include <regex>

#include "ModelRun.h"
#include "TestSupport.h"

namespace format_model {

inline bool In(const char* set, char c) { return c != '\0' && std::strchr(set, c) != nullptr; }
// The argument a letter takes: 'd' an int, 'f' a double, 's' a text.
inline char KindOf(char letter) { return In("ef", letter) ? 'f' : letter == 's' ? 's' : 'd'; }

struct Arg {
  char kind;
  int i;
  double d;
  const char* text;
};

template <typename T>
std::string Printf(const std::string& directive, T value) {
  std::string out(static_cast<std::size_t>(std::snprintf(nullptr, 0, directive.c_str(), value)), 0);
  std::snprintf(&out[0], out.size() + 1, directive.c_str(), value);
  return out;  // a %c of 0 leaves a NUL byte in it
}

// Adds what printf writes for the conversion c (a "%" through letter) with
// the argument a (null: none may be shown) to out; false where it is refused.
inline bool Value(const std::string& c, char letter, const Arg* a, std::string& out) {
  static const std::regex grammar("%([-+ #0]*)([0-9]*)(\\.([0-9]*))?(hh|ll|[hljzt])?(.?)");
  bool shown = false;
  for (auto i = c.begin(); i != c.end();) {
    std::smatch m;
    if (*i != '%' || i[1] == '%') {
      out += *i;
      i += *i == '%' ? 2 : 1;
      continue;
    }
    std::regex_search(i, c.end(), m, grammar, std::regex_constants::match_continuous);
    const std::string flags = m[1], length = m[5];
    const char conv = m.str(6)[0];
    const char kind = In("eEfFgGaA", conv) ? 'f' : conv == 's' ? 's' : 'd';
    if (shown || !a || !In("diouxXceEfFgGaAs", conv) || kind != KindOf(letter) ||
        std::stod("0" + m.str(2)) > INT_MAX || std::stod("0" + m.str(4)) > INT_MAX ||
        (In(flags.c_str(), '#') && In("diucs", conv)) ||
        (In(flags.c_str(), '0') && In("cs", conv)) || (m[3].matched && conv == 'c') ||
        (!length.empty() && (In("cs", conv) || (kind == 'f' && length != "l")))) {
      return false;
    }
    // The int is a 32-bit pattern, zero-extended by the wide modifiers (all
    // of them 64 bits here, so "ll" stands for them).
    const bool wide = In("ljzt", length[0]) && kind == 'd', sign = In("dic", conv);
    const std::string d = "%" + flags + m.str(2) + m.str(3) + (wide ? "ll" : length) + conv;
    const unsigned u = static_cast<unsigned>(a->i);
    out += kind == 'f'   ? Printf(d, a->d)
           : kind == 's' ? Printf(d, a->text ? a->text : "(null)")
           : wide        ? (sign ? Printf(d, 0LL + u) : Printf(d, 0ULL + u))
                         : (sign ? Printf(d, a->i) : Printf(d, u));
    i += m.length(0), shown = true;
  }
  return c.size() <= 254;
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
    if (output && a->kind == 's') value = a->text ? a->text : "(null)";
    if (output && value.size() > 255) return fail;
    if (const int code = emit(output ? value.c_str() : value)) return code;
    pos = letter + 1;
  }
}

// The console (standard output or error) and the log file of an LMsgOutput.
struct Channel {
  unsigned short options;
  int log;  // 0 none, 1 attached but not open, 2 open
  std::string out, err, logText;

  void Print(const std::string& text) {  // "%%" is one "%", nothing else changes
    if (options & (LMSG_OUTPUT_STDERR | LMSG_OUTPUT_STDOUT))
      (options & LMSG_OUTPUT_STDERR ? err : out) += std::regex_replace(text, std::regex("%%"), "%");
  }
  int PrintLog(const std::string& text) {
    if ((options & LMSG_OUTPUT_LOG) == 0) return 0;
    if (log == 0) return Print("Log File not initialized!\n"), -1;
    const auto write = [&](const std::string& s) { return logText += s, 0; };
    const int code = log == 1 ? LFILE_ERR_NOT_OPEN : Scan(text, nullptr, -2, false, write);
    const std::string message = code == -2 ? "Unsupported print format." : "File not opened.";
    if (code != 0) Print("Error Writing to Log File:\n\t\t" + message);
    return code != 0 ? -1 : 0;
  }
};

// Calls call with the arguments, each as the type its conversion takes.
template <typename Call, typename... A>
int CallWith(const std::vector<Arg>& args, Call call, A... a) {
  if constexpr (sizeof...(A) < 3) {
    if (sizeof...(A) < args.size()) {
      const Arg& x = args[sizeof...(A)];
      return x.kind == 'd'   ? CallWith(args, call, a..., x.i)
             : x.kind == 'f' ? CallWith(args, call, a..., x.d)
                             : CallWith(args, call, a..., x.text);
    }
  }
  return call(a...);
}

// Each operation: a format with one argument per conversion (at most
// three), handed to WriteLine, to Output or (without the arguments) to
// PrintLog, which must give the result and the bytes of the model.
inline void RunFormatOps(model::OpInput& in) {
  static const char* const kTexts[] = {nullptr, "", "ab", "%d", "50% done", "a%%b"};
  static const double kDoubles[] = {0.0, -0.0, 1e300, 5e-324, INFINITY, -NAN};
  static const std::regex huge("[1-9][0-9]{4}");
  const testsupport::TempDir dir;
  const std::string path = dir / "out";
  while (!in.Done()) {
    std::string f = in.Text(24, "%%%%%ddfxXesciougaEpn*$'.-+ #00129hhhlljztLa\n");
    std::vector<Arg> args;
    for (std::size_t p = f.find('%'); p != std::string::npos; p = f.find('%', p)) {
      if (args.size() == 3) f.resize(p);
      p = f.find_first_of("dfxXes", p);
      if (p == std::string::npos) break;
      args.push_back({KindOf(f[p++]), in.Edge({0, -1, INT_MIN, INT_MAX}, -300, 300),
                      in.Bool() ? kDoubles[in.Int(0, 5)] : in.Int(-9999, 9999) / 16.0,
                      kTexts[in.Int(0, 5)]});
    }
    const int op = in.Int(0, 2), log = in.Int(0, 3);  // log 3: open, adding to an old text
    Channel model{static_cast<unsigned short>(in.Int(0, 0xFFFF)), std::min(log, 2), "", "", ""};
    const bool withOptions = in.Bool();
    // A width or precision of 10000 or more would write that many bytes.
    if (std::regex_search(f, huge)) continue;
    model::Step() = "operation " + std::to_string(op) + " of \"" + f + "\"";
    int want = 0, got = 0;
    std::string console = "|";
    if (op == 0) {
      want = Scan(f, &args, -2, false, [&](const std::string& s) { return model.logText += s, 0; });
      LFile file(path.c_str(), "wb");
      got = CallWith(args, [&](auto... a) { return file.WriteLine(f.c_str(), a...); });
      MODEL_CHECK(file.GetErrorCode() == got);
    } else {
      model.logText = log == 3 ? "old\n" : "";
      testsupport::WriteFile(path, model.logText);
      const auto emit = [&](const std::string& s) {
        return model.Print(s), model.PrintLog(s) ? -2 : 0;
      };
      want = op == 1 ? Scan(f, &args, -1, true, emit) : model.PrintLog(f);
      LMsgOutput channel;
      if (log > 0)
        MODEL_CHECK(channel.InitLogFile(log > 1 ? path.c_str() : nullptr, log == 2) ==
                    (log > 1 ? 0 : -7));
      if (!withOptions || op == 2) channel.SetOutputOptions(model.options);
      testsupport::CaptureStream out(stdout), err(stderr);
      const auto output = [&](auto... a) {
        return withOptions ? channel.Output(model.options, f.c_str(), a...)
                           : channel.Output(f.c_str(), a...);
      };
      got = op == 2 ? channel.PrintLog(f.c_str()) : CallWith(args, output);
      console = out.Release() + "|" + err.Release();
    }
    model::Step() += " gives " + std::to_string(got) + ", not " + std::to_string(want);
    MODEL_CHECK(got == want);
    MODEL_CHECK(console == model.out + "|" + model.err);
    MODEL_CHECK(testsupport::ReadFile(path) == model.logText);  // each operation writes it anew
  }
}

}  // namespace format_model

#endif  // VQ0300_TESTS_FORMATMODEL_H
