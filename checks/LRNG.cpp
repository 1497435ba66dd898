// LRNG: the MT19937 random number generator.
#include "vq0300/LRNG.h"

namespace {

constexpr int kN = 624;
constexpr int kM = 397;
constexpr uint32_t kUpper = 0x80000000u;
constexpr uint32_t kLower = 0x7FFFFFFFu;

// The object's masks and entry 1 of the twist table.
struct TwistParams {
  uint32_t matrix, upper, lower;
};

// twist(a, b, c): the upper bit of a joined to the lower 31 bits of b,
// shifted right 1, XORed into c together with the table entry that bit 0 of
// the join selects. Entry 0 of the table is 0, so the entry is the mask of
// that bit ANDed with entry 1: the same value without a data-dependent load,
// which lets the compiler vectorise the loops below.
inline uint32_t Twist(uint32_t a, uint32_t b, uint32_t c, const TwistParams& p) {
  const uint32_t y = (a & p.upper) | (b & p.lower);
  return c ^ (y >> 1) ^ ((0u - (y & 1u)) & p.matrix);
}

// Regenerates all 624 words in place, in the order of the published
// algorithm: every word reads its successor before that one is replaced, and
// the words 397 ahead wrap round to words already replaced.
void Regenerate(uint32_t* s, int n, int m, const TwistParams& p) {
  for (int k = 0; k < n - m; ++k) s[k] = Twist(s[k], s[k + 1], s[k + m], p);
  for (int k = n - m; k < n - 1; ++k) s[k] = Twist(s[k], s[k + 1], s[k + m - n], p);
  s[n - 1] = Twist(s[n - 1], s[0], s[m - 1], p);
}

}  // namespace

LRNG::LRNG(unsigned int seed)
    : m_nStateSize(kN),
      m_nShiftSize(kM),
      m_dwMatrixA(0x9908B0DFu),
      m_dwUpperMask(kUpper),
      m_dwLowerMask(kLower),
      m_adwState(),
      m_nStateIndex(kN) {
  m_adwState[0] = seed;
  for (int i = 1; i < kN; ++i) {
    const uint32_t prev = m_adwState[i - 1];
    m_adwState[i] = 1812433253u * (prev ^ (prev >> 30)) + static_cast<uint32_t>(i);
  }
}

LRNG::~LRNG() = default;

unsigned int LRNG::GetRandom() {
  if (m_nStateIndex >= m_nStateSize) {
    // Shared by all objects and set once, from the object of the first call
    // in the process. A new object starts at index 624, so that first call
    // always comes through here; keeping the table on this path keeps its
    // guard off the 623 other calls.
    static const uint32_t twist_table[2] = {0u, m_dwMatrixA};
    Regenerate(m_adwState, m_nStateSize, m_nShiftSize,
               TwistParams{twist_table[1], m_dwUpperMask, m_dwLowerMask});
    m_nStateIndex = 0;
  }
  uint32_t y = m_adwState[m_nStateIndex++];
  y ^= y >> 11;
  y ^= (y << 7) & 0x9D2C5680u;
  y ^= (y << 15) & 0xEFC60000u;
  y ^= y >> 18;
  return y;
}
