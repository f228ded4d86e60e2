// Test helpers for the layers above the figure-text library: a program state with
// scripted services, an in-memory settings store and its own Work folder, wired with
// every subsystem's handlers.
#pragma once

#include <memory>

#include "program/program.h"
#include "test_files.h"
#include "ui/scripted_services.h"

namespace tolvane::test {

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
