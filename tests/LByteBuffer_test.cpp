#include <vq0300/LByteBuffer.h>

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>
#include <vector>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSanitized = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif
#else
constexpr bool kSanitized = false;
#endif

// The bytes of the chain from `block` on, read block by block.
std::string Contents(LByteBuffer* block) {
  std::string out;
  for (; block != nullptr; block = block->GetNextBlock()) {
    out.append(reinterpret_cast<const char*>(block->GetDataBlock()),
               static_cast<std::size_t>(block->GetDataSize()));
  }
  return out;
}

std::vector<int> DataSizes(LByteBuffer* block) {
  std::vector<int> sizes;
  for (; block != nullptr; block = block->GetNextBlock()) sizes.push_back(block->GetDataSize());
  return sizes;
}

// A caller's block class that counts the blocks it creates. It adds no data
// members, as the head frees the blocks behind it as plain LByteBuffer.
int g_blocks_made = 0;

class CountingBuffer : public LByteBuffer {
 public:
  explicit CountingBuffer(int size) : LByteBuffer(size) {}
  explicit CountingBuffer(LByteBuffer* previous) : LByteBuffer(previous) {}
  LByteBuffer* AllocateNewBlock() override {
    ++g_blocks_made;
    LByteBuffer* block = new CountingBuffer(this);
    m_pNextBlock = block;
    return block;
  }
};

// A class whose AllocateNewBlock yields nothing.
class RefusingBuffer : public LByteBuffer {
 public:
  explicit RefusingBuffer(int size) : LByteBuffer(size) {}
  LByteBuffer* AllocateNewBlock() override { return nullptr; }
};

}  // namespace

TEST(LByteBuffer, ConstructionSetsBlockSize) {
  LByteBuffer standard;
  EXPECT_EQ(standard.GetBlockSize(), 32000);
  EXPECT_EQ(standard.GetDataSize(), 0);
  EXPECT_EQ(standard.GetTotalSize(), 0);
  EXPECT_NE(standard.GetDataBlock(), nullptr);
  EXPECT_EQ(standard.GetNextBlock(), nullptr);

  LByteBuffer four(4);
  EXPECT_EQ(four.GetBlockSize(), 4);
  // Sizes below 1 fall back to the default.
  LByteBuffer zero(0);
  LByteBuffer negative(-5);
  EXPECT_EQ(zero.GetBlockSize(), 32000);
  EXPECT_EQ(negative.GetBlockSize(), 32000);
  EXPECT_NE(zero.GetDataBlock(), nullptr);

  // A block built behind another takes its size but is not linked by it.
  four.WriteData(const_cast<char*>("ab"));
  LByteBuffer behind(&four);
  EXPECT_EQ(behind.GetBlockSize(), 4);
  EXPECT_EQ(behind.GetDataSize(), 0);
  EXPECT_NE(behind.GetDataBlock(), nullptr);
  EXPECT_EQ(four.GetNextBlock(), nullptr);
  EXPECT_EQ(four.GetDataSize(), 2);
}

TEST(LByteBuffer, TextAppendGrowsOnlyWhenAByteDoesNotFit) {
  LByteBuffer head(4);
  EXPECT_EQ(head.WriteData(const_cast<char*>("abcd")), &head);
  EXPECT_EQ(head.GetDataSize(), 4);
  EXPECT_EQ(head.GetNextBlock(), nullptr);

  LByteBuffer* second = head.WriteData(const_cast<char*>("e"));
  ASSERT_NE(second, &head);
  EXPECT_EQ(head.GetNextBlock(), second);
  EXPECT_EQ(second->GetBlockSize(), 4);
  EXPECT_EQ(Contents(&head), "abcde");

  // Null and empty texts change nothing and give back the receiver.
  EXPECT_EQ(second->WriteData(static_cast<char*>(nullptr)), second);
  EXPECT_EQ(second->WriteData(const_cast<char*>("")), second);
  EXPECT_EQ(head.GetTotalSize(), 5);

  LByteBuffer ten(4);
  LByteBuffer* end = ten.WriteData(const_cast<char*>("0123456789"));
  EXPECT_EQ(DataSizes(&ten), (std::vector<int>{4, 4, 2}));
  EXPECT_EQ(end, ten.GetBlock(2));
  EXPECT_EQ(ten.GetTotalSize(), 10);
  EXPECT_EQ(ten.GetNextBlock()->GetTotalSize(), 6);
  // Going on from the returned block continues the run.
  end = end->WriteData(const_cast<char*>("abc"));
  EXPECT_EQ(Contents(&ten), "0123456789abc");
  EXPECT_EQ(end, ten.GetBlock(3));
}

