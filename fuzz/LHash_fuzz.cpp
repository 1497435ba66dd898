// libFuzzer drives the LHash decoder and model of the ctest.
#include "LHashModel.h"

MODEL_FUZZ_TARGET(hashmodel::RunLHashOps)
