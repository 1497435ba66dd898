// Fuzzes LMsgOutput: a short sequence of Output (both overloads), PrintLog,
// Print and SetOutputOptions calls with formats, texts and options from the
// input, beside a model of the channel built on FormatModel.h. The log is a
// file in a temporary directory, attached open (afresh or appending), not
// attached, or attached but not open. Standard output is redirected to a
// file for the length of an input, so the options use the standard output
// bit and the log bit (never standard error) and the harness reads what Print
// wrote. Checked: every result (Output 0, -1 or -2, PrintLog 0 or -1) and, at
// the end, the whole text of the console and of the log file.
#include <fcntl.h>
#include <fuzzer/FuzzedDataProvider.h>
#include <unistd.h>
#include <vq0300/LMsgOutput.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "FormatModel.h"

namespace {

namespace fm = format_model;

const char* g_op = "";  // the current step, printed when a check fails
std::string g_text;     // its format or text

[[noreturn]] void Fail(int line, const char* what) {
  std::fprintf(stderr, "MsgOutput_fuzz: check failed at line %d in %s: %s\n  text \"%s\"\n", line,
               g_op, what, Escaped(g_text).c_str());
  std::abort();
}

// ---- The model ------------------------------------------------------------------

enum class Log { kNone, kOpen, kNotOpen };

struct Channel {
  unsigned short options = 0;
  Log log = Log::kNone;
  std::string console, logText;

  void Print(const char* text) {
    if (text != nullptr && (options & LMSG_OUTPUT_STDOUT) != 0) console += fm::Unpaired(text);
  }

  int PrintLog(const std::string& text) {
    if ((options & LMSG_OUTPUT_LOG) == 0) return 0;
    if (log == Log::kNone) {
      Print("Log File not initialized!\n");
      return -1;
    }
    int code = -3;
    if (log == Log::kOpen) {
      const fm::Written w = fm::WriteLineModel(fm::CutFormat(text), nullptr);
      logText += w.out;
      code = w.code;
    }
    if (code == 0) return 0;
    Print("Error Writing to Log File:\n");
    Print(code == -3 ? "\t\tFile not opened." : "\t\tUnsupported print format.");
    return -1;
  }

  bool Emit(const std::string& text) {  // true: the scan ends with -2
    Print(text.c_str());
    return PrintLog(text) != 0;
  }