TEST(LByteBuffer, OneByteAppendNeverAddsABlock) {
  LByteBuffer head(2);
  EXPECT_TRUE(head.WriteData(static_cast<unsigned char>(0xFF)));
  EXPECT_TRUE(head.WriteData('x'));
  EXPECT_FALSE(head.WriteData('y'));
  EXPECT_FALSE(head.WriteData(static_cast<unsigned char>(1)));
  EXPECT_EQ(head.GetNextBlock(), nullptr);
  EXPECT_EQ(head.GetDataSize(), 2);
  // The byte-by-byte caller grows the chain itself.
  LByteBuffer* next = head.AllocateNewBlock();
  EXPECT_EQ(head.GetNextBlock(), next);
  EXPECT_TRUE(next->WriteData('y'));
  EXPECT_EQ(head.ReadData(0), 0xFF);
  EXPECT_EQ(Contents(&head), "\xFFxy");
}

TEST(LByteBuffer, IndexedAccessCountsFromTheReceiver) {
  const std::string text = "0123456789";
  LByteBuffer head(4);
  head.WriteData(const_cast<char*>(text.c_str()));
  for (int i = 0; i < 10; ++i) EXPECT_EQ(head.ReadData(i), text[static_cast<std::size_t>(i)]);
  EXPECT_EQ(head.ReadData(10), 0);  // past the data of the last block
  EXPECT_EQ(head.ReadData(12), 0);  // past the end of the chain
  EXPECT_EQ(head.ReadData(INT_MAX), 0);
  // A negative index becomes 1.
  EXPECT_EQ(head.ReadData(-1), '1');
  EXPECT_EQ(head.ReadData(INT_MIN), '1');
  LByteBuffer* second = head.GetNextBlock();
  EXPECT_EQ(second->ReadData(0), '4');
  EXPECT_EQ(second->ReadData(5), '9');
  EXPECT_EQ(second->ReadData(6), 0);

  EXPECT_TRUE(head.WriteData(9, static_cast<unsigned char>('Z')));
  EXPECT_FALSE(head.WriteData(10, static_cast<unsigned char>('Q')));
  EXPECT_FALSE(head.WriteData(INT_MAX, 'Q'));
  EXPECT_TRUE(head.WriteData(-7, 'N'));             // position 1
  EXPECT_TRUE(second->WriteData(0, static_cast<char>(-1)));  // same eight bits
  EXPECT_EQ(Contents(&head), "0N23\xFF" "5678Z");
  EXPECT_EQ(head.GetTotalSize(), 10);
  EXPECT_EQ(second->GetNextBlock()->GetNextBlock(), nullptr);
}

TEST(LByteBuffer, GetBlockAndGetLastBlock) {
  LByteBuffer head(3);
  head.WriteData(const_cast<char*>("abcdefg"));
  EXPECT_EQ(head.GetBlock(0), nullptr);
  EXPECT_EQ(head.GetBlock(-1), nullptr);
  EXPECT_EQ(head.GetBlock(1), head.GetNextBlock());
  EXPECT_EQ(head.GetBlock(2)->ReadData(0), 'g');
  EXPECT_EQ(head.GetBlock(3), nullptr);
  EXPECT_EQ(head.GetBlock(INT_MAX), nullptr);
  EXPECT_EQ(head.GetLastBlock(&head), head.GetBlock(2));
  EXPECT_EQ(head.GetNextBlock()->GetLastBlock(&head), head.GetBlock(2));
  EXPECT_EQ(head.GetLastBlock(nullptr), nullptr);
}

