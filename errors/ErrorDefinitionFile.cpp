// Loading of error definition files into an ErrorHandler: Initialize and its
// reading pass GetErrorList.
//
// The reader is a line scanner. It joins trimmed lines until the text holds
// an end mark, cuts the statement out of it by searching for marks, and makes
// an ErrorElement of each definition. It knows no syntax error: whatever ends
// in "<E/>" is a statement.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "ErrorHandler_internal.h"
#include "WorkingDirectory_internal.h"
#include "core/Helpers_internal.h"
#include "vq0300/ErrorElement.h"
#include "vq0300/ErrorHandler.h"
#include "vq0300/LString.h"

namespace {

using vq0300_internal::DefinitionFileOpens;
using vq0300_internal::DestroyElements;
using vq0300_internal::DirectoryVisit;
using vq0300_internal::FilePtr;

constexpr char kHeader[] = "<ErrorMessageDefinition>";
constexpr char kCommentOpen[] = "<!--";
constexpr char kCommentClose[] = "-->";
constexpr char kSeparator[] = "<S/>";
constexpr char kEnd[] = "<E/>";
constexpr char kOffsetWord[] = "Offset";
constexpr char kStop[] = "STOP";

// One read takes at most this many bytes, terminator included: a longer
// physical line arrives in pieces, and the statement loop joins them.
constexpr int kReadSize = 65536;
// Accumulated text that would grow past this size is dropped before the next
// piece is appended. No sane statement comes near it, and it keeps every
// position of the text well inside an int.
constexpr size_t kMaxStatement = size_t{1} << 24;

// --- Reading ------------------------------------------------------------------

// Reads the definition file one piece at a time with fgets. A piece is a C
// string, so a NUL byte ends its text. A read that yields nothing, at the end
// of the file or on a read error (a directory, for one), ends the file.
class PieceReader {
 public:
  explicit PieceReader(FILE* file) : file_(file), area_(kReadSize) {}

  // The next piece, or null at the end of the file.
  const char* Read() {
    if (!ended_ && std::fgets(area_.data(), kReadSize, file_) != nullptr) return area_.data();
    ended_ = true;
    return nullptr;
  }

  // The end state: set by a read that yielded nothing, and by one that
  // reached the end of the file on a last line without a line end.
  bool AtEnd() const { return ended_ || std::feof(file_) != 0; }

 private:
  FILE* file_;
  std::vector<char> area_;
  bool ended_ = false;
};

// The text accumulated for one statement. It changes only by appending at
// the back, by dropping a front part and by emptying, so the first position
// of each mark is kept by searching new text alone: a line costs time in its
// own length, however many lines the statement has joined.
class Accumulated {
 public:
  enum MarkId { kOpen, kClose, kStatementEnd };

  Accumulated() : marks_{{kCommentOpen}, {kCommentClose}, {kEnd}} {}

  void Append(const std::string& piece) {
    if (text_.size() - front_ + piece.size() > kMaxStatement) Clear();
    text_ += piece;
  }

  void Clear() {
    text_.clear();
    front_ = 0;
    for (Mark& mark : marks_) mark.Reset();
  }

  // Keeps only what stands behind the first count characters.
  void DropFront(size_t count) {
    front_ += count;
    if (front_ < 4096 || front_ < text_.size() / 2) return;
    // Give the dropped text back now and then: amortised O(1) per character.
    text_.erase(0, front_);
    for (Mark& mark : marks_) mark.Shift(front_);
    front_ = 0;
  }

  // Position of the first occurrence of a mark, counted from the front of
  // the accumulated text; npos if there is none.
  size_t Find(MarkId id) {
    Mark& mark = marks_[id];
    if (mark.found == std::string::npos || mark.found < front_) {
      mark.found = text_.find(mark.text, std::max(mark.search_from, front_));
      if (mark.found == std::string::npos) {
        // No match starts ahead of here; a later one may still begin in the
        // last few characters and end in text appended later.
        const size_t overlap = std::strlen(mark.text) - 1;
        mark.search_from = text_.size() > overlap ? text_.size() - overlap : 0;
      }
    }
    return mark.found == std::string::npos ? std::string::npos : mark.found - front_;
  }

  std::string Text() const { return text_.substr(front_); }

 private:
  struct Mark {
    const char* text;
    size_t found = std::string::npos;  // in text_; stale if before front_
    size_t search_from = 0;            // no match starts in text_ ahead of this
    void Reset() {
      found = std::string::npos;
      search_from = 0;
    }
    void Shift(size_t count) {
      found = found != std::string::npos && found >= count ? found - count : std::string::npos;
      search_from = search_from > count ? search_from - count : 0;
    }
  };

