/// @file
/// Free string routines on NUL-terminated strings: case mapping,
/// case-insensitive comparison, reversal, number-to-text and a substring
/// search. Global functions with C++ linkage, no state.
///
/// Case folding: strlwr and strupr go through the platform's tolower and
/// toupper, with each byte passed as a signed char value. The comparisons fold
/// only the ASCII letters and compare the bytes as signed values, so a byte of
/// 0x80 or above sorts below every ASCII byte (the reverse of strcmp).
#ifndef VQ0300_STRINGROUTINES_H
#define VQ0300_STRINGROUTINES_H

#include <string>

#include "vq0300/vq0300_export.h"

/// Lower-cases s up to its terminator, in place, and returns s; null gives null.
VQ0300_API char* strlwr(char* s);
/// Upper-cases s up to its terminator, in place, and returns s; null gives null.
VQ0300_API char* strupr(char* s);
/// Lower-cases every byte of s by its size: inner NUL bytes do not stop it.
VQ0300_API void strlwr(std::string& s);
/// Upper-cases every byte of s by its size: inner NUL bytes do not stop it.
VQ0300_API void strupr(std::string& s);

/// Writes value in base (upper-case digits; a '-' for a negative value, in any
/// base) and a NUL, and returns a pointer to that NUL: the END of the text, so
/// keep your own buffer pointer. A base below 2, or a null buffer, returns
/// null and writes nothing. Digit values above 35 continue from '[' on.
/// buffer needs up to 34 bytes (a '-', 32 binary digits and the NUL).
/// Examples: (255, b, 16) writes "FF" and returns b + 2; (-5, b, 2) "-101";
/// (36, b, 37) "[".
VQ0300_API char* itoa(int value, char* buffer, int base);

/// Compares a and b without regard to ASCII case; the result is exactly -1, 0
/// or 1. A null in either place, or in both, gives -1. Letters fold to upper
/// case, so '_' sorts above all letters.
VQ0300_API int stricmp(char const* a, char const* b);
/// The same as stricmp.
VQ0300_API int strcmpi(char* a, char* b);

/// NOT a comparison in the usual sense: the sum of the differences of the
/// upper-cased bytes over at most n positions, stopping where either string
/// ends. "ab" and "ba" give 0; "abc" and "ab" give 0 for every n; an empty
/// string against anything gives 0; n below 1 gives 0 and reads nothing.
/// A null a or b gives 0. A sum beyond the range of int is clamped to it.
VQ0300_API int strnicmp(char const* a, char const* b, int n);

/// Reverses s up to its terminator, in place. A null s does nothing.
VQ0300_API void strrev(char* s);

/// Position of sub in str, searching from start; positions count from the
/// start of str. With ignoreCase, ASCII case is ignored; the inputs are not
/// changed. -1 for no match, a null argument, a negative start, or a sub
/// longer than what remains behind start.
/// Beware: after a partial match fails at index k of sub, the search resumes
/// at p + k + 1, so a match that begins inside the failed part is missed:
/// "aab" is not found in "aaab". An empty sub matches at start if start is
/// below the length of str.
VQ0300_API int FindSubString(char const* str, char const* sub, int start, bool ignoreCase);

#endif  // VQ0300_STRINGROUTINES_H
