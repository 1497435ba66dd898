#include <vq0300/LCirByteBuffer.h>

#include "ModelRun.h"

// Writes, clears and new sizes (below 1 among them) against the byte each slot
// holds and the count written: a write goes to slot count % size, a read of a
// stream position to its slot, a negative position to slot 0, and a clear
// leaves the slots as they were. Without storage nothing is kept and every
// read gives 0.
static void RunRingOps(model::OpInput& in) {
  LCirByteBuffer ring;
  std::vector<int> slots;  // -1 until written after the last Allocate
  int written = 0;
  while (!in.Done()) {
    const int op = in.Int(0, 4), size = in.Edge({INT_MIN, -1, 0, 1}, 2, 6);
    const auto b = static_cast<unsigned char>(in.Byte());
    if (op <= 1) {  // a clear leaves the slots as they were
      op == 0 ? ring.Allocate(size) : ring.ClearBuffer();
      if (op == 0) slots.assign(static_cast<size_t>(std::max(size, 0)), -1);
      written = 0;
    } else {
      op == 2 ? ring.WriteData(b) : ring.WriteData(static_cast<char>(b));
      if (!slots.empty()) slots[static_cast<size_t>(written++) % slots.size()] = b;
    }
    const int n = static_cast<int>(slots.size()), i = in.Index(2 * n);
    MODEL_CHECK(ring.GetBlockSize() == n);
    MODEL_CHECK(ring.GetLinearIndex() == written);
    MODEL_CHECK(ring.GetCircularIndex() == (n > 0 ? written % n : 0));
    const int slot = n > 0 ? slots[static_cast<size_t>(std::max(i, 0) % n)] : 0;
    MODEL_CHECK(slot < 0 || ring.ReadData(i) == slot);
  }
}

TEST(LCirByteBuffer, OperationsMatchAModel) { model::RunSeeds(RunRingOps, 20, 300); }
