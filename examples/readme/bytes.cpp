// Chained and circular byte buffers, and a JTAG shift byte store.
#include <vq0300/vq0300.h>

#include <cstdio>

int main() {
  // A chain of 8-byte blocks: append text, carry on from the returned block.
  LByteBuffer head(8);
  char hello[] = "hello, ";
  char world[] = "chained world";
  LByteBuffer* end = head.WriteData(hello);
  end = end->WriteData(world);
  std::printf("%d bytes in %d-byte blocks, byte 7 is '%c'\n", head.GetTotalSize(),
              head.GetBlockSize(), head.ReadData(7));
  // Long runs are read block by block, each from its own offset 0.
  for (LByteBuffer* block = &head; block != nullptr; block = block->GetNextBlock()) {
    std::printf("[%.*s]", block->GetDataSize(), reinterpret_cast<char*>(block->GetDataBlock()));
  }
  std::printf("\n");

  // The last 4 bytes of a stream, read by stream position.
  LCirByteBuffer ring(4);
  for (char c : {'a', 'b', 'c', 'd', 'e', 'f'}) ring.WriteData(c);
  for (int pos = ring.GetLinearIndex() - ring.GetBlockSize(); pos < ring.GetLinearIndex(); ++pos) {
    std::printf("%c", ring.ReadData(pos));
  }
  std::printf("\n");

  // A 12-bit shift: two bytes, written and read back from the last byte down.
  jtagShiftBitStream shift;
  shift.InitBuffer(12);
  shift.SequentialWrite(0xA5);
  shift.SequentialWrite(0x0F);
  shift.ResetIndex();
  const unsigned first = shift.SequentialRead();
  const unsigned second = shift.SequentialRead();
  std::printf("%02X %02X, byte 0 is %02X\n", first, second, shift.ReadByte(0));
  return 0;
}