  std::string text_;
  size_t front_ = 0;  // text_ ahead of this has been dropped
  Mark marks_[3];
};

// --- Cutting text apart, with LString on std::string ----------------------------

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
int32_t Low32(long value) {
  const uint32_t bits = static_cast<uint32_t>(value);
  return bits <= INT32_MAX ? static_cast<int32_t>(bits) : -static_cast<int32_t>(~bits) - 1;
}

// The value of an offset statement: the text between its first "<S/>" and
// the "<E/>" behind it.
int OffsetValue(LString& ls, std::string s) {
  KeepBehind(ls, s, kSeparator);
  KeepLeft(ls, s, ls.Find(s.c_str(), kEnd));
  TrimBoth(ls, s);
  return Low32(std::strtol(s.c_str(), nullptr, 10));
}

// Cuts a definition statement into number, message and action, and appends
// its element to the list. Missing marks give empty or shifted fields; no
// statement is refused.
void AddDefinition(LString& ls, std::string s, int offset, LObjList* definitions) {
  std::string number = s;
  KeepLeft(ls, number, ls.Find(number.c_str(), kSeparator));
  TrimBoth(ls, number);
  KeepBehind(ls, s, kSeparator);
  TrimFront(ls, s);

  std::string message = s;
  KeepLeft(ls, message, ls.Find(message.c_str(), kSeparator));
  TrimBoth(ls, message);
  KeepBehind(ls, s, kSeparator);
  TrimFront(ls, s);

  std::string action = s;
  KeepLeft(ls, action, ls.Find(action.c_str(), kEnd));
  TrimBoth(ls, action);

  auto element = std::make_unique<ErrorElement>();
  element->SetErrorMessage(&message[0]);
  const uint32_t low = static_cast<uint32_t>(std::strtol(number.c_str(), nullptr, 10)) & 0xFFFFu;
  element->m_dwErrorCode = (static_cast<uint32_t>(offset) << 16) | low;
  element->m_wContinue = action == kStop ? 0 : 1;
  definitions->AddTail(element.get());
  static_cast<void>(element.release());  // the list holds it now
}

// The statement loop, behind the header. Returns 0 at the end of the file or
// of the selected block, -1 if the file ends inside a comment.
int ReadStatements(PieceReader& reader, int selector, LObjList* definitions) {
  LString ls;
  Accumulated accumulated;
  std::string carried;
  std::string piece;
  int offset = -2;  // no block in force
  while (!reader.AtEnd()) {
    const char* line = reader.Read();
    if (line == nullptr) break;
    carried += line;
    TrimBoth(ls, carried);
    accumulated.Append(carried);
    carried.clear();

    if (accumulated.Find(Accumulated::kOpen) != std::string::npos) {
      // A comment takes with it everything accumulated ahead of it; one
      // comment goes in one turn.
      const size_t close = accumulated.Find(Accumulated::kClose);
      if (close != std::string::npos) {
        accumulated.DropFront(close + std::strlen(kCommentClose));
      } else {
        accumulated.Clear();
        const char* closing = reader.Read();
        while (closing != nullptr && std::strstr(closing, kCommentClose) == nullptr) {
          closing = reader.Read();
        }
        if (closing == nullptr) return -1;
        piece = closing;
        TrimBoth(ls, piece);
        KeepBehind(ls, piece, kCommentClose);
        accumulated.Append(piece);
        if (reader.AtEnd()) return -1;
      }
    }
    if (accumulated.Find(Accumulated::kStatementEnd) == std::string::npos) continue;

    std::string text = accumulated.Text();
    accumulated.Clear();
    TrimBoth(ls, text);
    // What stands behind the last end mark goes to the front of the next line.
    carried = text;
    KeepRight(ls, carried, Length(text) - 4 - ls.ReverseFind(text.c_str(), kEnd));
    TrimBoth(ls, carried);
    std::string statement = text;
    KeepLeft(ls, statement, ls.Find(text.c_str(), kEnd) + 4);

    if (ls.Find(statement.c_str(), kOffsetWord) != -1) {
      if (offset >= 0 && selector >= 0) return 0;  // the selected block is complete
      const int value = OffsetValue(ls, statement);
      offset = selector == -1 || value == selector ? value : -2;
    } else if (offset >= 0 || selector == -1) {
      AddDefinition(ls, statement, offset, definitions);
    }
  }
  return 0;
}

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

  PieceReader reader(file.get());
  const char* line = reader.Read();
  while (line != nullptr && std::strstr(line, kHeader) == nullptr) line = reader.Read();
  // Also a header on a last line without a line end leaves the end state set.
  if (reader.AtEnd()) return -1;
  return ReadStatements(reader, selector, m_pDefinitionList);
}
