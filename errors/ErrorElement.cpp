// ErrorElement: one numbered error message.
#include "vq0300/ErrorElement.h"

#include "core/Helpers_internal.h"

ErrorElement::ErrorElement() : m_dwErrorCode(0), m_wContinue(1), m_pszMessage(nullptr) {}

ErrorElement::~ErrorElement() { delete[] m_pszMessage; }

void ErrorElement::SetErrorMessage(char* text) {
  if (text == nullptr) return;
  char* copy = vq0300_internal::CopyText(text).release();
  delete[] m_pszMessage;
  m_pszMessage = copy;
}

char* ErrorElement::GetErrorMessage() { return m_pszMessage; }