TEST(LByteBuffer, CopyBlockAppendsOneBlockAtTheEndOfTheChain) {
  LByteBuffer source(4);
  source.WriteData(const_cast<char*>("ABCDEF"));  // blocks ABCD, EF
  source.WriteData(0, '\0');                      // a zero byte is copied too

  LByteBuffer target(3);
  target.WriteData(const_cast<char*>("xy"));
  // Called on the head: fills the last free byte, then adds a block.
  target.CopyBlock(&source);
  EXPECT_EQ(Contents(&target), std::string("xy\0BCD", 6));
  EXPECT_EQ(DataSizes(&target), (std::vector<int>{3, 3}));
  // Called on a middle block, it still appends behind the last one.
  LByteBuffer* second = target.GetNextBlock();
  target.CopyBlock(source.GetNextBlock());
  EXPECT_EQ(DataSizes(&target), (std::vector<int>{3, 3, 2}));
  LByteBuffer* tail = target.GetBlock(2);
  tail->CopyBlock(&source);
  second->CopyBlock(nullptr);
  EXPECT_EQ(Contents(&target), std::string("xy\0BCDEF\0BCD", 12));

  // An empty source, a null one and one without storage change nothing.
  LByteBuffer empty(5);
  LByteBuffer bare(nullptr);
  target.CopyBlock(&empty);
  target.CopyBlock(nullptr);
  target.CopyBlock(&bare);
  EXPECT_EQ(target.GetTotalSize(), 12);

  // A block copied onto itself appends its own bytes.
  LByteBuffer self(4);
  self.WriteData(const_cast<char*>("ab"));
  self.CopyBlock(&self);
  EXPECT_EQ(Contents(&self), "abab");
  EXPECT_EQ(self.GetNextBlock(), nullptr);
}

TEST(LByteBuffer, ClearBufferCutsTheChainBackToTheHead) {
  LByteBuffer single(8);
  single.WriteData(const_cast<char*>("abc"));
  unsigned char* storage = single.GetDataBlock();
  single.ClearBuffer();
  EXPECT_EQ(single.GetDataSize(), 0);
  EXPECT_EQ(single.GetDataBlock(), storage);

  LByteBuffer head(4);
  head.WriteData(const_cast<char*>("0123456789"));
  storage = head.GetDataBlock();
  head.ClearBuffer();
  EXPECT_EQ(head.GetDataSize(), 0);
  EXPECT_EQ(head.GetTotalSize(), 0);
  EXPECT_EQ(head.GetNextBlock(), nullptr);
  EXPECT_EQ(head.GetBlockSize(), 4);
  EXPECT_EQ(head.GetDataBlock(), storage);
  EXPECT_EQ(head.ReadData(0), 0);
  head.WriteData(const_cast<char*>("xyz"));
  EXPECT_EQ(Contents(&head), "xyz");

  // From a block behind the head the whole chain is cut, that block with it
  // (the sanitizer build checks that nothing is freed twice or leaked).
  head.WriteData(const_cast<char*>("0123456789"));
  head.GetBlock(1)->ClearBuffer();
  EXPECT_EQ(head.GetNextBlock(), nullptr);
  EXPECT_EQ(head.GetTotalSize(), 0);
}

TEST(LByteBuffer, BlockBuiltFromNullTakesNoBytes) {
  LByteBuffer bare(nullptr);
  EXPECT_EQ(bare.GetDataBlock(), nullptr);
  EXPECT_EQ(bare.GetBlockSize(), 32000);
  EXPECT_EQ(bare.ReadData(0), 0);
  EXPECT_FALSE(bare.WriteData(0, 'x'));
  EXPECT_FALSE(bare.WriteData('x'));
  EXPECT_FALSE(bare.WriteData(static_cast<unsigned char>('x')));
  EXPECT_EQ(bare.WriteData(const_cast<char*>("abc")), &bare);
  LByteBuffer source(4);
  source.WriteData(const_cast<char*>("abc"));
  bare.CopyBlock(&source);
  EXPECT_EQ(bare.GetTotalSize(), 0);
  EXPECT_EQ(bare.GetNextBlock(), nullptr);
  bare.ClearBuffer();
  EXPECT_EQ(bare.GetDataSize(), 0);
}

TEST(LByteBuffer, AllocateOnABlockWithASuccessorLinksInBetween) {
  LByteBuffer head(2);
  head.WriteData(const_cast<char*>("abcd"));
  LByteBuffer* old_next = head.GetNextBlock();
  LByteBuffer* inserted = head.AllocateNewBlock();
  EXPECT_EQ(head.GetNextBlock(), inserted);
  EXPECT_EQ(inserted->GetNextBlock(), old_next);
  EXPECT_EQ(DataSizes(&head), (std::vector<int>{2, 0, 2}));
  // A text on the full head splices new blocks in behind it; the run stays
  // whole and every block stays owned.
  head.WriteData(const_cast<char*>("xyz"));
  EXPECT_EQ(Contents(&head), "abxyzcd");
  head.ClearBuffer();
  EXPECT_EQ(head.GetNextBlock(), nullptr);
}

