// LFile: every failure of a stream becomes a stored code with a text.
#include <vq0300/vq0300.h>

#include <cstdio>
#include <filesystem>
#include <string>

int main() {
  const std::string path =
      (std::filesystem::temp_directory_path() / "vq0300-readme-file.txt").string();
  {
    LFile out(path.c_str(), "w");
    out.WriteLine("%d items, %s\n", 3, "checked");  // WriteLine adds no line end
    if (out.WriteLine("%u\n", 4) != 0) {            // "u" is no conversion letter
      std::printf("refused: %s\n", out.GetErrorMessage());
    }
  }  // the destructor closes the file

  LFile in(path.c_str(), "r");
  for (;;) {
    LCString line;
    if (in.ReadLine(line) != 0) break;  // -6 once nothing is left
    // At the end the first call gives 0 and delivers nothing; the next gives -6.
    if (!line.IsEmpty()) std::printf("read: %s", line.c_str());
  }
  std::printf("stopped: %s\n", in.GetErrorMessage());

  LFile missing("/nonexistent/file", "r");  // a failed fopen stores errno
  std::printf("code %d: %s\n", missing.GetErrorCode(), missing.GetErrorMessage());
  std::filesystem::remove(path);
  return 0;
}
