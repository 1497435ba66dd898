// The reading of a definition file by the loader's scanner, with what the
// scanner drops or joins put into words.
#include "DefinitionReader.h"

#include <cstring>
#include <utility>

namespace errdef {
namespace {

using vq0300_internal::ScanEnd;
using vq0300_internal::ScanFailure;

// Collects the scanner's statements, and puts into words what it drops or
// joins.
class Collector final : public vq0300_internal::DefinitionSink {
 public:
  explicit Collector(Reading& reading) : reading_(reading) {}

  bool Detailed() const override { return true; }

  void Statement(vq0300_internal::ScannedStatement& statement) override {
    reading_.statements.push_back(std::move(statement));
  }
  void HeaderTrailer(int line, const std::string& text) override {
    Warn(line, "text behind the header is not read: " + Quoted(text));
  }
  void CommentRemoves(int line, int from, const std::string& lost) override {
    Warn(line, "a comment removes the text ahead of it" +
                   (from != line ? " (from line " + std::to_string(from) + ")" : std::string()) +
                   ": " + Quoted(lost));
  }
  void Carried(int line, int next, const std::string& text) override {
    Warn(line, "text behind \"<E/>\" is joined to the front of line " + std::to_string(next) +
                   ": " + Quoted(text));
  }
  void Oversize(int line) override { Warn(line, "a statement of more than 16 MiB is dropped"); }
  void ExtraEnds(int line, const std::string& lost) override {
    Warn(line,
         "more than one \"<E/>\": only the first statement is read, " + Quoted(lost) + " is lost");
  }
  void CutOff(int line, const std::string& text) override {
    Warn(line,
         "a statement cut off by the end of the file (no \"<E/>\") is dropped: " + Quoted(text));
  }

 private:
  void Warn(int line, std::string text) { reading_.warnings.push_back({line, std::move(text)}); }

  Reading& reading_;
};

// Why the pass failed, in one line.
std::string FailureText(const ScanEnd& end) {
  const std::string opened = "the comment opened at line " + std::to_string(end.openedLine);
  const std::string last =
      " the last line (" + std::to_string(end.line) + "), which has no line end";
  switch (end.failure) {
    case ScanFailure::kNone:
      break;
    case ScanFailure::kEmpty:
      return "the file is empty";
    case ScanFailure::kReadError:
      return std::string("the file cannot be read: ") + std::strerror(end.error);
    case ScanFailure::kNoHeader:
      return std::string("no line holds \"") + vq0300_internal::kDefinitionHeader + "\"";
    case ScanFailure::kHeaderOnLastLine:
      return "the header stands on" + last;
    case ScanFailure::kCommentNeverEnds:
      return opened + " never ends";
    case ScanFailure::kCommentEndsOnLastLine:
      return opened + " closes on" + last;
  }
  return std::string();
}

}  // namespace

Reading ReadDefinitionFile(std::FILE* file, int selector) {
  Reading reading;
  Collector collector(reading);
  const ScanEnd end = vq0300_internal::ScanDefinitionFile(file, selector, collector);
  reading.result = end.result;
  reading.failure = FailureText(end);
  reading.block_found = end.blockFound;
  return reading;
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
