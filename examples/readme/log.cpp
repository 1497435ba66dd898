// A time-stamped log that opens and closes its file at every call.
#include <vq0300/vq0300.h>

#include <cstdio>
#include <filesystem>

int main() {
  const std::string path = (std::filesystem::temp_directory_path() / "vq0300-readme.log").string();
  LLog log(path.c_str(), "w");  // "w" empties the file once, now
  log.LogHeader("readme example");
  log.WriteMessage2("started, 100% ready\n");  // written unchanged
  log.WriteMessage("50%% done\n");             // a format: "%%" gives one percent sign
  std::printf("log written to %s\n", log.GetLogFilename());
  std::filesystem::remove(path);
  return 0;
}
