#include <vq0300/LByteBuffer.h>

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr int kLongChain = 1000000;  // sanitizer frames are larger
#else
constexpr int kLongChain = 10000000;
#endif

char* Text(const std::string& s) { return const_cast<char*>(s.c_str()); }

// The bytes of the chain from `block` on, read block by block.
std::string Contents(LByteBuffer* block) {
  std::string out;
  for (; block != nullptr; block = block->GetNextBlock())
    out.append(reinterpret_cast<char*>(block->GetDataBlock()), block->GetDataSize());
  return out;
}

// A caller's class making its own blocks. It adds no data members, since the
// head frees the blocks behind it as plain LByteBuffer.
class DerivedBuffer : public LByteBuffer {
 public:
  using LByteBuffer::LByteBuffer;
  LByteBuffer* AllocateNewBlock() override { return m_pNextBlock = new DerivedBuffer(this); }
};

}  // namespace

TEST(LByteBuffer, IndexedAccessCountsFromTheReceiver) {
  LByteBuffer head(4);
  LByteBuffer* end = head.WriteData(Text("abcdefghij"));  // [abcd] [efgh] [ij..]
  EXPECT_FALSE(head.WriteData('x'));  // a full block takes no byte and adds no block
  EXPECT_EQ(end, head.GetBlock(2));
  EXPECT_FALSE(head.GetBlock(3));
  EXPECT_FALSE(head.GetBlock(0));
  EXPECT_EQ(head.GetBlock(1)->GetTotalSize(), 6);
  EXPECT_EQ(head.GetBlock(1)->ReadData(1), 'f');
  EXPECT_EQ(head.ReadData(-1), 'b');  // a negative index becomes 1
  EXPECT_TRUE(head.WriteData(9, 'Z'));
  EXPECT_TRUE(head.WriteData(INT_MIN, static_cast<unsigned char>(0xFF)));
  EXPECT_FALSE(head.WriteData(10, 'Q'));
  EXPECT_EQ(head.ReadData(10), 0);
  EXPECT_EQ(Contents(&head), "a\377cdefghiZ");
  EXPECT_EQ(end->WriteData(static_cast<char*>(nullptr)), end);
  EXPECT_FALSE(head.GetLastBlock(nullptr));
  EXPECT_EQ(LByteBuffer(0).GetBlockSize(), 32000);  // a size below 1 gives the default
  unsigned char* storage = head.GetDataBlock();
  head.GetBlock(1)->ClearBuffer();  // from any block: only the head stays, with its storage
  EXPECT_FALSE(head.GetNextBlock());
  EXPECT_EQ(head.GetDataBlock(), storage);
  EXPECT_EQ(head.GetTotalSize(), 0);
}

// Random appends and copies against a string, for every block size from 1 to
// 9, on a plain head and on one whose class makes its own blocks: WriteData
// and CopyBlock must get every new block from the override.
TEST(LByteBuffer, RandomAppendsAndCopiesMatchAString) {
  std::mt19937 rng(20240601u);
  auto run = [&rng](auto& head, int block_size, bool derived) {
    std::string expected;
    for (int step = 0; step < 60; ++step) {
      std::string piece(rng() % 12, 'x');
      for (char& c : piece) c = static_cast<char>('a' + rng() % 26);
      expected += piece;
      if (rng() % 2 == 0 || piece.empty()) {
        LByteBuffer* end = head.GetLastBlock(&head)->WriteData(Text(piece));
        ASSERT_EQ(end, head.GetLastBlock(&head));
      } else {  // a two-block source, copied from a block inside the chain
        LByteBuffer source(static_cast<int>(piece.size()));
        source.WriteData(Text(piece + "##"));
        (head.GetBlock(1) ? head.GetBlock(1) : &head)->CopyBlock(&source);
      }
    }
    ASSERT_EQ(Contents(&head), expected);
    ASSERT_EQ(head.GetTotalSize(), static_cast<int>(expected.size()));
    for (LByteBuffer* b = &head; b; b = b->GetNextBlock()) {
      ASSERT_EQ(dynamic_cast<DerivedBuffer*>(b) != nullptr, derived);
      ASSERT_TRUE(b->GetDataSize() == block_size || !b->GetNextBlock());  // all but the last full
    }
    for (std::size_t i = 0; i < expected.size(); ++i)
      ASSERT_EQ(head.ReadData(static_cast<int>(i)), static_cast<unsigned char>(expected[i]));
  };
  for (int block_size = 1; block_size < 10; ++block_size) {
    LByteBuffer plain(block_size);
    DerivedBuffer derived(block_size);
    run(plain, block_size, false);
    run(derived, block_size, true);
  }
}

TEST(LByteBuffer, BlocksWithoutStorageAndSplicedBlocks) {
  LByteBuffer head(2), bare(nullptr);  // bare has no storage and takes no bytes
  head.WriteData(Text("ab"));
  EXPECT_EQ(LByteBuffer(&head).GetBlockSize(), 2);  // takes the size, is not linked
  EXPECT_FALSE(head.GetNextBlock());
  EXPECT_FALSE(bare.GetDataBlock());
  EXPECT_FALSE(bare.WriteData('x'));
  EXPECT_FALSE(bare.WriteData(0, 'x'));
  bare.CopyBlock(&head);
  EXPECT_EQ(bare.WriteData(Text("abc")), &bare);
  EXPECT_EQ(bare.GetTotalSize(), 0);
  head.CopyBlock(nullptr);
  head.WriteData(Text("cd"));
  LByteBuffer* old_next = head.GetNextBlock();  // a new block goes in between
  EXPECT_EQ(head.AllocateNewBlock()->GetNextBlock(), old_next);
  EXPECT_EQ(Contents(&head), "abcd");
}

TEST(LByteBuffer, LongChainsAreFreedWithoutDeepRecursion) {
  const std::string text(kLongChain, 'q');
  LByteBuffer head(1), other(1);
  head.WriteData(Text(text));
  EXPECT_EQ(head.GetTotalSize(), kLongChain);
  head.ClearBuffer();
  EXPECT_EQ(head.GetNextBlock(), nullptr);
  other.WriteData(Text(text));  // its destructor frees the chain
}
