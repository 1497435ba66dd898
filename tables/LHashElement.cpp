// LHashElement: one row of LHash, a key with its list of values.
#include "vq0300/LHashElement.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

LHashElement::LHashElement(const char* key) : m_strKey(key != nullptr ? key : "") {}

LHashElement::~LHashElement() = default;

const char* LHashElement::getKey() const { return m_strKey.c_str(); }

int LHashElement::getValueCount() const { return static_cast<int>(m_vecValues.size()); }

const char* LHashElement::getValue(int index) const {
  if (index < 0 || index >= getValueCount()) return nullptr;
  return m_vecValues[static_cast<std::size_t>(index)].c_str();
}

void LHashElement::setValue(const char* value) {
  if (value == nullptr) return;
  m_vecValues.emplace_back(value);
}

// Both removals erase in place: the survivors move down and keep their
// order, and erasing from a vector allocates nothing, so it cannot fail.
void LHashElement::removeValue(const char* value) {
  if (value == nullptr) return;
  m_vecValues.erase(std::remove_if(m_vecValues.begin(), m_vecValues.end(),
                                   [value](const std::string& text) {
                                     return std::strcmp(text.c_str(), value) == 0;
                                   }),
                    m_vecValues.end());
}

void LHashElement::removeValue(int index) {
  if (index < 0 || index >= getValueCount()) return;
  m_vecValues.erase(m_vecValues.begin() + index);
}

void LHashElement::clear() {
  m_strKey.clear();
  m_vecValues.clear();
}
