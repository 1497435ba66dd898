#include <vq0300/LByteBuffer.h>

#include <pthread.h>

#include "ModelRun.h"

// Appends of texts, bytes and copied blocks, overwrites, reads and clears
// against a string, on a head of block size 1 to 4. After each step the chain
// holds the string in as few blocks as it needs, each but the last full, and
// an index past the end misses.
static void RunBufferOps(model::OpInput& in) {
  const int size = in.Int(1, 4);
  LByteBuffer head(size);
  std::string want;
  while (!in.Done()) {
    std::string text = in.Text(2 * size + 1, "ab\x80");
    const int op = in.Int(0, 4), i = in.Index(static_cast<int>(want.size()));
    const size_t at = i < 0 ? 1 : static_cast<size_t>(i);  // a negative index is 1
    const char c = static_cast<char>(in.Byte());
    LByteBuffer* last = head.GetLastBlock(&head);  // appends go to the last block
    if (op == 0) {
      MODEL_CHECK(last->WriteData(text.data()) == head.GetLastBlock(&head));
      want += text;
    } else if (op == 1) {  // only the source's own block, and from any block of the chain
      LByteBuffer source(static_cast<int>(text.size()) + 1);
      source.WriteData((text + "#tail").data());
      (head.GetBlock(1) != nullptr ? head.GetBlock(1) : &head)->CopyBlock(&source);
      want += text + "#";
    } else if (op == 2) {  // a full block refuses a byte and grows no block
      const bool fits = want.empty() || want.size() % static_cast<size_t>(size) != 0;
      MODEL_CHECK(last->WriteData(c) == fits);
      if (fits) want += c;
    } else if (op == 3) {
      MODEL_CHECK(head.WriteData(i, static_cast<unsigned char>(c)) == (at < want.size()));
      if (at < want.size()) want[at] = c;
    } else {
      last->ClearBuffer();  // from any block: only the head stays
      want.clear();
    }
    const int n = static_cast<int>(want.size());
    MODEL_CHECK(head.GetTotalSize() == n);
    MODEL_CHECK(head.ReadData(i) == (at < want.size() ? static_cast<unsigned char>(want[at]) : 0));
    std::string got;
    int blocks = 0;
    for (LByteBuffer* b = &head; b != nullptr; b = b->GetNextBlock(), ++blocks) {
      MODEL_CHECK(b->GetDataSize() == size || b->GetNextBlock() == nullptr);
      got.append(reinterpret_cast<char*>(b->GetDataBlock()), b->GetDataSize());
    }
    MODEL_CHECK(got == want);
    MODEL_CHECK(blocks == (n == 0 ? 1 : (n + size - 1) / size));
    MODEL_CHECK(head.GetBlock(blocks - 1) == (blocks > 1 ? head.GetLastBlock(&head) : nullptr));
    MODEL_CHECK(head.GetBlock(blocks) == nullptr);
  }
}

TEST(LByteBuffer, OperationsMatchAString) { model::RunSeeds(RunBufferOps, 30, 300); }

// A chain of 100,000 blocks built, cleared and freed on a thread with a 64 KiB
// stack: a walk that recursed per block would overflow it.
TEST(LByteBuffer, LongChainsNeedNoStackDepth) {
  pthread_attr_t attr;
  pthread_t thread;
  pthread_attr_init(&attr);
  ASSERT_EQ(pthread_attr_setstacksize(&attr, 64 * 1024), 0);
  auto walk = [](void*) -> void* {
    std::string text(100'000, 'q');
    LByteBuffer head(1), other(1);
    head.WriteData(text.data());
    other.WriteData(text.data());  // its destructor frees the chain
    EXPECT_EQ(head.GetTotalSize(), 100'000);
    head.ClearBuffer();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attr, walk, nullptr), 0);
  pthread_join(thread, nullptr);
}
