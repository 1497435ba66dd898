#include "vq0300/LLog.h"

#include <cstdio>

#include "vq0300/LCString.h"
#include "vq0300/TimeText.h"

namespace {

constexpr char kHeaderLine[] = "\t\t\tKorvane Semiconductor Corporation\n";

bool IsEmpty(char const* text) { return text == nullptr || text[0] == '\0'; }

// The time stamp, its two blanks and the text (null: nothing behind them).
LCString Record(char const* text) {
  LCString record;
  util_GetTime(record);
  record += LCString(text != nullptr ? text : "");
  return record;
}

// Writes text as a format that has no arguments: "%%" becomes one percent
// sign, and any other directive is written as it stands instead of reading
// an argument that is not there.
void PutWithoutArguments(char const* text, FILE* stream) {
  for (char const* p = text; *p != '\0'; ++p) {
    std::fputc(*p, stream);
    if (p[0] == '%' && p[1] == '%') ++p;
  }
}

}  // namespace

LLog::LLog() = default;

LLog::LLog(char const* path, char const* mode) { SetLogFilename(path, mode); }

LLog::~LLog() = default;

void LLog::SetLogFilename(char const* path, char const* mode) {
  if (IsEmpty(path) || IsEmpty(mode)) return;
  m_strLogFilename = path;
  m_strMode = mode;
  if (FILE* file = std::fopen(path, mode)) std::fclose(file);
}

char const* LLog::GetLogFilename() const { return m_strLogFilename.c_str(); }

bool LLog::IsOpen() const {
  for (char const* mode : {"a", "w"}) {
    if (FILE* file = std::fopen(m_strLogFilename.c_str(), mode)) {
      std::fclose(file);
      return true;
    }
  }
  return false;
}

void LLog::LogHeader(char const* text) {
  FILE* file = std::fopen(m_strLogFilename.c_str(), "a");
  if (file == nullptr) return;
  std::fwrite(kHeaderLine, 1, sizeof kHeaderLine - 1, file);
  std::fprintf(file, "\t\t\t%s\n\n", text != nullptr ? text : "");
  std::fclose(file);
}

void LLog::WriteMessage(char const* text) {
  if (m_strLogFilename.empty()) return;
  FILE* file = std::fopen(m_strLogFilename.c_str(), "a");
  if (file == nullptr) return;
  PutWithoutArguments(Record(text).c_str(), file);
  std::fclose(file);
}

void LLog::WriteMessage2(char const* text) {
  if (m_strLogFilename.empty()) return;
  FILE* file = std::fopen(m_strLogFilename.c_str(), "a");
  if (file == nullptr) return;
  std::fputs(Record(text).c_str(), file);
  std::fclose(file);
}

void LLog::Clear() {
  std::remove(m_strLogFilename.c_str());
  if (FILE* file = std::fopen(m_strLogFilename.c_str(), "w")) std::fclose(file);
}
