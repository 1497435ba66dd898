/// @class LCString
/// LCString: the library's owning character string.
///
/// A value class: every copy is deep, no two objects share a buffer. Beside
/// its buffer it keeps a stored length and an add position (the index at which
/// AddString writes next, for filling a pre-sized string in pieces).
///
/// Capacity: the buffer holds exactly the stored length plus one byte. Nothing
/// grows in place; whatever makes the text longer allocates a new buffer. The
/// trims shorten the stored length and keep the (then larger) buffer.
///
/// Two views of the text, and they can differ:
///  - the counted view, the first GetLength() bytes, NUL bytes included. Length,
///    IsEmpty, the bounds of element access, the case and reverse mappings,
///    copies, concatenation, trims and slices go by it;
///  - the terminated view, the bytes up to the first NUL. Comparisons, c_str,
///    LTEXT and the forward searches go by it.
///
/// They differ after LCString(int) and Reallocate (length n, no text), after
/// LCString('\0'), after a NUL is stored by SetAt or operator[], and while
/// AddString has filled less than the stored length.
///
/// The byte at index GetLength() is always NUL, unless the caller writes
/// something else there through operator[] (see there).
///
/// Example, filling a pre-sized string and cutting it to its text:
/// @code
///   LCString s(8);             // length 8, text ""
///   s.AddString(3, "abc");     // text "abc", length still 8
///   s.TrimRight();             // length 3: the NUL tail is white space
/// @endcode
#ifndef VQ0300_LCSTRING_H
#define VQ0300_LCSTRING_H
/// @file

#include <string>

#include "vq0300/vq0300_export.h"

class VQ0300_API LCString {
 public:
  /// Empty string: length 0, add position 0.
  LCString();
  /// Pre-sized string: n + 1 NUL bytes, length n, empty text, add position 0.
  /// A negative n is taken as 0.
  LCString(int n);
  /// Copy of a terminated string: length strlen, add position length - 1, so
  /// LCString("") has add position -1 and is full for AddString.
  /// A null pointer gives the empty string of LCString() (add position 0).
  LCString(char const* text);
  /// Copy of all bytes of text, NUL bytes included; add position length - 1.
  LCString(std::string const& text);
  /// One-character string: length 1, add position 0, also for '\0' (whose
  /// terminated view is then empty).
  LCString(char c);
  /// Copy of the counted view of other; add position length - 1. The add
  /// position of the source is never copied.
  LCString(LCString const& other);
  /// Frees the buffer. Not virtual: LCString is not a base class.
  ~LCString();

  /// Replaces the text with the counted view of other and sets the add position
  /// to length - 1. Self-assignment changes nothing, the add position included.
  /// If allocation fails the string keeps its old text.
  LCString& operator=(LCString const& other);

  /// Drops the text and makes the string pre-sized to n, as LCString(n) does.
  /// A negative n is taken as 0.
  void Reallocate(int n);

  /// Concatenation of the counted views; this string is unchanged. Inner NUL
  /// bytes survive. The result has add position 0, so AddString on it writes
  /// from index 0 over its text. A total length beyond INT_MAX cannot be
  /// stored and throws std::bad_array_new_length, as new[] would.
  LCString operator+(LCString const& other);

  /// Appends the counted view of other; s += s doubles s. The add position
  /// ends at the new length - 1 (full), unlike the result of operator+.
  /// Throws as operator+ does for a total beyond INT_MAX; the string stays.
  void operator+=(LCString const& other);

  /// Copies up to n bytes of text to the add position, moving it on, and
  /// terminates there. A NUL in text does not end the copy, so text must hold
  /// n readable bytes. The string is full when the add position reaches
  /// GetLength() - 1: a string pre-sized to L takes L - 1 bytes. The stored
  /// length never changes. Returns the buffer, or null when n < 1 or the string
  /// was full before the call.
  /// A null text returns null and adds nothing.
  /// Example: LCString s(8); AddString(3, "abc"), AddString(3, "def") give
  /// "abcdef"; AddString(3, "ghi") adds only 'g'; the next call returns null.
  char* AddString(int n, char const* text);

  /// The stored length, which can exceed strlen(c_str()).
  int GetLength() const;
  /// True when the stored length is 0; LCString(5) and LCString('\0') are not
  /// empty although their text is.
  bool IsEmpty() const;
  /// The buffer itself, valid until operator=, operator+=, Reallocate or the
  /// end of the object.
  char* c_str() const;

  /// The cell at index i. With L = GetLength(): i < L gives byte i; i == L gives
  /// the terminator cell; any other index gives the last character, L - 1.
  /// Writing anything but NUL through the terminator cell leaves the text
  /// unterminated: c_str, comparisons and forward searches then read past it.
  /// A negative index, and any index above 0 on an empty string, gives the
  /// fallback cell (L - 1, or the terminator when L is 0).
  char& operator[](int i);
  /// The byte of the cell that the non-const operator[] gives for i (see
  /// there).
  char operator[](int i) const;

  /// The byte at index i for i < L; for every other index, i == L included, the
  /// last character (unlike operator[], which gives the terminator at L).
  /// A negative index gives the last character; on an empty string, NUL.
  char GetAt(int i) const;

  /// Stores c at index i when 0 <= i < L and returns true; else stores nothing
  /// and returns false. A NUL stored here does not change the stored length.
  /// Const all the same: it writes into the owned buffer, not into the object.
  /// A negative index stores nothing and returns false.
  bool SetAt(int i, char c) const;

