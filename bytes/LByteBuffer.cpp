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

// Copies as many of the `count` bytes at `source` as fit behind the data of
// one block, raising its data size; returns how many were copied.
std::size_t FillBlock(unsigned char* storage, int block_size, int& data_size,
                      const unsigned char* source, std::size_t count) {
  if (storage == nullptr || data_size >= block_size) return 0;
  std::size_t room = static_cast<std::size_t>(block_size - data_size);
  std::size_t take = count < room ? count : room;
  std::memcpy(storage + data_size, source, take);
  data_size += static_cast<int>(take);
  return take;
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
  const unsigned char* bytes = source->m_pDataBlock;
  std::size_t left = static_cast<std::size_t>(source->m_nDataSize);
  LByteBuffer* current = GetLastBlock(this);
  bool fresh = false;
  while (left > 0) {
    std::size_t taken =
        FillBlock(current->m_pDataBlock, current->m_nBlockSize, current->m_nDataSize, bytes, left);
    // A block without storage, or a new block that takes nothing, ends the
    // copy instead of growing the chain without end.
    if (taken == 0 && (fresh || current->m_pDataBlock == nullptr)) break;
    bytes += taken;
    left -= taken;
    if (left == 0) break;
    // The current block is full and a byte is still under way.
    LByteBuffer* next = current->AllocateNewBlock();
    if (next == nullptr) break;
    current = next;
    fresh = true;
  }
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
  int hops = index / m_nBlockSize;
  int offset = index % m_nBlockSize;
  LByteBuffer* block = this;
  for (int hop = 0; hop < hops && block != nullptr; ++hop) block = block->m_pNextBlock;
  if (block == nullptr || block->m_pDataBlock == nullptr || offset >= block->m_nDataSize) {
    return false;
  }
  block->m_pDataBlock[offset] = value;
  return true;
}

bool LByteBuffer::WriteData(int index, char value) {
  return WriteData(index, static_cast<unsigned char>(value));
}

LByteBuffer* LByteBuffer::WriteData(char* text) {
  if (text == nullptr || *text == '\0') return this;
  const unsigned char* bytes = reinterpret_cast<const unsigned char*>(text);
  std::size_t left = std::strlen(text);
  LByteBuffer* current = this;
  LByteBuffer* last_taker = this;
  bool fresh = false;
  while (left > 0) {
    std::size_t taken =
        FillBlock(current->m_pDataBlock, current->m_nBlockSize, current->m_nDataSize, bytes, left);
    // As in CopyBlock: no storage, or a new block that takes nothing, stops.
    if (taken == 0 && (fresh || current->m_pDataBlock == nullptr)) break;
    if (taken > 0) last_taker = current;
    bytes += taken;
    left -= taken;
    if (left == 0) break;
    // The current block is full and a character is still under way.
    LByteBuffer* next = current->AllocateNewBlock();
    if (next == nullptr) break;
    current = next;
    fresh = true;
  }
  return last_taker;
}

unsigned char LByteBuffer::ReadData(int index) {
  if (index < 0) index = 1;
  // Within the receiver's own block: no division and no walk.
  if (index < m_nBlockSize) {
    return m_pDataBlock != nullptr && index < m_nDataSize ? m_pDataBlock[index] : 0;
  }
  if (m_nBlockSize < 1) return 0;
  int hops = index / m_nBlockSize;
  int offset = index % m_nBlockSize;
  const LByteBuffer* block = this;
  for (int hop = 0; hop < hops && block != nullptr; ++hop) block = block->m_pNextBlock;
  if (block == nullptr || block->m_pDataBlock == nullptr || offset >= block->m_nDataSize) {
    return 0;
  }
  return block->m_pDataBlock[offset];
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
