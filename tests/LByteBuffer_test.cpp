#include <vq0300/LByteBuffer.h>

#include <pthread.h>

#include "ModelRun.h"

namespace {

// A caller's class making its own blocks; no data members, since the head
// frees the blocks behind it as plain LByteBuffer.
class Derived : public LByteBuffer {
 public:
  using LByteBuffer::LByteBuffer;
  LByteBuffer* AllocateNewBlock() override { return m_pNextBlock = new Derived(this); }
};

// Appends of texts, bytes and copied blocks, overwrites, reads and clears
// against a string, on a head of block size 1 to 4 of the plain or the derived
// class. After each step the blocks hold the string, each but the last full
// and of the head's class, and an index past the end misses.
void RunBufferOps(model::OpInput& in) {
  const int size = in.Int(1, 4);
  const bool derived = in.Bool();
  LByteBuffer plain(size);
  Derived own(size);
  LByteBuffer& head = derived ? own : plain;
  std::string want;
  while (!in.Done()) {
    std::string text = in.Text(2 * size + 1, "ab\x80");
    const int op = in.Int(0, 4), i = in.Index(static_cast<int>(want.size()));
    const size_t at = i < 0 ? 1 : static_cast<size_t>(i);  // a negative index is 1
    const unsigned char byte = in.Byte();
    LByteBuffer* last = head.GetLastBlock(&head);  // appends go to the last block
    model::Step() = "op " + std::to_string(op) + " on " + want;
    if (op == 0) {
      MODEL_CHECK(last->WriteData(text.data()) == head.GetLastBlock(&head));
      want += text;
    } else if (op == 1) {  // only the first block of the source is copied, from any block
      LByteBuffer source(static_cast<int>(text.size()) + 1);
      source.WriteData((text + "#tail").data());
      LByteBuffer* receiver = head.GetBlock(in.Int(0, 2));
      (receiver != nullptr ? receiver : &head)->CopyBlock(&source);
      want += text + "#";
    } else if (op == 2) {  // a full block refuses a byte and grows no block
      const bool fits = want.empty() || want.size() % static_cast<size_t>(size) != 0;
      MODEL_CHECK(last->WriteData(static_cast<char>(byte)) == fits);
      if (fits) want += static_cast<char>(byte);
    } else if (op == 3) {
      MODEL_CHECK(head.WriteData(i, byte) == (at < want.size()));
      if (at < want.size()) want[at] = static_cast<char>(byte);
    } else {  // from any block: only the head stays, with its storage
      unsigned char* storage = head.GetDataBlock();
      LByteBuffer* from = head.GetBlock(in.Int(0, 2));
      (from != nullptr ? from : &head)->ClearBuffer();
      MODEL_CHECK(head.GetDataBlock() == storage);
      want.clear();
    }
    const int n = static_cast<int>(want.size());
    MODEL_CHECK(head.GetTotalSize() == n);
    LByteBuffer* reader = in.Bool() && n > size ? head.GetBlock(1) : &head;  // counts from itself
    const size_t pos = at + (reader == &head ? 0 : size);
    MODEL_CHECK(reader->ReadData(i) ==
                (pos < want.size() ? static_cast<unsigned char>(want[pos]) : 0));
    std::string got;
    int blocks = 0;
    LByteBuffer* end = &head;
    for (LByteBuffer* b = &head; b != nullptr; end = b, b = b->GetNextBlock(), ++blocks) {
      MODEL_CHECK(b->GetDataSize() == size || b->GetNextBlock() == nullptr);
      MODEL_CHECK(b->GetBlockSize() == size);
      MODEL_CHECK((dynamic_cast<Derived*>(b) != nullptr) == derived);
      got.append(reinterpret_cast<char*>(b->GetDataBlock()), b->GetDataSize());
    }
    MODEL_CHECK(got == want);
    MODEL_CHECK(blocks == (n == 0 ? 1 : (n + size - 1) / size));
    MODEL_CHECK(head.GetLastBlock(&head) == end);
    MODEL_CHECK(head.GetBlock(blocks - 1) == (blocks > 1 ? end : nullptr));
    MODEL_CHECK(head.GetBlock(blocks) == nullptr);
  }
}

// A class whose new block is the receiver itself: a full block that takes
// nothing, where appending must stop.
class Refusing : public LByteBuffer {
 public:
  using LByteBuffer::LByteBuffer;
  LByteBuffer* AllocateNewBlock() override { return this; }
};

}  // namespace

TEST(LByteBuffer, OperationsMatchAString) { model::RunSeeds(RunBufferOps, 30, 300); }

TEST(LByteBuffer, BlocksMadeApart) {
  LByteBuffer head(2), bare(nullptr), by_default(0);
  Refusing refusing(4);
  head.WriteData(const_cast<char*>("abc"));
  LByteBuffer* second = head.GetNextBlock();
  EXPECT_EQ(LByteBuffer(&head).GetBlockSize(), 2);  // the size of the block ahead, not linked
  EXPECT_EQ(head.GetNextBlock(), second);
  EXPECT_EQ(head.AllocateNewBlock()->GetNextBlock(), second);  // linked in between
  EXPECT_EQ(by_default.GetBlockSize(), 32000);
  EXPECT_EQ(bare.GetBlockSize(), 32000);
  EXPECT_EQ(bare.GetDataBlock(), nullptr);  // no storage: takes no byte
  EXPECT_FALSE(bare.WriteData('x'));
  EXPECT_EQ(bare.WriteData(const_cast<char*>("xy")), &bare);
  bare.CopyBlock(&head);
  EXPECT_EQ(bare.GetTotalSize(), 0);
  EXPECT_EQ(refusing.WriteData(const_cast<char*>("abcdef")), &refusing);
  EXPECT_EQ(refusing.GetTotalSize(), 4);
  EXPECT_EQ(head.GetLastBlock(nullptr), nullptr);
}

// A chain of 100,000 blocks built, cleared and freed on a thread with a 64 KiB
// stack: a walk that recursed per block would overflow it.
TEST(LByteBuffer, LongChainsNeedNoStackDepth) {
  static int total = 0;
  pthread_attr_t attr;
  pthread_t thread;
  ASSERT_EQ(pthread_attr_init(&attr), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attr, 64 * 1024), 0);
  auto walk = [](void*) -> void* {
    std::string text(100'000, 'q');
    LByteBuffer head(1), other(1);
    head.WriteData(text.data());
    total = head.GetTotalSize();
    head.ClearBuffer();
    other.WriteData(text.data());  // its destructor frees the chain
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attr, walk, nullptr), 0);
  ASSERT_EQ(pthread_join(thread, nullptr), 0);
  EXPECT_EQ(total, 100'000);
}