  /// Comparisons of the terminated views by strcmp: unsigned byte order, stored
  /// lengths play no part, so LCString(5) == LCString() == "".
  bool operator==(LCString const& other) const;
  /// False for a null pointer.
  bool operator==(char const* text) const;
  /// The negation of operator==.
  bool operator!=(LCString const& other) const;
  /// A null pointer is unequal to every string, so the result is true.
  bool operator!=(char const* text) const;
  /// strcmp of the two terminated views below 0.
  bool operator<(LCString const& other) const;
  /// strcmp of the two terminated views above 0.
  bool operator>(LCString const& other) const;
  /// strcmp of the two terminated views at or below 0.
  bool operator<=(LCString const& other) const;
  /// strcmp of the two terminated views at or above 0.
  bool operator>=(LCString const& other) const;
  /// The value strcmp returns, not reduced to -1, 0 or 1.
  int Compare(LCString const& other) const;
  /// strcmp of the two terminated views with a to z folded to upper case, so
  /// "_" (0x5F) sorts after every letter. The value is strcmp's, unchanged.
  int CompareNoCase(LCString const& other) const;

  /// ASCII case mapping over the whole counted view, bytes behind an inner NUL
  /// included; bytes other than a-z (or A-Z) are left alone. No locale.
  void MakeUpper();
  /// As MakeUpper, mapping A-Z to a-z.
  void MakeLower();
  /// Reverses the counted view in place; the terminator stays. On a partly
  /// filled pre-sized string the NUL tail comes to the front and the text
  /// then reads as empty.
  void MakeReverse();

  /// @name Searches
  /// ---- Searches. Positions count from 0 at the first byte; -1 is a miss. ----
  /// Every search answers -1 at once when the stored length is below 1, also
  /// for an empty search text. A null search argument gives -1.
  /// @{

  /// First occurrence of text in the terminated view (strstr); "" gives 0.
  int Find(char const* text);
  /// As Find(char const*), with the terminated view of text.
  int Find(LCString const& text);
  /// First occurrence of c (strchr); '\0' gives the index of the first NUL,
  /// so Find('\0') on "abc" is 3.
  int Find(char c);
  /// First byte of the terminated view that is in set (strpbrk); "" gives -1.
  int FindOneOf(char const* set);
  /// As FindOneOf(char const*), with the terminated view of set.
  int FindOneOf(LCString const& set);

  /// Start of the last occurrence of text. It searches only the bytes behind
  /// the last NUL of the counted view: on a pre-sized string filled partly, the
  /// last byte is NUL and every non-empty text gives -1 although Find finds it.
  /// An empty text gives GetLength(). Overlaps count: "aa" in "aaa" gives 1.
  int ReverseFind(char const* text);
  /// As ReverseFind(char const*), with the terminated view of text.
  int ReverseFind(LCString const& text);
  /// Last occurrence of c in the terminated view (strrchr); '\0' gives the
  /// index of the first NUL.
  int ReverseFind(char c);
  /// Last byte in set, looking only behind the last NUL of the counted view as
  /// ReverseFind(text) does. An empty set gives -1.
  int ReverseFindOneOf(char const* set);
  /// As ReverseFindOneOf(char const*), with the terminated view of set.
  int ReverseFindOneOf(LCString const& set);
  /// @}

  /// @name Trims
  /// ---- Trims. White space is every byte outside 0x21 ('!') to 0x7E ('~'):
  /// NUL, controls, space, DEL and every byte of 0x80 and above. The trims work
  /// on the counted view, lower the stored length, keep the buffer and leave the
  /// add position alone (AddString then treats the string as full). ----
  /// @{

  /// Removes trailing white space, overwriting it with NUL. On a pre-sized
  /// string this brings the length down to the end of the text.
  void TrimRight();
  /// Removes leading white space by moving the rest down; bytes beyond the new
  /// terminator keep their old values.
  void TrimLeft();
  /// Removes white space wherever it stands, inner NUL bytes included, so the
  /// two views agree afterwards.
  void RemoveWhiteSpaces();
  /// @}

  /// @name Slices
  /// ---- Slices: new strings by value; this string is unchanged. ----
  /// @{

  /// The first n bytes. n < 1, or an empty string, gives an empty string.
  /// n >= GetLength() gives the TERMINATED view instead, with add position
  /// length - 1; a shorter n gives n bytes of the counted view, add position 0.
  /// Example: on a string pre-sized to 10 with no text, Left(5) has length 5,
  /// Left(10) has length 0.
  LCString Left(int n) const;
  /// The last n bytes; the same branches as Left.
  LCString Right(int n) const;
  /// count bytes of the counted view from start, with add position 0. A
  /// negative start counts as 0 without shortening count: Mid(-2, 3) on
  /// "abcdef" gives "abc". Unlike Left, Mid(0, L) keeps inner NUL bytes.
  /// count < 1, start >= L or an empty string give an empty string.
  /// A start + count beyond the range of int counts as reaching past the end.
  LCString Mid(int start, int count) const;
  /// @}

 private:
  char* m_pszData;  ///< owned, from new[]; never null while the object lives
  int m_nLength;    ///< stored length
  int m_nAddPos;    ///< where AddString writes next
};

/// The buffer of s, as s.c_str().
VQ0300_API char* LTEXT(LCString const& s);

/// Bounded copy from an LCString (see util_strncpy in BoundedCopy.h for count
/// and limit). src arrives as a copy. An empty src (stored length 0) writes one
/// NUL whatever count says, with no NUL padding; otherwise the copy reads the
/// terminated view, so a whole-string copy (count 0) of a pre-sized string
/// with no text gives "", while count 5 writes five NUL bytes and a terminator.
VQ0300_API void util_strncpy(char* dst, LCString src, int count, int limit);

#endif  // VQ0300_LCSTRING_H
