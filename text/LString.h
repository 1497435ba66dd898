/// @class LString
/// LString: searches, slices and trims on NUL-terminated strings in buffers
/// that the caller owns.
///
/// The class holds nothing; make a local LString and call through it. All
/// positions are counted from 0 at the first character of the string passed
/// in, and -1 means not found. White space, for the trims, is every byte
/// outside 0x21 to 0x7E: NUL, controls, DEL and every byte from 0x80 up.
///
/// Its twin for owning strings is LCString; the two differ at their edges, as
/// told at each operation.
#ifndef VQ0300_LSTRING_H
#define VQ0300_LSTRING_H
/// @file

#include "vq0300/LObject.h"
#include "vq0300/vq0300_export.h"

class VQ0300_API LString : public LObject {
 public:
  /// Nothing to release: the class holds no data.
  ~LString() override;

  /// Forward searches. An empty s gives -1 before anything else is looked at,
  /// so Find("", "") is -1; an empty sub gives 0 on a non-empty s.
  /// A null s or sub gives -1.
  int Find(char const* s, char const* sub);
  /// First occurrence of c. c == '\0' searches for the empty string and so
  /// gives 0 on a non-empty s (LCString::Find(char) gives the length).
  /// A null s gives -1.
  int Find(char const* s, char c);
  /// First character of s that stands in set; an empty set gives -1.
  /// A null s or set gives -1.
  int FindOneOf(char const* s, char const* set);

  /// Start of the last occurrence of sub, overlapping matches included:
  /// "aa" in "aaa" gives 1, "bc" in "abcabc" gives 4. An empty sub gives the
  /// length of s; an empty s gives -1. A null s or sub gives -1.
  int ReverseFind(char const* s, char const* sub);
  /// Last occurrence of c; c == '\0' gives the length of s. A null s gives -1.
  int ReverseFind(char const* s, char c);
  /// Last character of s that stands in set; an empty set gives -1.
  /// A null s or set gives -1.
  int ReverseFindOneOf(char const* s, char const* set);

  /// The first n characters of src into dst; n above the length copies all of
  /// src, n below 1 gives an empty string. dst may be src. A null dst or src
  /// writes nothing. dst needs room for the result and its terminator.
  /// Example: Left(dst, "abcdef", 2) gives "ab".
  void Left(char* dst, char const* src, int n);
  /// The last n characters of src into dst, clamped like Left.
  /// Example: Right(dst, "abcdef", 2) gives "ef".
  void Right(char* dst, char const* src, int n);
  /// count characters of src from start into dst. A negative start counts as
  /// 0 without shortening count ("abcdef", -2, 3 gives "abc"); a start at or
  /// past the end, or a count below 1, gives an empty string; a count that
  /// runs past the end (INT_MAX included) takes the rest. dst may be src.
  void Mid(char* dst, char const* src, int start, int count);

  /// Removes leading white space in place. A null s does nothing.
  void TrimLeft(char* s);
  /// Overwrites trailing white space with NUL in place. A null s does nothing.
  void TrimRight(char* s);
};

#endif  // VQ0300_LSTRING_H
