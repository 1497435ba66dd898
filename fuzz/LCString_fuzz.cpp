// LCString against its model, over fuzzer input (see tests/TextModel.h).
#include "TextModel.h"

MODEL_FUZZ_TARGET(text_model::RunLCStringOps)
