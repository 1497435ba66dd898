/// @class LStack
/// LStack: a last-in first-out stack of LObject pointers.
///
/// The stack owns its list and none of the objects pushed on it: destroying a
/// stack leaves every object that was still on it alive.
#ifndef VQ0300_LSTACK_H
#define VQ0300_LSTACK_H
/// @file

#include "vq0300/LObjList.h"
#include "vq0300/LObject.h"
#include "vq0300/vq0300_export.h"

class VQ0300_API LStack : public LObject {
 public:
  /// An empty stack.
  LStack();
  /// Destroys the list; the objects on it stay alive.
  ~LStack() override;

  /// Adds the pointer at the top; null is accepted.
  void Push(LObject* object);

  /// Takes the top entry off and returns it; null on an empty stack.
  /// A pushed null also pops as null: IsEmpty() or GetStackElement() tells the
  /// two apart.
  LObject* Pop();

  /// True when nothing is on the stack; a pushed null counts as an entry.
  bool IsEmpty();

  /// The depth of the stack (0 when empty), not an element: nothing reads the
  /// top without taking it off.
  int GetStackElement();

 private:
  LObjList* m_pList;  ///< the entries; the top is the tail
};

#endif  // VQ0300_LSTACK_H
