#include <climits>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>

#include "FormatScan_internal.h"
#include "vq0300/BoundedCopy.h"

namespace vq0300_internal {
namespace {

constexpr char kConversionLetters[] = "dfxXes";

bool IsOneOf(char c, char const* set) { return c != '\0' && std::strchr(set, c) != nullptr; }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

ArgType TypeOfLetter(char letter) {
  switch (letter) {
    case 'e':
    case 'f':
      return ArgType::kDouble;
    case 's':
      return ArgType::kText;
    default:
      return ArgType::kInt;
  }
}

// Copies a run of digits at text[i] into out at d, moving both on. False
// when the number exceeds INT_MAX, which printf cannot take as a width or
// precision.
bool CopyNumber(char const* text, std::size_t& i, char* out, std::size_t& d) {
  long long value = 0;
  while (IsDigit(text[i])) {
    value = value * 10 + (text[i] - '0');
    if (value > INT_MAX) return false;
    out[d++] = text[i++];
  }
  return true;
}

// Reads the directive that starts with the "%" at text[start] (not "%%")
// into out.directive, out.specifier and out.length, and sets end behind
// it. False for anything outside the accepted grammar
//   % [-+ #0]* digits? (. digits?)? (hh|h|l|ll|j|z|t)? letter
// or for a combination whose behaviour printf leaves undefined.
bool ParseDirective(char const* text, std::size_t start, ParsedConversion& out, std::size_t& end) {
  char* dir = out.directive;
  std::size_t d = 0;
  std::size_t i = start + 1;
  dir[d++] = '%';
  bool alternate = false;
  bool zeroPad = false;
  while (IsOneOf(text[i], "-+ #0")) {
    alternate = alternate || text[i] == '#';
    zeroPad = zeroPad || text[i] == '0';
    dir[d++] = text[i++];
  }
  if (!CopyNumber(text, i, dir, d)) return false;
  bool precision = false;
  if (text[i] == '.') {
    precision = true;
    dir[d++] = text[i++];
    if (!CopyNumber(text, i, dir, d)) return false;
  }
  LengthModifier length = LengthModifier::kNone;
  std::size_t lengthChars = 1;
  switch (text[i]) {
    case 'h':
      length = text[i + 1] == 'h' ? LengthModifier::kHH : LengthModifier::kH;
      if (length == LengthModifier::kHH) lengthChars = 2;
      break;
    case 'l':
      length = text[i + 1] == 'l' ? LengthModifier::kLL : LengthModifier::kL;
      if (length == LengthModifier::kLL) lengthChars = 2;
      break;
    case 'j':
      length = LengthModifier::kJ;
      break;
    case 'z':
      length = LengthModifier::kZ;
      break;
    case 't':
      length = LengthModifier::kT;
      break;
    default:
      lengthChars = 0;
      break;
  }
  for (std::size_t k = 0; k < lengthChars; ++k) dir[d++] = text[i++];

  const char specifier = text[i];
  ArgType type;
  if (IsOneOf(specifier, "diouxXc")) {
    type = ArgType::kInt;
  } else if (IsOneOf(specifier, "eEfFgGaA")) {
    type = ArgType::kDouble;
  } else if (specifier == 's') {
    type = ArgType::kText;
  } else {
    return false;  // "*", "$", "%n", "%p", "L", "q", unknown letters
  }
  if (type != out.type) return false;
  const bool isCharOrText = specifier == 'c' || specifier == 's';
  if (alternate && (type == ArgType::kText || IsOneOf(specifier, "diuc"))) return false;
  if (zeroPad && isCharOrText) return false;
  if (precision && specifier == 'c') return false;
  if (length != LengthModifier::kNone) {
    if (isCharOrText) return false;  // %lc and %ls are wide, %hc undefined
    if (type == ArgType::kDouble && length != LengthModifier::kL) return false;
  }
  dir[d++] = specifier;
  dir[d] = '\0';
  out.specifier = specifier;
  out.length = length;
  end = i + 1;
  return true;
}

// Calls print with the argument converted to exactly the type that the
// directive's length modifier and letter name. The int of d x X is a
// 32-bit pattern: widened modifiers see it zero-extended.
template <typename Print>
int Dispatch(ParsedConversion const& c, Argument const& a, Print&& print) {
  if (c.type == ArgType::kText) return print(a.text != nullptr ? a.text : "(null)");
  if (c.type == ArgType::kDouble) return print(a.real);
  const std::uint32_t bits = static_cast<std::uint32_t>(a.integer);
  const bool isSigned = IsOneOf(c.specifier, "dic");
  switch (c.length) {
    case LengthModifier::kNone:
      return isSigned ? print(a.integer) : print(static_cast<unsigned int>(bits));
    case LengthModifier::kHH:
    case LengthModifier::kH:
      return print(a.integer);  // promoted short types travel as int
    case LengthModifier::kL:
      return isSigned ? print(static_cast<long>(bits)) : print(static_cast<unsigned long>(bits));
    case LengthModifier::kLL:
      return isSigned ? print(static_cast<long long>(bits))
                      : print(static_cast<unsigned long long>(bits));
    case LengthModifier::kJ:
      return isSigned ? print(static_cast<std::intmax_t>(bits))
                      : print(static_cast<std::uintmax_t>(bits));
    case LengthModifier::kZ:
      return isSigned ? print(static_cast<std::make_signed_t<std::size_t>>(bits))
                      : print(static_cast<std::size_t>(bits));
    case LengthModifier::kT:
      return isSigned ? print(static_cast<std::ptrdiff_t>(bits))
                      : print(static_cast<std::make_unsigned_t<std::ptrdiff_t>>(bits));
  }
  return -1;
}

// Reads conversion (from "%" through its letter, terminated) as printf
// would. Returns false when printf would consume anything but the one
// argument of the conversion's letter, or none, or when a part is
// unsupported; out is then undefined.
bool ParseConversion(char const* conversion, ParsedConversion& out) {
  const std::size_t len = std::strlen(conversion);
  if (len < 2 || len > kConversionSize - 2) return false;
  out.letter = conversion[len - 1];
  out.type = TypeOfLetter(out.letter);
  out.hasDirective = false;
  char* literal = out.prefix;
  std::size_t used = 0;
  std::size_t i = 0;
  while (i < len) {
    if (conversion[i] != '%') {
      literal[used++] = conversion[i++];
    } else if (conversion[i + 1] == '%') {
      literal[used++] = '%';
      i += 2;
    } else {
      if (out.hasDirective) return false;  // a second argument would be read
      std::size_t end = 0;
      if (!ParseDirective(conversion, i, out, end)) return false;
      out.hasDirective = true;
      literal[used] = '\0';
      literal = out.suffix;
      used = 0;
      i = end;
    }
  }
  literal[used] = '\0';
  return true;
}

// fwrite of a terminated text; the caller tests ferror.
void WriteText(std::FILE* stream, char const* text) {
  std::fwrite(text, 1, std::strlen(text), stream);
}

// Writes what fprintf(stream, conversion, argument) writes, the directive
// handed over with an argument of exactly its type. The result of fprintf
// is not looked at; the caller tests ferror.
void WriteValue(std::FILE* stream, ParsedConversion const& conversion, Argument const& argument) {
  WriteText(stream, conversion.prefix);
  if (conversion.hasDirective && argument.present) {
    Dispatch(conversion, argument,
             [&](auto value) { return std::fprintf(stream, conversion.directive, value); });
  }
  WriteText(stream, conversion.suffix);
}

// The sink of WriteLine: pieces and values straight to the stream.
class StreamSink final : public ScanSink {
 public:
  explicit StreamSink(std::FILE* stream) : m_pStream(stream) {}

