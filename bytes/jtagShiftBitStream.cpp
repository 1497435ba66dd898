// jtagShiftBitStream: a byte store for JTAG shift data.
#include "vq0300/jtagShiftBitStream.h"

#include <climits>
#include <cstddef>

namespace {

// Bytes for a bit count, rounding up; written so that no count near the
// largest int overflows.
int ByteCount(int bits) {
  if (bits <= 0) return 0;
  return bits / 8 + (bits % 8 != 0 ? 1 : 0);
}

}  // namespace

jtagShiftBitStream::jtagShiftBitStream() : m_pBuffer(nullptr), m_nBitSize(0), m_nIndex(0) {}

jtagShiftBitStream::~jtagShiftBitStream() { delete[] m_pBuffer; }

void jtagShiftBitStream::InitBuffer(int bits) {
  if (bits < 0) bits = 0;
  delete[] m_pBuffer;
  // Until the new buffer exists the object holds 0 bytes, so a bad_alloc
  // leaves it consistent.
  m_pBuffer = nullptr;
  m_nBitSize = 0;
  m_nIndex = -1;
  const int bytes = ByteCount(bits);
  if (bytes > 0) m_pBuffer = new unsigned char[static_cast<std::size_t>(bytes)];
  m_nBitSize = bits;
  m_nIndex = bytes - 1;
}

void jtagShiftBitStream::ResetIndex() { m_nIndex = ByteCount(m_nBitSize) - 1; }

int jtagShiftBitStream::GetBufferBitSize() { return m_nBitSize; }

unsigned char jtagShiftBitStream::ReadByte(int index) {
  m_nIndex = index;
  if (index < 0 || index >= ByteCount(m_nBitSize) || m_pBuffer == nullptr) return 0;
  return m_pBuffer[index];
}

bool jtagShiftBitStream::WriteByte(int index, unsigned char value) {
  const int bytes = ByteCount(m_nBitSize);
  if (index < 0) {
    m_nIndex = 0;
    return false;
  }
  if (index >= bytes || m_pBuffer == nullptr) {
    m_nIndex = bytes - 1;
    return false;
  }
  m_pBuffer[index] = value;
  m_nIndex = index;
  return true;
}

unsigned char jtagShiftBitStream::SequentialRead() {
  unsigned char value = ReadByte(m_nIndex);
  if (m_nIndex > INT_MIN) --m_nIndex;
  return value;
}

bool jtagShiftBitStream::SequentialWrite(unsigned char value) {
  if (!WriteByte(m_nIndex, value)) return false;
  --m_nIndex;
  return true;
}
