/// @class LRNG
/// LRNG: the 32-bit Mersenne Twister (MT19937) with the published seeding by
/// the multiplier 1812433253.
///
/// One object is one independent sequence, fixed by its seed alone: two
/// objects with one seed give the same values, and drawing from one never
/// changes what another gives next. The output equals that of std::mt19937
/// seeded with the same value; seed 5489 gives 3499211612 first and
/// 4123659995 as the 10000th value.
///
/// The only state shared between objects is a two-entry table of the twist
/// step, set once by the first GetRandom of the process under the runtime's
/// guard for function-local statics and only read afterwards. An object has
/// no lock: use one object from one thread at a time.
#ifndef VQ0300_LRNG_H
#define VQ0300_LRNG_H
/// @file

#include <cstdint>

#include "vq0300/vq0300_export.h"

class VQ0300_API LRNG {
 public:
  /// Seeds the state from seed; every value is taken unchanged, 0 included.
  /// There is no default constructor and no way to seed an object anew.
  LRNG(unsigned int seed);
  /// Nothing to release.
  virtual ~LRNG();

  /// The next value, over the whole range 0 to 4294967295. Allocates nothing;
  /// every 624th call (the first one included) regenerates the whole state.
  unsigned int GetRandom();

 private:
  /// The first five are constants, set by the constructor and never changed.
  int m_nStateSize;        ///< 624, the number of state words
  int m_nShiftSize;        ///< 397, the middle distance
  uint32_t m_dwMatrixA;    ///< 0x9908B0DF, the twist constant
  uint32_t m_dwUpperMask;  ///< 0x80000000
  uint32_t m_dwLowerMask;  ///< 0x7FFFFFFF
  uint32_t m_adwState[624];
  int m_nStateIndex;  ///< next word to hand out; 624 or more: regenerate first
};

#endif  // VQ0300_LRNG_H
