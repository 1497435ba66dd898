// LStack: a stack of object pointers on LObjList.
#include "vq0300/LStack.h"

LStack::LStack() : m_pList(new LObjList) {}

LStack::~LStack() { delete m_pList; }

void LStack::Push(LObject* object) { m_pList->AddTail(object); }

LObject* LStack::Pop() {
  if (m_pList->IsEmpty()) return nullptr;
  return m_pList->RemoveTail();
}

bool LStack::IsEmpty() { return m_pList->IsEmpty(); }

int LStack::GetStackElement() { return m_pList->GetCount(); }
