// Run-time errors of the platform: a number, its standard text, and the path involved.
// Tools throw them where a file operation fails; the event dispatcher reports the ones
// that no tool traps and keeps the program running.
#pragma once

#include <cstddef>
#include <exception>
#include <functional>
#include <string>

namespace tolvane::text {

// The error numbers the tools raise and trap.
enum ErrorNumber : int {
  kInvalidProcedureCall = 5,
  kOverflow = 6,
  kOutOfMemory = 7,
  kSubscriptOutOfRange = 9,
  kTypeMismatch = 13,
  kOutOfStringSpace = 14,
  kBadFileNameOrNumber = 52,
  kFileNotFound = 53,
  kBadFileMode = 54,
  kDeviceIOError = 57,
  kFileAlreadyExists = 58,
  kDiskFull = 61,
  kInputPastEndOfFile = 62,
  kBadFileName = 64,
  kPermissionDenied = 70,
  kPathFileAccessError = 75,
  kPathNotFound = 76,
  kCancelSelected = 32755,
};

class RuntimeError : public std::exception {
 public:
  RuntimeError(int number, std::string path = {});
  RuntimeError(int number, std::string text, std::string path);

  int number() const { return m_number; }
  const std::string& text() const { return m_text; }
  const std::string& path() const { return m_path; }
  const char* what() const noexcept override { return m_what.c_str(); }

 private:
  int m_number;
  std::string m_text;
  std::string m_path;
  std::string m_what;
};

// The platform's text for an error number ("Input past end of file").
std::string errorText(int number);

[[noreturn]] void raiseError(int number, const std::string& path = {});

// The longest line (or field) a reader takes. No figure comes near it; a file that
// holds one (a binary file, a disk image, a file of zeros) is refused with error 14
// and a text that says so, before the line fills the memory.
inline constexpr std::size_t kLongestLine = std::size_t{64} << 20;
[[noreturn]] void raiseLineTooLong(const std::string& path);

// Runs `action` and swallows run-time and file-system errors: the "errors ignored"
// regions of the tools (scratch deletes, folder creation, renames after a repair).
void ignoreErrors(const std::function<void()>& action);

// Maps an errno value from a failed file operation to the platform's error number.
int errorNumberFromErrno(int err, bool forWrite);

}  // namespace tolvane::text
