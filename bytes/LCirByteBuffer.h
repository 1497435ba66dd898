/// @class LCirByteBuffer
/// LCirByteBuffer: the latest bytes of a stream, kept in one ring of fixed
/// size.
///
/// A write always succeeds: once the ring has wrapped, each new byte replaces
/// the oldest. There is no read cursor and no notion of full; a caller reads
/// by stream position, and GetLinearIndex() tells how far the stream has come
/// (the ring has wrapped once it passes GetBlockSize()).
///
/// Example, ring size 4, after writing a b c d e f:
/// @code{.unparsed}
///   slots e f c d, GetLinearIndex() == 6, GetCircularIndex() == 2,
///   ReadData(5) == 'f', ReadData(4) == ReadData(0) == 'e'.
/// @endcode
#ifndef VQ0300_LCIRBYTEBUFFER_H
#define VQ0300_LCIRBYTEBUFFER_H
/// @file

#include "vq0300/vq0300_export.h"

class VQ0300_API LCirByteBuffer {
 public:
  /// No storage and ring size 0: Allocate comes before any write or read.
  LCirByteBuffer();
  /// As above, then Allocate(size).
  explicit LCirByteBuffer(int size);
  /// Frees the storage, if any.
  ~LCirByteBuffer();

  LCirByteBuffer(const LCirByteBuffer&) = delete;
  LCirByteBuffer& operator=(const LCirByteBuffer&) = delete;

  /// Sets the ring size, replaces the storage with `size` new bytes (not
  /// cleared) and sets both indices to 0; old contents are lost.
  /// A size below 1 frees the storage and leaves a ring of size 0, as new.
  void Allocate(int size);

  /// Puts one byte in the slot GetCircularIndex() and advances both indices.
  /// Without storage the byte is dropped and nothing changes.
  void WriteData(unsigned char value);
  /// The same for a char, taken as its unsigned byte.
  void WriteData(char value);

  /// The byte in the slot of stream position `index` (index % ring size); a
  /// negative index becomes 0. Not compared with GetLinearIndex(): an
  /// overwritten position gives the newer byte in its slot, a slot never
  /// written gives whatever the storage holds. Without storage: 0.
  unsigned char ReadData(int index);

  /// The ring size.
  int GetBlockSize();
  /// The bytes written since the last Allocate or ClearBuffer; it stops at
  /// the largest int instead of overflowing (the slot index runs on).
  int GetLinearIndex();
  /// The slot of the next write, 0 .. GetBlockSize() - 1.
  int GetCircularIndex();

  /// Sets both indices to 0. Ring size and storage stay, and the old bytes
  /// remain in their slots until overwritten.
  void ClearBuffer();

 private:
  unsigned char* m_pData;  ///< m_nBlockSize bytes from new[]; null until Allocate
  int m_nBlockSize;        ///< ring size
  int m_nLinearIndex;      ///< bytes written, rising past the ring size
  int m_nCircularIndex;    ///< slot of the next write
};

#endif  // VQ0300_LCIRBYTEBUFFER_H
