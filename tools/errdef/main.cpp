// vq0300-errdef FILE [--block N]: loads an error definition file with the
// library's ErrorHandler, prints the definitions it loaded and warns about
// statements that were probably not meant. See Report.h for the exit status.
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <string>

#include <vq0300/LMsgOutput.h>

#include "DefinitionCheck.h"
#include "Report.h"

namespace {

// A selector: -1 or a block's offset value of 0 or more.
bool ParseBlock(const std::string& text, int* selector) {
  if (text.empty()) return false;
  char* end = nullptr;
  errno = 0;
  const long value = std::strtol(text.c_str(), &end, 10);
  if (*end != '\0' || errno == ERANGE || value < -1 || value > INT_MAX) return false;
  *selector = static_cast<int>(value);
  return true;
}

int UsageError(const std::string& why) {
  LMsgOutput err;
  err.SetOutputOptions(LMSG_OUTPUT_STDERR);
  errdef::Say(err, "vq0300-errdef: " + why + "\n");
  errdef::PrintUsage(err);
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  std::string path;
  bool have_path = false;
  int selector = -1;
  bool options_done = false;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    std::string block;
    if (!options_done && (arg == "--help" || arg == "-h")) {
      LMsgOutput out;
      out.SetOutputOptions(LMSG_OUTPUT_STDOUT);
      errdef::PrintUsage(out);
      return 0;
    } else if (!options_done && arg == "--") {
      options_done = true;
      continue;
    } else if (!options_done && arg == "--block") {
      if (i + 1 >= argc) return UsageError("--block needs a value");
      block = argv[++i];
    } else if (!options_done && arg.compare(0, 8, "--block=") == 0) {
      block = arg.substr(8);
    } else if (!options_done && arg.size() > 1 && arg[0] == '-') {
      return UsageError("unknown option " + arg);
    } else if (have_path || arg.empty()) {
      return UsageError(arg.empty() ? "FILE is empty" : "only one FILE is checked");
    } else {
      path = arg;
      have_path = true;
      continue;
    }
    if (!ParseBlock(block, &selector)) {
      return UsageError("--block takes -1 or an offset value of 0 or more, not \"" + block + "\"");
    }
  }
  if (!have_path) return UsageError("no FILE given");

  LMsgOutput out;
  out.SetOutputOptions(LMSG_OUTPUT_STDOUT);
  return errdef::PrintReport(out, path, selector, errdef::CheckDefinitionFile(path, selector));
}
