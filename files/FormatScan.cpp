// The format scan: cuts a format into pieces and conversions and hands
// each to a sink; the sink of LFile::WriteLine writes to a stream.
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>

#include "FormatScan_internal.h"
#include "vq0300/BoundedCopy.h"

namespace vq0300_internal {
namespace {

constexpr char kConversionLetters[] = "dfxXes";

// Calls print with the argument converted to exactly the type that the
// directive's length modifier and letter name. The int of d x X is a
// 32-bit pattern: widened modifiers see it zero-extended.
template <typename Print>
int Dispatch(ParsedConversion const& c, Argument const& a, Print&& print) {
  if (c.type == ArgType::kText) return print(a.text != nullptr ? a.text : "(null)");
  if (c.type == ArgType::kDouble) return print(a.real);
  const std::uint32_t bits = static_cast<std::uint32_t>(a.integer);
  const bool isSigned = std::strchr("dic", c.specifier) != nullptr;
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

void PrintBareFormat(std::FILE* stream, char const* text) {
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
