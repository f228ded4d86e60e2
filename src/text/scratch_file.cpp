#include "text/scratch_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "text/disk.h"
#include "text/runtime_error.h"
#include "text/scratch_move.h"

namespace tolvane::text {

namespace {
// A file that cannot be looked at: "File not found" where it is missing, and the real
// cause otherwise (a name too long, a folder that may not be searched).
[[noreturn]] void raiseUnreachable(const std::filesystem::path& path) {
  raiseError(errorNumberFromErrno(errno, false), path.string());
}
}  // namespace

void killFile(const std::filesystem::path& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0) raiseUnreachable(path);
  if (S_ISDIR(st.st_mode)) raiseError(kPathFileAccessError, path.string());
  if ((st.st_mode & S_IWUSR) == 0) raiseError(kPathFileAccessError, path.string());
  if (disk::unlink(path) != 0) raiseError(errorNumberFromErrno(errno, true), path.string());
}

void deleteIgnoringErrors(const std::filesystem::path& path) {
  ignoreErrors([&] { killFile(path); });
}

void renameFile(const std::filesystem::path& from, const std::filesystem::path& to) {
  struct stat st {};
  if (::stat(from.c_str(), &st) != 0) raiseUnreachable(from);
  if (::stat(to.c_str(), &st) == 0) raiseError(kFileAlreadyExists, to.string());
  if (disk::rename(from, to) != 0) {
    raiseError(errno == EXDEV ? kPathFileAccessError : errorNumberFromErrno(errno, true), to.string());
  }
}

void replaceWithScratch(const std::filesystem::path& original, const std::filesystem::path& scratch) {
  if (!fileExists(scratch)) raiseError(kFileNotFound, scratch.string());
  moveScratchInto(scratch, original, true);
}

bool fileExists(const std::filesystem::path& path) {
  struct stat st {};
  return ::stat(path.c_str(), &st) == 0 && !S_ISDIR(st.st_mode);
}

std::uint64_t fileLength(const std::filesystem::path& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0) raiseUnreachable(path);
  return static_cast<std::uint64_t>(st.st_size);
}

bool isReadOnly(const std::filesystem::path& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0) raiseUnreachable(path);
  return (st.st_mode & S_IWUSR) == 0;
}

void clearReadOnly(const std::filesystem::path& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0) raiseUnreachable(path);
  if (disk::chmod(path, st.st_mode | S_IWUSR) != 0) raiseError(kPermissionDenied, path.string());
}

void setReadOnly(const std::filesystem::path& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0) raiseUnreachable(path);
  if (disk::chmod(path, st.st_mode & ~(S_IWUSR | S_IWGRP | S_IWOTH)) != 0)
    raiseError(kPermissionDenied, path.string());
}

StreamRewrite::StreamRewrite(std::filesystem::path scratch, bool deleteFirst) : m_scratch(std::move(scratch)) {
  if (deleteFirst) deleteIgnoringErrors(m_scratch);
  m_writer = std::make_unique<LineWriter>(m_scratch, LineWriter::Mode::Append);
}

StreamRewrite::~StreamRewrite() = default;

void StreamRewrite::close() { m_writer->close(); }

void StreamRewrite::replace(const std::filesystem::path& original) {
  close();
  replaceWithScratch(original, m_scratch);
}

void StreamRewrite::discard() {
  try {
    close();
  } catch (const RuntimeError&) {
  }
  deleteIgnoringErrors(m_scratch);
}

}  // namespace tolvane::text
