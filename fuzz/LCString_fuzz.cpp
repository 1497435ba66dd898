// LCString and LString against their model, over fuzzer input (see tests/TextModel.h).
#include "TextModel.h"

MODEL_FUZZ_TARGET(text_model::RunTextOps)
