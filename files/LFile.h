/// @class LFile
/// LFile: one standard stream (FILE*) whose every failure becomes a stored
/// integer code with a text.
///
/// Operations return an int and store it: 0 for success, -1 to -7 for the
/// class's own conditions (LFILE_ERR_*), a positive value for errno after a
/// failed fopen or fclose, or for the non-zero value of ferror after a stream
/// call (stored unchanged although it is no errno number). GetErrorMessage
/// gives the text of the stored code. No file failure leaves as an exception;
/// an allocation failure does.
///
/// States: Empty (no stream, no name), Named (no stream, a name: construction
/// whose fopen failed) and Open (stream and name). The mode flags describe the
/// last Open: Close keeps them, and every Open, a refused one included, first
/// clears them.
///
/// The stored code is sticky in two places, and that is the trap of the class:
/// ValidRead and ValidWrite return an old code as it stands, and Close leaves
/// the code in place, so Open(name, mode, true) after a failed read closes the
/// old file and then returns the old code without opening the new one.
/// Example:
/// @code
///   LFile f(path, "r");
///   char c;
///   while (f.ReadChar(c) == 0) { ... }  // the last call gives -1 at the end
///   if (f.GetErrorCode() != 0) puts(f.GetErrorMessage());
/// @endcode
///
/// REQUIRES (not tested by the class): mode texts and the pointers handed to
/// the read and write operations are not null, and a read buffer has room for
/// its count. The destructor is not virtual: destroy an LFile through its own
/// type.
#ifndef VQ0300_LFILE_H
#define VQ0300_LFILE_H
/// @file

#include <cstdint>
#include <cstdio>

#include "vq0300/LCString.h"
#include "vq0300/vq0300_export.h"

/// Flags of m_byMode, raised by Open from the letters of the mode text.
constexpr std::uint8_t LFILE_MODE_BINARY = 1;
constexpr std::uint8_t LFILE_MODE_READ = 2;   ///< "r" or "+"
constexpr std::uint8_t LFILE_MODE_WRITE = 4;  ///< "w", "a" or "+"
/// Read by IsAppend. Open never raises it ("a" gives LFILE_MODE_WRITE alone);
/// only a caller or a derived class that sets it in m_byMode does.
constexpr std::uint8_t LFILE_MODE_APPEND = 8;

/// The class's own failure codes; GetErrorMessage gives the quoted texts.
constexpr int LFILE_ERR_CONFLICT = -1;      ///< "LFile conflict : Unable to open file."
constexpr int LFILE_ERR_FORMAT = -2;        ///< "Unsupported print format."
constexpr int LFILE_ERR_NOT_OPEN = -3;      ///< "File not opened."
constexpr int LFILE_ERR_NOT_READABLE = -4;  ///< "File not readable."
constexpr int LFILE_ERR_NOT_WRITABLE = -5;  ///< "File not writable."
constexpr int LFILE_ERR_EOF = -6;           ///< "End Of File Reached."
constexpr int LFILE_ERR_FILENAME = -7;      ///< "Invalid Filename."

class VQ0300_API LFile {
 public:
  /// Empty: no stream, no name, no flags, code 0.
  LFile();
  /// Stores a copy of name, then Open(name, mode, true), whose result is
  /// dropped: the object lives on whatever happened, GetErrorCode tells.
  /// A failed fopen leaves the Named state (GetFilename still gives the
  /// name); a null name leaves it Empty with code -7. An allocation failure
  /// passes out as std::bad_alloc with no name and no stream left behind.
  LFile(char const* name, char const* mode);
  /// Close, result dropped, and the name released whatever fclose returned.
  /// Not virtual.
  ~LFile();
  LFile(LFile const&) = delete;
  LFile& operator=(LFile const&) = delete;

