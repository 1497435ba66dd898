// Fuzzes the format scan of LFile::WriteLine. The input gives a format and
// the arguments: the harness cuts the format as the scan does, passes one
// argument of the type of each conversion's letter (skipping formats with
// more than four conversions), and compares the result, the stored code and
// the bytes of the file with the model in FormatModel.h: the pieces and
// values up to the first refused conversion, each accepted value as snprintf
// writes the rebuilt directive, and nothing behind a failure. A few inputs
// go to an LFile with no stream (-3) or one opened for reading (-5), where
// nothing may be written whatever the format.
#include <fuzzer/FuzzedDataProvider.h>
#include <vq0300/LFile.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "FormatModel.h"

namespace {

namespace fm = format_model;

std::string g_format;  // printed when a check fails

[[noreturn]] void Fail(int line, const char* what) {
  std::fprintf(stderr, "WriteLine_fuzz: check failed at line %d: %s\n  format \"%s\"\n", line, what,
               Escaped(g_format).c_str());
  std::abort();
}

fm::Place& ThePlace() {
  static fm::Place place;
  return place;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider in(data, size);
  const uint8_t mode = in.ConsumeIntegral<uint8_t>();
  g_format = in.ConsumeRandomLengthString(fm::kMaxFormat).c_str();
  const fm::Cut cut = fm::CutFormat(g_format);
  if (cut.conversions.size() > fm::kMaxArgs || fm::HasHugeNumber(g_format)) return 0;
  const std::vector<fm::Arg> args = fm::MakeArgs(cut, in, true);
  static const std::string path = ThePlace().File("written.txt");

  int result;
  if (mode % 16 == 0) {
    // No stream: -3 before the format is looked at.
    LFile closed;
    result =
        fm::CallWith([&](auto... a) { return closed.WriteLine(g_format.c_str(), a...); }, args, 0);
    CHECK(result == -3 && closed.GetErrorCode() == -3);
    CHECK(std::strcmp(closed.GetErrorMessage(), "File not opened.") == 0);
    return 0;
  }
  if (mode % 16 == 1) {
    // Opened for reading: -5, and the file stays as it was.
    std::remove(path.c_str());
    {
      LFile create(path.c_str(), "wb");
      CHECK(create.WriteChar('r') == 0);
    }
    LFile reading(path.c_str(), "rb");
    CHECK(reading.GetErrorCode() == 0 && reading.IsOpen());
    result =
        fm::CallWith([&](auto... a) { return reading.WriteLine(g_format.c_str(), a...); }, args, 0);
    CHECK(result == -5 && reading.GetErrorCode() == -5);
    CHECK(reading.Close() == 0);
    CHECK(fm::ReadAll(path) == "r");
    return 0;
  }

  const fm::Written want = fm::WriteLineModel(cut, &args);
  std::remove(path.c_str());  // a new file each time: truncating one costs a flush on ext4
  {
    LFile file(path.c_str(), "wb");
    CHECK(file.GetErrorCode() == 0 && file.IsOpen());
    result =
        fm::CallWith([&](auto... a) { return file.WriteLine(g_format.c_str(), a...); }, args, 0);
    CHECK(file.GetErrorCode() == result);
    if (result == -2) CHECK(std::strcmp(file.GetErrorMessage(), "Unsupported print format.") == 0);
    CHECK(file.Close() == 0);
  }
  const std::string written = fm::ReadAll(path);
  CHECK(result == 0 || result == -2 || result > 0);
  if (result > 0) {
    // The stream failed: what came before the failure is a prefix.
    CHECK(want.out.compare(0, written.size(), written) == 0);
  } else {
    CHECK(result == want.code);
    if (written != want.out) {
      std::fprintf(stderr, "written \"%s\"\nwanted  \"%s\"\n", Escaped(written).c_str(),
                   Escaped(want.out).c_str());
    }
    CHECK(written == want.out);
  }
  return 0;
}
