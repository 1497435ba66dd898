#include <vq0300/jtagShiftBitStream.h>

#include "ModelRun.h"

// Every call against a model of the bytes (-1 until written) and the cursor:
// (bits + 7) / 8 bytes and the cursor on the last after InitBuffer and
// ResetIndex; a read moves the cursor to its index, hit or miss; a failed
// write puts it on the nearest end; the sequential calls work at the cursor
// and step down, a read always (not below INT_MIN), a write on success only.
void RunStreamOps(model::OpInput& in) {
  jtagShiftBitStream stream;
  std::vector<int> bytes;
  int bits = 0, cursor = 0;
  while (!in.Done()) {
    const int op = in.Int(0, 5), n = static_cast<int>(bytes.size());
    const int k = op == 2 || op == 4 ? in.Index(n) : cursor, was = k >= 0 && k < n ? bytes[k] : 0;
    const auto b = static_cast<unsigned char>(in.Byte());
    if (op == 0) {
      stream.InitBuffer(bits = in.Edge({INT_MIN, -1, 0, 1, 8, 9}, 0, 30));
      bits = std::max(bits, 0);
      bytes.assign(static_cast<size_t>((bits + 7) / 8), -1);
    } else if (op == 2 || op == 3) {
      const int got = op == 2 ? stream.ReadByte(k) : stream.SequentialRead();
      MODEL_CHECK(was < 0 || got == was);
    } else if (op > 3) {
      const bool hit = k >= 0 && k < n;
      MODEL_CHECK((op == 4 ? stream.WriteByte(k, b) : stream.SequentialWrite(b)) == hit);
      if (hit) bytes[static_cast<size_t>(k)] = b;
      cursor = hit ? k - (op == 5 ? 1 : 0) : (k < 0 ? 0 : n - 1);
    } else {
      stream.ResetIndex();
    }
    if (op < 2) cursor = static_cast<int>(bytes.size()) - 1;
    if (op == 2 || op == 3) cursor = op == 2 || k == INT_MIN ? k : k - 1;
    MODEL_CHECK(stream.GetBufferBitSize() == bits);
  }
}

TEST(jtagShiftBitStream, OperationsMatchAModel) { model::RunSeeds(RunStreamOps, 20, 400); }