  int Piece(char const* text, bool last) override {
    WriteText(m_pStream, text);
    return last ? 0 : std::ferror(m_pStream);
  }

  int Value(ParsedConversion const& conversion, Argument const& argument) override {
    WriteValue(m_pStream, conversion, argument);
    return std::ferror(m_pStream);
  }

 private:
  std::FILE* m_pStream;
};

}  // namespace

int RunFormatScan(char const* format, std::va_list* args, ScanSink& sink, int formatFailure) {
  if (format == nullptr) return formatFailure;
  // The private copy is cut in place: a NUL at each "%" ends a piece.
  const std::size_t size = std::strlen(format) + 1;
  std::unique_ptr<char[]> copy(new char[size]);
  std::memcpy(copy.get(), format, size);
  char conversion[kConversionSize];
  char* rest = copy.get();
  for (;;) {
    char* percent = std::strchr(rest, '%');
    if (percent == nullptr) return sink.Piece(rest, true);
    char* letter = std::strpbrk(percent, kConversionLetters);
    if (letter == nullptr) return formatFailure;
    const std::size_t length = static_cast<std::size_t>(letter - percent) + 1;
    if (length > kConversionSize - 2) return formatFailure;
    // The copy brings the character behind the letter; the NUL goes over it.
    util_strncpy(conversion, percent, static_cast<int>(length) + 1, 0);
    conversion[length] = '\0';
    ParsedConversion parsed;
    if (!ParseConversion(conversion, parsed)) return formatFailure;
    if (args == nullptr && parsed.hasDirective) return formatFailure;

    *percent = '\0';
    int code = sink.Piece(rest, false);
    if (code != 0) return code;

    Argument argument;
    if (args != nullptr) {
      argument.present = true;
      switch (parsed.type) {
        case ArgType::kInt:
          argument.integer = va_arg(*args, int);
          break;
        case ArgType::kDouble:
          argument.real = va_arg(*args, double);
          break;
        case ArgType::kText:
          argument.text = va_arg(*args, char const*);
          break;
      }
    }
    code = sink.Value(parsed, argument);
    if (code != 0) return code;
    rest = letter + 1;
  }
}

int FormatValue(char* buffer, std::size_t size, ParsedConversion const& conversion,
                Argument const& argument) {
  std::size_t used = std::strlen(conversion.prefix);
  if (used >= size) return -1;
  std::memcpy(buffer, conversion.prefix, used);
  if (conversion.hasDirective && argument.present) {
    char* at = buffer + used;
    const std::size_t room = size - used;
    const int n = Dispatch(conversion, argument, [&](auto value) {
      return std::snprintf(at, room, conversion.directive, value);
    });
    if (n < 0 || static_cast<std::size_t>(n) >= room) return -1;
    used += static_cast<std::size_t>(n);
  }
  const std::size_t tail = std::strlen(conversion.suffix);
  if (used + tail >= size) return -1;
  std::memcpy(buffer + used, conversion.suffix, tail);
  used += tail;
  buffer[used] = '\0';
  return static_cast<int>(used);
}

void WriteWithoutArguments(std::FILE* stream, char const* text) {
  while (*text != '\0') {
    char const* percent = std::strchr(text, '%');
    if (percent == nullptr) {
      WriteText(stream, text);
      return;
    }
    // Up to and including the "%"; a second one right behind is dropped.
    std::fwrite(text, 1, static_cast<std::size_t>(percent - text) + 1, stream);
    text = percent[1] == '%' ? percent + 2 : percent + 1;
  }
}

int WriteFormatted(std::FILE* stream, char const* format, std::va_list* args, int formatFailure) {
  StreamSink sink(stream);
  return RunFormatScan(format, args, sink, formatFailure);
}

}  // namespace vq0300_internal
