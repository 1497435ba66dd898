// ErrorHandler: its lists, names, and the record of errors that occurred.
// Loading the definition file is in ErrorDefinitionFile.cpp.
#include "vq0300/ErrorHandler.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

#include "ErrorHandler_internal.h"
#include "core/Helpers_internal.h"
#include "vq0300/BoundedCopy.h"

namespace vq0300_internal {

void DestroyElements(LObjList* list) {
  while (!list->IsEmpty()) delete list->RemoveTail();
}

}  // namespace vq0300_internal

namespace {

using vq0300_internal::DefinitionFileOpens;
using vq0300_internal::DestroyElements;

char* CopyOf(const char* text) { return vq0300_internal::CopyText(text).release(); }

// A new element holding a copy of text: the element is owned until the
// caller hands it to a list, so a failed copy or a failed list growth leaks
// nothing.
std::unique_ptr<ErrorElement> NewElement(char* text) {
  std::unique_ptr<ErrorElement> element(new ErrorElement);
  element->SetErrorMessage(text);
  return element;
}

}  // namespace

ErrorHandler::ErrorHandler()
    : m_pDefinitionList(nullptr),
      m_pOccurredList(nullptr),
      m_pszDefaultDir(nullptr),
      m_pszErrorFilename(nullptr),
      m_nOccurred(0) {
  // The first list is owned here until the second one exists.
  std::unique_ptr<LObjList> definitions(new LObjList);
  m_pOccurredList = new LObjList;
  m_pDefinitionList = definitions.release();
}

ErrorHandler::~ErrorHandler() {
  delete[] m_pszErrorFilename;
  delete[] m_pszDefaultDir;
  DestroyElements(m_pDefinitionList);
  delete m_pDefinitionList;
  DestroyElements(m_pOccurredList);
  delete m_pOccurredList;
}

void ErrorHandler::SetDefaultDir(char const* dir) {
  char* copy = CopyOf(dir != nullptr ? dir : "");
  delete[] m_pszDefaultDir;
  m_pszDefaultDir = copy;
}

void ErrorHandler::SetErrorFilename(char* name) {
  if (name == nullptr || name[0] == '\0') return;
  char* full;
  if (m_pszDefaultDir != nullptr) {
    const size_t dir_len = std::strlen(m_pszDefaultDir);
    full = new char[dir_len + 1 + std::strlen(name) + 1];
    util_strncpy(full, m_pszDefaultDir, 0, 0);
    util_strncat(full, "/", 0, 0);
    util_strncat(full, name, 0, 0);
  } else {
    full = CopyOf(name);
  }
  delete[] m_pszErrorFilename;
  m_pszErrorFilename = full;
}

void ErrorHandler::SetErrorOccured(char* text) {
  if (!DefinitionFileOpens(m_pszErrorFilename)) return;
  vq0300_internal::AddOwned(m_pOccurredList, NewElement(text));
  ++m_nOccurred;
}

void ErrorHandler::SetLastErrorOccured(char* text) {
  if (!DefinitionFileOpens(m_pszErrorFilename)) return;
  // The copy comes first: text may be the message of the element replaced.
  std::unique_ptr<ErrorElement> element = NewElement(text);
  if (m_nOccurred > 0) {
    delete m_pOccurredList->RemoveTail();
    --m_nOccurred;
  }
  // When a tail was removed, this reuses its room.
  vq0300_internal::AddOwned(m_pOccurredList, std::move(element));
  ++m_nOccurred;
}

char* ErrorHandler::GetErrorOccured(int i) {
  if (!DefinitionFileOpens(m_pszErrorFilename)) return nullptr;
  if (i < 0 || i >= m_nOccurred) return nullptr;
  return static_cast<ErrorElement*>(m_pOccurredList->GetAt(i))->GetErrorMessage();
}

int ErrorHandler::GetNumberOfErrorOccured() { return m_nOccurred; }

ErrorElement* ErrorHandler::GetErrorElement(unsigned short number, unsigned short offset) {
  if (!DefinitionFileOpens(m_pszErrorFilename)) return nullptr;
  const uint32_t key = (static_cast<uint32_t>(offset) << 16) | number;
  for (int i = 0; i < m_pDefinitionList->GetCount(); ++i) {
    ErrorElement* element = static_cast<ErrorElement*>(m_pDefinitionList->GetAt(i));
    if (element->m_dwErrorCode == key) return element;
  }
  return nullptr;
}

void ErrorHandler::AppendErrorOccured(ErrorHandler* other) {
  if (other == nullptr) return;
  // Starts at this handler's own count, not at 0; other's count is read anew
  // at each step.
  for (int i = m_pOccurredList->GetCount(); i < other->m_pOccurredList->GetCount(); ++i) {
    ErrorElement* element = static_cast<ErrorElement*>(other->m_pOccurredList->GetAt(i));
    SetErrorOccured(element->GetErrorMessage());
  }
}
