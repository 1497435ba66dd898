/// @class LHash
/// LHash: text keys, each with a list of text values.
///
/// In spite of its name the table computes no hash and keeps no sort order:
/// it is an array of rows (LHashElement) in the order of their creation,
/// searched from the front by exact, case-sensitive comparison. Every lookup
/// by key costs time linear in the number of rows; it suits small tables.
///
/// The table owns its rows. Row i stays row i until clear(): nothing removes
/// or reorders a single row. An LHashElement* from createKey or getKey points
/// into the array and goes stale at the next createKey that adds a row (the
/// array may move), at clear() and at the table's destruction.
#ifndef VQ0300_LHASH_H
#define VQ0300_LHASH_H
/// @file

#include <vector>

#include "vq0300/LHashElement.h"
#include "vq0300/vq0300_export.h"

class VQ0300_API LHash {
 public:
  /// An empty table.
  LHash();
  /// Destroys every row.
  virtual ~LHash();

  /// The row of key, appended with no values if no row has that key yet; an
  /// existing row comes back with its values untouched. Never makes two rows
  /// with one key.
  /// A null key adds nothing and gives null.
  LHashElement* createKey(const char* key);

  /// The first row whose key equals key (strcmp), or null. A null key gives
  /// null.
  LHashElement* getKey(const char* key);
  /// The same for a constant table.
  const LHashElement* getKey(const char* key) const;

  /// The row at position index, or null outside 0 .. getKeyCount() - 1.
  LHashElement* getKey(int index);
  /// The same for a constant table.
  const LHashElement* getKey(int index) const;

  /// The number of rows.
  int getKeyCount() const;

  /// The sum of the value counts of all rows.
  int getValueCount() const;

  /// The value at position index of all values of all rows laid end to end,
  /// rows in order and values in order within a row, or null past the end or
  /// for a negative index.
  /// Example: rows a {1, 2}, b {}, c {3} give "1", "2", "3" at 0, 1, 2 and
  /// null at 3.
  const char* operator[](int index) const;

  /// Destroys every row. The key count is 0 afterwards; the array keeps its
  /// capacity, and the next createKey starts again at position 0.
  void clear();

 private:
  std::vector<LHashElement> m_vecElements;
};

#endif  // VQ0300_LHASH_H
