// Text whose characters know the line of the file they came from, for the
// definition scanner, which reports every finding at its line. Private to
// the library.
#ifndef VQ0300_ERRORS_LINEDTEXT_INTERNAL_H
#define VQ0300_ERRORS_LINEDTEXT_INTERNAL_H

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "core/Helpers_internal.h"

namespace vq0300_internal {

constexpr std::size_t kNone = std::string::npos;

// The one trim of the scanner: the part of text from position from on that
// is left when every byte outside 0x21..0x7E is dropped at both ends, as
// (first position, count). Inline, as it runs on every line.
inline std::pair<std::size_t, std::size_t> TrimmedSpan(const std::string& text,
                                                       std::size_t from = 0) {
  std::size_t to = text.size();
  from = std::min(from, to);
  while (from < to && IsWhiteSpace(text[from])) ++from;
  while (to > from && IsWhiteSpace(text[to - 1])) --to;
  return {from, to - from};
}

// The trimming of the reader: drops at both ends every byte outside 0x21..0x7E.
std::string Trimmed(const std::string& text);

// Text whose characters know their line. The line is kept once per appended
// run (a piece of one line), not once per character.
class LinedText {
 public:
  LinedText() = default;
  LinedText(const char* text, int line);

  // Inline, as the statement loop calls them for every line.
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
  void Keep(std::size_t from, std::size_t count);
  LinedText Part(std::size_t from, std::size_t count = kNone) const;
  void Trim() {
    const auto [from, count] = TrimmedSpan(text_);
    if (from != 0 || count != text_.size()) Keep(from, count);
  }

  std::size_t Find(const char* mark, std::size_t from = 0) const { return text_.find(mark, from); }
  const std::string& text() const { return text_; }
  bool empty() const { return text_.empty(); }
  std::size_t size() const { return text_.size(); }

  // Line of the character at pos (the last one when pos is past the end); 0
  // for an empty text.
  int LineAt(std::size_t pos) const;
  // Line of the first character from position from on that is no white
  // space (the last one when all are).
  int FirstLine(std::size_t from = 0) const;

 private:
  struct Run {
    std::size_t start;  // position of the run's first character
    int line;
  };

  std::string text_;
  std::vector<Run> runs_;
};

// The text accumulated for one statement. It changes only by appending at
// the back, by dropping a front part and by emptying, so the first position
// of each mark is kept by searching new text alone: a line costs time in its
// own length, however many lines the statement has joined. Positions are
// counted from the front that is left.
class AccumulatedText {
 public:
  enum MarkId { kOpen, kClose, kStatementEnd };

  AccumulatedText(const char* open, const char* close, const char* end);

  std::size_t size() const { return text_.size() - front_; }
  void Append(const LinedText& piece) { text_.Append(piece); }
  void Clear();
  // Keeps only what stands behind the first count characters.
  void DropFront(std::size_t count);
  // Position of the first occurrence of a mark; kNone if there is none.
  std::size_t Find(MarkId id) {
    Mark& mark = marks_[id];
    if (mark.found != kNone && mark.found >= front_) return mark.found - front_;
    return Search(mark);
  }

  // The accumulated text with its lines.
  LinedText Text() const { return text_.Part(front_); }
  std::string Head(std::size_t count) const { return text_.text().substr(front_, count); }
  int LineAt(std::size_t pos) const { return size() == 0 ? 0 : text_.LineAt(front_ + pos); }
  int FirstLine() const { return size() == 0 ? 0 : text_.FirstLine(front_); }

 private:
  struct Mark {
    const char* text;
    std::size_t found = kNone;    // in text_; stale if before front_
    std::size_t search_from = 0;  // no match starts in text_ ahead of this
  };

  // Find for a mark whose first occurrence is not known yet.
  std::size_t Search(Mark& mark);

  LinedText text_;
  std::size_t front_ = 0;  // text_ ahead of this has been dropped
  Mark marks_[3];
};

inline std::size_t AccumulatedText::Search(Mark& mark) {
  mark.found = text_.Find(mark.text, std::max(mark.search_from, front_));
  if (mark.found != kNone) return mark.found - front_;
  // No match starts ahead of here; a later one may still begin in the last
  // few characters and end in text appended later.
  const std::size_t overlap = std::strlen(mark.text) - 1;
  mark.search_from = text_.size() > overlap ? text_.size() - overlap : 0;
  return kNone;
}

}  // namespace vq0300_internal

#endif  // VQ0300_ERRORS_LINEDTEXT_INTERNAL_H
