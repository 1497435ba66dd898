/// @file
/// Bounded copy: the lowest string routines of the library.
///
/// util_strncpy copies a NUL-terminated string, whole or a prefix, into a
/// buffer of the caller's and always terminates it. util_strncat appends one
/// string to another. Neither checks the size of dst: the caller sizes it.
/// Source and target must not overlap.
#ifndef VQ0300_BOUNDEDCOPY_H
#define VQ0300_BOUNDEDCOPY_H

#include "vq0300/vq0300_export.h"

/// Copies src into dst. count is the number of characters wanted (0 or less:
/// all of src); limit caps a positive count (0 or less: no cap). With n the
/// resulting number, exactly n bytes are written as strncpy does (NUL padding
/// when src is shorter) and then a NUL at dst[n]: n + 1 bytes in all.
/// A null dst does nothing; a null src leaves dst as an empty string.
/// Examples: "abcdef", 3, 0 gives "abc"; 5, 2 gives "ab"; 0, 2 gives the whole
/// "abcdef" (a limit never bounds a whole-string copy).
VQ0300_API void util_strncpy(char* dst, char* src, int count, int limit);
/// The same for a constant source.
VQ0300_API void util_strncpy(char* dst, char const* src, int count, int limit);

/// Appends all of src behind the string in dst and terminates it. Neither
/// integer is read. A null dst or src does nothing. dst must hold both strings
/// and a terminator.
VQ0300_API void util_strncat(char* dst, char* src, int count, int limit);
/// The same for a constant source.
VQ0300_API void util_strncat(char* dst, char const* src, int count, int limit);

#endif  // VQ0300_BOUNDEDCOPY_H
