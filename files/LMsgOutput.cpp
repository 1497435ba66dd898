// LMsgOutput: the message channel. Output runs the format scan with a sink
// that sends every piece to the console and then to the log; the log is a
// plain LFile, written through the write core of LFile::WriteLine.
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

int RunOutput(LMsgOutput& channel, char const* format, std::va_list* args) {
  ChannelSink sink(channel);
  return vq0300_internal::RunFormatScan(format, args, sink, kOutputFormatFailure);
}

// Destroys a log made by InitLogFile with new LFile. Its dynamic type is
// LFile itself, so the destructor, which is not virtual, is the right one.
void DestroyLog(LFile* log) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdelete-non-virtual-dtor"
  delete log;
#pragma GCC diagnostic pop
}

}  // namespace

LMsgOutput::LMsgOutput() : m_pfileLogFile(nullptr), m_wOutputOptions(0) {}

LMsgOutput::~LMsgOutput() { DestroyLog(m_pfileLogFile); }

void LMsgOutput::SetOutputOptions(unsigned short options) { m_wOutputOptions = options; }

int LMsgOutput::InitLogFile(char const* path, bool fresh) {
  LFile* old = m_pfileLogFile;
  m_pfileLogFile = nullptr;
  DestroyLog(old);
  m_pfileLogFile = new LFile(path, fresh ? "wt" : "at");
  return m_pfileLogFile->GetErrorCode();
}

void LMsgOutput::Print(char const* text) {
  if (text == nullptr) return;
  if ((m_wOutputOptions & LMSG_OUTPUT_STDERR) != 0) {
    vq0300_internal::PrintBareFormat(stderr, text);
  } else if ((m_wOutputOptions & LMSG_OUTPUT_STDOUT) != 0) {
    vq0300_internal::PrintBareFormat(stdout, text);
  }
}

int LMsgOutput::PrintLog(char const* text) {
  if ((m_wOutputOptions & LMSG_OUTPUT_LOG) == 0) return 0;
  if (m_pfileLogFile == nullptr) {
    Print("Log File not initialized!\n");
    return -1;
  }
  // WriteLine(text) with no arguments, which the variadic form cannot be
  // told: the core reads none.
  if (vq0300_internal::WriteLineCore(*m_pfileLogFile, text, nullptr) == 0) return 0;
  Print("Error Writing to Log File:\n");
  char const* message = m_pfileLogFile->GetErrorMessage();
  Print((std::string("\t\t") + (message != nullptr ? message : "")).c_str());
  return -1;
}

// The two overloads cannot share a body: a variadic function cannot hand its
// arguments on to another variadic function, only a va_list to a plain one.
int LMsgOutput::Output(char const* format, ...) {
  std::va_list args;
  va_start(args, format);
  vq0300_internal::HeldException held;
  const int result = held.Run([&] { return RunOutput(*this, format, &args); });
  va_end(args);
  return held.Pass(result);
}

int LMsgOutput::Output(unsigned short options, char const* format, ...) {
  SetOutputOptions(options);
  std::va_list args;
  va_start(args, format);
  vq0300_internal::HeldException held;
  const int result = held.Run([&] { return RunOutput(*this, format, &args); });
  va_end(args);
  return held.Pass(result);
}
