// The check of a definition file: the library's load for its result, the
// scanner's reading for its rows and its findings on single statements.
#include "DefinitionCheck.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <memory>
#include <utility>

#include <vq0300/ErrorHandler.h>

#include "core/Helpers_internal.h"
#include "errors/WorkingDirectory_internal.h"

namespace errdef {
namespace {

std::string Hex(uint32_t code) {
  char text[16];
  std::snprintf(text, sizeof text, "%08X", static_cast<unsigned>(code));
  return text;
}

size_t EditDistance(const std::string& a, const std::string& b) {
  std::vector<size_t> row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t above = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
      diagonal = above;
    }
  }
  return row[b.size()];
}

// --- Findings on single statements ----------------------------------------------

class StatementCheck {
 public:
  explicit StatementCheck(std::vector<Warning>& warnings) : warnings_(warnings) {}

  // One warning for all definitions ahead of the first offset statement,
  // at the first of them.
  void Finish() {
    if (ahead_.empty()) return;
    const Statement& first = *ahead_.front();
    const bool loaded = first.loaded;
    const std::string lines = ahead_.size() == 1
                                  ? "a definition stands"
                                  : std::to_string(ahead_.size()) + " definitions (lines " +
                                        std::to_string(first.line) + " to " +
                                        std::to_string(ahead_.back()->line) + ") stand";
    const char* one = loaded ? ": its code gets the offset 65534 (FFFE)"
                             : ": it belongs to no block and is not loaded";
    const char* many = loaded ? ": their codes get the offset 65534 (FFFE)"
                              : ": they belong to no block and are not loaded";
    Warn(first, lines + " ahead of the first offset statement" + (ahead_.size() == 1 ? one : many));
  }

  void Offset(const Statement& s) {
    if (s.separators >= 2 ||
        (s.separatorAt != std::string::npos && s.offsetWordAt > s.separatorAt)) {
      Warn(s, "read as an offset statement because it holds \"Offset\" (" +
                  (s.endsBlock ? std::string("it ends the selected block")
                               : "its value reads as " + std::to_string(s.value)) +
                  "): " + Quoted(s.text));
    } else if (!s.endsBlock) {
      NumberText(s, "offset", s.valueText, "its block gets the offset");
    }
    CommentMarks(s);
  }

  void Definition(const Statement& s) {
    const int separators = s.separators;
    if (separators != 2) {
      // With fewer than two marks the action is a scrap of the text: show the flag instead.
      Warn(s, "definition has " + std::to_string(separators) +
                  " \"<S/>\" instead of 2: read as number " + std::to_string(s.code & 0xFFFFu) +
                  ", message " + Quoted(s.message) +
                  (separators < 2 ? ", continue " + std::to_string(s.cont)
                                  : ", action " + Quoted(s.action)));
    }
    if (separators >= 1) NumberText(s, "number", s.numberText, "read as");
    if (separators == 2 && s.message.empty()) Warn(s, "definition has an empty message");
    if (separators == 2 && LooksLikeStop(s.action)) {
      Warn(s, "action " + Quoted(s.action) + " is not \"STOP\": the definition continues (1)");
    }
    CommentMarks(s);
    if (s.aheadOfBlocks) ahead_.push_back(&s);
    if (!s.loaded) return;
    const auto first = first_line_.emplace(s.code, s.line);
    if (!first.second) {
      const std::string other = std::to_string(first.first->second);
      Warn(s, "same code " + Hex(s.code) + " as line " + other +
                  ": lookups find the definition of line " + other);
    }
  }

 private:
  void Warn(const Statement& s, std::string text) {
    warnings_.push_back({s.line, std::move(text)});
  }

