#include "DefinitionReader.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "core/Helpers_internal.h"

namespace errdef {
namespace {

constexpr char kHeader[] = "<ErrorMessageDefinition>";
constexpr char kCommentOpen[] = "<!--";
constexpr char kCommentClose[] = "-->";
constexpr char kSeparator[] = "<S/>";
constexpr char kEnd[] = "<E/>";
constexpr char kOffsetWord[] = "Offset";
constexpr char kStop[] = "STOP";
constexpr size_t kEndLength = sizeof kEnd - 1;
constexpr size_t kCloseLength = sizeof kCommentClose - 1;

// The loader's read area: a piece holds at most kReadSize - 1 bytes.
constexpr size_t kReadSize = 65536;
// The loader drops the text of a statement that would grow past this size.
constexpr size_t kMaxStatement = size_t{1} << 24;

// The loader's white space.
bool Blank(char c) { return vq0300_internal::IsWhiteSpace(c); }

// --- Cutting text apart by the loader's formulas -----------------------------

// Position of the first mark in s, -1 if there is none.
long FindMark(const std::string& s, const char* mark) {
  const size_t at = s.find(mark);
  return at == std::string::npos ? -1 : static_cast<long>(at);
}

// The first n characters of s, empty when n is below 1.
std::string Left(const std::string& s, long n) {
  return n < 1 ? std::string() : s.substr(0, static_cast<size_t>(n));
}

// The last n characters of s, empty when n is below 1.
std::string Right(const std::string& s, long n) {
  if (n < 1) return std::string();
  return s.substr(s.size() - std::min(s.size(), static_cast<size_t>(n)));
}

// What stands behind the first mark; with no mark in s, the loader's
// formula gives the last len - strlen(mark) + 1 characters.
std::string Behind(const std::string& s, const char* mark) {
  return Right(
      s, static_cast<long>(s.size()) - static_cast<long>(std::strlen(mark)) - FindMark(s, mark));
}

std::string TrimmedLeft(const std::string& s) {
  size_t from = 0;
  while (from < s.size() && Blank(s[from])) ++from;
  return s.substr(from);
}

// The low 32 bits of a strtol result, as a signed value.
int32_t Low32(long value) {
  const uint32_t bits = static_cast<uint32_t>(value);
  return bits <= INT32_MAX ? static_cast<int32_t>(bits) : -static_cast<int32_t>(~bits) - 1;
}

// --- Text with the line of every character -----------------------------------

class LinedText {
 public:
  LinedText() = default;
  LinedText(const std::string& text, int line) { Append(text, line); }

  void Append(const std::string& text, int line) {
    text_ += text;
    lines_.insert(lines_.end(), text.size(), line);
  }
  void Append(const LinedText& other) {
    text_ += other.text_;
    lines_.insert(lines_.end(), other.lines_.begin(), other.lines_.end());
  }
  void Clear() { Keep(0, 0); }
  // Keeps count characters from position from on (npos: to the end).
  void Keep(size_t from, size_t count) {
    from = std::min(from, text_.size());
    count = std::min(count, text_.size() - from);
    text_ = text_.substr(from, count);
    lines_ = std::vector<int>(lines_.begin() + from, lines_.begin() + from + count);
  }
  LinedText Part(size_t from, size_t count = std::string::npos) const {
    LinedText part = *this;
    part.Keep(from, count);
    return part;
  }
  void Trim() {
    size_t from = 0;
    size_t to = text_.size();
    while (from < to && Blank(text_[from])) ++from;
    while (to > from && Blank(text_[to - 1])) --to;
    Keep(from, to - from);
  }

  size_t Find(const char* mark) const { return text_.find(mark); }
  const std::string& text() const { return text_; }
  bool empty() const { return text_.empty(); }
  size_t size() const { return text_.size(); }
  // Line of the character at pos, or of the first non-blank one when pos is npos.
  int LineAt(size_t pos = std::string::npos) const {
    if (pos == std::string::npos) {
      pos = 0;
      while (pos + 1 < text_.size() && Blank(text_[pos])) ++pos;
    }
    return lines_.empty() ? 0 : lines_[std::min(pos, lines_.size() - 1)];
  }

 private:
  std::string text_;
  std::vector<int> lines_;
};

// --- Reading pieces as fgets gives them ---------------------------------------

class PieceSource {
 public:
  explicit PieceSource(std::FILE* file) : file_(file) {}

