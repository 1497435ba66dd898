#include <vq0300/LByteBuffer.h>

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr std::size_t kLongChain = 1000000;  // sanitizer frames are larger
#else
constexpr std::size_t kLongChain = 10000000;
#endif

char* Text(const std::string& s) { return const_cast<char*>(s.c_str()); }

// The bytes of the chain from `block` on, read block by block.
std::string Contents(LByteBuffer* block) {
  std::string out;
  for (; block != nullptr; block = block->GetNextBlock()) {
    out.append(reinterpret_cast<char*>(block->GetDataBlock()),
               static_cast<std::size_t>(block->GetDataSize()));
  }
  return out;
}

// A caller's class that counts the blocks it creates; it adds no data
// members, since the head frees the blocks behind it as plain LByteBuffer.
int g_blocks_made = 0;
class CountingBuffer : public LByteBuffer {
 public:
  explicit CountingBuffer(int size) : LByteBuffer(size) {}
  explicit CountingBuffer(LByteBuffer* previous) : LByteBuffer(previous) {}
  LByteBuffer* AllocateNewBlock() override {
    ++g_blocks_made;
    m_pNextBlock = new CountingBuffer(this);
    return m_pNextBlock;
  }
};

}  // namespace

TEST(LByteBuffer, AppendGrowsOnlyWhenAByteDoesNotFit) {
  LByteBuffer head(4);
  EXPECT_EQ(head.WriteData(Text("abcd")), &head);
  EXPECT_FALSE(head.WriteData('e'));  // one-byte append: no block added
  EXPECT_EQ(head.GetNextBlock(), nullptr);
  LByteBuffer* end = head.WriteData(Text("efghij"));
  EXPECT_EQ(end, head.GetBlock(2));
  EXPECT_EQ(head.GetNextBlock()->GetTotalSize(), 6);
  EXPECT_EQ(end->WriteData(static_cast<char*>(nullptr)), end);
  EXPECT_EQ(head.GetBlock(0), nullptr);
  EXPECT_EQ(head.GetBlock(3), nullptr);
  EXPECT_EQ(LByteBuffer(0).GetBlockSize(), 32000);  // a size below 1 gives the default

  // Indexed access counts from the receiver; a negative index becomes 1.
  EXPECT_EQ(head.ReadData(10), 0);
  EXPECT_EQ(head.ReadData(-1), 'b');
  EXPECT_EQ(head.GetNextBlock()->ReadData(0), 'e');
  EXPECT_TRUE(head.WriteData(9, 'Z'));
  EXPECT_FALSE(head.WriteData(10, 'Q'));
  EXPECT_TRUE(head.WriteData(INT_MIN, static_cast<char>(0xFF)));
  EXPECT_EQ(Contents(&head), "a\xFF" "cdefghiZ");
  EXPECT_EQ(head.GetTotalSize(), 10);
}

TEST(LByteBuffer, MatchesAStringUnderRandomAppendsAndCopies) {
  std::mt19937 rng(20240601u);
  for (int round = 0; round < 30; ++round) {
    const int block_size = 1 + static_cast<int>(rng() % 9);
    LByteBuffer head(block_size);
    LByteBuffer* end = &head;
    std::string expected;
    for (int step = 0; step < 25; ++step) {
      std::string piece(rng() % 12, 'x');
      for (char& c : piece) c = static_cast<char>('a' + rng() % 26);
      expected += piece;
      if (rng() % 2 == 0 || piece.empty()) {
        end = end->WriteData(Text(piece));
        ASSERT_EQ(end, head.GetLastBlock(&head));
      } else {  // a two-block source, copied from a block inside the chain
        LByteBuffer source(static_cast<int>(piece.size()));
        source.WriteData(Text(piece + "##"));
        (head.GetBlock(1) ? head.GetBlock(1) : &head)->CopyBlock(&source);
        end = head.GetLastBlock(&head);
      }
    }
    ASSERT_EQ(Contents(&head), expected);
    ASSERT_EQ(head.GetTotalSize(), static_cast<int>(expected.size()));
    for (LByteBuffer* b = &head; b != end; b = b->GetNextBlock()) ASSERT_EQ(b->GetDataSize(), block_size);
    for (std::size_t i = 0; i < expected.size(); ++i) {
      ASSERT_EQ(head.ReadData(static_cast<int>(i)), static_cast<unsigned char>(expected[i]));
    }
  }
}

TEST(LByteBuffer, ClearBufferKeepsOnlyTheHead) {
  LByteBuffer head(4);
  unsigned char* storage = head.GetDataBlock();
  head.WriteData(Text("0123456789"));
  head.GetBlock(1)->ClearBuffer();  // from any block; that block dies too
  EXPECT_EQ(head.GetNextBlock(), nullptr);
  EXPECT_EQ(head.GetTotalSize(), 0);
  EXPECT_EQ(head.GetDataBlock(), storage);
  head.WriteData(Text("xyz"));
  EXPECT_EQ(Contents(&head), "xyz");
}

TEST(LByteBuffer, UnlinkedStoragelessAndSplicedBlocks) {
  LByteBuffer head(2);
  head.WriteData(Text("ab"));
  LByteBuffer loose(&head);  // takes the size, is not linked
  EXPECT_EQ(loose.GetBlockSize(), 2);
  EXPECT_EQ(head.GetNextBlock(), nullptr);

  LByteBuffer bare(nullptr);  // no storage: takes no bytes
  EXPECT_EQ(bare.GetDataBlock(), nullptr);
  EXPECT_FALSE(bare.WriteData('x'));
  EXPECT_FALSE(bare.WriteData(0, 'x'));
  EXPECT_EQ(bare.WriteData(Text("abc")), &bare);
  bare.CopyBlock(&head);
  EXPECT_EQ(bare.GetTotalSize(), 0);
  head.CopyBlock(nullptr);

  // A new block on a block that has a successor is linked in between.
  head.WriteData(Text("cd"));
  LByteBuffer* old_next = head.GetNextBlock();
  EXPECT_EQ(head.AllocateNewBlock()->GetNextBlock(), old_next);
  EXPECT_EQ(Contents(&head), "abcd");
}

TEST(LByteBuffer, DerivedAllocateNewBlockIsHonoured) {
  g_blocks_made = 0;
  CountingBuffer head(4);
  LByteBuffer* end = head.WriteData(Text("0123456789"));
  EXPECT_EQ(g_blocks_made, 2);
  EXPECT_NE(dynamic_cast<CountingBuffer*>(end), nullptr);
  LByteBuffer source(8);
  source.WriteData(Text("abcdefg"));
  head.CopyBlock(&source);  // 2 bytes fill the last block, then 4 + 1
  EXPECT_EQ(g_blocks_made, 4);
  EXPECT_EQ(Contents(&head), "0123456789abcdefg");
}

TEST(LByteBuffer, LongChainsAreFreedWithoutDeepRecursion) {
  const std::string text(kLongChain, 'q');
  LByteBuffer head(1);
  head.WriteData(Text(text));
  EXPECT_EQ(head.GetTotalSize(), static_cast<int>(kLongChain));
  head.ClearBuffer();
  EXPECT_EQ(head.GetNextBlock(), nullptr);
  LByteBuffer other(1);
  other.WriteData(Text(text));  // its destructor frees the chain
}
