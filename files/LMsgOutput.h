/// @class LMsgOutput
/// LMsgOutput: a message channel with printf-like formatting. Each piece of
/// a message goes to the console (standard output or standard error, never
/// both) and to a log file, as the option bits say. The log is an LFile that
/// the object owns and writes through the scan of LFile::WriteLine.
///
/// The options start at 0: nothing is written anywhere until they are set,
/// and InitLogFile alone does not set LMSG_OUTPUT_LOG.
/// Example:
/// @code
///   LMsgOutput out;
///   out.InitLogFile("run.log", true);
///   out.SetOutputOptions(LMSG_OUTPUT_STDOUT | LMSG_OUTPUT_LOG);
///   out.Output("%d files, %s\n", 3, "done");  // to stdout and to run.log
/// @endcode
///
/// Texts are formats, in Print, PrintLog and in the pieces of Output: a
/// "%%" comes out as one "%". No text ever makes the channel read an
/// argument that is not there (see Print and PrintLog).
#ifndef VQ0300_LMSGOUTPUT_H
#define VQ0300_LMSGOUTPUT_H
/// @file

#include "vq0300/LFile.h"
#include "vq0300/vq0300_export.h"

/// Option bits. With both console bits set the text goes to standard error
/// alone. Other bits are stored and mean nothing.
constexpr unsigned short LMSG_OUTPUT_STDOUT = 1;
constexpr unsigned short LMSG_OUTPUT_STDERR = 2;  ///< to standard error
constexpr unsigned short LMSG_OUTPUT_LOG = 4;     ///< to the log file of InitLogFile

class VQ0300_API LMsgOutput {
 public:
  /// No log file, options 0.
  LMsgOutput();
  /// Destroys the log file, which closes it.
  ~LMsgOutput();
  LMsgOutput(LMsgOutput const&) = delete;
  LMsgOutput& operator=(LMsgOutput const&) = delete;

  /// Replaces all option bits.
  void SetOutputOptions(unsigned short options);

  /// Destroys the log file there was (closing it, even if what follows
  /// fails) and attaches a new LFile(path, fresh ? "wt" : "at"): fresh
  /// empties the file, otherwise text is added to it. The new LFile stays
  /// attached whether or not it opened. Returns its GetErrorCode: 0, errno,
  /// or -7 for a null path. The options are not touched.
  int InitLogFile(char const* path, bool fresh);

  /// Writes text to standard error if LMSG_OUTPUT_STDERR is set, else to
  /// standard output if LMSG_OUTPUT_STDOUT is set, else nowhere, as
  /// fprintf(stream, text) does for a text without conversions: "%%" gives
  /// one "%". Any other "%" is written as it stands, with what follows it;
  /// no argument is ever read. A null text writes nothing.
  void Print(char const* text);

  /// Writes text to the log file if LMSG_OUTPUT_LOG is set, as
  /// LFile::WriteLine(text) with no arguments does; 0 on success or when the
  /// option is clear (the log is not looked at then), else -1 after a report
  /// through Print, so subject to the console bits:
  ///  - no log file: "Log File not initialized!\n";
  ///  - the write failed: "Error Writing to Log File:\n", then two tabs and
  ///    the log's GetErrorMessage, with no line end ("File not opened." when
  ///    the log did not open).
  ///
  /// A text holding a conversion that would show an argument ("%d", "%s")
  /// fails as "Unsupported print format." without reading any; "%%", or a
  /// conversion such as "%% d" that shows nothing, is written. A text
  /// without "%" is one last piece, written with no ferror test: a stream
  /// error on the log does not show here.
  int PrintLog(char const* text);

  /// Formats as LFile::WriteLine scans (see there for what a conversion is
  /// and which are accepted), sending every literal piece and every value to
  /// Print and then to PrintLog:
  ///  - d x X e f are formatted once with snprintf into a 256-byte buffer,
  ///    so console and log get the same text; a value text of more than 255
  ///    characters is the format failure -1, and nothing of it is written;
  ///  - s emits the argument's text itself: width and precision have no
  ///    effect ("%5s" does not pad; "%5d" does). A null text emits "(null)".
  ///
  /// Results: 0 at the end of the format; -1 for a "%" without a letter of
  /// "dfxXes" behind it, an unsupported conversion or a null format; -2 when
  /// PrintLog failed, the piece having reached the console already. The
  /// first failure ends the call: later pieces are not written, and the
  /// remaining arguments are not read. Options 0 write nothing, but the
  /// format is scanned all the same.
  /// "%%" is not for Output formats: "50%% done" gives the value text "% d",
  /// which Print writes as it stands and PrintLog refuses.
  int Output(char const* format, ...);
  /// Sets the options first (they stay in force after the call), then as the
  /// overload above.
  int Output(unsigned short options, char const* format, ...);

 private:
  LFile* m_pfileLogFile;  ///< owned; null until InitLogFile
  unsigned short m_wOutputOptions;
};

#endif  // VQ0300_LMSGOUTPUT_H
