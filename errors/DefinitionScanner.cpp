#include "DefinitionScanner_internal.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

#include "core/Helpers_internal.h"
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

// One read takes at most this many bytes, terminator included: a longer
// physical line arrives in pieces, and the statement loop joins them.
constexpr int kReadSize = 65536;

constexpr std::size_t kNone = std::string::npos;

// --- Reading pieces ------------------------------------------------------------

// Reads the file one piece at a time with fgets. A piece is a C string, so a
// NUL byte ends its text. A read that yields nothing, at the end of the file
// or on a read error (a directory, for one), ends the file.
//
// Lines are counted on the raw bytes, NUL bytes included: the read area is
// kept filled with '\n' outside what fgets wrote, and a '\n' can stand in
// what fgets wrote only as its last byte, so the first '\n' of the area tells
// where the piece ended and whether a line end ended it.
class PieceReader {
 public:
  explicit PieceReader(std::FILE* file) : file_(file), area_(kReadSize, '\n') {}

  // The next piece, or null at the end of the file; line is its line.
  const char* Read(int& line) {
    if (ended_) return nullptr;
    std::fill(area_.begin(), area_.begin() + static_cast<std::ptrdiff_t>(written_), '\n');
    if (std::fgets(area_.data(), kReadSize, file_) == nullptr) {
      if (std::ferror(file_) != 0) error_ = errno != 0 ? errno : EIO;
      ended_ = true;
      written_ = 0;
      return nullptr;
    }
    read_any_ = true;
    line = next_line_;
    const std::size_t length = std::strlen(area_.data());
    if (length > 0 && area_[length - 1] == '\n') {
      written_ = length + 1;
      ++next_line_;
    } else {
      // The text stops short of a line end: a NUL byte, the end of the file
      // or a full area. The first '\n' at or behind the terminator tells.
      const char* first =
          static_cast<const char*>(std::memchr(area_.data() + length, '\n', area_.size() - length));
      const std::size_t at =
          first != nullptr ? static_cast<std::size_t>(first - area_.data()) : area_.size();
      const bool line_end = at + 1 < area_.size() && area_[at + 1] == '\0';
      if (line_end) ++next_line_;
      written_ = std::min(area_.size(), at + 2);
    }
    return area_.data();
  }

  // The end state: set by a read that yielded nothing, and by one that
  // reached the end of the file on a last line without a line end.
  bool AtEnd() const { return ended_ || std::feof(file_) != 0; }
  bool ReadAny() const { return read_any_; }
  int Error() const { return error_; }

 private:
  std::FILE* file_;
  std::vector<char> area_;
  std::size_t written_ = 0;  // bytes of the area that the last fgets may have written
  int next_line_ = 1;
  bool ended_ = false;
  bool read_any_ = false;
  int error_ = 0;
};

// --- Text that knows its lines ----------------------------------------------------

// Text whose characters know the line they came from. The line is kept once
// per appended run (a piece of one line), not once per character.
class LinedText {
 public:
  LinedText() = default;
  LinedText(const char* text, int line) { Append(text, std::strlen(text), line); }

  void Append(const char* text, std::size_t length, int line) {
    if (length == 0) return;
    runs_.push_back({text_.size(), line});
    text_.append(text, length);
  }
  void Append(const LinedText& other) {
    for (const Run& run : other.runs_) runs_.push_back({text_.size() + run.start, run.line});
    text_ += other.text_;
  }
  void Clear() {
    text_.clear();
    runs_.clear();
  }
  // Keeps count characters from position from on (kNone: to the end), in
  // place.
  void Keep(std::size_t from, std::size_t count) {
    from = std::min(from, text_.size());
    count = std::min(count, text_.size() - from);
    std::size_t kept = 0;
    for (std::size_t i = 0; i < runs_.size(); ++i) {
      const std::size_t end = i + 1 < runs_.size() ? runs_[i + 1].start : text_.size();
      if (end <= from || runs_[i].start >= from + count) continue;
      runs_[kept++] = {runs_[i].start > from ? runs_[i].start - from : 0, runs_[i].line};
    }
    runs_.resize(kept);
    text_.erase(from + count);
    text_.erase(0, from);
  }
  LinedText Part(std::size_t from, std::size_t count = kNone) const {
    LinedText part = *this;
    part.Keep(from, count);
    return part;
  }
  void Trim() {
    std::size_t from = 0;
    std::size_t to = text_.size();
    while (from < to && IsWhiteSpace(text_[from])) ++from;
    while (to > from && IsWhiteSpace(text_[to - 1])) --to;
    if (from != 0 || to != text_.size()) Keep(from, to - from);
  }

  std::size_t Find(const char* mark) const { return text_.find(mark); }
  const std::string& text() const { return text_; }
  bool empty() const { return text_.empty(); }
  std::size_t size() const { return text_.size(); }

  // Line of the character at pos (the last one when pos is past the end).
  int LineAt(std::size_t pos) const { return LineOf(runs_, pos, text_.size()); }
  // Line of the first character that is no white space (the last one when
  // all are).
  int FirstLine() const { return LineAt(FirstNonBlank(text_, 0)); }

  struct Run {
    std::size_t start;  // position of the run's first character
    int line;
  };
  const std::vector<Run>& runs() const { return runs_; }

