// Text that knows its lines: the lined text of the definition scanner, its
// one trim, and the accumulated text of a statement built on it.
#include "LinedText_internal.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace vq0300_internal {

std::string Trimmed(const std::string& text) {
  const auto [from, count] = TrimmedSpan(text);
  return text.substr(from, count);
}

LinedText::LinedText(const char* text, int line) { Append(text, std::strlen(text), line); }

// The one walk over the runs: a run stays when it reaches into the window
// kept, with its start moved to the window's front.
void LinedText::Keep(std::size_t from, std::size_t count) {
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

LinedText LinedText::Part(std::size_t from, std::size_t count) const {
  LinedText part = *this;
  part.Keep(from, count);
  return part;
}

int LinedText::LineAt(std::size_t pos) const {
  if (runs_.empty() || text_.empty()) return 0;
  pos = std::min(pos, text_.size() - 1);
  auto after = std::upper_bound(runs_.begin(), runs_.end(), pos,
                                [](std::size_t p, const Run& run) { return p < run.start; });
  return after == runs_.begin() ? runs_.front().line : std::prev(after)->line;
}

int LinedText::FirstLine(std::size_t from) const {
  const auto [first, count] = TrimmedSpan(text_, from);
  return LineAt(count == 0 ? text_.size() : first);
}

AccumulatedText::AccumulatedText(const char* open, const char* close, const char* end)
    : marks_{{open}, {close}, {end}} {}

void AccumulatedText::Clear() {
  text_.Clear();
  front_ = 0;
  for (Mark& mark : marks_) mark = Mark{mark.text};
}

void AccumulatedText::DropFront(std::size_t count) {
  front_ += count;
  if (front_ < 4096 || front_ < text_.size() / 2) return;
  // Give the dropped text back now and then: amortised O(1) per character.
  text_.Keep(front_, kNone);
  for (Mark& mark : marks_) {
    mark.found = mark.found != kNone && mark.found >= front_ ? mark.found - front_ : kNone;
    mark.search_from = mark.search_from > front_ ? mark.search_from - front_ : 0;
  }
  front_ = 0;
}

}  // namespace vq0300_internal
