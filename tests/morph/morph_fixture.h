// The workspace as the channel tools find it after Open: a destination and possibly a
// source copied from tests/data/morph/figures, the file labels, and ListActors in the
// list readers' entry format. Tests drive the tools through their event handlers.
// MorphFixture is the workspace alone, for walks that make one per run; MorphTest is
// the same as a test fixture.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "program/events.h"
#include "test_support.h"

namespace tolvane::test {

using Lines = std::vector<std::string>;

struct MorphFixture {
  static std::filesystem::path data(const std::string& relative) {
    return std::filesystem::path(TOLVANE_TEST_DATA) / "morph" / relative;
  }
  // A part's listing as the viewer shows it: the heading, an empty line, then the lines.
  static Lines partList(const std::string& part, const Lines& lines);
  // A part's listing of one EMC group driven from figure 1's BODY.
  static Lines emcGroup(const std::string& part, const std::string& slave, const std::string& master,
                        const std::string& delta);

  // Copies a fixture figure into the program's files folder.
  std::string copyFigure(const std::string& name) {
    return copyInto(data("figures/" + name), tp.files()).string();
  }
  // Sets the labels as Open leaves them, with both panes naming the file, lists the
  // destination's body parts in ListActors and turns the viewer off.
  void openDestination(const std::string& path);
  // A source opened in the right-hand pane.
  void openSource(const std::string& path);

  void selectActor(const std::string& name);
  // Fills ListChannels with the part's channels through PictureViewChannels.
  void viewChannels(const std::string& part);
  void selectChannels(const Lines& lines);

  bool fire(const std::string& control, EventKind kind, const EventArgs& args = {}) {
    return fireEvent(*tp, "Opening", control, kind, args);
  }
  bool drop(const std::string& control, const std::string& source);

  // The last message shown, for a failed step's report.
  std::string lastMessage() const;
  // The first differing line between a file and a case's expected output.
  std::string differenceFrom(const std::filesystem::path& path, const std::string& caseName) const {
    return firstDifference(path, data(caseName + "/expected.cr2"));
  }

  TestProgram tp;
  ui::Opening& f = tp->opening;
  ui::ScriptedServices& services = tp.services;
  std::string dest;
};

class MorphTest : public ::testing::Test, public MorphFixture {};

// The tools' usual start: dest.cr2 opened, its text kept to show what a refusal left.
class DestinationTest : public MorphTest {
 protected:
  void SetUp() override {
    openDestination(copyFigure("dest.cr2"));
    original = readFile(dest);
  }
  std::string original;
};

}  // namespace tolvane::test