  // The line at pos among runs over a text of size characters; 0 if empty.
  static int LineOf(const std::vector<Run>& runs, std::size_t pos, std::size_t size) {
    if (runs.empty() || size == 0) return 0;
    pos = std::min(pos, size - 1);
    auto after = std::upper_bound(runs.begin(), runs.end(), pos,
                                  [](std::size_t p, const Run& run) { return p < run.start; });
    return after == runs.begin() ? runs.front().line : std::prev(after)->line;
  }
  static std::size_t FirstNonBlank(const std::string& text, std::size_t from) {
    std::size_t pos = from;
    while (pos + 1 < text.size() && IsWhiteSpace(text[pos])) ++pos;
    return pos;
  }

 private:
  std::string text_;
  std::vector<Run> runs_;
};

// The text accumulated for one statement. It changes only by appending at
// the back, by dropping a front part and by emptying, so the first position
// of each mark is kept by searching new text alone: a line costs time in its
// own length, however many lines the statement has joined.
class Accumulated {
 public:
  enum MarkId { kOpen, kClose, kStatementEnd };

  Accumulated() : marks_{{kCommentOpen}, {kCommentClose}, {kEnd}} {}

  std::size_t size() const { return text_.size() - front_; }

  void Append(const LinedText& piece) {
    for (const LinedText::Run& run : piece.runs())
      runs_.push_back({text_.size() + run.start, run.line});
    text_ += piece.text();
  }

  void Clear() {
    text_.clear();
    runs_.clear();
    front_ = 0;
    for (Mark& mark : marks_) mark.Reset();
  }

  // Keeps only what stands behind the first count characters.
  void DropFront(std::size_t count) {
    front_ += count;
    if (front_ < 4096 || front_ < text_.size() / 2) return;
    // Give the dropped text back now and then: amortised O(1) per character.
    text_.erase(0, front_);
    for (Mark& mark : marks_) mark.Shift(front_);
    std::vector<LinedText::Run> kept;
    for (std::size_t i = 0; i < runs_.size(); ++i) {
      const std::size_t end = i + 1 < runs_.size() ? runs_[i + 1].start : kNone;
      if (end != kNone && end <= front_) continue;
      kept.push_back({runs_[i].start > front_ ? runs_[i].start - front_ : 0, runs_[i].line});
    }
    runs_ = std::move(kept);
    front_ = 0;
  }

  // Position of the first occurrence of a mark, counted from the front of
  // the accumulated text; kNone if there is none.
  std::size_t Find(MarkId id) {
    Mark& mark = marks_[id];
    if (mark.found == kNone || mark.found < front_) {
      mark.found = text_.find(mark.text, std::max(mark.search_from, front_));
      if (mark.found == kNone) {
        // No match starts ahead of here; a later one may still begin in the
        // last few characters and end in text appended later.
        const std::size_t overlap = std::strlen(mark.text) - 1;
        mark.search_from = text_.size() > overlap ? text_.size() - overlap : 0;
      }
    }
    return mark.found == kNone ? kNone : mark.found - front_;
  }

  // The accumulated text with its lines.
  LinedText Text() const {
    LinedText text;
    for (std::size_t i = 0; i < runs_.size(); ++i) {
      const std::size_t end = i + 1 < runs_.size() ? runs_[i + 1].start : text_.size();
      if (end <= front_) continue;
      const std::size_t start = std::max(runs_[i].start, front_);
      text.Append(text_.data() + start, end - start, runs_[i].line);
    }
    return text;
  }
  std::string Head(std::size_t count) const { return text_.substr(front_, count); }

  int LineAt(std::size_t pos) const {
    return size() == 0 ? 0 : LinedText::LineOf(runs_, front_ + pos, text_.size());
  }
  int FirstLine() const { return LineAt(LinedText::FirstNonBlank(text_, front_) - front_); }

 private:
  struct Mark {
    const char* text;
    std::size_t found = kNone;    // in text_; stale if before front_
    std::size_t search_from = 0;  // no match starts in text_ ahead of this
    void Reset() {
      found = kNone;
      search_from = 0;
    }
    void Shift(std::size_t count) {
      found = found != kNone && found >= count ? found - count : kNone;
      search_from = search_from > count ? search_from - count : 0;
    }
  };

  std::string text_;
  std::vector<LinedText::Run> runs_;
  std::size_t front_ = 0;  // text_ ahead of this has been dropped
  Mark marks_[3];
};

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
      if (accumulated_.Find(Accumulated::kStatementEnd) == kNone) continue;
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
    const std::size_t open = accumulated_.Find(Accumulated::kOpen);
    if (open == kNone) return true;
    const std::size_t close = accumulated_.Find(Accumulated::kClose);
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
  Accumulated accumulated_;
  LinedText carried_;
  ScanEnd end_;
  int offset_ = -2;  // no block in force
  bool seen_offset_ = false;
};

}  // namespace

ScanEnd ScanDefinitionFile(std::FILE* file, int selector, DefinitionSink& sink) {
  return Pass(file, selector, sink).Run();
}

std::string Trimmed(const std::string& text) {
  std::size_t from = 0;
  std::size_t to = text.size();
  while (from < to && IsWhiteSpace(text[from])) ++from;
  while (to > from && IsWhiteSpace(text[to - 1])) --to;
  return text.substr(from, to - from);
}

}  // namespace vq0300_internal
