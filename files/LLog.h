/// @class LLog
/// LLog: time-stamped messages appended to a named text file.
///
/// The object holds no stream: every call that touches the file opens it,
/// does its work and closes it again, so a message is in the file when the
/// call returns, and several objects (or processes) may name one file.
/// Nothing is reported: a log that cannot be written loses the message
/// silently; IsOpen is the one way to look ahead.
///
/// A message record is the local time in asctime's 24-character layout, two
/// blanks and the text; no line end is added. A header record is three lines:
/// "\t\t\tKorvane Semiconductor Corporation", three tabs and the text, and an
/// empty line.
#ifndef VQ0300_LLOG_H
#define VQ0300_LLOG_H
/// @file

#include <string>

#include "vq0300/LObject.h"
#include "vq0300/vq0300_export.h"

class VQ0300_API LLog : public LObject {
 public:
  /// No path: every write is dropped until SetLogFilename. The file system is
  /// not touched.
  LLog();
  /// As SetLogFilename(path, mode) on a new object.
  LLog(char const* path, char const* mode);
  ~LLog() override;

  /// Stores path and mode, then opens the file once with that mode and closes
  /// it: "w" empties an existing log at once, "a" creates a missing one. A
  /// null or empty path or mode changes nothing. A failed opening is ignored;
  /// the strings stay set and later messages are lost.
  void SetLogFilename(char const* path, char const* mode);

  /// The stored path; an empty text if none is set. Owned by the object.
  char const* GetLogFilename() const;

  /// Whether the file can be opened for appending, or else created for
  /// writing. WARNING: despite the name, nothing is held open, and the test
  /// creates the file if it is missing.
  bool IsOpen() const;

  /// Appends a header record with text. A null text counts as an empty one.
  void LogHeader(char const* text);

  /// Appends a message record; a null text gives the time stamp alone.
  /// WARNING: the record is treated as a format: "%%" comes out as one percent
  /// sign. Any other directive is written as it stands; it never reads an
  /// argument.
  void WriteMessage(char const* text);

  /// Appends a message record, every character unchanged.
  void WriteMessage2(char const* text);

  /// Removes the file and creates it again empty (if the path allows it).
  void Clear();

 private:
  std::string m_strLogFilename;  ///< path; empty until set
  std::string m_strMode;         ///< fopen mode given with the path; used once
};

#endif  // VQ0300_LLOG_H
