// LByteBuffer: a chain of byte blocks, each owning the blocks behind it.
#include "vq0300/LByteBuffer.h"

#include <climits>
#include <cstddef>
#include <cstring>
#include <new>

namespace {

constexpr int kDefaultBlockSize = 32000;

// Destroys and frees one block that came from a new-expression. The
// destructor is not virtual, so a delete-expression through LByteBuffer*
// would be flagged; the block is ended as the LByteBuffer it is linked as,
// and its memory goes back unsized, whatever type the new-expression named.
void DestroyBlock(LByteBuffer* block) {
  if (block == nullptr) return;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdelete-non-virtual-dtor"
  block->~LByteBuffer();
#pragma GCC diagnostic pop
  ::operator delete(block);
}

// What one block did with the bytes offered to it.
struct BlockTake {
  std::size_t taken;  // bytes copied behind its data
  bool hasStorage;    // false: the block has no storage at all
};

// Copies as many of the `count` bytes at `source` as fit behind the data of
// one block, raising its data size.
BlockTake FillBlock(unsigned char* storage, int block_size, int& data_size,
                    const unsigned char* source, std::size_t count) {
  if (storage == nullptr) return {0, false};
  if (data_size >= block_size) return {0, true};
  std::size_t room = static_cast<std::size_t>(block_size - data_size);
  std::size_t take = count < room ? count : room;
  std::memcpy(storage + data_size, source, take);
  data_size += static_cast<int>(take);
  return {take, true};
}

// The fields of any block of a chain, reached as a derived class reaches
// them: the protected members, named through a class derived from
// LByteBuffer, give pointers to members of LByteBuffer itself, which apply to
// every block. The two helpers below are no members of the class.
struct BlockFields : LByteBuffer {
  static auto Data() { return &BlockFields::m_pDataBlock; }
  static auto Next() { return &BlockFields::m_pNextBlock; }
  static auto Size() { return &BlockFields::m_nBlockSize; }
  static auto Used() { return &BlockFields::m_nDataSize; }
};

// FillBlock on one block of a chain.
BlockTake TakeBytes(LByteBuffer* block, const unsigned char* bytes, std::size_t count) {
  return FillBlock(block->*BlockFields::Data(), block->*BlockFields::Size(),
                   block->*BlockFields::Used(), bytes, count);
}

// The block that holds position index (0 or more) counted from first, at
// index / block size links behind it, and the offset there; null when the
// chain ends first or the position holds no data.
LByteBuffer* BlockAt(LByteBuffer* first, int index, int& offset) {
  const int size = first->*BlockFields::Size();
  offset = index % size;
  LByteBuffer* block = first;
  for (int hop = index / size; hop > 0 && block != nullptr; --hop)
    block = block->*BlockFields::Next();
  if (block == nullptr || block->*BlockFields::Data() == nullptr ||
      offset >= block->*BlockFields::Used())
    return nullptr;
  return block;
}

// Pours `left` bytes at `bytes` into a chain from `start` on: each block takes
// what fits behind its data, and while bytes are still under way a full block
// grows a new one behind it through the virtual AllocateNewBlock. A block
// without storage, or a new block that takes nothing, ends the pour instead of
// growing the chain without end. Returns the last block that took a byte, or
// start when none did.
LByteBuffer* PourIntoChain(LByteBuffer* start, const unsigned char* bytes, std::size_t left) {
  LByteBuffer* current = start;
  LByteBuffer* lastTaker = start;
  bool fresh = false;
  while (left > 0) {
    const BlockTake result = TakeBytes(current, bytes, left);
    if (result.taken == 0 && (fresh || !result.hasStorage)) break;
    if (result.taken > 0) lastTaker = current;
    bytes += result.taken;
    left -= result.taken;
    if (left == 0) break;
    LByteBuffer* next = current->AllocateNewBlock();
    if (next == nullptr) break;
    current = next;
    fresh = true;
  }
  return lastTaker;
}

}  // namespace

LByteBuffer::LByteBuffer() : LByteBuffer(kDefaultBlockSize) {}

LByteBuffer::LByteBuffer(int size)
    : m_pDataBlock(nullptr),
      m_pPrevBlock(nullptr),
      m_pNextBlock(nullptr),
      m_nBlockSize(size > 0 ? size : kDefaultBlockSize),
      m_nDataSize(0) {
  m_pDataBlock = new unsigned char[static_cast<std::size_t>(m_nBlockSize)];
}

LByteBuffer::LByteBuffer(LByteBuffer* previous)
    : m_pDataBlock(nullptr),
      m_pPrevBlock(previous),
      m_pNextBlock(nullptr),
      m_nBlockSize(kDefaultBlockSize),
      m_nDataSize(0) {
  if (previous == nullptr) return;
  if (previous->m_nBlockSize > 0) m_nBlockSize = previous->m_nBlockSize;
  m_pDataBlock = new unsigned char[static_cast<std::size_t>(m_nBlockSize)];
}

