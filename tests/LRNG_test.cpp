#include <vq0300/LRNG.h>

#include <climits>
#include <random>
#include <vector>

#include "ModelRun.h"

// Objects of edge and random seeds, each beside a std::mt19937 of its seed,
// drawn from in random turns: one seed fixes one sequence, drawing from one
// object never changes what another gives, and the vector's copies of objects
// in mid-sequence go on alike.
TEST(LRNG, ObjectsMatchStdMt19937) {
  model::RunSeeds(
      [](model::OpInput& in) {
        std::vector<LRNG> ours;
        std::vector<std::mt19937> refs;
        while (!in.Done()) {
          if (ours.empty() || in.Int(0, 3) == 0) {
            const int seed = in.Edge({0, 1, 5489, -1, INT_MIN}, INT_MIN, INT_MAX);
            ours.emplace_back(static_cast<unsigned>(seed));
            refs.emplace_back(static_cast<unsigned>(seed));
          }
          const int k = in.Int(0, static_cast<int>(ours.size()) - 1);
          for (int n = in.Int(1, 1300); n > 0; --n) MODEL_CHECK(ours[k].GetRandom() == refs[k]());
        }
      },
      4, 200);
}
