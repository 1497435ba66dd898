// ErrorHandler: numbered error definitions loaded from a definition file, and
// the texts of the errors that occurred in this run.
//
// The handler owns both lists, every ErrorElement in them and its two
// strings; every char* passed in is copied. What it hands out (elements,
// texts) is borrowed and stays valid until that element is destroyed: by the
// next Initialize, by SetLastErrorOccured for the newest text, or by the
// handler's destructor.
//
// A handler stays tied to its definition file: every recording and every
// lookup first opens the stored file name for reading and closes it again.
// If that fails (or no name is stored) the call does nothing and a getter
// returns null. A relative name is resolved against the working directory at
// the moment of the call.
#ifndef VQ0300_ERRORHANDLER_H
#define VQ0300_ERRORHANDLER_H

#include "ErrorElement.h"
#include "LObjList.h"
#include "LObject.h"
#include "vq0300_export.h"

class VQ0300_API ErrorHandler : public LObject {
 public:
  // Two empty lists, no directory, no file name.
  ErrorHandler();
  // Frees the file name and the directory, then destroys every element of
  // the definition list and of the occurred list, and both lists.
  ~ErrorHandler() override;

  // Stores a copy of dir as the directory of the definition file. A null or
  // empty dir stores an empty string, which still counts as a directory: the
  // next SetErrorFilename then gives "/" followed by the name.
  // The stored file name is not rebuilt; call this before SetErrorFilename or
  // Initialize.
  void SetDefaultDir(char const* dir);

  // Stores the full file name: directory + "/" + name when a directory is
  // stored (not inspected: "dir/" gives "dir//name"), else a copy of name.
  // A null or empty name changes nothing.
  void SetErrorFilename(char* name);

  // Loads the definition file name; selector -1 loads every block, 0 or more
  // only the block of that offset. Returns 0 on success, -1 to -3 on failure.
  int Initialize(char* name, int selector);

  // The reading pass of Initialize, run on the stored file name from the
  // working directory the caller has set up.
  int GetErrorList(int selector);

  // Records a copy of text (null records an element without text).
  void SetErrorOccured(char* text);

  // Replaces the newest recorded text by a copy of text, or records one when
  // there is none. text may be the pointer GetErrorOccured gave for the
  // element being replaced: the copy is taken first.
  void SetLastErrorOccured(char* text);

  // Text of the recorded error at index i; null when i is at or above the
  // count, for an element recorded without text, or when the file test fails.
  // A negative index returns null.
  char* GetErrorOccured(int i);

  // Number of recorded errors; this alone makes no file test.
  int GetNumberOfErrorOccured();

  // First definition, in file order, whose code is offset * 65536 + number;
  // null if none. Note the order: the number comes first.
  ErrorElement* GetErrorElement(unsigned short number, unsigned short offset);

  // Copies the recorded texts of other that stand behind this handler's own
  // count: with 3 here and 5 there, other's entries 3 and 4 are appended;
  // with 5 here and 3 there, nothing is. Each copy goes through
  // SetErrorOccured, with this handler's file test. A null other does nothing.
  void AppendErrorOccured(ErrorHandler* other);

 private:
  LObjList* m_pDefinitionList;  // definitions in file order
  LObjList* m_pOccurredList;    // recorded errors, oldest first
  char* m_pszDefaultDir;        // null until SetDefaultDir
  char* m_pszErrorFilename;     // full name, directory included
  int m_nOccurred;              // always m_pOccurredList->GetCount()
};

#endif  // VQ0300_ERRORHANDLER_H
