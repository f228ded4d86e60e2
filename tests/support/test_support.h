// Test helpers for the layers above the figure-text library: a program state with
// scripted services, an in-memory settings store and its own Work folder, wired with
// every subsystem's handlers.
#pragma once

#include <memory>

#include "program/events.h"
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

// A program with the tools' usual set-up steps; the user's folder is files(), which
// is also what a fault walk watches.
struct ToolBench {
  TestProgram t;
  TestProgram& program() { return t; }
  std::filesystem::path userFolder() { return t.files(); }
  // Points the PLoc setting at `poser`, as the first start stores it.
  void poserAt(const std::filesystem::path& poser);
  // Names `path` as the open file, as Open leaves it for the tools.
  void open(const std::filesystem::path& path);
  // Writes `lines` with CR LF ends into the user's folder.
  std::filesystem::path file(const std::string& name, const Lines& lines);
  // Fires an event, which must have a handler.
  void fire(const std::string& form, const std::string& control, EventKind kind = EventKind::Click);
  void click(const std::string& menu) { fire("Opening", menu); }
};

}  // namespace tolvane::test
