// A reference model of the format scan that LFile::WriteLine and
// LMsgOutput::Output share, for their fuzz targets. It follows the contract
// in the comment of LFile::WriteLine:
//  - a conversion runs from a "%" to the first letter of "dfxXes" behind it,
//    and that letter alone decides the argument taken: d x X int, e f
//    double, s text;
//  - a conversion is accepted when printf would read it as literal text
//    ("%%" being one "%") around at most one directive of the grammar
//    % [-+ #0]* digits? (. digits?)? (hh|h|l|ll|j|z|t)? letter, whose letter
//    takes the same kind of argument, minus the combinations that printf
//    leaves undefined; everything else is the format failure.
// It also holds the argument list of an input and the dispatcher that calls a
// variadic function with exactly those arguments.
#ifndef VQ0300_FUZZ_FORMATMODEL_H
#define VQ0300_FUZZ_FORMATMODEL_H

#include <fuzzer/FuzzedDataProvider.h>

#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "FuzzSupport.h"

namespace format_model {

constexpr size_t kMaxArgs = 4;         // inputs with more conversions are skipped
constexpr size_t kMaxFormat = 320;     // longer than the 254 of one conversion
constexpr long long kMaxWidth = 9999;  // see HasHugeNumber

enum class Kind { kInt, kDouble, kText };

Kind KindOf(char letter) {
  return letter == 'e' || letter == 'f' ? Kind::kDouble : letter == 's' ? Kind::kText : Kind::kInt;
}

// ---- Cutting a format -----------------------------------------------------------

struct Conversion {
  std::string piece;  // literal text ahead of the "%"
  std::string text;   // "%" through the letter
  char letter;
};

struct Cut {
  std::vector<Conversion> conversions;
  bool noLetter = false;  // ends at a "%" with no letter behind it
  std::string tail;       // the last piece, when !noLetter
};

Cut CutFormat(const std::string& f) {
  Cut cut;
  for (size_t pos = 0;;) {
    const size_t percent = f.find('%', pos);
    if (percent == std::string::npos) {
      cut.tail = f.substr(pos);
      return cut;
    }
    const size_t letter = f.find_first_of("dfxXes", percent);
    if (letter == std::string::npos) {
      cut.noLetter = true;
      return cut;
    }
    cut.conversions.push_back(
        {f.substr(pos, percent - pos), f.substr(percent, letter - percent + 1), f[letter]});
    pos = letter + 1;
  }
}

// True when the format holds a run of digits worth 10000 to INT_MAX: as a
// width or precision it is accepted and would make printf write that many
// bytes, more than a fuzzer should spend. Larger ones are refused, and
// stay in.
bool HasHugeNumber(const std::string& f) {
  long long value = -1;
  for (size_t i = 0; i <= f.size(); ++i) {
    if (i < f.size() && f[i] >= '0' && f[i] <= '9') {
      value = (value < 0 ? 0 : value) * 10 + (f[i] - '0');
      if (value > INT_MAX) value = LLONG_MAX / 16;  // saturate, stays above INT_MAX
    } else {
      if (value > kMaxWidth && value <= INT_MAX) return true;
      value = -1;
    }
  }
  return false;
}

// ---- Reading one conversion as printf would --------------------------------------

struct Parsed {
  std::string prefix, suffix;  // literal text, "%%" made one "%"
  bool directive = false;      // false: printf shows no argument
  std::string flags, width, precision, length;
  bool hasPrecision = false;
  char directiveLetter = 0;  // the letter of the directive itself
};

bool IsIn(char c, const char* set) { return c != '\0' && std::strchr(set, c) != nullptr; }

// Digits at c[j], moving j on; false when they exceed INT_MAX.
bool Digits(const std::string& c, size_t& j, std::string& out) {
  long long value = 0;
  while (j < c.size() && c[j] >= '0' && c[j] <= '9') {
    value = value * 10 + (c[j] - '0');
    if (value > INT_MAX) return false;
    out += c[j++];
  }
  return true;
}

// False when the library must refuse the conversion.
bool Parse(const Conversion& conv, Parsed& p) {
  const std::string& c = conv.text;
  if (c.size() > 254) return false;
  std::string* literal = &p.prefix;
  for (size_t i = 0; i < c.size();) {
    if (c[i] != '%') {
      *literal += c[i++];
      continue;
    }
    if (i + 1 < c.size() && c[i + 1] == '%') {
      *literal += '%';
      i += 2;
      continue;
    }
    if (p.directive) return false;  // a second argument would be read
    p.directive = true;
    size_t j = i + 1;
    while (j < c.size() && IsIn(c[j], "-+ #0")) p.flags += c[j++];
    if (!Digits(c, j, p.width)) return false;
    if (j < c.size() && c[j] == '.') {
      p.hasPrecision = true;
      ++j;
      if (!Digits(c, j, p.precision)) return false;
    }
    for (const char* m : {"hh", "ll", "h", "l", "j", "z", "t"}) {
      if (c.compare(j, std::strlen(m), m) == 0) {
        p.length = m;
        break;
      }
    }
    j += p.length.size();
    p.directiveLetter = j < c.size() ? c[j] : '\0';
    Kind kind;
    if (IsIn(p.directiveLetter, "diouxXc")) {
      kind = Kind::kInt;
    } else if (IsIn(p.directiveLetter, "eEfFgGaA")) {
      kind = Kind::kDouble;
    } else if (p.directiveLetter == 's') {
      kind = Kind::kText;
    } else {
      return false;
    }
    if (kind != KindOf(conv.letter)) return false;
    const bool flagHash = p.flags.find('#') != std::string::npos;
    const bool flagZero = p.flags.find('0') != std::string::npos;
    if (flagHash && IsIn(p.directiveLetter, "diucs")) return false;
    if (flagZero && IsIn(p.directiveLetter, "cs")) return false;
    if (p.hasPrecision && p.directiveLetter == 'c') return false;
    if (!p.length.empty() && IsIn(p.directiveLetter, "cs")) return false;
    if (kind == Kind::kDouble && !p.length.empty() && p.length != "l") return false;
    literal = &p.suffix;
    i = j + 1;
  }
  return true;
}

// ---- Arguments ----------------------------------------------------------------

struct Arg {
  Kind kind = Kind::kInt;
  int i = 0;
  double d = 0.0;
  bool null = false;
  std::string text;
  const char* Text() const { return null ? nullptr : text.c_str(); }
};

double AnyDouble(FuzzedDataProvider& in) {
  if (in.ConsumeBool()) return in.ConsumeIntegralInRange(-4000, 4000) / 8.0;
  const uint64_t bits = in.ConsumeIntegral<uint64_t>();  // NaN, infinities, subnormals
  double d;
  std::memcpy(&d, &bits, sizeof d);
  return d;
}

// One argument per conversion, of the kind its letter takes. nullText
// allows null texts.
std::vector<Arg> MakeArgs(const Cut& cut, FuzzedDataProvider& in, bool nullText) {
  std::vector<Arg> args;
  for (const Conversion& conv : cut.conversions) {
    Arg a;
    a.kind = KindOf(conv.letter);
    if (a.kind == Kind::kInt) a.i = in.ConsumeIntegral<int>();
    if (a.kind == Kind::kDouble) a.d = AnyDouble(in);
    if (a.kind == Kind::kText) {
      a.null = nullText && in.ConsumeIntegralInRange(0, 15) == 0;
      a.text = in.ConsumeRandomLengthString(40).c_str();
    }
    args.push_back(a);
  }
  return args;
}

// Calls call(a...) with the arguments as int, double or const char*.
template <typename Call, typename... A>
int CallWith(Call&& call, const std::vector<Arg>& args, size_t i, A... a) {
  if (i == args.size()) return call(a...);
  if constexpr (sizeof...(A) < kMaxArgs) {
    const Arg& x = args[i];
    switch (x.kind) {
      case Kind::kInt:
        return CallWith(call, args, i + 1, a..., x.i);
      case Kind::kDouble:
        return CallWith(call, args, i + 1, a..., x.d);
      case Kind::kText:
        return CallWith(call, args, i + 1, a..., x.Text());
    }
  }
  std::fprintf(stderr, "format model: more than %zu arguments\n", kMaxArgs);
  std::abort();
}

// ---- Values ---------------------------------------------------------------------

template <typename T>
std::string Printf(const std::string& directive, T value) {
  const int n = std::snprintf(nullptr, 0, directive.c_str(), value);
  if (n < 0) return "<printf failed>";
  std::vector<char> area(static_cast<size_t>(n) + 1);
  std::snprintf(area.data(), area.size(), directive.c_str(), value);
  return std::string(area.data(), static_cast<size_t>(n));  // may hold NUL (%c of 0)
}

// What printf makes of the accepted conversion p with argument a: the int is
// a 32-bit pattern that the wide modifiers see zero-extended. They are all
// 64 bits here, so they are formatted through "ll".
std::string Value(const Parsed& p, const Arg& a) {
  std::string out = p.prefix;
  if (p.directive) {
    std::string d = "%" + p.flags + p.width + (p.hasPrecision ? "." + p.precision : "");
    const bool wide = !p.length.empty() && p.length[0] != 'h';
    if (a.kind == Kind::kInt) d += wide ? "ll" : p.length;
    d += p.directiveLetter;
    const uint32_t bits = static_cast<uint32_t>(a.i);
    const bool isSigned = IsIn(p.directiveLetter, "dic");
    if (a.kind == Kind::kDouble) {
      out += Printf(d, a.d);
    } else if (a.kind == Kind::kText) {
      out += Printf(d, a.null ? "(null)" : a.text.c_str());
    } else if (wide) {
      out += isSigned ? Printf(d, static_cast<long long>(bits))
                      : Printf(d, static_cast<unsigned long long>(bits));
    } else {
      out += isSigned ? Printf(d, a.i) : Printf(d, static_cast<unsigned>(bits));
    }
  }
  return out + p.suffix;
}

// fprintf(stream, text) of a text that shows no argument: "%%" gives "%",
// any other "%" stays.
std::string Unpaired(const std::string& text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    out += text[i];
    if (text[i] == '%' && i + 1 < text.size() && text[i + 1] == '%') ++i;
  }
  return out;
}

