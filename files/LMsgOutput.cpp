#include "vq0300/LMsgOutput.h"

#include <cstdarg>
#include <cstdio>
#include <string>

#include "FormatScan_internal.h"

namespace {

using vq0300_internal::ArgType;
using vq0300_internal::Argument;
using vq0300_internal::ParsedConversion;

constexpr int kOutputFormatFailure = -1;
constexpr int kOutputLogFailure = -2;

// The sink of Output: every piece and every value to Print, then PrintLog.
class ChannelSink final : public vq0300_internal::ScanSink {
 public:
  explicit ChannelSink(LMsgOutput& channel) : m_channel(channel) {}

  int Piece(char const* text, bool /*last*/) override {
    m_channel.Print(text);
    return m_channel.PrintLog(text) != 0 ? kOutputLogFailure : 0;
  }

  int Value(ParsedConversion const& conversion, Argument const& argument) override {
    if (conversion.type == ArgType::kText) {
      return Piece(argument.text != nullptr ? argument.text : "(null)", false);
    }
    char value[vq0300_internal::kConversionSize];
    if (vq0300_internal::FormatValue(value, sizeof value, conversion, argument) < 0) {
      return kOutputFormatFailure;
    }
    return Piece(value, false);
  }

 private:
  LMsgOutput& m_channel;
};

// The log file of a channel: an LFile that can also write a text as a format
// without arguments, which the variadic WriteLine cannot be asked to do. Only
// InitLogFile creates the log, so its dynamic type is always this class.
class ChannelLog final : public LFile {
 public:
  ChannelLog(char const* path, char const* mode) : LFile(path, mode) {}

  // WriteLine(text) with no arguments: code 0, the readiness test, then the
  // scan, in which a directive that would show an argument is the format
  // failure -2. Returns the stored code.
  int WriteWithoutArguments(char const* text) {
    m_nErrorCode = 0;
    if (ValidWrite() == 0) {
      m_nErrorCode = vq0300_internal::WriteFormatted(m_pFile, text, nullptr, LFILE_ERR_FORMAT);
    }
    return m_nErrorCode;
  }
};

ChannelLog* AsChannelLog(LFile* log) { return static_cast<ChannelLog*>(log); }

int RunOutput(LMsgOutput& channel, char const* format, std::va_list* args) {
  ChannelSink sink(channel);
  return vq0300_internal::RunFormatScan(format, args, sink, kOutputFormatFailure);
}

}  // namespace

LMsgOutput::LMsgOutput() : m_pfileLogFile(nullptr), m_wOutputOptions(0) {}

LMsgOutput::~LMsgOutput() { delete AsChannelLog(m_pfileLogFile); }

void LMsgOutput::SetOutputOptions(unsigned short options) { m_wOutputOptions = options; }

int LMsgOutput::InitLogFile(char const* path, bool fresh) {
  ChannelLog* old = AsChannelLog(m_pfileLogFile);
  m_pfileLogFile = nullptr;
  delete old;
  m_pfileLogFile = new ChannelLog(path, fresh ? "wt" : "at");
  return m_pfileLogFile->GetErrorCode();
}

void LMsgOutput::Print(char const* text) {
  if (text == nullptr) return;
  if ((m_wOutputOptions & LMSG_OUTPUT_STDERR) != 0) {
    vq0300_internal::WriteWithoutArguments(stderr, text);
  } else if ((m_wOutputOptions & LMSG_OUTPUT_STDOUT) != 0) {
    vq0300_internal::WriteWithoutArguments(stdout, text);
  }
}

int LMsgOutput::PrintLog(char const* text) {
  if ((m_wOutputOptions & LMSG_OUTPUT_LOG) == 0) return 0;
  if (m_pfileLogFile == nullptr) {
    Print("Log File not initialized!\n");
    return -1;
  }
  ChannelLog& log = *AsChannelLog(m_pfileLogFile);
  if (log.WriteWithoutArguments(text) == 0) return 0;
  Print("Error Writing to Log File:\n");
  char const* message = log.GetErrorMessage();
  Print((std::string("\t\t") + (message != nullptr ? message : "")).c_str());
  return -1;
}

int LMsgOutput::Output(char const* format, ...) {
  std::va_list args;
  va_start(args, format);
  int result;
  try {
    result = RunOutput(*this, format, &args);
  } catch (...) {
    va_end(args);
    throw;
  }
  va_end(args);
  return result;
}

int LMsgOutput::Output(unsigned short options, char const* format, ...) {
  SetOutputOptions(options);
  std::va_list args;
  va_start(args, format);
  int result;
  try {
    result = RunOutput(*this, format, &args);
  } catch (...) {
    va_end(args);
    throw;
  }
  va_end(args);
  return result;
}
