// Loading of error definition files into an ErrorHandler: Initialize and its
// reading pass GetErrorList. The reading itself is the definition scanner's
// (DefinitionScanner_internal.h), which the vq0300-errdef tool shares; here
// each loaded definition becomes an ErrorElement of the definition list.
#include <cstdio>
#include <memory>
#include <utility>

#include "DefinitionScanner_internal.h"
#include "ErrorHandler_internal.h"
#include "WorkingDirectory_internal.h"
#include "core/Helpers_internal.h"
#include "vq0300/ErrorElement.h"
#include "vq0300/ErrorHandler.h"

namespace {

using vq0300_internal::DefinitionFileOpens;
using vq0300_internal::DestroyElements;
using vq0300_internal::DirectoryVisit;
using vq0300_internal::FilePtr;

// Appends an element for every definition that the pass loads, in file order.
class DefinitionsToList final : public vq0300_internal::DefinitionSink {
 public:
  explicit DefinitionsToList(LObjList* definitions) : definitions_(definitions) {}

  void Statement(vq0300_internal::ScannedStatement& statement) override {
    if (statement.isOffset || !statement.loaded) return;
    auto element = std::make_unique<ErrorElement>();
    element->SetErrorMessage(statement.message.data());
    element->m_dwErrorCode = statement.code;
    element->m_wContinue = statement.cont;
    vq0300_internal::AddOwned(definitions_, std::move(element));
  }

 private:
  LObjList* definitions_;
};

}  // namespace

int ErrorHandler::Initialize(char* name, int selector) {
  SetErrorFilename(name);
  if (m_pszErrorFilename == nullptr) return -1;
  if (!DefinitionFileOpens(m_pszErrorFilename)) return -2;
  DestroyElements(m_pDefinitionList);
  DestroyElements(m_pOccurredList);
  m_nOccurred = 0;

  DirectoryVisit visit;
  if (m_pszDefaultDir != nullptr && !visit.Enter(m_pszDefaultDir)) return -3;
  // The stored name already holds the directory; it is looked up once more
  // from inside it, and again by the reading pass.
  if (!DefinitionFileOpens(m_pszErrorFilename)) return -2;
  const int result = GetErrorList(selector);
  return result < 0 ? result : 0;
}

int ErrorHandler::GetErrorList(int selector) {
  if (m_pszErrorFilename == nullptr) return -1;
  DirectoryVisit visit;
  if (m_pszDefaultDir != nullptr && !visit.Enter(m_pszDefaultDir)) return -3;
  // Declared after the visit: the file is closed before the directory is left.
  FilePtr file(std::fopen(m_pszErrorFilename, "r"));
  if (file == nullptr) return -2;

  DefinitionsToList sink(m_pDefinitionList);
  return vq0300_internal::ScanDefinitionFile(file.get(), selector, sink).result;
}
