#include "vq0300/LHashElement.h"

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

// Both removals build the surviving list first and swap it in only at the
// end, so a failed allocation leaves the row exactly as it was.
void LHashElement::removeValue(const char* value) {
  if (value == nullptr) return;
  std::vector<std::string> kept;
  for (const std::string& text : m_vecValues) {
    if (std::strcmp(text.c_str(), value) != 0) kept.push_back(text);
  }
  m_vecValues.swap(kept);
}

void LHashElement::removeValue(int index) {
  if (index < 0 || index >= getValueCount()) return;
  std::vector<std::string> kept;
  kept.reserve(m_vecValues.size() - 1);
  for (std::size_t i = 0; i < m_vecValues.size(); ++i) {
    if (i != static_cast<std::size_t>(index)) kept.push_back(m_vecValues[i]);
  }
  m_vecValues.swap(kept);
}

void LHashElement::clear() {
  m_strKey.clear();
  m_vecValues.clear();
}
