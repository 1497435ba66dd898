// LMsgOutput: each piece of a message to the console and to a log file.
#include <vq0300/vq0300.h>

#include <cstdio>
#include <filesystem>
#include <string>

int main() {
  const std::string path =
      (std::filesystem::temp_directory_path() / "vq0300-readme-messages.log").string();
  LMsgOutput out;
  if (out.InitLogFile(path.c_str(), true) != 0) return 1;      // true: start the file afresh
  out.SetOutputOptions(LMSG_OUTPUT_STDOUT | LMSG_OUTPUT_LOG);  // InitLogFile sets no bit
  out.Output("%d files, %s\n", 3, "all checked");              // to standard output and the log
  out.Output(LMSG_OUTPUT_STDOUT, "total %5.1f MB\n", 12.5);    // console only, from now on
  if (out.Output("%u\n", 1) == -1) out.Print("-1: \"u\" is no conversion letter\n");
  out.SetOutputOptions(LMSG_OUTPUT_LOG);  // quiet console: failures show in the result alone
  const int result = out.Output("done\n");
  std::printf("last result %d\n", result);
  std::filesystem::remove(path);
  return 0;
}
