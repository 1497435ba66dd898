// The directive validator: reads a conversion the way printf would, see
// FormatDirective_internal.h.
#include "FormatDirective_internal.h"

#include <climits>
#include <cstring>

namespace vq0300_internal {
namespace {

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

}  // namespace

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

}  // namespace vq0300_internal
