// The workspace as the channel tools find it after Open: a destination and possibly a
// source copied from tests/data/morph/figures, the file labels, and ListActors in the
// list readers' entry format. Tests drive the tools through their event handlers.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "program/events.h"
#include "test_support.h"

namespace tolvane::test {

class MorphTest : public ::testing::Test {
 protected:
  static std::filesystem::path data(const std::string& relative);

  // Copies a fixture figure into the program's files folder.
  std::string copyFigure(const std::string& name);
  // Sets the labels as Open leaves them, with both panes naming the file, and lists the
  // destination's body parts (or those given) in ListActors.
  void openDestination(const std::string& path, std::vector<std::string> actors = {});
  // A source opened in the right-hand pane.
  void openSource(const std::string& path);

  void selectActor(const std::string& name);
  // Fills ListChannels with the part's channels through PictureViewChannels.
  void viewChannels(const std::string& part);
  void selectChannels(const std::vector<std::string>& lines);
  void setChannels(const std::vector<std::string>& lines);

  bool fire(const std::string& control, EventKind kind, const EventArgs& args = {});
  bool drop(const std::string& control, const std::string& source);

  // The text of every message shown, in order.
  std::vector<std::string> messageTexts() const;
  // The first differing line between a file and a case's expected output.
  std::string differenceFrom(const std::string& path, const std::string& caseName) const;

  TestProgram tp;
  ui::Opening& f = tp->opening;
  ui::ScriptedServices& services = tp.services;
  std::string dest;
};

}  // namespace tolvane::test
