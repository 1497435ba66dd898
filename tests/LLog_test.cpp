// LLog beside a model of the log files it should leave and the path it
// holds.
#include <vq0300/LLog.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include "FormatModel.h"

namespace {

// LLog beside a model of the log file it should leave and the path it holds.
void RunLogOps(model::OpInput& in) {
  static const std::regex stamp("[A-Z][a-z]{2} [A-Z][a-z]{2} [ 0-9][0-9] [0-9:]{8} [0-9]{4}  ");
  const testsupport::TempDir dir;
  const std::string names[] = {dir / "log", dir / "none/log", ""};
  const char* const modes[] = {"a", "w", "", nullptr};
  std::optional<std::string> file;  // names[0]; the others are never created
  std::string path;
  LLog log;
  while (!in.Done()) {
    const int op = in.Int(0, 5), which = in.Int(0, 3);
    const char* const mode = modes[in.Int(0, 3)];
    const std::string text = in.Text(6, "%%d a\n");
    // A null text counts as an empty one.
    const char* const t = text.empty() && in.Bool() ? nullptr : text.c_str();
    const bool here = path == names[0];
    model::Step() = "operation " + std::to_string(op) + " with \"" + text + "\"";
    if (op == 0) log.SetLogFilename(which < 3 ? names[which].c_str() : nullptr, mode);
    if (op == 0 && which < 2 && mode && *mode) path = names[which];
    if (op == 0 && which == 0 && mode && *mode) file = *mode == 'w' ? "" : file.value_or("");
    if (op > 0 && here) file = op == 4 ? "" : file.value_or("");  // opened, or made anew
    if (op == 1) log.LogHeader(t);
    if (op == 1 && here) *file += "\t\t\tKorvane Semiconductor Corporation\n\t\t\t" + text + "\n\n";
    if (op == 2) log.WriteMessage(t);  // as a format without arguments, which Print shows
    if (op == 2 && here) *file += "@" + format_model::Literal(text);
    if (op == 3) log.WriteMessage2(t);
    if (op == 3 && here) *file += "@" + text;
    if (op == 4) log.Clear();
    if (op == 5) MODEL_CHECK(log.IsOpen() == here);
    MODEL_CHECK(log.GetLogFilename() == path);
    MODEL_CHECK(std::filesystem::exists(names[0]) == file.has_value());
    MODEL_CHECK(std::regex_replace(testsupport::ReadFile(names[0]), stamp, "@") ==
                file.value_or(""));
  }
}

}  // namespace

TEST(LLog, RecordsFollowTheModel) { model::RunSeeds(RunLogOps, 10, 400); }
