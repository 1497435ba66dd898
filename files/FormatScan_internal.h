// The format scan shared by LFile::WriteLine and LMsgOutput::Output, and the
// checked hand-over of one conversion to the printf family. Private to the
// library: nothing here is exported.
//
// The scan cuts a format into literal pieces and conversions. A conversion
// runs from a "%" to the first letter of "dfxXes" behind it; that letter
// decides the one argument taken (d x X int, e f double, s char const*).
// Before any of it reaches printf, the conversion text is read the way
// printf would read it (ParseConversion) and accepted only when printf
// would consume exactly the argument taken, or none.
#ifndef VQ0300_FILES_FORMATSCAN_INTERNAL_H
#define VQ0300_FILES_FORMATSCAN_INTERNAL_H

#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace vq0300_internal {

// Size of the conversion buffer and of the buffers derived from it. A
// conversion holds at most kConversionSize - 2 characters.
constexpr std::size_t kConversionSize = 256;

enum class ArgType { kInt, kDouble, kText };

enum class LengthModifier { kNone, kHH, kH, kL, kLL, kJ, kZ, kT };

// One conversion as printf would read it: literal text (with "%%" already
// made one "%"), at most one directive, literal text.
struct ParsedConversion {
  char letter = 0;               // the letter of "dfxXes" that ended it
  ArgType type = ArgType::kInt;  // the argument that letter takes
  bool hasDirective = false;     // false: printf would show no argument
  char specifier = 0;            // the directive's own letter
  LengthModifier length = LengthModifier::kNone;
  char prefix[kConversionSize] = {};     // literal text ahead of the directive
  char directive[kConversionSize] = {};  // the directive, rebuilt from its parts
  char suffix[kConversionSize] = {};     // literal text behind it
};

// One argument taken from the list; present is false when the scan runs
// without arguments and the conversion needed none.
struct Argument {
  bool present = false;
  int integer = 0;
  double real = 0.0;
  char const* text = nullptr;
};

// Where the pieces and values of a scan go. Each call returns 0 to go on or
// a code that ends the scan and becomes its result.
class ScanSink {
 public:
  // A piece of literal text, holding no "%"; last marks the piece behind
  // the final conversion (or the whole of a format without one).
  virtual int Piece(char const* text, bool last) = 0;
  virtual int Value(ParsedConversion const& conversion, Argument const& argument) = 0;

 protected:
  ~ScanSink() = default;
};

// Runs the scan of format. args is the caller's argument list, read one
// argument per conversion; null means there are none, and then a
// conversion that would show an argument is the format failure. Returns 0
// at the end of the format, formatFailure for a "%" without a letter behind
// it, an unsupported conversion or a null format, else the first non-zero
// code of the sink. The unsupported conversion fails before the piece
// ahead of it is emitted, as the "%" without a letter does.
int RunFormatScan(char const* format, std::va_list* args, ScanSink& sink, int formatFailure);

// Formats the same text into buffer (size bytes). Returns its length, or -1
// when it does not fit with its terminator or printf fails.
int FormatValue(char* buffer, std::size_t size, ParsedConversion const& conversion,
                Argument const& argument);

// What fprintf(stream, text) with no arguments writes when text holds no
// directive: "%%" becomes one "%". Every other "%" is written as it stands,
// so no argument is ever looked for.
void WriteWithoutArguments(std::FILE* stream, char const* text);

// The scan of LFile::WriteLine on stream, after the readiness test: 0,
// formatFailure or the value of ferror. Pieces and values go straight to
// the stream. args null: no arguments, and a directive is the format failure.
int WriteFormatted(std::FILE* stream, char const* format, std::va_list* args, int formatFailure);

}  // namespace vq0300_internal

#endif  // VQ0300_FILES_FORMATSCAN_INTERNAL_H
