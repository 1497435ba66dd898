#include <vq0300/LCirByteBuffer.h>

#include <algorithm>

#include "ModelRun.h"

// Writes, clears and new sizes (below 1 among them) against the byte each slot
// holds and the count written: a write goes to slot count % size, a read of a
// stream position to its slot, a negative position to slot 0. Without storage
// nothing is kept and every read gives 0.
void RunRingOps(model::OpInput& in) {
  LCirByteBuffer ring;
  std::vector<int> slots;  // -1 until written after the last Allocate
  int written = 0;
  while (!in.Done()) {
    const int op = in.Int(0, 5), size = static_cast<int>(slots.size());
    if (op == 0) {
      const int n = in.Edge({INT_MIN, -1, 0, 1}, 2, 6);
      ring.Allocate(n);
      slots.assign(static_cast<size_t>(std::max(n, 0)), -1);
      written = 0;
    } else if (op == 1) {
      ring.ClearBuffer();  // the slots keep their bytes
      written = 0;
    } else {
      const unsigned char b = in.Byte();
      op == 2 ? ring.WriteData(b) : ring.WriteData(static_cast<char>(b));
      if (size > 0) slots[static_cast<size_t>(written++ % size)] = b;
    }
    const int n = static_cast<int>(slots.size()), i = in.Index(2 * n);
    const int slot = n > 0 ? slots[static_cast<size_t>(std::max(i, 0) % n)] : 0;
    MODEL_CHECK(ring.GetBlockSize() == n);
    MODEL_CHECK(ring.GetLinearIndex() == written);
    MODEL_CHECK(ring.GetCircularIndex() == (n > 0 ? written % n : 0));
    MODEL_CHECK(slot < 0 || ring.ReadData(i) == slot);
  }
}

TEST(LCirByteBuffer, OperationsMatchAModel) { model::RunSeeds(RunRingOps, 20, 300); }
