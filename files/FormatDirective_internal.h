// Reading one conversion of a format the way printf would read it, so that
// printf is only ever handed a directive whose argument has exactly the type
// that the scan takes. Private to the library: nothing here is exported.
//
// A conversion is the text from a "%" through the first letter of "dfxXes"
// behind it; that letter decides the one argument the scan takes (d x X int,
// e f double, s char const*). Read as printf reads it, the conversion is
// literal text ("%%" counting as one "%") around at most one directive:
//   % [-+ #0]* digits? (. digits?)? (hh|h|l|ll|j|z|t)? letter
// whose letter must take the same kind of argument as the conversion's
// letter (d i o u x X c an int, e E f F g G a A a double, s a text), with no
// combination whose behaviour printf leaves undefined.
#ifndef VQ0300_FILES_FORMATDIRECTIVE_INTERNAL_H
#define VQ0300_FILES_FORMATDIRECTIVE_INTERNAL_H

#include <cstddef>

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

// Reads conversion (from "%" through its letter, terminated) as printf
// would. False when printf would consume anything but the one argument of
// the conversion's letter, or none, or when a part is unsupported (a second
// directive, "*", "$", "%n", "%p", "L", wide "%lc" and "%ls", a width or
// precision above INT_MAX, a conversion longer than kConversionSize - 2);
// out is then undefined.
bool ParseConversion(char const* conversion, ParsedConversion& out);

}  // namespace vq0300_internal

#endif  // VQ0300_FILES_FORMATDIRECTIVE_INTERNAL_H
