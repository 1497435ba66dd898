/// @class jtagShiftBitStream
/// jtagShiftBitStream: the data of one JTAG shift, sized in bits and reached
/// in whole bytes.
///
/// The bit size only sets the byte count, (bits + 7) / 8: 1 to 8 bits take one
/// byte, 9 take two. No operation shifts, masks or reorders bits inside a
/// byte; spare bits of the last byte are left alone.
///
/// A cursor serves the sequential calls and runs from the last byte down to
/// byte 0, so a sequence written and read back sequentially keeps its order
/// and lies in the buffer reversed against positions 0, 1, 2:
/// @code{.unparsed}
///   InitBuffer(24); SequentialWrite('a'), ('b'), ('c')
///     -> ReadByte(0) == 'c', ReadByte(2) == 'a'
///   ResetIndex(); SequentialRead() gives 'a', 'b', 'c', then 0.
/// @endcode
/// The positioned calls move the same cursor, and differ at the edges: a
/// failed read leaves the cursor outside the buffer, a failed write pulls it
/// back to the nearest end.
#ifndef VQ0300_JTAGSHIFTBITSTREAM_H
#define VQ0300_JTAGSHIFTBITSTREAM_H
/// @file

#include "vq0300/vq0300_export.h"

class VQ0300_API jtagShiftBitStream {
 public:
  /// No buffer, bit size 0, cursor 0: behaves as a buffer of 0 bytes.
  jtagShiftBitStream();
  /// Frees the buffer, if any.
  ~jtagShiftBitStream();

  jtagShiftBitStream(const jtagShiftBitStream&) = delete;
  jtagShiftBitStream& operator=(const jtagShiftBitStream&) = delete;

  /// Replaces the buffer with one of (bits + 7) / 8 bytes, not cleared, and
  /// puts the cursor on the last byte (-1 for 0 bits).
  /// A negative bit count is taken as 0: no bytes, bit size 0, cursor -1.
  /// On bad_alloc the old buffer is gone and the object holds 0 bytes.
  void InitBuffer(int bits);

  /// Puts the cursor on the last byte; nothing else changes.
  void ResetIndex();

  /// The bit size passed to InitBuffer.
  int GetBufferBitSize();

  /// The byte at `index`, or 0 outside the buffer. The cursor moves to
  /// `index` in both cases, so after a miss it stands outside the buffer.
  unsigned char ReadByte(int index);

  /// Stores `value` at `index` and moves the cursor there: true. Outside the
  /// buffer: false, with the cursor on 0 for a negative index and on the
  /// last byte for one at or past the end (-1 when there are no bytes).
  bool WriteByte(int index, unsigned char value);

  /// ReadByte at the cursor, then the cursor moves down one whatever the
  /// outcome: below byte 0 every read gives 0 and the cursor keeps falling
  /// (it stops at the smallest int) until ResetIndex or a positioned call.
  unsigned char SequentialRead();

  /// WriteByte at the cursor; only on success the cursor moves down one.
  /// After byte 0 the cursor stands at -1: the next call gives false and
  /// puts it on 0, the one after overwrites byte 0. Stop at the first false.
  bool SequentialWrite(unsigned char value);

 private:
  unsigned char* m_pBuffer;  ///< (m_nBitSize + 7) / 8 bytes from new[]; null until InitBuffer
  int m_nBitSize;            ///< bits passed to InitBuffer
  int m_nIndex;              ///< byte of the next sequential access; may lie outside
};

#endif  // VQ0300_JTAGSHIFTBITSTREAM_H
