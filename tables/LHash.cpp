// LHash: text keys to lists of text values, rows in creation order.
#include "vq0300/LHash.h"

#include <cstddef>
#include <cstring>

#include "core/Helpers_internal.h"

LHash::LHash() = default;

LHash::~LHash() = default;

LHashElement* LHash::createKey(const char* key) {
  if (key == nullptr) return nullptr;
  LHashElement* found = getKey(key);
  if (found != nullptr) return found;
  // The new row is built first and copied in: if either step runs out of
  // memory, the table keeps exactly the rows it had.
  const LHashElement row(key);
  vq0300_internal::ReserveOneMore(m_vecElements);
  m_vecElements.push_back(row);
  return &m_vecElements.back();
}

const LHashElement* LHash::getKey(const char* key) const {
  if (key == nullptr) return nullptr;
  // Equal under strcmp means equal length and equal bytes, since no key
  // holds a NUL; the length check passes over most rows without reading
  // their text.
  const std::size_t length = std::strlen(key);
  for (const LHashElement& row : m_vecElements) {
    const std::string& text = row.m_strKey;
    if (text.size() == length && std::memcmp(text.data(), key, length) == 0) return &row;
  }
  return nullptr;
}

LHashElement* LHash::getKey(const char* key) {
  return const_cast<LHashElement*>(static_cast<const LHash*>(this)->getKey(key));
}

const LHashElement* LHash::getKey(int index) const {
  if (index < 0 || index >= getKeyCount()) return nullptr;
  return &m_vecElements[static_cast<std::size_t>(index)];
}

LHashElement* LHash::getKey(int index) {
  return const_cast<LHashElement*>(static_cast<const LHash*>(this)->getKey(index));
}

int LHash::getKeyCount() const { return static_cast<int>(m_vecElements.size()); }

int LHash::getValueCount() const {
  int total = 0;
  for (const LHashElement& row : m_vecElements) total += row.getValueCount();
  return total;
}

const char* LHash::operator[](int index) const {
  for (const LHashElement& row : m_vecElements) {
    // A negative index stops at the first row, whose getValue answers null.
    if (row.getValueCount() > index) return row.getValue(index);
    index -= row.getValueCount();
  }
  return nullptr;
}

void LHash::clear() { m_vecElements.clear(); }
