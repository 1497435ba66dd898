// The format scan of LFile::WriteLine, LMsgOutput::Output and PrintLog
// beside its model, on formats and arguments decoded from the fuzzer's bytes.
#include "FormatModel.h"

MODEL_FUZZ_TARGET(format_model::RunFormatOps)
