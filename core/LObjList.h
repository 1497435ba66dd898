/// @class LObjList
/// LObjList: an ordered list of LObject pointers.
///
/// The list owns its array and never the objects the entries point at: no
/// operation, the destructor included, destroys an object. Entries are never
/// dereferenced, so null is a legal entry and one pointer may stand at several
/// positions. Position 0 is the head, GetCount() - 1 the tail.
///
/// Capacity grows 0, 1, 2, 4, 8, ...: the first entry allocates room for one,
/// every insertion into a full array doubles it. Removals never give storage
/// back; only the destructor frees the array.
#ifndef VQ0300_LOBJLIST_H
#define VQ0300_LOBJLIST_H
/// @file

#include <vector>

#include "vq0300/LObject.h"
#include "vq0300/vq0300_export.h"

class VQ0300_API LObjList : public LObject {
 public:
  /// An empty list with no array yet.
  LObjList();
  /// Frees the array; the objects pointed at stay alive.
  ~LObjList() override;

  /// The number of entries, null entries included.
  int GetCount() const;
  /// The same as the const GetCount.
  int GetCount();

  /// Entry at position i.
  /// A position outside 0 .. GetCount() - 1 returns null (the library itself
  /// never asks for one).
  LObject* GetAt(int i) const;
  /// The same as the const GetAt.
  LObject* GetAt(int i);

  /// Overwrites the entry at i; the old pointer is neither destroyed nor
  /// returned. A position outside 0 .. GetCount() - 1 is ignored silently.
  void SetAt(int i, LObject* object);

  /// Last entry. On an empty list the result is null.
  LObject* GetTail();

  /// Takes the last entry out and returns it. On an empty list nothing changes
  /// and the result is null.
  LObject* RemoveTail();

  /// True when the list holds no entry; a list of null entries is not empty.
  bool IsEmpty();

  /// Takes the entry at i out of the list, keeping the order of the others,
  /// and returns it; the object is not destroyed.
  /// On a miss (i out of range, or a null entry at i) the list is unchanged and
  /// the *tail* entry is returned, not null: compare GetCount() before and
  /// after to tell a removal from a miss. An empty list returns null.
  /// Example: on a, b, c Delete(5) and Delete(-1) both return c.
  LObject* Delete(int i);

  /// Appends object behind the tail; null is accepted.
  void AddTail(LObject* object);

  /// Inserts at a place chosen thus: an empty list or i == 0 gives the head,
  /// 1 .. count - 1 gives position i, anything else (count or more, or
  /// negative) appends. A negative i never inserts at the head.
  /// The result is always 0.
  int Insert(int i, LObject* object);

 private:
  std::vector<LObject*> m_vecObjects;
};

#endif  // VQ0300_LOBJLIST_H
