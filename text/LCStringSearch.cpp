// LCString searches, trims and slices.
//
// The forward searches and ReverseFind(char) read the terminated view through
// the C string functions. The reverse searches with a string or a set work on
// the counted view read backwards, and such a backward read ends at the first
// NUL it meets: they see only the bytes behind the last NUL of the counted
// view (the "tail" below). Trims and slices go by the counted view.
#include <algorithm>
#include <cstring>
#include <string>

#include "vq0300/LCString.h"

#include "core/Helpers_internal.h"

namespace {

using vq0300_internal::IsWhiteSpace;

// Index of the first byte behind the last NUL among the first length bytes
// of data; 0 when there is no NUL there.
int TailStart(char const* data, int length) {
  for (int i = length - 1; i >= 0; --i) {
    if (data[i] == '\0') return i + 1;
  }
  return 0;
}

// Offset of hit from data, or -1 for null.
int OffsetOf(char const* data, char const* hit) {
  return hit == nullptr ? -1 : static_cast<int>(hit - data);
}

// The first (or, from_end, the last) n of the length counted bytes at data.
// n covering the whole length falls back on the terminated view.
LCString EndPiece(const char* data, int length, int n, bool from_end) {
  LCString result;
  if (length < 1 || n < 1) return result;
  if (n >= length) {
    result = LCString(data);
    return result;
  }
  result.Reallocate(n);
  std::memcpy(&result[0], data + (from_end ? length - n : 0), static_cast<size_t>(n));
  result[n] = '\0';
  return result;
}

}  // namespace

int LCString::Find(char const* text) {
  if (m_nLength < 1 || text == nullptr) return -1;
  return OffsetOf(m_pszData, std::strstr(m_pszData, text));
}

int LCString::Find(LCString const& text) { return Find(static_cast<char const*>(text.c_str())); }

int LCString::Find(char c) {
  if (m_nLength < 1) return -1;
  return OffsetOf(m_pszData, std::strchr(m_pszData, c));
}

int LCString::FindOneOf(char const* set) {
  if (m_nLength < 1 || set == nullptr) return -1;
  return OffsetOf(m_pszData, std::strpbrk(m_pszData, set));
}

int LCString::FindOneOf(LCString const& set) {
  return FindOneOf(static_cast<char const*>(set.c_str()));
}

int LCString::ReverseFind(char const* text) {
  if (m_nLength < 1 || text == nullptr) return -1;
  const size_t text_length = std::strlen(text);
  if (text_length == 0) return m_nLength;  // an empty text matches at the end
  // The last occurrence in the tail is the first one in the reversed tail;
  // strstr keeps the search linear.
  const int tail = TailStart(m_pszData, m_nLength);
  const size_t tail_length = static_cast<size_t>(m_nLength - tail);
  if (text_length > tail_length) return -1;
  std::string reversed_tail(m_pszData + tail, tail_length);
  std::reverse(reversed_tail.begin(), reversed_tail.end());
  std::string needle(text, text_length);
  std::reverse(needle.begin(), needle.end());
  char const* hit = std::strstr(reversed_tail.c_str(), needle.c_str());
  if (hit == nullptr) return -1;
  const int r = static_cast<int>(hit - reversed_tail.c_str());
  return m_nLength - r - static_cast<int>(text_length);
}

int LCString::ReverseFind(LCString const& text) {
  return ReverseFind(static_cast<char const*>(text.c_str()));
}

int LCString::ReverseFind(char c) {
  if (m_nLength < 1) return -1;
  return OffsetOf(m_pszData, std::strrchr(m_pszData, c));
}

int LCString::ReverseFindOneOf(char const* set) {
  if (m_nLength < 1 || set == nullptr) return -1;
  bool member[256] = {};
  for (char const* p = set; *p != '\0'; ++p) member[static_cast<unsigned char>(*p)] = true;
  for (int i = m_nLength - 1; i >= 0 && m_pszData[i] != '\0'; --i) {
    if (member[static_cast<unsigned char>(m_pszData[i])]) return i;
  }
  return -1;
}

int LCString::ReverseFindOneOf(LCString const& set) {
  return ReverseFindOneOf(static_cast<char const*>(set.c_str()));
}

void LCString::TrimRight() {
  int removed = 0;
  for (int i = m_nLength - 1; i >= 0 && IsWhiteSpace(m_pszData[i]); --i) {
    m_pszData[i] = '\0';
    ++removed;
  }
  m_nLength -= removed;
}

void LCString::TrimLeft() {
  if (m_nLength < 1 || !IsWhiteSpace(m_pszData[0])) return;
  int lead = 0;
  while (lead < m_nLength && IsWhiteSpace(m_pszData[lead])) ++lead;
  if (lead == m_nLength) {
    m_nLength = 0;
    m_pszData[0] = '\0';
    return;
  }
  m_nLength -= lead;
  std::memmove(m_pszData, m_pszData + lead, static_cast<size_t>(m_nLength));
  m_pszData[m_nLength] = '\0';
}

void LCString::RemoveWhiteSpaces() {
  if (m_nLength == 0) return;
  int kept = 0;
  for (int i = 0; i < m_nLength; ++i) {
    if (!IsWhiteSpace(m_pszData[i])) m_pszData[kept++] = m_pszData[i];
  }
  m_nLength = kept;
  m_pszData[kept] = '\0';
}

LCString LCString::Left(int n) const { return EndPiece(m_pszData, m_nLength, n, false); }

LCString LCString::Right(int n) const { return EndPiece(m_pszData, m_nLength, n, true); }

LCString LCString::Mid(int start, int count) const {
  LCString result;
  if (m_nLength < 1 || count < 1 || start >= m_nLength) return result;
  if (start < 0) start = 0;  // count is not shortened for that
  // Compared as count > L - start (no overflow), so a start + count beyond int
  // reaches past the end like any other.
  if (count > m_nLength - start) count = m_nLength - start;
  result.Reallocate(count);
  std::memcpy(result.m_pszData, m_pszData + start, static_cast<size_t>(count));
  result[count] = '\0';
  return result;
}