LByteBuffer::~LByteBuffer() {
  delete[] m_pDataBlock;
  // Unhook each block from its successor before destroying it, so that its
  // own destructor finds no chain behind it: the walk is a loop, and a chain
  // of millions of blocks needs no stack depth.
  LByteBuffer* block = m_pNextBlock;
  m_pNextBlock = nullptr;
  while (block != nullptr) {
    LByteBuffer* behind = block->m_pNextBlock;
    block->m_pNextBlock = nullptr;
    DestroyBlock(block);
    block = behind;
  }
}

LByteBuffer* LByteBuffer::AllocateNewBlock() {
  LByteBuffer* block = new LByteBuffer(this);
  // Splice rather than overwrite, so that a block already behind this one
  // stays owned.
  block->m_pNextBlock = m_pNextBlock;
  if (m_pNextBlock != nullptr) m_pNextBlock->m_pPrevBlock = block;
  m_pNextBlock = block;
  return block;
}

void LByteBuffer::CopyBlock(LByteBuffer* source) {
  if (source == nullptr || source->m_pDataBlock == nullptr || source->m_nDataSize <= 0) return;
  PourIntoChain(GetLastBlock(this), source->m_pDataBlock,
                static_cast<std::size_t>(source->m_nDataSize));
}

LByteBuffer* LByteBuffer::GetLastBlock(LByteBuffer* block) {
  if (block == nullptr) return nullptr;
  while (block->m_pNextBlock != nullptr) block = block->m_pNextBlock;
  return block;
}

LByteBuffer* LByteBuffer::GetNextBlock() { return m_pNextBlock; }

LByteBuffer* LByteBuffer::GetBlock(int index) {
  if (index < 1) return nullptr;
  LByteBuffer* block = this;
  for (int hop = 0; hop < index && block != nullptr; ++hop) block = block->m_pNextBlock;
  return block;
}

bool LByteBuffer::WriteData(unsigned char value) {
  if (m_pDataBlock == nullptr || m_nDataSize >= m_nBlockSize) return false;
  m_pDataBlock[m_nDataSize] = value;
  ++m_nDataSize;
  return true;
}

bool LByteBuffer::WriteData(char value) { return WriteData(static_cast<unsigned char>(value)); }

bool LByteBuffer::WriteData(int index, unsigned char value) {
  if (index < 0) index = 1;
  if (m_nBlockSize < 1) return false;
  int offset = 0;
  LByteBuffer* block = BlockAt(this, index, offset);
  if (block == nullptr) return false;
  block->m_pDataBlock[offset] = value;
  return true;
}

bool LByteBuffer::WriteData(int index, char value) {
  return WriteData(index, static_cast<unsigned char>(value));
}

LByteBuffer* LByteBuffer::WriteData(char* text) {
  if (text == nullptr || *text == '\0') return this;
  return PourIntoChain(this, reinterpret_cast<const unsigned char*>(text), std::strlen(text));
}

unsigned char LByteBuffer::ReadData(int index) {
  if (index < 0) index = 1;
  // Within the receiver's own block: no division and no walk.
  if (index < m_nBlockSize) {
    return m_pDataBlock != nullptr && index < m_nDataSize ? m_pDataBlock[index] : 0;
  }
  if (m_nBlockSize < 1) return 0;
  int offset = 0;
  const LByteBuffer* block = BlockAt(this, index, offset);
  return block != nullptr ? block->m_pDataBlock[offset] : 0;
}

unsigned char* LByteBuffer::GetDataBlock() { return m_pDataBlock; }

int LByteBuffer::GetBlockSize() { return m_nBlockSize; }

int LByteBuffer::GetDataSize() { return m_nDataSize; }

int LByteBuffer::GetTotalSize() {
  long long total = 0;
  for (const LByteBuffer* block = this; block != nullptr; block = block->m_pNextBlock) {
    total += block->m_nDataSize;
    if (total >= INT_MAX) return INT_MAX;
  }
  return static_cast<int>(total);
}

void LByteBuffer::ClearBuffer() {
  // Backward from the last block: each block destroyed has no successor by
  // then, so this too is a loop of constant stack depth. The receiver may be
  // among the blocks destroyed; only locals are used once it may be gone.
  LByteBuffer* block = GetLastBlock(this);
  while (block->m_pPrevBlock != nullptr) {
    LByteBuffer* ahead = block->m_pPrevBlock;
    LByteBuffer* doomed = ahead->m_pNextBlock;
    ahead->m_pNextBlock = nullptr;
    DestroyBlock(doomed);
    block = ahead;
  }
  block->m_nDataSize = 0;
}
