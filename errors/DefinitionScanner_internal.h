// The one reader of the error definition format. ErrorHandler's loader
// builds its definition list from what it reports, and the vq0300-errdef
// tool, which links this code from the library's private objects, builds
// its report and its warnings from the same reading, so the tool can never
// describe another grammar than the loader's. Private: nothing here is
// exported or installed.
//
// The format is stated once, at ErrorHandler::GetErrorList in ErrorHandler.h.
#ifndef VQ0300_ERRORS_DEFINITIONSCANNER_INTERNAL_H
#define VQ0300_ERRORS_DEFINITIONSCANNER_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "LinedText_internal.h"

namespace vq0300_internal {

constexpr char kDefinitionHeader[] = "<ErrorMessageDefinition>";
// A definition's action that ends the run; any other continues it.
constexpr char kStopAction[] = "STOP";
// Accumulated text that would grow past this size is dropped before the next
// piece is appended. No sane statement comes near it, and it keeps every
// position of the text well inside an int.
constexpr std::size_t kMaxStatement = std::size_t{1} << 24;

// One statement as the reader cut it out.
struct ScannedStatement {
  int line = 0;            // line of its first character (1 for the first line)
  std::string text;        // trimmed, up to and including its first "<E/>"
  bool isOffset = false;   // holds "Offset" anywhere
  bool endsBlock = false;  // an offset statement that ends the selected block and the pass
  std::string valueText;   // offsets: between the first "<S/>" and the "<E/>"
  std::int32_t value = 0;  // offsets: strtol of valueText, low 32 bits
  std::string numberText;  // definitions: the three fields, trimmed
  std::string message;
  std::string action;
  std::uint32_t code = 0;      // definitions: offset in force << 16 | number, 16 bits each
  std::uint16_t cont = 1;      // 0 only for the action "STOP"
  bool loaded = false;         // the loader appends it to its definition list
  bool aheadOfBlocks = false;  // no offset statement stood before it
  // Marks in text, told only by a detailed reading (DefinitionSink::Detailed).
  int separators = 0;                            // how many "<S/>"
  std::size_t separatorAt = std::string::npos;   // the first "<S/>"
  std::size_t offsetWordAt = std::string::npos;  // the first "Offset"
  bool commentMark = false;                      // a "<!--" or "-->" stays in it
};

// Why a reading ended with -1.
enum class ScanFailure {
  kNone,
  kEmpty,                 // the file holds no byte
  kReadError,             // a read failed; error holds errno
  kNoHeader,              // no line holds the header
  kHeaderOnLastLine,      // the header stands on a last line without a line end
  kCommentNeverEnds,      // a comment runs to the end of the file
  kCommentEndsOnLastLine  // a comment closes on a last line without a line end
};

struct ScanEnd {
  int result = 0;  // 0 at the end of the file or of the selected block; -1 on a failure
  ScanFailure failure = ScanFailure::kNone;
  int line = 0;             // the header's or the closing line, for the failures that have one
  int openedLine = 0;       // the line where a failing comment opened
  int error = 0;            // errno of kReadError
  bool blockFound = false;  // an offset statement had the selector's value
};

// Where a reading goes. Statement is called for every statement the pass
// reaches, in file order, loaded or not; the others tell what the format's
// rules drop or join and are called only when Detailed() is true, so a sink
// that does not want them costs the reading nothing.
class DefinitionSink {
 public:
  virtual void Statement(ScannedStatement& statement) = 0;
  virtual bool Detailed() const { return false; }
  // Text behind the header on its line, which is not read.
  virtual void HeaderTrailer(int /*line*/, const std::string& /*text*/) {}
  // A comment at line removes the text ahead of it, accumulated since fromLine.
  virtual void CommentRemoves(int /*line*/, int /*fromLine*/, const std::string& /*lost*/) {}
  // Text behind an "<E/>" at line is joined to the front of nextLine.
  virtual void Carried(int /*line*/, int /*nextLine*/, const std::string& /*text*/) {}
  // A statement of more than kMaxStatement bytes, begun at line, is dropped.
  virtual void Oversize(int /*line*/) {}
  // A second "<E/>" in one statement's text: lost is dropped with it.
  virtual void ExtraEnds(int /*line*/, const std::string& /*lost*/) {}
  // Text without an "<E/>" at the end of the file is dropped.
  virtual void CutOff(int /*line*/, const std::string& /*text*/) {}

 protected:
  ~DefinitionSink() = default;
};

// Reads file from its position to the end, as the loader's pass with this
// selector does (-1 for every block, or a block's offset value). The file is
// read with fgets in pieces of at most 65535 bytes; a NUL byte ends the text
// of its piece, and a read error ends the file.
ScanEnd ScanDefinitionFile(std::FILE* file, int selector, DefinitionSink& sink);

}  // namespace vq0300_internal

#endif  // VQ0300_ERRORS_DEFINITIONSCANNER_INTERNAL_H
