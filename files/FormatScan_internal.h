// The format scan shared by LFile::WriteLine and LMsgOutput::Output, its
// write core, and the checked hand-over of one conversion to the printf
// family. Private to the library: nothing here is exported.
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
#include <exception>

#include "FormatDirective_internal.h"

class LFile;

namespace vq0300_internal {

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

// What fprintf(stream, text) writes when it is given no arguments and text
// holds no directive: "%%" becomes one "%". Every other "%" is written as it
// stands, so no argument is ever looked for. The console of LMsgOutput and
// the messages of LLog write so.
void PrintBareFormat(std::FILE* stream, char const* text);

// The scan of LFile::WriteLine on stream, after the readiness test: 0,
// formatFailure or the value of ferror. Pieces and values go straight to
// the stream. args null: no arguments, and a directive is the format failure.
int WriteFormatted(std::FILE* stream, char const* format, std::va_list* args, int formatFailure);

// The one write core of LFile::WriteLine, for it and for LMsgOutput::PrintLog,
// which has no argument list to give: the stored code becomes 0, ValidWrite
// runs, then WriteFormatted on the file's stream with LFILE_ERR_FORMAT as the
// format failure. Stores and returns the code. args null: a directive that
// would show an argument is the format failure, and none is read.
int WriteLineCore(LFile& file, char const* format, std::va_list* args);

// va_end belongs in the function that ran va_start, on every way out of it.
// A variadic operation runs its work through Run, which holds back whatever
// the work throws, ends its list, and then calls Pass, which throws it on:
//   va_start(args, format);
//   HeldException held;
//   const int result = held.Run([&] { return Work(&args); });
//   va_end(args);
//   return held.Pass(result);
class HeldException {
 public:
  template <typename Work>
  int Run(Work&& work) noexcept {
    try {
      return work();
    } catch (...) {
      thrown_ = std::current_exception();
      return 0;
    }
  }
  int Pass(int result) const {
    if (thrown_) std::rethrow_exception(thrown_);
    return result;
  }

 private:
  std::exception_ptr thrown_;
};

}  // namespace vq0300_internal

#endif  // VQ0300_FILES_FORMATSCAN_INTERNAL_H
