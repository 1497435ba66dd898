// The working directory of the process, saved and restored whole whatever its
// length: ErrorHandler's loader enters the directory of a definition file for
// the time of a read, and the vq0300-errdef tool, which compiles this pair
// too, asks whether the present directory can be saved. Private.
#ifndef VQ0300_ERRORS_WORKINGDIRECTORY_INTERNAL_H
#define VQ0300_ERRORS_WORKINGDIRECTORY_INTERNAL_H

#include <string>

namespace vq0300_internal {

// Saves the working directory with a buffer that grows as needed, so a path
// of any length is kept whole. False if getcwd fails for another reason than
// the size of the buffer (a directory removed while in use, for one).
bool SaveWorkingDirectory(std::string& saved);

// Goes back to an absolute directory. A path that chdir refuses as too long
// is walked from the root in pieces cut at slashes. Failure has no report.
void ReturnToDirectory(const std::string& path);

// Enters a directory and, when it goes out of scope, returns to the working
// directory of the moment of entry, on every return path and on exceptions.
class DirectoryVisit {
 public:
  DirectoryVisit() = default;
  ~DirectoryVisit();
  DirectoryVisit(const DirectoryVisit&) = delete;
  DirectoryVisit& operator=(const DirectoryVisit&) = delete;

  // False, with the working directory untouched, if dir cannot be entered or
  // the present directory cannot be saved first (a change that could not be
  // undone is not made).
  bool Enter(const char* dir);

 private:
  std::string saved_;
  bool entered_ = false;
};

}  // namespace vq0300_internal

#endif  // VQ0300_ERRORS_WORKINGDIRECTORY_INTERNAL_H
