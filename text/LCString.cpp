// LCString storage, construction, element access and comparison. The
// searches, trims and slices are in LCStringSearch.cpp.
#include "vq0300/LCString.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>

#include "CaseFold_internal.h"
#include "vq0300/BoundedCopy.h"

namespace {

using vq0300_internal::ToLowerAscii;
using vq0300_internal::ToUpperAscii;

// A length as the int the class stores. Texts longer than INT_MAX bytes are
// cut to INT_MAX; no caller of this library comes near that.
int ClampLength(size_t n) {
  return n > static_cast<size_t>(INT_MAX) ? INT_MAX : static_cast<int>(n);
}

// A buffer of n + 1 bytes, all NUL.
char* NewZeroed(int n) {
  char* p = new char[static_cast<size_t>(n) + 1];
  std::memset(p, 0, static_cast<size_t>(n) + 1);
  return p;
}

// A buffer of n + 1 bytes: n bytes from src, then NUL.
char* NewCopy(char const* src, int n) {
  char* p = new char[static_cast<size_t>(n) + 1];
  if (n > 0) std::memcpy(p, src, static_cast<size_t>(n));
  p[n] = '\0';
  return p;
}

// The sum of two lengths; a sum beyond int cannot be allocated as a string.
int AddLengths(int a, int b) {
  if (a > INT_MAX - b) throw std::bad_array_new_length();
  return a + b;
}

}  // namespace

LCString::LCString() : m_pszData(NewZeroed(0)), m_nLength(0), m_nAddPos(0) {}

LCString::LCString(int n) : m_pszData(nullptr), m_nLength(n < 0 ? 0 : n), m_nAddPos(0) {
  m_pszData = NewZeroed(m_nLength);
}

LCString::LCString(char const* text) : m_pszData(nullptr), m_nLength(0), m_nAddPos(0) {
  if (text == nullptr) {
    m_pszData = NewZeroed(0);
    return;
  }
  m_nLength = ClampLength(std::strlen(text));
  m_nAddPos = m_nLength - 1;
  m_pszData = NewCopy(text, m_nLength);
}

LCString::LCString(std::string const& text)
    : m_pszData(nullptr), m_nLength(ClampLength(text.size())), m_nAddPos(m_nLength - 1) {
  m_pszData = NewCopy(text.data(), m_nLength);
}

LCString::LCString(char c) : m_pszData(NewZeroed(1)), m_nLength(1), m_nAddPos(0) {
  m_pszData[0] = c;
}

LCString::LCString(LCString const& other)
    : m_pszData(NewCopy(other.m_pszData, other.m_nLength)),
      m_nLength(other.m_nLength),
      m_nAddPos(other.m_nLength - 1) {}

LCString::~LCString() {
  delete[] m_pszData;
  m_pszData = nullptr;
  m_nLength = 0;
  m_nAddPos = 0;
}

LCString& LCString::operator=(LCString const& other) {
  if (&other == this) return *this;
  // Allocate before freeing, so a failed allocation leaves this string whole.
  char* fresh = NewCopy(other.m_pszData, other.m_nLength);
  delete[] m_pszData;
  m_pszData = fresh;
  m_nLength = other.m_nLength;
  m_nAddPos = m_nLength - 1;
  return *this;
}

void LCString::Reallocate(int n) {
  if (n < 0) n = 0;
  char* fresh = NewZeroed(n);
  delete[] m_pszData;
  m_pszData = fresh;
  m_nLength = n;
  m_nAddPos = 0;
}

LCString LCString::operator+(LCString const& other) {
  const int total = AddLengths(m_nLength, other.m_nLength);
  LCString result(total);  // add position 0
  if (m_nLength > 0) std::memcpy(result.m_pszData, m_pszData, static_cast<size_t>(m_nLength));
  if (other.m_nLength > 0) {
    std::memcpy(result.m_pszData + m_nLength, other.m_pszData,
                static_cast<size_t>(other.m_nLength));
  }
  result[total] = '\0';
  return result;
}

