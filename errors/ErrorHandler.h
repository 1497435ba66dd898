/// @class ErrorHandler
/// ErrorHandler: numbered error definitions loaded from a definition file, and
/// the texts of the errors that occurred in this run.
///
/// The handler owns both lists, every ErrorElement in them and its two
/// strings; every char* passed in is copied. What it hands out (elements,
/// texts) is borrowed and stays valid until that element is destroyed: by the
/// next Initialize, by SetLastErrorOccured for the newest text, or by the
/// handler's destructor.
///
/// A handler stays tied to its definition file: every recording and every
/// lookup first opens the stored file name for reading and closes it again.
/// If that fails (or no name is stored) the call does nothing and a getter
/// returns null. A relative name is resolved against the working directory at
/// the moment of the call.
#ifndef VQ0300_ERRORHANDLER_H
#define VQ0300_ERRORHANDLER_H
/// @file

#include "vq0300/ErrorElement.h"
#include "vq0300/LObjList.h"
#include "vq0300/LObject.h"
#include "vq0300/vq0300_export.h"

class VQ0300_API ErrorHandler : public LObject {
 public:
  /// Two empty lists, no directory, no file name.
  ErrorHandler();
  /// Frees the file name and the directory, then destroys every element of
  /// the definition list and of the occurred list, and both lists.
  ~ErrorHandler() override;

  /// Stores a copy of dir as the directory of the definition file. A null or
  /// empty dir stores an empty string, which still counts as a directory: the
  /// next SetErrorFilename then gives "/" followed by the name.
  /// The stored file name is not rebuilt; call this before SetErrorFilename or
  /// Initialize.
  void SetDefaultDir(char const* dir);

  /// Stores the full file name: directory + "/" + name when a directory is
  /// stored (not inspected: "dir/" gives "dir//name"), else a copy of name.
  /// A null or empty name changes nothing.
  void SetErrorFilename(char* name);

  /// Loads a definition file: SetErrorFilename(name) (a null or empty name
  /// keeps the stored one), tests that the stored name opens from the
  /// caller's working directory, empties both lists, changes into the default
  /// directory (if one is stored), tests the name once more from there, runs
  /// GetErrorList(selector) and returns to the caller's directory.
  /// selector -1 loads every definition, those ahead of the first offset
  /// statement included; 0 or more only the first block of that offset value;
  /// below -1 nothing (result 0).
  /// Returns 0 when the pass ended normally (also with nothing found);
  /// -1 when no name is given or stored, the header is missing or the file
  /// ends inside a comment (definitions read up to there stay); -2 when the file does not open
  /// (before the change of directory the lists are left untouched); -3 when the default directory
  /// cannot be entered. The stored name already begins with the directory, so it is found both from
  /// the caller's directory and from inside the default directory only when the directory is
  /// absolute; a relative one is entered once here and once more by the reading pass. Every return
  /// leaves the working directory as it was at entry; while the load runs, the whole process works
  /// in the default directory. A working directory whose saving fails (getcwd) is not left: the
  /// result is -3. If the saved directory cannot be entered again, the result stands as it is.
  int Initialize(char* name, int selector);

  /// The reading pass of Initialize, alone: changes into the default
  /// directory (if stored), opens the stored name, appends what it reads to
  /// the definition list and empties nothing, so a second call adds every
  /// definition once more (GetErrorElement finds the earlier copy). Returns
  /// to the directory of entry; results as for Initialize.
  ///
  /// The reader, line by line (a line is one fgets read of at most 65535
  /// bytes; a longer line arrives in pieces that are joined like lines):
  /// - Lines up to the one holding "<ErrorMessageDefinition>" are skipped.
  ///   The header on a last line without a line end gives -1.
  /// - Each line is trimmed at both ends (every byte outside 0x21..0x7E) and
  ///   joined to the text so far with nothing between, until the text holds
  ///   "<E/>". The statement is the text up to and including the first "<E/>";
  ///   what stands behind the last "<E/>" is carried to the front of the next
  ///   line. A statement that the end of the file leaves open is dropped.
  /// - A comment "<!--" .. "-->" removes everything accumulated ahead of it,
  ///   an unfinished statement too; one comment goes per line. A comment that
  ///   runs over lines skips them up to the first line that holds "-->" whole;
  ///   the text behind that mark is kept.
  /// - A statement holding "Offset" anywhere is an offset statement; its value
  ///   (strtol of the text between "<S/>" and "<E/>") starts a block. With a
  ///   selector of 0 or more, the pass ends at the next offset statement of
  ///   any value once the selected block has begun. Definitions ahead of the
  ///   first offset statement have the offset half FFFE.
  /// - Any other statement is "number<S/>message<S/>action<E/>". Missing marks
  ///   shift or empty the fields, never refuse the statement:
  ///   "7<S/>Text<E/>" gives number 7 and an empty message. The code is
  ///   offset << 16 | number, each cut to 16 bits; m_wContinue is 0 only for
  ///   the action "STOP".
  ///
  /// A line that holds more than one "<E/>" gives one element: the text
  /// between the first and the last mark is not read, and the carried text
  /// is read once.
  /// A NUL byte ends the text of its line; a read error, as on a directory,
  /// counts as the end of the file (so a directory gives -1).
  /// Text of one statement that would grow past 16 MiB is dropped before the next line is joined.
  /// Without a stored file name the result is -1 and nothing else happens.
  int GetErrorList(int selector);

  /// Records a copy of text (null records an element without text).
  void SetErrorOccured(char* text);

  /// Replaces the newest recorded text by a copy of text, or records one when
  /// there is none. text may be the pointer GetErrorOccured gave for the
  /// element being replaced: the copy is taken first.
  void SetLastErrorOccured(char* text);

  /// Text of the recorded error at index i; null when i is at or above the
  /// count, for an element recorded without text, or when the file test fails.
  /// A negative index returns null.
  char* GetErrorOccured(int i);

  /// Number of recorded errors; this alone makes no file test.
  int GetNumberOfErrorOccured();

  /// First definition, in file order, whose code is offset * 65536 + number;
  /// null if none. Note the order: the number comes first.
  ErrorElement* GetErrorElement(unsigned short number, unsigned short offset);

  /// Copies the recorded texts of other that stand behind this handler's own
  /// count: with 3 here and 5 there, other's entries 3 and 4 are appended;
  /// with 5 here and 3 there, nothing is. Each copy goes through
  /// SetErrorOccured, with this handler's file test. A null other does nothing.
  void AppendErrorOccured(ErrorHandler* other);

 private:
  LObjList* m_pDefinitionList;  ///< definitions in file order
  LObjList* m_pOccurredList;    ///< recorded errors, oldest first
  char* m_pszDefaultDir;        ///< null until SetDefaultDir
  char* m_pszErrorFilename;     ///< full name, directory included
  int m_nOccurred;              ///< always m_pOccurredList->GetCount()
};

#endif  // VQ0300_ERRORHANDLER_H
