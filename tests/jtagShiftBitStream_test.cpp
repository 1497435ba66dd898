#include <vq0300/jtagShiftBitStream.h>

#include "ModelRun.h"

// Every call against a model of the bytes (-1 until written) and the cursor:
// (bits + 7) / 8 bytes and the cursor on the last after InitBuffer and
// ResetIndex; a read moves the cursor to its index, hit or miss; a failed
// write puts it on the nearest end; the sequential calls work at the cursor
// and step down, a read always (not below INT_MIN), a write on success only.
static void RunStreamOps(model::OpInput& in) {
  jtagShiftBitStream stream;
  std::vector<int> bytes;
  int bits = 0, cursor = 0;
  while (!in.Done()) {
    const int op = in.Int(0, 5), n = static_cast<int>(bytes.size());
    const int k = op == 2 || op == 4 ? in.Index(n) : cursor;  // positioned, or at the cursor
    const bool inside = k >= 0 && k < n;
    const auto b = static_cast<unsigned char>(in.Byte());
    if (op == 0) {
      bits = in.Edge({INT_MIN, -1, 0, 1, 8, 9}, 0, 30);
      stream.InitBuffer(bits);
      bits = std::max(bits, 0);
      bytes.assign(static_cast<size_t>((bits + 7) / 8), -1);
      cursor = static_cast<int>(bytes.size()) - 1;
    } else if (op == 1) {
      stream.ResetIndex();
      cursor = n - 1;
    } else if (op < 4) {
      const int got = op == 2 ? stream.ReadByte(k) : stream.SequentialRead();
      const int want = inside ? bytes[static_cast<size_t>(k)] : 0;
      MODEL_CHECK(want < 0 || got == want);
      cursor = op == 2 || k == INT_MIN ? k : k - 1;
    } else {
      MODEL_CHECK((op == 4 ? stream.WriteByte(k, b) : stream.SequentialWrite(b)) == inside);
      if (inside) bytes[static_cast<size_t>(k)] = b;
      cursor = inside ? k - (op == 5 ? 1 : 0) : (k < 0 ? 0 : n - 1);
    }
    MODEL_CHECK(stream.GetBufferBitSize() == bits);
  }
}

TEST(jtagShiftBitStream, OperationsMatchAModel) { model::RunSeeds(RunStreamOps, 20, 400); }
