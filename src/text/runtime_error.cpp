#include "text/runtime_error.h"

#include <cerrno>
#include <filesystem>

namespace tolvane::text {

std::string errorText(int number) {
  switch (number) {
    case kInvalidProcedureCall: return "Invalid procedure call or argument";
    case kOverflow: return "Overflow";
    case kOutOfMemory:
      return "Out of memory";
    case kSubscriptOutOfRange: return "Subscript out of range";
    case kOutOfStringSpace:
      return "Out of string space";
    case kTypeMismatch: return "Type mismatch";
    case kBadFileNameOrNumber: return "Bad file name or number";
    case kFileNotFound: return "File not found";
    case kBadFileMode: return "Bad file mode";
    case kDeviceIOError: return "Device I/O error";
    case kFileAlreadyExists: return "File already exists";
    case kDiskFull: return "Disk full";
    case kInputPastEndOfFile: return "Input past end of file";
    case kBadFileName: return "Bad file name";
    case kPermissionDenied: return "Permission denied";
    case kPathFileAccessError: return "Path/File access error";
    case kPathNotFound: return "Path not found";
    case kCancelSelected: return "Cancel was selected.";
    default: return "Application-defined or object-defined error";
  }
}

RuntimeError::RuntimeError(int number, std::string path)
    : RuntimeError(number, errorText(number), std::move(path)) {}

RuntimeError::RuntimeError(int number, std::string text, std::string path)
    : m_number(number), m_text(std::move(text)), m_path(std::move(path)) {
  m_what = "Run-time error '" + std::to_string(m_number) + "': " + m_text;
  if (!m_path.empty()) m_what += " (" + m_path + ")";
}

void raiseError(int number, const std::string& path) { throw RuntimeError(number, path); }

void raiseLineTooLong(const std::string& path) {
  throw RuntimeError(kOutOfStringSpace,
                     "A line of this file is longer than " + std::to_string(kLongestLine >> 20) +
                         " MB: it is no figure, or it is damaged. Nothing was changed; open the file you "
                         "meant, or a backup of it.",
                     path);
}

void ignoreErrors(const std::function<void()>& action) {
  try {
    action();
  } catch (const RuntimeError&) {
  } catch (const std::filesystem::filesystem_error&) {
  }
}

int errorNumberFromErrno(int err, bool forWrite) {
  switch (err) {
    case ENOENT: return forWrite ? kPathNotFound : kFileNotFound;
    case ENOTDIR: return kPathNotFound;
    case EACCES:
    case EPERM:
    case EROFS: return kPermissionDenied;
    case ENOSPC:
    case EDQUOT: return kDiskFull;
    case EEXIST: return kFileAlreadyExists;
    case EISDIR: return kPathFileAccessError;
    case EIO: return kDeviceIOError;
    case ENAMETOOLONG: return kBadFileName;
    default: return kPathFileAccessError;
  }
}

}  // namespace tolvane::text