  /// Opens name with the fopen mode text. In this order:
  ///  1. the flags become 0, so even a refused Open leaves an open stream
  ///     unreadable (-4) and unwritable (-5);
  ///  2. a null name gives -7;
  ///  3. with a stream held: closeFirst false gives -1 and the stream stays;
  ///     closeFirst true runs Close and then returns the STORED code if it is
  ///     not 0 (Close keeps an old code), having closed the old file and
  ///     opened nothing;
  ///  4. fopen; a failure gives errno, and the name field is not changed;
  ///  5. the name is replaced by a copy, the flags are built from the letters
  ///     of mode wherever they stand: "w" write, "r" read, "+" read and write,
  ///     "b" binary, "a" write and append; "t" and the rest mean nothing;
  ///  6. IsOpen becomes true and the result is 0. The stored code is NOT
  ///     touched here: a code from before stays until the next read or write.
  ///
  /// Codes -7, -1 and errno are stored. name may be GetFilename() itself: it
  /// is copied before anything is released. That copy is the one allocation,
  /// made before step 3: when it fails (std::bad_alloc) the object keeps its
  /// stream, name and state, with only the flags cleared by step 1.
  int Open(char const* name, char const* mode, bool closeFirst);

  /// fclose the stream if there is one, then release the name and clear
  /// IsOpen; 0. Flags and the stored code are left alone. Without a stream it
  /// still releases a name (Named becomes Empty).
  /// A failed fclose stores and returns errno; the stream pointer is dropped
  /// all the same, never handed to fclose again, and the object is then Named
  /// (no stream, name kept, IsOpen false) until the next Close or the
  /// destructor, which releases the name after any Close.
  int Close();

  /// rewind the stream (which clears its end-of-file and error indicators);
  /// the stored code and the result become ferror, so 0. Without a stream -3.
  int Rewind();

  /// Readiness for reading, storing what it returns: the stored code if it
  /// is not 0 (nothing else is tested), else -3 with no stream, -4 without
  /// the read flag, -6 with the end-of-file indicator set, else 0.
  int ValidRead();

  /// The read and write operations below first set the stored code to 0, so
  /// an old failure never blocks them, then run ValidRead or ValidWrite and
  /// stop on its code. After the stream call the code becomes ferror: a short
  /// transfer is no failure.

  /// fread of count bytes into buffer. The number of bytes read is not
  /// reported: the call that reaches the end gives 0, the next one -6.
  /// A negative count reads nothing.
  int Read(int count, unsigned char* buffer);
  /// fgets(buffer, size, stream): at most size - 1 characters, the line end
  /// included when it fits. At the end of the file with nothing left the
  /// result is 0 and buffer is untouched; the next call gives -6. The code
  /// becomes ferror only when fgets delivers nothing.
  int ReadLine(int size, char* buffer);
  /// As above with at most 5998 characters a call (a longer line arrives
  /// over several calls), assigned to text up to the first NUL byte. text
  /// is left as it was when nothing was delivered.
  int ReadLine(LCString& text);
  /// fgetc into c (the low byte; the call that hits the end stores 0xFF and
  /// gives 0). With the end-of-file indicator already set the result is -1
  /// and the stored code stays 0, unlike Read and ReadLine, which give -6.
  int ReadChar(char& c);

  /// Readiness for writing, storing what it returns: the stored code if it
  /// is not 0, else -3 with no stream, -5 without the write flag, else 0.
  /// There is no end-of-file test for writing.
  int ValidWrite();

  /// fputc of the byte.
  int WriteChar(unsigned char byte);
  /// fwrite of count bytes of data. A negative count writes nothing.
  int Write(int count, unsigned char const* data);
  /// fwrite of the first count bytes of the string's buffer, NUL bytes
  /// included: the stored length does not limit the count. A count beyond
  /// the buffer (GetLength() + 1 bytes, terminator included) is cut to it.
  int Write(int count, LCString text);

