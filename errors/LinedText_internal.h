// Text whose characters know the line of the file they came from, for the
// definition scanner, which reports every finding at its line. Private to
// the library.
#ifndef VQ0300_ERRORS_LINEDTEXT_INTERNAL_H
#define VQ0300_ERRORS_LINEDTEXT_INTERNAL_H

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace vq0300_internal {

constexpr std::size_t kNone = std::string::npos;

// The one trim of the scanner: the part of text from position from on that
// is left when every byte outside 0x21..0x7E is dropped at both ends, as
// (first position, count).
std::pair<std::size_t, std::size_t> TrimmedSpan(const std::string& text, std::size_t from = 0);

// The trimming of the reader: drops at both ends every byte outside 0x21..0x7E.
std::string Trimmed(const std::string& text);

// Text whose characters know their line. The line is kept once per appended
// run (a piece of one line), not once per character.
class LinedText {
 public:
  LinedText() = default;
  LinedText(const char* text, int line);

  void Append(const char* text, std::size_t length, int line);
  void Append(const LinedText& other);
  void Clear();
  // Keeps count characters from position from on (kNone: to the end), in
  // place.
  void Keep(std::size_t from, std::size_t count);
  LinedText Part(std::size_t from, std::size_t count = kNone) const;
  void Trim();

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
  std::size_t Find(MarkId id);

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

  LinedText text_;
  std::size_t front_ = 0;  // text_ ahead of this has been dropped
  Mark marks_[3];
};

}  // namespace vq0300_internal

#endif  // VQ0300_ERRORS_LINEDTEXT_INTERNAL_H
