// The statement grammar of the definition format, as the loader reads it:
// the pass that finds the header, joins trimmed lines into statements,
// removes comments and cuts each statement into its fields with LString,
// reporting all of it to a sink. The format itself is stated at
// ErrorHandler::GetErrorList in ErrorHandler.h.
#include "DefinitionScanner_internal.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "LinedText_internal.h"
#include "PieceReader_internal.h"
#include "vq0300/LString.h"

namespace vq0300_internal {
namespace {

constexpr char kCommentOpen[] = "<!--";
constexpr char kCommentClose[] = "-->";
constexpr char kSeparator[] = "<S/>";
constexpr char kEnd[] = "<E/>";
constexpr char kOffsetWord[] = "Offset";
constexpr std::size_t kEndLength = sizeof kEnd - 1;
constexpr std::size_t kCloseLength = sizeof kCommentClose - 1;

// --- Cutting a statement apart, with LString on std::string ------------------------

int Length(const std::string& s) { return static_cast<int>(s.size()); }

void TrimBoth(LString& ls, std::string& s) {
  ls.TrimRight(&s[0]);
  ls.TrimLeft(&s[0]);
  s.resize(std::strlen(s.c_str()));
}

void TrimFront(LString& ls, std::string& s) {
  ls.TrimLeft(&s[0]);
  s.resize(std::strlen(s.c_str()));
}

// s becomes its first n characters (empty for n below 1).
void KeepLeft(LString& ls, std::string& s, int n) {
  ls.Left(&s[0], s.c_str(), n);
  s.resize(std::strlen(s.c_str()));
}

// s becomes its last n characters (empty for n below 1).
void KeepRight(LString& ls, std::string& s, int n) {
  ls.Right(&s[0], s.c_str(), n);
  s.resize(std::strlen(s.c_str()));
}

// What stands behind the first mark of s; with no mark, Right of len - 3 or
// len - 4 characters, as the formulas of the reader give it.
void KeepBehind(LString& ls, std::string& s, const char* mark) {
  KeepRight(ls, s, Length(s) - static_cast<int>(std::strlen(mark)) - ls.Find(s.c_str(), mark));
}

// The low 32 bits of a strtol result, as a signed value.
std::int32_t Low32(long value) {
  const auto bits = static_cast<std::uint32_t>(value);
  return bits <= INT32_MAX ? static_cast<std::int32_t>(bits)
                           : -static_cast<std::int32_t>(~bits) - 1;
}

// The value of an offset statement: the text between its first "<S/>" and
// the "<E/>" behind it.
void CutOffset(LString& ls, ScannedStatement& s) {
  std::string value = s.text;
  KeepBehind(ls, value, kSeparator);
  KeepLeft(ls, value, ls.Find(value.c_str(), kEnd));
  TrimBoth(ls, value);
  s.value = Low32(std::strtol(value.c_str(), nullptr, 10));
  s.valueText = std::move(value);
}

// Cuts a definition into number, message and action. Missing marks give
// empty or shifted fields; no statement is refused.
void CutDefinition(LString& ls, ScannedStatement& s, int offset) {
  std::string rest = s.text;
  s.numberText = rest;
  KeepLeft(ls, s.numberText, ls.Find(s.numberText.c_str(), kSeparator));
  TrimBoth(ls, s.numberText);
  KeepBehind(ls, rest, kSeparator);
  TrimFront(ls, rest);

  s.message = rest;
  KeepLeft(ls, s.message, ls.Find(s.message.c_str(), kSeparator));
  TrimBoth(ls, s.message);
  KeepBehind(ls, rest, kSeparator);
  TrimFront(ls, rest);

  s.action = rest;
  KeepLeft(ls, s.action, ls.Find(s.action.c_str(), kEnd));
  TrimBoth(ls, s.action);

  const std::uint32_t low =
      static_cast<std::uint32_t>(std::strtol(s.numberText.c_str(), nullptr, 10)) & 0xFFFFu;
  s.code = (static_cast<std::uint32_t>(offset) << 16) | low;
  s.cont = s.action == kStopAction ? 0 : 1;
}

// What a detailed reading tells of the marks in a statement's text, so that
// no reader of the statements searches its text again.
void FindMarks(ScannedStatement& s) {
  const std::string& text = s.text;
  s.separatorAt = text.find(kSeparator);
  for (std::size_t at = s.separatorAt; at != kNone; at = text.find(kSeparator, at + 1))
    ++s.separators;
  s.offsetWordAt = text.find(kOffsetWord);
  s.commentMark = text.find(kCommentOpen) != kNone || text.find(kCommentClose) != kNone;
}

// --- The pass ---------------------------------------------------------------------

class Pass {
 public:
  Pass(std::FILE* file, int selector, DefinitionSink& sink)
      : reader_(file), selector_(selector), sink_(sink), detailed_(sink.Detailed()) {}

  ScanEnd Run() {
    if (FindHeader()) Statements();
    return end_;
  }

 private:
  bool Fail(ScanFailure failure) {
    end_.result = -1;
    end_.failure = failure;
    return false;
  }

