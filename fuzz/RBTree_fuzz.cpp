// libFuzzer drives the RBTree decoder and invariant checks of the ctest.
#include "RBTreeModel.h"

MODEL_FUZZ_TARGET(rbmodel::RunRBTreeOps)
