// Numbered error messages from a definition file, and the record of a run.
#include <vq0300/vq0300.h>

#include <cstdio>
#include <string>

int main(int argc, char** argv) {
  ErrorHandler handler;
  // The directory of the definition file; a real tool passes an absolute one.
  handler.SetDefaultDir(argc > 1 ? argv[1] : ".");
  std::string name = "errors.txt";
  const int rc = handler.Initialize(name.data(), -1);  // -1: every block
  if (rc != 0) {
    std::fprintf(stderr, "cannot load %s: %d\n", name.c_str(), rc);
    return 1;
  }
  ErrorElement* element = handler.GetErrorElement(2, 200);  // number 2 of block 200
  if (element == nullptr) return 1;
  std::printf("%08X %s (%s)\n", element->m_dwErrorCode, element->GetErrorMessage(),
              element->m_wContinue ? "continue" : "stop");

  handler.SetErrorOccured(element->GetErrorMessage());
  for (int i = 0; i < handler.GetNumberOfErrorOccured(); ++i) {
    std::printf("occurred: %s\n", handler.GetErrorOccured(i));
  }
  return 0;
}
