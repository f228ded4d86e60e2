// Test helpers over plain files: a temporary folder, whole-file reads and writes, a
// line-by-line file comparison that names the first difference, and the number of a
// run-time error. They use the standard library and the figure-text library only.
#pragma once

#include <filesystem>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace tolvane::test {

class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  const std::filesystem::path& path() const { return m_path; }
  std::filesystem::path operator/(const std::string& name) const { return m_path / name; }

 private:
  std::filesystem::path m_path;
};

std::string readFile(const std::filesystem::path& path);
void writeFile(const std::filesystem::path& path, const std::string& bytes);
using Lines = std::vector<std::string>;

// Joins lines with CR LF after each one; crlfLines splits such a text back (a last line
// without an ending counts too).
std::string crlf(const Lines& lines);
Lines crlfLines(const std::string& text);
// The parts one after another.
Lines join(std::initializer_list<Lines> parts);
// Empty when the files are equal; else a description of the first differing line.
std::string firstDifference(const std::filesystem::path& actual, const std::filesystem::path& expected);
// A gzip stream of `bytes` (as `gzip -n` writes one), and the bytes a gzip stream
// unpacks to (empty with `ok` false when it does not unpack): made with zlib itself, so
// that the program's own packing is checked against another implementation.
std::string gzipBytes(const std::string& bytes);
std::string gunzipBytes(const std::string& packed, bool* ok = nullptr);
// Copies a fixture folder or file into `dir` and returns the copy's path.
std::filesystem::path copyInto(const std::filesystem::path& source, const std::filesystem::path& dir);
// The number of the run-time error `action` raises; 0 when it raises none.
int runTimeErrorOf(const std::function<void()>& action);

}  // namespace tolvane::test
