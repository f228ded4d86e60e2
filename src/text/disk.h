// Every change the program makes on disk passes through here: opening a file for
// writing, writing, flushing to the device, renaming, linking, removing and changing a
// file's mode. Each is the plain system call; a test can make the N-th of them fail
// with an error of its choice (a full disk, an I/O error, a refused permission) to prove
// that no failure at any step costs the user a file.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace tolvane::text::disk {

// Each returns what the system call returns (-1 with errno set on failure).
int openForWriting(const std::filesystem::path& path, int flags, mode_t mode);
// An unnamed file in `folder`, linked into it later with linkOpen; -1 where the file
// system cannot make one.
int openUnnamed(const std::filesystem::path& folder, mode_t mode);
int linkOpen(int fd, const std::filesystem::path& path);
ssize_t write(int fd, const char* bytes, std::size_t size);
// Writes at a byte offset without moving the file position: the in-place byte patches.
ssize_t writeAt(int fd, const char* bytes, std::size_t size, off_t offset);
int flushToDevice(int fd);
int close(int fd);
int rename(const std::filesystem::path& from, const std::filesystem::path& to);
int link(const std::filesystem::path& from, const std::filesystem::path& to);
int unlink(const std::filesystem::path& path);
int chmod(const std::filesystem::path& path, mode_t mode);
// Flushes a folder's entries (a rename in it) to the device; errors are not reported,
// since some file systems cannot flush a folder.
void flushFolder(const std::filesystem::path& folder);

// Test switch: the `n`-th operation from now on (1 for the next) fails with `error`;
// 0 switches the fault off. Operations are counted whether or not a fault is set.
void failOperation(std::uint64_t n, int error);
std::uint64_t operationCount();
// Test switch: with `on`, a rename from one folder into another fails with EXDEV as it
// does between two file systems, so that a test reaches the copy made beside the target.
void refuseRenamesAcrossFolders(bool on);

}  // namespace tolvane::text::disk