TEST(LByteBuffer, DerivedAllocateNewBlockIsHonoured) {
  g_blocks_made = 0;
  {
    CountingBuffer head(4);
    LByteBuffer* end = head.WriteData(const_cast<char*>("0123456789"));
    EXPECT_EQ(g_blocks_made, 2);
    // The blocks come from the override, so growth from them counts too.
    EXPECT_NE(dynamic_cast<CountingBuffer*>(end), nullptr);
    LByteBuffer source(8);
    source.WriteData(const_cast<char*>("abcdefg"));
    head.CopyBlock(&source);  // 2 bytes into the last block, then 4 + 1
    EXPECT_EQ(g_blocks_made, 4);
    EXPECT_EQ(Contents(&head), "0123456789abcdefg");
    head.GetBlock(2)->CopyBlock(&source);  // 3 bytes into the last block, then 4
    EXPECT_EQ(g_blocks_made, 5);
    EXPECT_EQ(head.GetTotalSize(), 24);
  }
  // An override that yields no block ends the append without fault.
  RefusingBuffer refusing(3);
  EXPECT_EQ(refusing.WriteData(const_cast<char*>("abcdef")), &refusing);
  EXPECT_EQ(Contents(&refusing), "abc");
  LByteBuffer source(4);
  source.WriteData(const_cast<char*>("xy"));
  refusing.CopyBlock(&source);
  EXPECT_EQ(refusing.GetTotalSize(), 3);
}

TEST(LByteBuffer, MatchesAStringUnderRandomAppends) {
  std::mt19937 rng(20240601u);
  for (int round = 0; round < 30; ++round) {
    const int block_size = 1 + static_cast<int>(rng() % 9);
    LByteBuffer head(block_size);
    std::string expected;
    LByteBuffer* end = &head;
    for (int step = 0; step < 25; ++step) {
      std::string piece(rng() % 12, '\0');
      for (char& c : piece) c = static_cast<char>('a' + rng() % 26);
      if (rng() % 2 == 0) {
        end = end->WriteData(const_cast<char*>(piece.c_str()));
        expected += piece;
      } else {
        LByteBuffer source(static_cast<int>(piece.size()) + 1);
        source.WriteData(const_cast<char*>(piece.c_str()));
        head.CopyBlock(&source);
        end = head.GetLastBlock(&head);
        expected += piece;
      }
    }
    ASSERT_EQ(Contents(&head), expected);
    ASSERT_EQ(head.GetTotalSize(), static_cast<int>(expected.size()));
    std::vector<int> sizes = DataSizes(&head);
    for (std::size_t i = 0; i + 1 < sizes.size(); ++i) ASSERT_EQ(sizes[i], block_size);
    for (int i = 0; i < static_cast<int>(expected.size()); ++i) {
      ASSERT_EQ(head.ReadData(i), static_cast<unsigned char>(expected[static_cast<std::size_t>(i)]));
    }
  }
}

TEST(LByteBuffer, ChainsOfMillionsOfBlocksAreFreedWithoutDeepRecursion) {
  // Millions of one-byte blocks: a destructor or ClearBuffer that recursed
  // once per block would run out of stack long before the end (a sanitizer
  // build's frames are larger still, so fewer blocks show it there and keep
  // the run short).
  const std::size_t count = kSanitized ? 1000000 : 10000000;
  const std::string text(count, 'q');
  LByteBuffer head(1);
  LByteBuffer* end = head.WriteData(const_cast<char*>(text.c_str()));
  EXPECT_EQ(head.GetTotalSize(), static_cast<int>(count));
  EXPECT_EQ(end->GetNextBlock(), nullptr);
  head.ClearBuffer();
  EXPECT_EQ(head.GetNextBlock(), nullptr);
  EXPECT_EQ(head.GetTotalSize(), 0);

  {
    LByteBuffer other(1);
    other.WriteData(const_cast<char*>(text.c_str()));
    EXPECT_EQ(other.GetBlock(static_cast<int>(count) - 1)->ReadData(0), 'q');
  }  // the destructor frees the chain
}
