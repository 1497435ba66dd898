// LCirByteBuffer: a ring of bytes of fixed capacity.
#include "vq0300/LCirByteBuffer.h"

#include <climits>
#include <cstddef>

LCirByteBuffer::LCirByteBuffer()
    : m_pData(nullptr), m_nBlockSize(0), m_nLinearIndex(0), m_nCircularIndex(0) {}

LCirByteBuffer::LCirByteBuffer(int size) : LCirByteBuffer() { Allocate(size); }

LCirByteBuffer::~LCirByteBuffer() { delete[] m_pData; }

void LCirByteBuffer::Allocate(int size) {
  delete[] m_pData;
  m_pData = nullptr;
  m_nBlockSize = 0;
  m_nLinearIndex = 0;
  m_nCircularIndex = 0;
  if (size < 1) return;
  // The size is set only once the storage exists, so a bad_alloc leaves a
  // consistent buffer without storage.
  m_pData = new unsigned char[static_cast<std::size_t>(size)];
  m_nBlockSize = size;
}

void LCirByteBuffer::WriteData(unsigned char value) {
  // Fields are read into locals first: the byte store may alias them, and
  // reloading them after it would slow the hot path.
  unsigned char* data = m_pData;
  const int slot = m_nCircularIndex;
  const int linear = m_nLinearIndex;
  if (data == nullptr) return;
  data[slot] = value;
  if (linear < INT_MAX) m_nLinearIndex = linear + 1;
  m_nCircularIndex = slot + 1 < m_nBlockSize ? slot + 1 : 0;
}

void LCirByteBuffer::WriteData(char value) { WriteData(static_cast<unsigned char>(value)); }

unsigned char LCirByteBuffer::ReadData(int index) {
  if (m_pData == nullptr) return 0;
  if (index < 0) index = 0;
  return m_pData[index % m_nBlockSize];
}

int LCirByteBuffer::GetBlockSize() { return m_nBlockSize; }

int LCirByteBuffer::GetLinearIndex() { return m_nLinearIndex; }

int LCirByteBuffer::GetCircularIndex() { return m_nCircularIndex; }

void LCirByteBuffer::ClearBuffer() {
  m_nLinearIndex = 0;
  m_nCircularIndex = 0;
}
