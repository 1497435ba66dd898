/// @class LHashElement
/// LHashElement: one row of an LHash, a text key with a list of text values.
///
/// The row owns private copies of its key and of every value; the caller's
/// buffers are free again once a call returns. Values keep the order in which
/// setValue added them, and the same text may stand several times.
///
/// A row copies by value, member by member (the implicit copy constructor and
/// assignment): LHash relies on this when it appends a row and when its array
/// grows. Pointers returned by getKey() and getValue() are borrowed from the
/// row and go stale at the next change to it.
#ifndef VQ0300_LHASHELEMENT_H
#define VQ0300_LHASHELEMENT_H
/// @file

#include <string>
#include <vector>

#include "vq0300/vq0300_export.h"

class VQ0300_API LHashElement {
 public:
  /// A row holding a copy of key and no values.
  /// A null key gives a row with the empty key.
  LHashElement(const char* key);
  /// Frees the key and the values.
  virtual ~LHashElement();

  /// The key text, NUL-terminated; never null (a cleared row answers "").
  const char* getKey() const;

  /// The number of values, repeats included.
  int getValueCount() const;

  /// The value at position index, NUL-terminated, or null for a position
  /// outside 0 .. getValueCount() - 1. A stored empty value gives "", not null.
  const char* getValue(int index) const;

  /// Appends a copy of value; nothing is compared, so repeats are kept.
  /// A null value does nothing.
  void setValue(const char* value);

  /// Removes every value equal to value (whole text, case-sensitive); the
  /// others keep their order. A text that is absent changes nothing.
  /// A null value does nothing.
  /// Example: on x, y, x removeValue("x") leaves y.
  void removeValue(const char* value);

  /// Removes the one value at position index; those behind it move down.
  /// A position out of range does nothing.
  /// Example: on x, y, x removeValue(0) leaves y, x; removeValue(3) leaves all.
  void removeValue(int index);

  /// Makes the key "" and drops all values. The row stays where it is in its
  /// table: it still counts as a row and now answers a search for "".
  void clear();

 private:
  /// The table's key search reads m_strKey directly, without a call per row.
  friend class LHash;

  std::string m_strKey;
  std::vector<std::string> m_vecValues;
};

#endif  // VQ0300_LHASHELEMENT_H
