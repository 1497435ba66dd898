#include <vq0300/LStack.h>

#include "ModelRun.h"

namespace {

LObject g_objects[3];

// The stack beside a std::vector: as many pops as pushes, null pushed too,
// an empty stack's pop answering null; then the depth.
void RunStackOps(model::OpInput& in) {
  LStack stack;
  std::vector<LObject*> want;
  while (!in.Done()) {
    const int pick = in.Int(0, 7);
    if (pick < 4) {
      want.push_back(pick < 3 ? &g_objects[pick] : nullptr);
      stack.Push(want.back());
    } else {
      MODEL_CHECK(stack.Pop() == (want.empty() ? nullptr : want.back()));
      if (!want.empty()) want.pop_back();
    }
    MODEL_CHECK(stack.GetStackElement() == static_cast<int>(want.size()));
    MODEL_CHECK(stack.IsEmpty() == want.empty());
  }
}

}  // namespace

TEST(LStack, EveryOperationAgreesWithAVector) { model::RunSeeds(RunStackOps, 20, 400); }
