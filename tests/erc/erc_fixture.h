// The workspace as the remote-control tools find it: tests/data/erc/figure.cr2 copied
// into the user's folder and named by the file labels as Open leaves them. Tests drive
// the tools through their event handlers by form and control name.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "program/events.h"
#include "test_support.h"

namespace tolvane::test {

struct ErcFixture {
  ErcFixture();
  static std::filesystem::path data(const std::string& name) {
    return std::filesystem::path(TOLVANE_TEST_DATA) / "erc" / name;
  }
  // Copies a fixture file into the user's folder and opens it as the destination.
  void openDestination(const std::string& name);

  bool fire(const std::string& form, const std::string& control, EventKind kind) {
    return fireEvent(*tp, form, control, kind);
  }
  // A double click on the entry that equals `line`.
  void dblClick(const std::string& form, ui::ListBox& list, const std::string& line);
  // The figure's lines as read back from disk (CR LF stripped).
  static Lines linesOf(const std::filesystem::path& path) { return crlfLines(readFile(path)); }
  std::string lastMessage() const;
  // The fixture figure with `block` (tabbed) behind the interpStyleLocked line of the
  // first channel whose header is `channel`, dropping `dropped` lines behind it.
  static std::string expectedWith(const std::string& channel, const Lines& block, std::size_t dropped = 0);

  TestProgram tp;
  ui::ScriptedServices& services = tp.services;
  std::string dest;
  std::string original;
};

class ErcTest : public ::testing::Test, public ErcFixture {
 protected:
  void SetUp() override { openDestination("figure.cr2"); }
};

}  // namespace tolvane::test
