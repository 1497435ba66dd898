#include <vq0300/LRNG.h>

#include "ModelRun.h"

// Objects of edge and random seeds, each beside a std::mt19937 of its seed,
// drawn from in random turns: one seed fixes one sequence, and drawing from
// one object never changes what another gives. The vector's copies of objects
// in mid-sequence go on alike.
static void RunRngOps(model::OpInput& in) {
  std::vector<std::pair<LRNG, std::mt19937>> objects;
  while (!in.Done()) {
    const auto seed = static_cast<unsigned>(in.Edge({0, 1, 5489, -1, INT_MIN}, INT_MIN, INT_MAX));
    objects.emplace_back(seed, seed);
    auto& [ours, ref] =
        objects[static_cast<size_t>(in.Int(0, static_cast<int>(objects.size()) - 1))];
    for (int n = in.Int(1, 1300); n > 0; --n) MODEL_CHECK(ours.GetRandom() == ref());
  }
}

TEST(LRNG, ObjectsMatchStdMt19937) { model::RunSeeds(RunRngOps, 4, 120); }
