#include <vq0300/LRNG.h>

#include "ModelRun.h"

// Objects of edge and random seeds, each beside a std::mt19937 of its seed,
// drawn from in random turns: one seed fixes one sequence, and drawing from
// one object never changes what another gives. The vector's copies of objects
// in mid-sequence go on alike.
static void RunRngOps(model::OpInput& in) {
  std::vector<LRNG> ours;
  std::vector<std::mt19937> refs;
  while (!in.Done()) {
    const auto seed = static_cast<unsigned>(in.Edge({0, 1, 5489, -1, INT_MIN}, INT_MIN, INT_MAX));
    ours.emplace_back(seed);
    refs.emplace_back(seed);
    const int k = in.Int(0, static_cast<int>(ours.size()) - 1);
    for (int n = in.Int(1, 1300); n > 0; --n) MODEL_CHECK(ours[k].GetRandom() == refs[k]());
  }
}

TEST(LRNG, ObjectsMatchStdMt19937) { model::RunSeeds(RunRngOps, 4, 120); }