  // The next piece: up to a line end or kReadSize - 1 bytes, its text cut at
  // a NUL byte. False at the end of the file or on a read error.
  bool Read(std::string& piece, int& line) {
    if (ended_) return false;
    std::string raw;
    while (raw.size() < kReadSize - 1) {
      const int c = std::getc(file_);
      if (c == EOF) break;
      raw.push_back(static_cast<char>(c));
      if (c == '\n') break;
    }
    if (std::ferror(file_) != 0) error_ = errno;
    if (error_ != 0 || raw.empty()) {
      ended_ = true;
      return false;
    }
    bytes_ += raw.size();
    line = next_line_;
    if (raw.back() == '\n') ++next_line_;
    piece = raw.substr(0, raw.find('\0'));
    return true;
  }

  // Set by a read that yielded nothing, and by one that ended on the end of
  // the file (a last line without a line end).
  bool AtEnd() const { return ended_ || std::feof(file_) != 0; }
  int error() const { return error_; }
  size_t bytes() const { return bytes_; }

 private:
  std::FILE* file_;
  int next_line_ = 1;
  bool ended_ = false;
  int error_ = 0;
  size_t bytes_ = 0;
};

// --- The pass -------------------------------------------------------------------

class Pass {
 public:
  Pass(std::FILE* file, int selector) : source_(file), selector_(selector) {}

  Reading Run() {
    if (FindHeader()) Statements();
    return std::move(reading_);
  }

 private:
  void Warn(int line, std::string text) { reading_.warnings.push_back({line, std::move(text)}); }
  void Fail(std::string why) {
    reading_.result = -1;
    reading_.failure = std::move(why);
  }

  // Skips the lines up to the header. False, with the failure set, when the
  // pass ends there.
  bool FindHeader() {
    std::string piece;
    int line = 0;
    size_t at = std::string::npos;
    while (at == std::string::npos && source_.Read(piece, line)) at = piece.find(kHeader);
    if (!source_.AtEnd()) {
      const std::string rest = Trimmed(piece.substr(at + sizeof kHeader - 1));
      if (!rest.empty()) Warn(line, "text behind the header is not read: " + Quoted(rest));
      return true;
    }
    if (at != std::string::npos) {
      Fail("the header stands on the last line (" + std::to_string(line) +
           "), which has no line end");
    } else if (source_.error() != 0) {
      Fail(std::string("the file cannot be read: ") + std::strerror(source_.error()));
    } else if (source_.bytes() == 0) {
      Fail("the file is empty");
    } else {
      Fail(std::string("no line holds \"") + kHeader + "\"");
    }
    return false;
  }

  void Statements() {
    std::string piece;
    int line = 0;
    while (!source_.AtEnd() && source_.Read(piece, line)) {
      if (!carried_.empty()) {
        Warn(carried_.LineAt(), "text behind \"<E/>\" is joined to the front of line " +
                                    std::to_string(line) + ": " + Quoted(carried_.text()));
      }
      carried_.Append(piece, line);
      carried_.Trim();
      if (accumulated_.size() + carried_.size() > kMaxStatement) {
        Warn(accumulated_.LineAt(), "a statement of more than 16 MiB is dropped");
        accumulated_.Clear();
      }
      accumulated_.Append(carried_);
      carried_.Clear();
      if (!RemoveComment()) return;
      if (accumulated_.Find(kEnd) == std::string::npos) continue;
      if (!CutStatement()) return;
    }
    for (const LinedText* left : {&accumulated_, &carried_}) {
      if (!Trimmed(left->text()).empty()) {
        Warn(left->LineAt(),
             "a statement cut off by the end of the file (no \"<E/>\") is dropped: " +
                 Quoted(Trimmed(left->text())));
      }
    }
  }