void LCString::operator+=(LCString const& other) {
  // One new buffer with both texts, complete before the old one goes, so
  // appending a string to itself reads intact bytes.
  const int total = AddLengths(m_nLength, other.m_nLength);
  char* fresh = NewZeroed(total);
  if (m_nLength > 0) std::memcpy(fresh, m_pszData, static_cast<size_t>(m_nLength));
  if (other.m_nLength > 0) {
    std::memcpy(fresh + m_nLength, other.m_pszData, static_cast<size_t>(other.m_nLength));
  }
  delete[] m_pszData;
  m_pszData = fresh;
  m_nLength = total;
  m_nAddPos = total - 1;
}

char* LCString::AddString(int n, char const* text) {
  if (n < 1) return nullptr;
  if (m_nAddPos >= m_nLength - 1) return nullptr;  // full
  if (text == nullptr) return nullptr;
  // Here 0 <= m_nAddPos < m_nLength - 1, so every write stays in the buffer.
  for (int copied = 0; copied < n && m_nAddPos < m_nLength - 1; ++copied) {
    m_pszData[m_nAddPos++] = text[copied];
  }
  m_pszData[m_nAddPos] = '\0';
  return m_pszData;
}

int LCString::GetLength() const { return m_nLength; }

bool LCString::IsEmpty() const { return m_nLength == 0; }

char* LCString::c_str() const { return m_pszData; }

char& LCString::operator[](int i) {
  if (i >= 0 && i <= m_nLength) return m_pszData[i];
  return m_pszData[m_nLength > 0 ? m_nLength - 1 : 0];
}

char LCString::operator[](int i) const {
  if (i >= 0 && i <= m_nLength) return m_pszData[i];
  return m_pszData[m_nLength > 0 ? m_nLength - 1 : 0];
}

char LCString::GetAt(int i) const {
  if (i >= 0 && i < m_nLength) return m_pszData[i];
  return m_pszData[m_nLength > 0 ? m_nLength - 1 : 0];
}

bool LCString::SetAt(int i, char c) const {
  if (i < 0 || i >= m_nLength) return false;
  m_pszData[i] = c;
  return true;
}

bool LCString::operator==(LCString const& other) const {
  return std::strcmp(m_pszData, other.m_pszData) == 0;
}

bool LCString::operator==(char const* text) const {
  return text != nullptr && std::strcmp(m_pszData, text) == 0;
}

bool LCString::operator!=(LCString const& other) const {
  return std::strcmp(m_pszData, other.m_pszData) != 0;
}

bool LCString::operator!=(char const* text) const {
  return text == nullptr || std::strcmp(m_pszData, text) != 0;
}

bool LCString::operator<(LCString const& other) const {
  return std::strcmp(m_pszData, other.m_pszData) < 0;
}

bool LCString::operator>(LCString const& other) const {
  return std::strcmp(m_pszData, other.m_pszData) > 0;
}

bool LCString::operator<=(LCString const& other) const {
  return std::strcmp(m_pszData, other.m_pszData) <= 0;
}

bool LCString::operator>=(LCString const& other) const {
  return std::strcmp(m_pszData, other.m_pszData) >= 0;
}

int LCString::Compare(LCString const& other) const {
  return std::strcmp(m_pszData, other.m_pszData);
}

int LCString::CompareNoCase(LCString const& other) const {
  // strcmp reads only the terminated views, so folding those is enough; the
  // comparison itself stays strcmp so that its value is handed on unchanged.
  std::string mine(m_pszData);
  std::string theirs(other.m_pszData);
  std::transform(mine.begin(), mine.end(), mine.begin(), ToUpperAscii);
  std::transform(theirs.begin(), theirs.end(), theirs.begin(), ToUpperAscii);
  return std::strcmp(mine.c_str(), theirs.c_str());
}

void LCString::MakeUpper() {
  std::transform(m_pszData, m_pszData + m_nLength, m_pszData, ToUpperAscii);
}

void LCString::MakeLower() {
  std::transform(m_pszData, m_pszData + m_nLength, m_pszData, ToLowerAscii);
}

void LCString::MakeReverse() { std::reverse(m_pszData, m_pszData + m_nLength); }

char* LTEXT(LCString const& s) { return s.c_str(); }

// The string comes by value because the interface says so.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void util_strncpy(char* dst, LCString src, int count, int limit) {
  if (dst == nullptr) return;
  if (src.IsEmpty()) {
    dst[0] = '\0';  // no NUL padding, whatever count says
    return;
  }
  util_strncpy(dst, static_cast<char const*>(src.c_str()), count, limit);
}
