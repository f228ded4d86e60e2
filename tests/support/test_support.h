// Test helpers: a temporary folder, whole-file reads and writes, a line-by-line file
// comparison that names the first difference, and a program state with scripted
// services, an in-memory settings store and its own Work folder.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "program/program.h"
#include "ui/scripted_services.h"

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
// Joins lines with CR LF after each one.
std::string crlf(const std::vector<std::string>& lines);
// Empty when the files are equal; else a description of the first differing line.
std::string firstDifference(const std::filesystem::path& actual, const std::filesystem::path& expected);
// Copies a fixture folder or file into `dir` and returns the copy's path.
std::filesystem::path copyInto(const std::filesystem::path& source, const std::filesystem::path& dir);
// The number of the run-time error `action` raises; 0 when it raises none.
int runTimeErrorOf(const std::function<void()>& action);

// A program for tests: scripted services, memory settings, a temporary Work folder and
// current directory, both inside one TempDir.
struct TestProgram {
  TestProgram();
  TempDir dir;
  ui::ScriptedServices services;
  ui::MemorySettings settings;
  std::unique_ptr<Program> program;

  Program& operator*() { return *program; }
  Program* operator->() { return program.get(); }
  std::filesystem::path work() const { return program->workDir; }
  std::filesystem::path files() const { return dir.path() / "files"; }
};

}  // namespace tolvane::test
