// A first tour of libvq0300: an ErrorHandler tied to a file, recording the
// errors of a run and reading them back.
#include <vq0300/vq0300.h>

#include <cstdio>
#include <string>

int main() {
  // The handler works only while its definition file can be opened; this
  // program's own source directory stands in for a real definition file.
  std::string name = "example.cpp";
  ErrorHandler handler;
  handler.SetDefaultDir(VQ0300_EXAMPLES_DIR);
  handler.SetErrorFilename(name.data());

  std::string first = "could not open the input";
  std::string second = "checksum mismatch";
  handler.SetErrorOccured(first.data());
  handler.SetErrorOccured(second.data());

  std::printf("recorded %d errors:\n", handler.GetNumberOfErrorOccured());
  for (int i = 0; i < handler.GetNumberOfErrorOccured(); ++i) {
    std::printf("  %d: %s\n", i, handler.GetErrorOccured(i));
  }
  return 0;
}
