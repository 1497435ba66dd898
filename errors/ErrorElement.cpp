#include "vq0300/ErrorElement.h"

#include <cstring>

#include "vq0300/BoundedCopy.h"

ErrorElement::ErrorElement() : m_dwErrorCode(0), m_wContinue(1), m_pszMessage(nullptr) {}

ErrorElement::~ErrorElement() { delete[] m_pszMessage; }

void ErrorElement::SetErrorMessage(char* text) {
  if (text == nullptr) return;
  char* copy = new char[std::strlen(text) + 1];
  util_strncpy(copy, text, 0, 0);
  delete[] m_pszMessage;
  m_pszMessage = copy;
}

char* ErrorElement::GetErrorMessage() { return m_pszMessage; }