  // Skips the lines up to the header. False, with the failure set, when the
  // pass ends there; also a header on a last line without a line end leaves
  // the end state set.
  bool FindHeader() {
    const char* piece = nullptr;
    const char* at = nullptr;
    int line = 0;
    while (at == nullptr && (piece = reader_.Read(line)) != nullptr) {
      at = std::strstr(piece, kDefinitionHeader);
    }
    if (!reader_.AtEnd()) {
      if (detailed_) {
        const std::string rest = Trimmed(at + sizeof kDefinitionHeader - 1);
        if (!rest.empty()) sink_.HeaderTrailer(line, rest);
      }
      return true;
    }
    end_.line = line;
    if (at != nullptr) return Fail(ScanFailure::kHeaderOnLastLine);
    end_.error = reader_.Error();
    if (end_.error != 0) return Fail(ScanFailure::kReadError);
    return Fail(reader_.ReadAny() ? ScanFailure::kNoHeader : ScanFailure::kEmpty);
  }

  // The statement loop, behind the header, to the end of the file or of the
  // selected block.
  void Statements() {
    while (!reader_.AtEnd()) {
      int line = 0;
      const char* piece = reader_.Read(line);
      if (piece == nullptr) break;
      if (detailed_ && !carried_.empty())
        sink_.Carried(carried_.FirstLine(), line, carried_.text());
      carried_.Append(piece, std::strlen(piece), line);
      carried_.Trim();
      if (accumulated_.size() + carried_.size() > kMaxStatement) {
        if (detailed_) sink_.Oversize(accumulated_.FirstLine());
        accumulated_.Clear();
      }
      accumulated_.Append(carried_);
      carried_.Clear();
      if (!RemoveComment()) return;
      if (accumulated_.Find(AccumulatedText::kStatementEnd) == kNone) continue;
      if (!CutStatement()) return;
    }
    if (!detailed_) return;
    const LinedText left = accumulated_.Text();
    for (const LinedText* text : {&left, static_cast<const LinedText*>(&carried_)}) {
      const std::string rest = Trimmed(text->text());
      if (!rest.empty()) sink_.CutOff(text->FirstLine(), rest);
    }
  }

  // A comment takes with it everything accumulated ahead of it; one comment
  // goes in one turn. False when the file ends inside the comment.
  bool RemoveComment() {
    const std::size_t open = accumulated_.Find(AccumulatedText::kOpen);
    if (open == kNone) return true;
    const std::size_t close = accumulated_.Find(AccumulatedText::kClose);
    if (detailed_) {
      const std::size_t ahead = std::min(open, close);
      const std::string lost = Trimmed(accumulated_.Head(ahead));
      if (!lost.empty())
        sink_.CommentRemoves(accumulated_.LineAt(ahead), accumulated_.FirstLine(), lost);
    }
    if (close != kNone) {
      accumulated_.DropFront(close + kCloseLength);
      return true;
    }
    // The comment runs over lines: skip up to the first piece that closes it.
    end_.openedLine = accumulated_.LineAt(open);
    accumulated_.Clear();
    const char* closing = nullptr;
    int line = 0;
    while ((closing = reader_.Read(line)) != nullptr &&
           std::strstr(closing, kCommentClose) == nullptr) {
    }
    if (closing == nullptr) return Fail(ScanFailure::kCommentNeverEnds);
    LinedText rest(closing, line);
    rest.Trim();
    rest.Keep(rest.Find(kCommentClose) + kCloseLength, kNone);
    accumulated_.Append(rest);
    if (reader_.AtEnd()) {
      end_.line = line;
      return Fail(ScanFailure::kCommentEndsOnLastLine);
    }
    return true;
  }

  // Cuts the statement out of the accumulated text, which holds an "<E/>";
  // what stands behind its last "<E/>" goes to the front of the next line.
  // False when the statement ends the selected block and with it the pass.
  bool CutStatement() {
    LinedText text = accumulated_.Text();
    accumulated_.Clear();
    text.Trim();
    const std::size_t first = text.Find(kEnd);
    const std::size_t last = text.text().rfind(kEnd);
    carried_ = text.Part(last + kEndLength);
    carried_.Trim();
    if (detailed_ && last != first) {
      const LinedText lost = text.Part(first + kEndLength, last - first);
      sink_.ExtraEnds(lost.FirstLine(), Trimmed(lost.text()));
    }
    ScannedStatement statement;
    statement.line = text.LineAt(0);
    statement.text = text.text().substr(0, first + kEndLength);
    statement.isOffset = ls_.Find(statement.text.c_str(), kOffsetWord) != -1;
    if (detailed_) FindMarks(statement);
    if (statement.isOffset) {
      if (offset_ >= 0 && selector_ >= 0) {  // the selected block is complete
        statement.endsBlock = true;
        sink_.Statement(statement);
        return false;
      }
      CutOffset(ls_, statement);
      const bool selected = statement.value == selector_;
      offset_ = selector_ == -1 || selected ? statement.value : -2;
      end_.blockFound = end_.blockFound || (selector_ >= 0 && selected);
      seen_offset_ = true;
    } else {
      statement.loaded = offset_ >= 0 || selector_ == -1;
      statement.aheadOfBlocks = !seen_offset_;
      // The loader needs only the definitions it loads; a detailed reading
      // shows the others too.
      if (statement.loaded || detailed_) CutDefinition(ls_, statement, offset_);
    }
    sink_.Statement(statement);
    return true;
  }

  PieceReader reader_;
  const int selector_;
  DefinitionSink& sink_;
  const bool detailed_;
  LString ls_;
  AccumulatedText accumulated_{kCommentOpen, kCommentClose, kEnd};
  LinedText carried_;
  ScanEnd end_;
  int offset_ = -2;  // no block in force
  bool seen_offset_ = false;
};

}  // namespace

ScanEnd ScanDefinitionFile(std::FILE* file, int selector, DefinitionSink& sink) {
  return Pass(file, selector, sink).Run();
}

}  // namespace vq0300_internal