  int Output(const fm::Cut& cut, const std::vector<fm::Arg>& args) {
    for (size_t k = 0; k < cut.conversions.size(); ++k) {
      fm::Parsed p;
      if (!fm::Parse(cut.conversions[k], p)) return -1;
      if (Emit(cut.conversions[k].piece)) return -2;
      std::string value;
      if (args[k].kind == fm::Kind::kText) {
        value = args[k].null ? "(null)" : args[k].text;  // no width, no precision
      } else {
        value = fm::Value(p, args[k]);
        if (value.size() > 255) return -1;  // does not fit the value buffer
        value = value.c_str();              // a %c of 0 ends the text
      }
      if (Emit(value)) return -2;
    }
    if (cut.noLetter) return -1;
    return Emit(cut.tail) ? -2 : 0;
  }
};

// ---- Files ------------------------------------------------------------------------

struct Files {
  fm::Place place;
  std::string log = place.File("log.txt");
  std::string missing = place.dir + "/missing/log.txt";
  std::string console = place.File("console.txt");
  int consoleFd = -1, savedStdout = -1;
  Files() {
    consoleFd = open(console.c_str(), O_RDWR | O_CREAT | O_TRUNC, 0600);
    savedStdout = dup(STDOUT_FILENO);
    CHECK(consoleFd >= 0 && savedStdout >= 0);
  }
  off_t start = 0;
  // Standard output goes to the console file until EndConsole, which gives
  // what was written in between. The file is emptied only once it is large:
  // emptying costs a flush on ext4.
  void BeginConsole() {
    start = lseek(consoleFd, 0, SEEK_END);
    CHECK(start >= 0);
    if (start > (1 << 20)) {
      CHECK(ftruncate(consoleFd, 0) == 0 && lseek(consoleFd, 0, SEEK_SET) == 0);
      start = 0;
    }
    CHECK(std::fflush(stdout) == 0 && dup2(consoleFd, STDOUT_FILENO) == STDOUT_FILENO);
  }
  std::string EndConsole() {
    CHECK(std::fflush(stdout) == 0 && dup2(savedStdout, STDOUT_FILENO) == STDOUT_FILENO);
    const off_t end = lseek(consoleFd, 0, SEEK_END);
    CHECK(end >= start);
    std::string text(static_cast<size_t>(end - start), '\0');
    CHECK(pread(consoleFd, &text[0], text.size(), start) == static_cast<ssize_t>(text.size()));
    return text;
  }
};

Files& TheFiles() {
  static Files files;
  return files;
}

unsigned short Options(FuzzedDataProvider& in) {
  static const unsigned short kBases[] = {0, LMSG_OUTPUT_STDOUT, LMSG_OUTPUT_LOG,
                                          LMSG_OUTPUT_STDOUT | LMSG_OUTPUT_LOG};
  // Bits from 8 up are stored and mean nothing; bit 2 would write to stderr.
  return kBases[in.ConsumeIntegralInRange(0, 3)] | (in.ConsumeIntegral<uint16_t>() & 0xFFF8);
}

void OutputStep(LMsgOutput& out, Channel& model, FuzzedDataProvider& in) {
  g_op = "Output";
  g_text = in.ConsumeRandomLengthString(fm::kMaxFormat).c_str();
  const bool withOptions = in.ConsumeBool();
  const unsigned short options = withOptions ? Options(in) : model.options;
  const fm::Cut cut = fm::CutFormat(g_text);
  if (cut.conversions.size() > fm::kMaxArgs || fm::HasHugeNumber(g_text)) return;
  const std::vector<fm::Arg> args = fm::MakeArgs(cut, in, true);
  const char* format = g_text.c_str();
  const int result =
      withOptions
          ? fm::CallWith([&](auto... a) { return out.Output(options, format, a...); }, args, 0)
          : fm::CallWith([&](auto... a) { return out.Output(format, a...); }, args, 0);
  model.options = options;
  CHECK(result == 0 || result == -1 || result == -2);
  CHECK(result == model.Output(cut, args));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider in(data, size);
  Files& files = TheFiles();
  Channel model;
  files.BeginConsole();
  {
    LMsgOutput out;
    g_op = "InitLogFile";
    switch (in.ConsumeIntegralInRange(0, 7)) {
      case 0:
        break;
      case 1:  // attached, not open: a directory that is not there, or no name
        CHECK(out.InitLogFile(files.missing.c_str(), true) > 0);
        model.log = Log::kNotOpen;
        break;
      case 2:
        CHECK(out.InitLogFile(nullptr, false) == -7);
        model.log = Log::kNotOpen;
        break;
      default: {
        // Mostly a new file: emptying one that holds text costs a flush on
        // ext4, so that is done only now and then.
        const int how = in.ConsumeIntegralInRange(0, 7);
        const bool fresh = how != 0;
        std::remove(files.log.c_str());
        if (how < 2) {
          FILE* f = std::fopen(files.log.c_str(), "wb");
          CHECK(f != nullptr && std::fputs("earlier\n", f) >= 0 && std::fclose(f) == 0);
        }
        CHECK(out.InitLogFile(files.log.c_str(), fresh) == 0);
        model.log = Log::kOpen;
        model.logText = fresh ? "" : "earlier\n";
      }
    }
    for (int step = 0; step < 4 && in.remaining_bytes() > 0; ++step) {
      switch (in.ConsumeIntegralInRange(0, 5)) {
        case 0:
        case 1:
        case 2:
          OutputStep(out, model, in);
          break;
        case 3: {
          g_op = "PrintLog";
          g_text = in.ConsumeRandomLengthString(64).c_str();
          const int result = out.PrintLog(g_text.c_str());
          CHECK(result == 0 || result == -1);
          CHECK(result == model.PrintLog(g_text));
          break;
        }
        case 4: {
          g_op = "Print";
          g_text = in.ConsumeRandomLengthString(64).c_str();
          const char* text = in.ConsumeBool() ? g_text.c_str() : nullptr;
          out.Print(text);
          model.Print(text);
          break;
        }
        default:
          model.options = Options(in);
          out.SetOutputOptions(model.options);
          break;
      }
    }
  }  // the channel closes its log
  g_op = "end of input";
  g_text.clear();
  const std::string console = files.EndConsole();
  CHECK(console == model.console);
  if (model.log == Log::kOpen) CHECK(fm::ReadAll(files.log) == model.logText);
  return 0;
}
