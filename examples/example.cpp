// The road of one typical error through libvq0300, as a device tool would
// walk it: load the numbered messages, set up a message channel with a log,
// fail a step, report it, record it, and read the record back at the end.
#include <vq0300/vq0300.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

// A step of the tool that fails: it answers with the number and the block
// (offset) of its error in the definition file.
bool VerifyDevice(unsigned short* number, unsigned short* offset) {
  *number = 3;    // "Verify failed at the given address"
  *offset = 200;  // block 200: talking to the device
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  // 1. The numbered messages, from the sample definition file.
  const char* dir = argc > 1 ? argv[1] : VQ0300_EXAMPLES_DIR;
  std::string name = "errors.txt";
  ErrorHandler handler;
  handler.SetDefaultDir(dir);
  const int loaded = handler.Initialize(name.data(), -1);
  if (loaded != 0) {
    std::fprintf(stderr, "cannot load %s/%s: result %d\n", dir, name.c_str(), loaded);
    return 1;
  }

  // Log files go to a fresh temporary directory.
  char pattern[] = "/tmp/vq0300-example-XXXXXX";
  const char* logs = mkdtemp(pattern);
  if (logs == nullptr) return 1;
  const std::string channel_log = std::string(logs) + "/messages.log";
  const std::string run_log = std::string(logs) + "/run.log";

  // 2. A message channel to standard output and to its log file.
  LMsgOutput out;
  out.InitLogFile(channel_log.c_str(), true);
  out.SetOutputOptions(LMSG_OUTPUT_STDOUT | LMSG_OUTPUT_LOG);
  LLog log(run_log.c_str(), "w");
  log.LogHeader("vq0300 example: device check");
  log.WriteMessage2("check started\n");

  // 3. A step fails; its definition gives the text, and the handler records it.
  unsigned short number = 0, offset = 0;
  if (!VerifyDevice(&number, &offset)) {
    ErrorElement* element = handler.GetErrorElement(number, offset);
    const char* text = element != nullptr ? element->GetErrorMessage() : "unknown error";
    handler.SetErrorOccured(element != nullptr ? element->GetErrorMessage() : nullptr);

    // 4. The report goes to the console and the channel's log, piece by piece.
    const int reported =
        out.Output("error %d.%d: %s (%s)\n", offset, number, text,
                   element != nullptr && element->m_wContinue ? "continue" : "stop");
    if (reported != 0) std::fprintf(stderr, "the report failed: %d\n", reported);
    log.WriteMessage2("verify failed\n");
  }

  // 5. At the end, the recorded errors.
  out.Output("%d error(s) recorded:\n", handler.GetNumberOfErrorOccured());
  for (int i = 0; i < handler.GetNumberOfErrorOccured(); ++i) {
    out.Output("  %d: %s\n", i, handler.GetErrorOccured(i));
  }
  log.WriteMessage2("check ended\n");
  std::printf("channel log: %s\nrun log:     %s\n", channel_log.c_str(), run_log.c_str());
  return 0;
}