  /// Formatted writing in the manner of fprintf, scanning the format itself:
  /// literal pieces are written unchanged and each conversion is handed to
  /// fprintf alone with its one argument. No line end is added.
  ///
  /// A conversion runs from a "%" to the first letter of "dfxXes" behind it,
  /// whatever stands between; that letter alone decides the argument taken:
  /// d x X an int (32 bits), e f a double, s a char const*. So "%c done"
  /// forms the conversion "%c d", which takes an int and writes it as a char,
  /// then " d"; "50%% done" forms "%% d", which takes an int, shows nothing
  /// of it and writes "% d". "%u", "%i", "%g", "%p" with no such letter
  /// behind them, and a "%" at the end, give -2.
  ///
  /// Results (also stored): 0 when the format was processed to its end; -3
  /// or -5 from ValidWrite before the format is looked at; -2 for the format
  /// failure; ferror's value after a piece or a value. The last piece is
  /// written with no ferror test, so a format without "%" always gives 0 on
  /// a writable object. What was written before a failure stays written, and
  /// the remaining arguments are not read.
  ///
  /// Checks, so that fprintf only ever gets a directive whose argument has
  /// exactly its type: the conversion is read as printf would read it, "%%"
  /// pairs as one percent sign and the rest as literal text around at most
  /// one directive that takes an argument. That directive may carry the
  /// flags "-+ #0", a width and a precision in digits, and a length modifier
  /// hh h l ll j z t (on e f g a E F G A only l); its letter must take the
  /// same kind of argument as the conversion's letter: d i o u x X c an int,
  /// e E f F g G a A a double, s a text. The int is a 32-bit pattern: hh, h
  /// and no modifier pass it as int (unsigned int for o u x X); l, ll, j, z,
  /// t pass the type they name built from the unsigned 32 bits, so "%ld" of
  /// -1 writes 4294967295. Anything else is the format failure -2, found
  /// before the literal text ahead of the conversion is written and before
  /// its argument is taken: a second directive ("%c %d"), "*", "%n", "%p",
  /// "%Lf", "%ls", "%lc", a precision on "%c", "#" on d i u c s, "0" on c s,
  /// positional "$", a width or precision above INT_MAX, and a conversion of
  /// more than 254 characters.
  /// A null format gives -2. A null text for "%s" is written as "(null)".
  ///
  /// Examples: ("%d items\n", 3) writes "3 items\n"; ("a=%5.2f b=%s\n", 1.5,
  /// "x") writes "a= 1.50 b=x\n"; ("%d and %q", 7) writes "7" and gives -2.
  int WriteLine(char const* format, ...);

  /// The stored name, owned by the object; null while none is held.
  char const* GetFilename() const;
  /// The stored code, as the last operation that stores one left it.
  int GetErrorCode();
  /// The text of the stored code: below -100 whatever OnGetErrorMessage
  /// gives; -1 to -7 the table texts above; 0 "No Error!"; positive
  /// strerror(code), with or without a stream (a value of ferror is read as
  /// an errno number too). Codes -8 to -100 give "Unknown error.".
  char const* GetErrorMessage();
  /// Hook for codes below -100, which only a derived class stores (the
  /// fields are protected). The base class returns null.
  virtual char const* OnGetErrorMessage();

  /// Whether LFILE_MODE_READ is in m_byMode ("r" or "+" in the mode of the last
  /// successful Open).
  bool IsRead();
  /// Whether LFILE_MODE_WRITE is in m_byMode ("w", "a" or "+" in the mode of the last
  /// successful Open).
  bool IsWrite();
  /// Whether LFILE_MODE_BINARY is in m_byMode ("b" in the mode of the last
  /// successful Open).
  bool IsBinary();
  /// LFILE_MODE_APPEND in m_byMode as it stands: false after any Open, which
  /// never raises it; true only where a caller or a derived class set it.
  bool IsAppend();
  /// True exactly while a stream is held.
  bool IsOpen();

  /// 1 when path is not null and fopen(path, "r") succeeds (the stream is
  /// closed at once; a directory counts); else 0.
  static int exists(char const* path);
  /// 1 when the probe file path + "/" + "40.88.26.60.71" can be created;
  /// it is closed and removed again (a file of that name that was there is
  /// truncated and removed). Else 0. The slash is added even behind one, so
  /// "" probes the root directory. A null path gives 0.
  static int IsDirectoryWritable(char const* path);

 protected:
  /// The stream; null while none is held.
  FILE* m_pFile;
  /// The LFILE_MODE_* flags of the last Open.
  std::uint8_t m_byMode;
  char* m_pszFilename;  ///< owned, from new[]
  /// The stored code that the operations return.
  int m_nErrorCode;
  /// True exactly while m_pFile holds a stream.
  bool m_bOpen;
};

#endif  // VQ0300_LFILE_H