  // A number or offset text that strtol reads other than it looks, or that
  // is cut to 16 bits.
  void NumberText(const Statement& s, const char* what, const std::string& text,
                  const char* result) {
    const size_t digits = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    const bool plain =
        text.size() > digits && text.find_first_not_of("0123456789", digits) == std::string::npos;
    errno = 0;
    const long value = std::strtol(text.c_str(), nullptr, 10);
    const bool fits = errno != ERANGE && value >= 0 && value <= 0xFFFF;
    const std::string read =
        std::string(result) + " " + std::to_string(static_cast<uint32_t>(value) & 0xFFFFu);
    if (!plain) {
      Warn(s,
           std::string(what) + " text " + Quoted(text) + " is not a plain decimal number: " + read);
    } else if (!fits) {
      Warn(s, std::string(what) + " " + text + " does not fit 16 bits: " + read);
    }
  }

  void CommentMarks(const Statement& s) {
    if (s.commentMark) Warn(s, "a comment mark stays in the statement text: " + Quoted(s.text));
  }

  std::vector<Warning>& warnings_;
  std::map<uint32_t, int> first_line_;   // code -> line of its first loaded definition
  std::vector<const Statement*> ahead_;  // definitions ahead of the first offset statement
};

// The loaded definitions of the reading, in file order.
std::vector<Row> LoadedRows(const Reading& reading) {
  std::vector<Row> rows;
  for (const Statement& s : reading.statements) {
    if (!s.isOffset && s.loaded) rows.push_back({s.line, s.code, s.cont, s.message});
  }
  return rows;
}

// --- Reasons for a failed load --------------------------------------------------------

bool WorkingDirectoryKnown() {
  std::string saved;
  return vq0300_internal::SaveWorkingDirectory(saved);
}

std::string FailureReason(int result, const std::string& base, int open_error,
                          const Reading* reading) {
  switch (result) {
    case -1:
      if (base.empty()) return "the path names no file";
      if (reading != nullptr && reading->result != 0) return reading->failure;
      return "no header, or a comment that never ends";
    case -2:
      return open_error != 0 ? std::string("cannot open the file: ") + std::strerror(open_error)
                             : "cannot open the file";
    case -3:
      return WorkingDirectoryKnown()
                 ? "cannot enter the directory of the file"
                 : "cannot enter the directory of the file: the working directory cannot be saved";
    default:
      return "unknown result";
  }
}

}  // namespace

bool LooksLikeStop(const std::string& action) {
  if (action == "STOP" || action.empty()) return false;
  std::string upper = action;
  for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return EditDistance(upper, "STOP") <= 2;
}

CheckResult CheckDefinitionFile(const std::string& path, int selector) {
  namespace fs = std::filesystem;
  CheckResult check;
  std::string base = fs::path(path).filename().string();
  std::error_code ignored;
  const std::string dir = fs::absolute(fs::path(path), ignored).parent_path().string();

  ErrorHandler handler;
  handler.SetDefaultDir(dir.c_str());
  check.load_result = handler.Initialize(base.data(), selector);

  errno = 0;
  vq0300_internal::FilePtr file(std::fopen(path.c_str(), "r"));
  const int open_error = file == nullptr ? errno : 0;
  std::unique_ptr<Reading> reading;
  if (file != nullptr)
    reading = std::make_unique<Reading>(ReadDefinitionFile(file.get(), selector));

  if (check.load_result != 0) {
    check.failure = FailureReason(check.load_result, base, open_error, reading.get());
    return check;
  }
  if (reading == nullptr) {
    check.warnings.push_back(
        {0, std::string("this checker cannot open the file: ") + std::strerror(open_error)});
    return check;
  }
  check.warnings = reading->warnings;
  StatementCheck statements(check.warnings);
  for (const Statement& s : reading->statements) {
    if (s.isOffset) {
      statements.Offset(s);
    } else {
      statements.Definition(s);
    }
  }
  statements.Finish();
  if (selector >= 0 && !reading->block_found) {
    check.warnings.push_back({0, "no offset statement has the value " + std::to_string(selector) +
                                     ": nothing is loaded"});
  }
  check.rows = LoadedRows(*reading);
  std::stable_sort(check.warnings.begin(), check.warnings.end(),
                   [](const Warning& a, const Warning& b) {
                     return (a.line == 0 ? INT_MAX : a.line) < (b.line == 0 ? INT_MAX : b.line);
                   });
  return check;
}

}  // namespace errdef
