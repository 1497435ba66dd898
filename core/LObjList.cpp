// LObjList: the ordered list of object pointers.
#include "vq0300/LObjList.h"

#include <cstddef>

#include "core/Helpers_internal.h"

LObjList::LObjList() = default;

LObjList::~LObjList() = default;

int LObjList::GetCount() const { return static_cast<int>(m_vecObjects.size()); }

int LObjList::GetCount() { return static_cast<int>(m_vecObjects.size()); }

LObject* LObjList::GetAt(int i) const {
  if (i < 0 || i >= GetCount()) return nullptr;
  return m_vecObjects[static_cast<std::size_t>(i)];
}

LObject* LObjList::GetAt(int i) { return static_cast<const LObjList*>(this)->GetAt(i); }

void LObjList::SetAt(int i, LObject* object) {
  if (i < 0 || i >= GetCount()) return;
  m_vecObjects[static_cast<std::size_t>(i)] = object;
}

LObject* LObjList::GetTail() {
  if (m_vecObjects.empty()) return nullptr;
  return m_vecObjects.back();
}

LObject* LObjList::RemoveTail() {
  if (m_vecObjects.empty()) return nullptr;
  LObject* tail = m_vecObjects.back();
  m_vecObjects.pop_back();
  return tail;
}

bool LObjList::IsEmpty() { return m_vecObjects.empty(); }

LObject* LObjList::Delete(int i) {
  // The walk reads every entry up to the one removed; on a miss it reads them
  // all, so the last one read, the tail, is the result.
  LObject* read = nullptr;
  const int count = GetCount();
  for (int pos = 0; pos < count; ++pos) {
    read = m_vecObjects[static_cast<std::size_t>(pos)];
    if (read != nullptr && pos == i) {
      m_vecObjects.erase(m_vecObjects.begin() + pos);
      return read;
    }
  }
  return read;
}

void LObjList::AddTail(LObject* object) {
  vq0300_internal::ReserveOneMore(m_vecObjects);
  m_vecObjects.push_back(object);
}

int LObjList::Insert(int i, LObject* object) {
  const int count = GetCount();
  std::size_t place;
  if (count == 0 || i == 0) {
    place = 0;
  } else if (i > 0 && i < count) {
    place = static_cast<std::size_t>(i);
  } else {
    place = static_cast<std::size_t>(count);
  }
  vq0300_internal::ReserveOneMore(m_vecObjects);
  m_vecObjects.insert(m_vecObjects.begin() + static_cast<std::ptrdiff_t>(place), object);
  return 0;
}
