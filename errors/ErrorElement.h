/// @class ErrorElement
/// ErrorElement: one numbered error definition, or one recorded error text.
///
/// The element owns its own heap copy of the message. m_dwErrorCode and
/// m_wContinue are public fields with no accessor: the definition-file loader
/// writes them and callers read them directly.
#ifndef VQ0300_ERRORELEMENT_H
#define VQ0300_ERRORELEMENT_H
/// @file

#include <cstdint>

#include "vq0300/LObject.h"
#include "vq0300/vq0300_export.h"

class VQ0300_API ErrorElement : public LObject {
 public:
  /// Code 0, continue flag 1, no message.
  ErrorElement();
  /// Frees the message.
  ~ErrorElement() override;

  /// Replaces the message by a copy of text (strlen + 1 bytes). A null text
  /// changes nothing: the old message stays.
  /// REQUIRES: text is not this element's own message.
  void SetErrorMessage(char* text);

  /// The stored message, null if none. Borrowed: valid until the next
  /// SetErrorMessage or the element's end.
  char* GetErrorMessage();

  /// High 16 bits: value of the definition's offset block; low 16 bits: its
  /// number. 0 in recorded (occurred) elements.
  uint32_t m_dwErrorCode;
  /// 0 when the definition's action reads "STOP", else 1. Only stored.
  uint16_t m_wContinue;

 private:
  char* m_pszMessage;
};

#endif  // VQ0300_ERRORELEMENT_H