  // One comment of the accumulated text goes, with everything ahead of it.
  // False when the file ends inside the comment.
  bool RemoveComment() {
    const size_t open = accumulated_.Find(kCommentOpen);
    if (open == std::string::npos) return true;
    const size_t close = accumulated_.Find(kCommentClose);
    const size_t ahead = std::min(open, close);
    const std::string lost = Trimmed(accumulated_.text().substr(0, ahead));
    if (!lost.empty()) {
      const int at = accumulated_.LineAt(ahead);
      const int from = accumulated_.LineAt();
      Warn(at, "a comment removes the text ahead of it" +
                   (from != at ? " (from line " + std::to_string(from) + ")" : std::string()) +
                   ": " + Quoted(lost));
    }
    if (close != std::string::npos) {
      accumulated_.Keep(close + kCloseLength, std::string::npos);
      return true;
    }
    // The comment runs over lines: skip up to the first piece that closes it.
    const int opened = accumulated_.LineAt(open);
    accumulated_.Clear();
    std::string piece;
    int line = 0;
    bool closed = false;
    while (!closed && source_.Read(piece, line))
      closed = piece.find(kCommentClose) != std::string::npos;
    if (!closed) {
      Fail("the comment opened at line " + std::to_string(opened) + " never ends");
      return false;
    }
    LinedText rest(piece, line);
    rest.Trim();
    rest.Keep(rest.Find(kCommentClose) + kCloseLength, std::string::npos);
    accumulated_ = rest;
    if (source_.AtEnd()) {
      Fail("the comment opened at line " + std::to_string(opened) + " closes on the last line (" +
           std::to_string(line) + "), which has no line end");
      return false;
    }
    return true;
  }

  // Cuts the statement out of the accumulated text, which holds an "<E/>".
  // False when the statement ends the selected block and with it the pass.
  bool CutStatement() {
    LinedText text = accumulated_;
    accumulated_.Clear();
    text.Trim();
    const size_t first = text.Find(kEnd);
    const size_t last = text.text().rfind(kEnd);
    carried_ = text.Part(last + kEndLength);
    carried_.Trim();
    if (last != first) {
      const LinedText lost = text.Part(first + kEndLength, last - first);
      Warn(lost.LineAt(), "more than one \"<E/>\": only the first statement is read, " +
                              Quoted(Trimmed(lost.text())) + " is lost");
    }
    Statement statement;
    statement.line = text.LineAt(0);
    statement.text = text.text().substr(0, first + kEndLength);
    statement.is_offset = statement.text.find(kOffsetWord) != std::string::npos;
    if (statement.is_offset) {
      if (offset_ >= 0 && selector_ >= 0) {  // the selected block is complete
        statement.ends_block = true;
        reading_.statements.push_back(std::move(statement));
        return false;
      }
      const std::string value = Behind(statement.text, kSeparator);
      statement.value_text = Trimmed(Left(value, FindMark(value, kEnd)));
      statement.value = Low32(std::strtol(statement.value_text.c_str(), nullptr, 10));
      const bool selected = statement.value == selector_;
      offset_ = selector_ == -1 || selected ? statement.value : -2;
      reading_.block_found = reading_.block_found || (selector_ >= 0 && selected);
      seen_offset_ = true;
    } else {
      Definition(statement);
    }
    reading_.statements.push_back(std::move(statement));
    return true;
  }

  // The fields of a definition, cut as the loader cuts them.
  void Definition(Statement& statement) {
    statement.loaded = offset_ >= 0 || selector_ == -1;
    statement.ahead_of_blocks = !seen_offset_;
    std::string s = statement.text;
    statement.number_text = Trimmed(Left(s, FindMark(s, kSeparator)));
    s = TrimmedLeft(Behind(s, kSeparator));
    statement.message = Trimmed(Left(s, FindMark(s, kSeparator)));
    s = TrimmedLeft(Behind(s, kSeparator));
    statement.action = Trimmed(Left(s, FindMark(s, kEnd)));
    const uint32_t number =
        static_cast<uint32_t>(std::strtol(statement.number_text.c_str(), nullptr, 10)) & 0xFFFFu;
    statement.code = (static_cast<uint32_t>(offset_) << 16) | number;
    statement.cont = statement.action == kStop ? 0 : 1;
  }

  PieceSource source_;
  const int selector_;
  Reading reading_;
  LinedText accumulated_;
  LinedText carried_;
  int offset_ = -2;  // no block in force
  bool seen_offset_ = false;
};

}  // namespace

Reading ReadDefinitionFile(std::FILE* file, int selector) { return Pass(file, selector).Run(); }

std::string Trimmed(const std::string& text) {
  size_t from = 0;
  size_t to = text.size();
  while (from < to && Blank(text[from])) ++from;
  while (to > from && Blank(text[to - 1])) --to;
  return text.substr(from, to - from);
}

std::string Quoted(const std::string& text) {
  constexpr size_t kLongest = 60;
  if (text.size() <= kLongest) return "\"" + text + "\"";
  size_t cut = kLongest - 3;
  // Do not cut a UTF-8 sequence apart.
  while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) --cut;
  return "\"" + text.substr(0, cut) + "...\"";
}

}  // namespace errdef
