// LFile: one stream whose every failure becomes a stored code, and the
// write core under WriteLine.
#include "vq0300/LFile.h"

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <memory>
#include <string>

#include "FormatScan_internal.h"
#include "core/Helpers_internal.h"

namespace {

// The texts of the class's own codes: code -n selects row n. Row 0 is
// never selected (code 0 answers "No Error!").
constexpr int kErrorRows = 8;
const char g_szFileErrors[kErrorRows][1024] = {
    "No Error Found.",                        // 0
    "LFile conflict : Unable to open file.",  // -1 LFILE_ERR_CONFLICT
    "Unsupported print format.",              // -2 LFILE_ERR_FORMAT
    "File not opened.",                       // -3 LFILE_ERR_NOT_OPEN
    "File not readable.",                     // -4 LFILE_ERR_NOT_READABLE
    "File not writable.",                     // -5 LFILE_ERR_NOT_WRITABLE
    "End Of File Reached.",                   // -6 LFILE_ERR_EOF
    "Invalid Filename.",                      // -7 LFILE_ERR_FILENAME
};

constexpr char kProbeName[] = "40.88.26.60.71";

// errno after a failed call; never 0, so that a failure never reads as
// success.
int LastErrno() { return errno != 0 ? errno : EIO; }

// The fields of any LFile, reached as a derived class reaches them: the
// protected members, named through a class derived from LFile, give
// pointers to members of LFile itself, which apply to every LFile with no
// cast of the object. The write core below is the only user.
struct Fields : LFile {
  static auto Stream() { return &Fields::m_pFile; }
  static auto Code() { return &Fields::m_nErrorCode; }
};

}  // namespace

namespace vq0300_internal {

int WriteLineCore(LFile& file, char const* format, std::va_list* args) {
  int& code = file.*Fields::Code();
  code = 0;
  if (file.ValidWrite() != 0) return code;
  return code = WriteFormatted(file.*Fields::Stream(), format, args, LFILE_ERR_FORMAT);
}

}  // namespace vq0300_internal

LFile::LFile()
    : m_pFile(nullptr), m_byMode(0), m_pszFilename(nullptr), m_nErrorCode(0), m_bOpen(false) {}

LFile::LFile(char const* name, char const* mode)
    : m_pFile(nullptr), m_byMode(0), m_pszFilename(nullptr), m_nErrorCode(0), m_bOpen(false) {
  if (name != nullptr) m_pszFilename = vq0300_internal::CopyText(name).release();
  // Open allocates only before its fopen; should that fail, the name goes
  // too, since no destructor runs for an object whose constructor throws.
  try {
    Open(name, mode, true);
  } catch (...) {
    delete[] m_pszFilename;
    throw;
  }
}

LFile::~LFile() {
  Close();
  // A failed fclose leaves the name held for the caller of Close; here there
  // is no caller left to want it.
  delete[] m_pszFilename;
}

int LFile::Open(char const* name, char const* mode, bool closeFirst) {
  m_byMode = 0;
  if (name == nullptr) return m_nErrorCode = LFILE_ERR_FILENAME;
  // The copy comes first: Close below releases the stored name, which name
  // may be, and an allocation failure must come before a stream is held, so
  // that it leaves no stream without m_bOpen.
  std::unique_ptr<char[]> copy = vq0300_internal::CopyText(name);
  if (m_pFile != nullptr) {
    if (!closeFirst) return m_nErrorCode = LFILE_ERR_CONFLICT;
    Close();
    if (m_nErrorCode != 0) return m_nErrorCode;
  }
  m_pFile = std::fopen(copy.get(), mode);
  if (m_pFile == nullptr) return m_nErrorCode = LastErrno();

  delete[] m_pszFilename;
  m_pszFilename = copy.release();

  if (std::strchr(mode, 'w') != nullptr) m_byMode = LFILE_MODE_WRITE;
  if (std::strchr(mode, 'r') != nullptr) m_byMode |= LFILE_MODE_READ;
  if (std::strchr(mode, '+') != nullptr) m_byMode |= LFILE_MODE_READ | LFILE_MODE_WRITE;
  if (std::strchr(mode, 'b') != nullptr) m_byMode |= LFILE_MODE_BINARY;
  if (std::strchr(mode, 'a') != nullptr) m_byMode |= LFILE_MODE_WRITE;
  m_bOpen = true;
  return 0;
}

int LFile::Close() {
  if (m_pFile != nullptr) {
    std::FILE* stream = m_pFile;
    // The stream is gone after fclose, failed or not: never close it twice.
    m_pFile = nullptr;
    if (std::fclose(stream) == EOF) {
      m_bOpen = false;
      return m_nErrorCode = LastErrno();
    }
  }
  delete[] m_pszFilename;
  m_pszFilename = nullptr;
  m_bOpen = false;
  return 0;
}

int LFile::Rewind() {
  if (m_pFile == nullptr) return m_nErrorCode = LFILE_ERR_NOT_OPEN;
  std::rewind(m_pFile);
  return m_nErrorCode = std::ferror(m_pFile);
}

