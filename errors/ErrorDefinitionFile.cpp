// Loading of error definition files into an ErrorHandler.
#include "vq0300/ErrorHandler.h"

// The definition-file loader is not in yet: until it is, a load reports -1
// and leaves the handler as it was.
int ErrorHandler::Initialize(char* /*name*/, int /*selector*/) { return -1; }

int ErrorHandler::GetErrorList(int /*selector*/) { return -1; }