// ---- Output -----------------------------------------------------------------------

// The result and the bytes of a scan in the manner of WriteLine: code -2 for
// the format failure. args null: the scan has no arguments, and a
// conversion that would show one is the format failure.
struct Written {
  std::string out;
  int code = 0;
};

Written WriteLineModel(const Cut& cut, const std::vector<Arg>* args) {
  Written w;
  for (size_t k = 0; k < cut.conversions.size(); ++k) {
    Parsed p;
    if (!Parse(cut.conversions[k], p) || (args == nullptr && p.directive)) {
      w.code = -2;
      return w;
    }
    w.out += cut.conversions[k].piece;
    w.out += args != nullptr ? Value(p, (*args)[k]) : p.prefix + p.suffix;
  }
  if (cut.noLetter) {
    w.code = -2;
    return w;
  }
  w.out += cut.tail;
  return w;
}

// ---- Temporary files ---------------------------------------------------------------

// A temporary directory made once per process and removed at exit, with
// the names of the files in it.
struct Place {
  std::string dir;
  std::vector<std::string> files;
  Place() {
    const char* tmp = std::getenv("TMPDIR");
    std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/vq0300-fuzz-XXXXXX";
    if (mkdtemp(&pattern[0]) == nullptr) {
      std::fprintf(stderr, "format model: no temporary directory\n");
      std::abort();
    }
    dir = pattern;
  }
  std::string File(const char* name) {
    files.push_back(dir + "/" + name);
    return files.back();
  }
  ~Place() {
    for (const std::string& f : files) std::remove(f.c_str());
    std::remove(dir.c_str());
  }
};

std::string ReadAll(const std::string& path) {
  std::string out;
  FILE* f = std::fopen(path.c_str(), "rb");
  if (f == nullptr) return out;
  char area[4096];
  size_t n;
  while ((n = std::fread(area, 1, sizeof area, f)) > 0) out.append(area, n);
  std::fclose(f);
  return out;
}

}  // namespace format_model

#endif  // VQ0300_FUZZ_FORMATMODEL_H