int LFile::ValidRead() {
  if (m_nErrorCode != 0) return m_nErrorCode;
  if (m_pFile == nullptr) return m_nErrorCode = LFILE_ERR_NOT_OPEN;
  if ((m_byMode & LFILE_MODE_READ) == 0) return m_nErrorCode = LFILE_ERR_NOT_READABLE;
  if (std::feof(m_pFile) != 0) return m_nErrorCode = LFILE_ERR_EOF;
  return m_nErrorCode;
}

int LFile::Read(int count, unsigned char* buffer) {
  m_nErrorCode = 0;
  if (ValidRead() != 0) return m_nErrorCode;
  if (count > 0) {
    // How many bytes arrived is not reported: ferror alone decides the result.
    const std::size_t arrived = std::fread(buffer, 1, static_cast<std::size_t>(count), m_pFile);
    static_cast<void>(arrived);
  }
  return m_nErrorCode = std::ferror(m_pFile);
}

int LFile::ReadLine(int size, char* buffer) {
  m_nErrorCode = 0;
  if (ValidRead() != 0) return m_nErrorCode;
  if (std::fgets(buffer, size, m_pFile) == nullptr) m_nErrorCode = std::ferror(m_pFile);
  return m_nErrorCode;
}

int LFile::ReadLine(LCString& text) {
  constexpr int kBufferSize = 6000;
  m_nErrorCode = 0;
  if (ValidRead() != 0) return m_nErrorCode;
  std::unique_ptr<char[]> buffer(new char[kBufferSize]);
  // One byte short of the buffer: at most 5998 characters a call.
  if (std::fgets(buffer.get(), kBufferSize - 1, m_pFile) == nullptr) {
    return m_nErrorCode = std::ferror(m_pFile);
  }
  text = LCString(static_cast<char const*>(buffer.get()));
  return m_nErrorCode;
}

int LFile::ReadChar(char& c) {
  m_nErrorCode = 0;
  if (m_pFile != nullptr && std::feof(m_pFile) != 0) return -1;
  if (ValidRead() != 0) return m_nErrorCode;
  c = static_cast<char>(static_cast<unsigned char>(std::fgetc(m_pFile) & 0xFF));
  return m_nErrorCode = std::ferror(m_pFile);
}

int LFile::ValidWrite() {
  if (m_nErrorCode != 0) return m_nErrorCode;
  if (m_pFile == nullptr) return m_nErrorCode = LFILE_ERR_NOT_OPEN;
  if ((m_byMode & LFILE_MODE_WRITE) == 0) return m_nErrorCode = LFILE_ERR_NOT_WRITABLE;
  return 0;
}

int LFile::WriteChar(unsigned char byte) {
  m_nErrorCode = 0;
  if (ValidWrite() != 0) return m_nErrorCode;
  std::fputc(byte, m_pFile);
  return m_nErrorCode = std::ferror(m_pFile);
}

int LFile::Write(int count, unsigned char const* data) {
  m_nErrorCode = 0;
  if (ValidWrite() != 0) return m_nErrorCode;
  if (count > 0) std::fwrite(data, 1, static_cast<std::size_t>(count), m_pFile);
  return m_nErrorCode = std::ferror(m_pFile);
}

// The string comes by value because the interface says so.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
int LFile::Write(int count, LCString text) {
  m_nErrorCode = 0;
  if (ValidWrite() != 0) return m_nErrorCode;
  const int inBuffer = text.GetLength() + 1;
  if (count > inBuffer) count = inBuffer;
  if (count > 0) std::fwrite(text.c_str(), 1, static_cast<std::size_t>(count), m_pFile);
  return m_nErrorCode = std::ferror(m_pFile);
}

int LFile::WriteLine(char const* format, ...) {
  std::va_list args;
  va_start(args, format);
  vq0300_internal::HeldException held;
  const int result = held.Run([&] { return vq0300_internal::WriteLineCore(*this, format, &args); });
  va_end(args);
  return held.Pass(result);
}

char const* LFile::GetFilename() const { return m_pszFilename; }

int LFile::GetErrorCode() { return m_nErrorCode; }

char const* LFile::GetErrorMessage() {
  if (m_nErrorCode < -100) return OnGetErrorMessage();
  if (m_nErrorCode < -(kErrorRows - 1)) return "Unknown error.";
  if (m_nErrorCode < 0) return g_szFileErrors[-m_nErrorCode];
  if (m_nErrorCode == 0) return "No Error!";
  return std::strerror(m_nErrorCode);
}

char const* LFile::OnGetErrorMessage() { return nullptr; }

bool LFile::IsRead() { return (m_byMode & LFILE_MODE_READ) != 0; }

bool LFile::IsWrite() { return (m_byMode & LFILE_MODE_WRITE) != 0; }

bool LFile::IsBinary() { return (m_byMode & LFILE_MODE_BINARY) != 0; }

bool LFile::IsAppend() { return (m_byMode & LFILE_MODE_APPEND) != 0; }

bool LFile::IsOpen() { return m_bOpen; }

int LFile::exists(char const* path) { return vq0300_internal::FileOpens(path, "r") ? 1 : 0; }

int LFile::IsDirectoryWritable(char const* path) {
  if (path == nullptr) return 0;
  const std::string probe = std::string(path) + "/" + kProbeName;
  if (!vq0300_internal::FileOpens(probe.c_str(), "w")) return 0;
  std::remove(probe.c_str());
  return 1;
}
