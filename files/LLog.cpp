// LLog: a time-stamped log file, opened and closed at every call.
#include "vq0300/LLog.h"

#include <cstdio>

#include "FormatScan_internal.h"
#include "core/Helpers_internal.h"
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

// Appends the record of text to the log at path with write. The record is
// built before the file opens, so that an allocation failure leaves no stream
// behind, and the stream is closed on every way out. No path: nothing.
template <typename Write>
void AppendRecord(const std::string& path, char const* text, Write write) {
  if (path.empty()) return;
  const LCString record = Record(text);
  vq0300_internal::FilePtr file(std::fopen(path.c_str(), "a"));
  if (file == nullptr) return;
  write(file.get(), record.c_str());
}

}  // namespace

LLog::LLog() = default;

LLog::LLog(char const* path, char const* mode) { SetLogFilename(path, mode); }

LLog::~LLog() = default;

void LLog::SetLogFilename(char const* path, char const* mode) {
  if (IsEmpty(path) || IsEmpty(mode)) return;
  m_strLogFilename = path;
  m_strMode = mode;
  vq0300_internal::FileOpens(path, mode);  // creates the file, or empties it with "w"
}

char const* LLog::GetLogFilename() const { return m_strLogFilename.c_str(); }

bool LLog::IsOpen() const {
  char const* path = m_strLogFilename.c_str();
  return vq0300_internal::FileOpens(path, "a") || vq0300_internal::FileOpens(path, "w");
}

void LLog::LogHeader(char const* text) {
  FILE* file = std::fopen(m_strLogFilename.c_str(), "a");
  if (file == nullptr) return;
  std::fwrite(kHeaderLine, 1, sizeof kHeaderLine - 1, file);
  std::fprintf(file, "\t\t\t%s\n\n", text != nullptr ? text : "");
  std::fclose(file);
}

void LLog::WriteMessage(char const* text) {
  // As a format given no arguments: "%%" becomes one percent sign, any
  // other directive is written as it stands.
  AppendRecord(m_strLogFilename, text, vq0300_internal::PrintBareFormat);
}

void LLog::WriteMessage2(char const* text) {
  AppendRecord(m_strLogFilename, text,
               [](FILE* file, char const* record) { std::fputs(record, file); });
}

void LLog::Clear() {
  std::remove(m_strLogFilename.c_str());
  vq0300_internal::FileOpens(m_strLogFilename.c_str(), "w");
}
