/// @class LByteBuffer
/// LByteBuffer: a growing run of bytes kept in a chain of fixed-size blocks.
///
/// Each object is one block of a chain. The object a caller creates is the
/// head; it owns every block behind it, and growth links one more block
/// behind the last, so bytes once written never move. Every block of a chain
/// has the block size of the head (default 32000 bytes, not 32768).
///
/// Bytes fill a block from offset 0 without gaps, and a block gets a
/// successor only when a byte no longer fits in it: in a chain built by
/// appending, every block but the last is full. A position i counted from
/// some block therefore lies i / GetBlockSize() blocks further on, at offset
/// i % GetBlockSize().
///
/// Example, block size 4, head.WriteData("abcdefghij"):
/// @code{.unparsed}
///   head [abcd] -> [efgh] -> [ij..]   result: the third block
///   head.GetTotalSize() == 10, head.ReadData(4) == 'e',
///   head.GetNextBlock()->ReadData(0) == 'e'.
/// @endcode
///
/// Derivation: AllocateNewBlock and CopyBlock are virtual and the fields are
/// protected, so a caller's class can create its own blocks. The destructor
/// is NOT virtual: the head frees the blocks behind it as plain LByteBuffer
/// objects, so an override of AllocateNewBlock must create LByteBuffer blocks
/// or blocks of a derived class that adds no data members and no destructor.
/// A caller destroys no block but the head.
#ifndef VQ0300_LBYTEBUFFER_H
#define VQ0300_LBYTEBUFFER_H
/// @file

#include "vq0300/vq0300_export.h"

class VQ0300_API LByteBuffer {
 public:
  /// A head block of block size 32000, with storage and no data.
  LByteBuffer();
  /// A head block of block size `size`, with storage and no data.
  /// A size below 1 gives the default block size, 32000.
  explicit LByteBuffer(int size);
  /// A block to stand behind `previous`: it takes the block size of
  /// `previous`, records it as the block ahead and gets its own storage. It
  /// copies no data and does not touch the next link of `previous`.
  /// With a null `previous`: block size 32000, no block ahead, no storage.
  explicit LByteBuffer(LByteBuffer* previous);
  /// Not virtual. Frees the storage and the whole chain behind this block,
  /// one block after the other (no recursion, so chains of any length are
  /// safe). The block ahead is not touched.
  ~LByteBuffer();

  LByteBuffer(const LByteBuffer&) = delete;
  LByteBuffer& operator=(const LByteBuffer&) = delete;

  /// Creates a block with new LByteBuffer(this), makes it this block's next
  /// block and returns it. On bad_alloc the next link stays as it was.
  /// On a block that already has a next block, the new block is linked in
  /// between the two, so no block is lost.
  virtual LByteBuffer* AllocateNewBlock();

  /// Appends the data of the one block `source` (not the blocks behind it) to
  /// the end of this chain, wherever in the chain the receiver stands: first
  /// the space left in the last block, then new blocks from
  /// AllocateNewBlock() called on the current last block.
  /// A null `source`, or an empty one, changes nothing. Copying stops, as in
  /// WriteData(char*), at a block that can take no byte.
  virtual void CopyBlock(LByteBuffer* source);

  /// The last block of the chain, following the next links from `block`
  /// (the argument, not the receiver). A null `block` gives null.
  LByteBuffer* GetLastBlock(LByteBuffer* block);

  /// The block behind this one, or null.
  LByteBuffer* GetNextBlock();

  /// The block `index` links behind the receiver: GetBlock(1) is the next
  /// block. An index below 1, or one past the end of the chain, gives null.
  LByteBuffer* GetBlock(int index);

  /// Append one byte to this block only. True if stored; false if the block
  /// is full, and then no block is added: call AllocateNewBlock() and go on
  /// with the block it returns.
  /// A block without storage (built from a null pointer) takes no bytes:
  /// false.
  bool WriteData(unsigned char value);
  /// The same for a char, taken as its unsigned byte.
  bool WriteData(char value);

  /// Overwrite the byte at position `index`, counted from the receiver.
  /// A negative index becomes 1 (not 0). False on a miss: past the end of
  /// the chain, or at or past the data of the block reached. Never adds a
  /// block and never raises a data size.
  bool WriteData(int index, unsigned char value);
  /// The same for a char, taken as its unsigned byte.
  bool WriteData(int index, char value);

  /// Appends the characters of `text` (not its NUL), starting at the
  /// receiver and adding blocks with AllocateNewBlock() as each fills, and
  /// returns the block that holds the end of the data: the receiver if no
  /// block was added. A null or empty text gives back the receiver.
  /// A block without storage takes no characters, and an override of
  /// AllocateNewBlock may yield null or a block that takes none: appending
  /// stops there, and the result is the last block that took a character
  /// (the receiver if none did).
  LByteBuffer* WriteData(char* text);

  /// The byte at position `index`, counted from the receiver; a negative
  /// index becomes 1. A miss gives 0, indistinguishable from a stored 0.
  /// Each call walks index / GetBlockSize() links from the receiver: to read
  /// a long run, read each block from its own offset 0.
  unsigned char ReadData(int index);

  /// This block's storage; null for a block built from a null pointer.
  unsigned char* GetDataBlock();

  /// This block's capacity in bytes.
  int GetBlockSize();

  /// The bytes in this block alone.
  int GetDataSize();

  /// The bytes in this block and every block behind it (not those ahead).
  /// A sum beyond the range of int gives the largest int.
  int GetTotalSize();

  /// Cuts the whole chain back to its head and empties the head, from any
  /// block of the chain: every block but the head is destroyed, the receiver
  /// too if it is not the head. The head keeps its storage and block size;
  /// its old bytes are not wiped but no longer count.
  void ClearBuffer();

 protected:
  unsigned char* m_pDataBlock;  ///< m_nBlockSize bytes from new[], not cleared
  LByteBuffer* m_pPrevBlock;    ///< the block ahead; null at the head
  LByteBuffer* m_pNextBlock;    ///< the block behind, owned; null at the last
  int m_nBlockSize;             ///< capacity of this block
  int m_nDataSize;              ///< bytes written to this block, 0 .. m_nBlockSize
};

#endif  // VQ0300_LBYTEBUFFER_H
