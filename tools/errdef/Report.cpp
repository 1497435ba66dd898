// The report of vq0300-errdef: the table of loaded definitions and the
// warnings, written through LMsgOutput.
#include "Report.h"

#include <algorithm>
#include <cstdio>

namespace errdef {
namespace {

// The columns of one table row ahead of its message: line, code in
// hexadecimal, offset, number and continue flag.
std::string RowColumns(const Row& row, int width) {
  char text[96];
  std::snprintf(text, sizeof text, "%*d  %08X  %6u  %6u  %8u  ", width, row.line,
                static_cast<unsigned>(row.code), static_cast<unsigned>(row.code >> 16),
                static_cast<unsigned>(row.code & 0xFFFFu), static_cast<unsigned>(row.cont));
  return text;
}

std::string Plural(size_t count, const char* word) {
  return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
}

}  // namespace

void Say(LMsgOutput& out, const std::string& text) {
  std::string safe;
  safe.reserve(text.size() + 8);
  for (char c : text) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (c == '%') {
      safe += "%%";
    } else if ((byte < 0x20 && c != '\n') || byte == 0x7F) {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\x%02X", static_cast<unsigned>(byte));
      safe += escaped;
    } else {
      safe += c;
    }
  }
  out.Print(safe.c_str());
}

void PrintUsage(LMsgOutput& out) {
  Say(out,
      "usage: vq0300-errdef FILE [--block N]\n"
      "Loads the error definition file FILE as ErrorHandler::Initialize does, lists the\n"
      "definitions it loaded and warns about statements that were probably not meant.\n"
      "\n"
      "  --block N   load only the block whose offset value is N (0 or more);\n"
      "              -1, the default, loads every block\n"
      "  -h, --help  show this text\n"
      "\n"
      "Exit status: 0 loaded without warnings, 1 loaded with warnings,\n"
      "2 the load failed or the command line is wrong.\n");
}

int PrintReport(LMsgOutput& out, const std::string& path, int selector, const CheckResult& check) {
  if (check.load_result != 0) {
    Say(out, path + ": load failed with result " + std::to_string(check.load_result) + ": " +
                 check.failure + "\n");
    return 2;
  }
  Say(out, path + ": " + Plural(check.rows.size(), "definition") + " loaded (" +
               (selector == -1 ? std::string("all blocks") : "block " + std::to_string(selector)) +
               ")\n");
  if (!check.rows.empty()) {
    int last = 0;
    for (const Row& row : check.rows) last = std::max(last, row.line);
    const int width = std::max(4, static_cast<int>(std::to_string(last).size()));
    char head[96];
    std::snprintf(head, sizeof head, "%*s  %-8s  %6s  %6s  %8s  %s\n", width, "line", "code",
                  "offset", "number", "continue", "message");
    Say(out, std::string("\n") + head);
    for (const Row& row : check.rows) {
      Say(out, RowColumns(row, width) + "\"" + row.message + "\"\n");
    }
  }
  if (!check.warnings.empty()) Say(out, "\n");
  for (const Warning& warning : check.warnings) {
    const std::string where = warning.line > 0 ? path + ":" + std::to_string(warning.line) : path;
    Say(out, where + ": warning: " + warning.text + "\n");
  }
  Say(out, "\n" +
               (check.warnings.empty() ? std::string("no warnings")
                                       : Plural(check.warnings.size(), "warning")) +
               "\n");
  return check.warnings.empty() ? 0 : 1;
}

}  // namespace errdef
