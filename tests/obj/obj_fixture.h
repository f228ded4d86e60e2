// The OBJ workbench as a user reaches it: an OBJ copied from tests/data/obj into the
// program's files folder, opened by itself, the form shown through PictureOBJView and
// loaded through LabelView. Tests drive the form through its event handlers.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "program/events.h"
#include "test_support.h"

namespace tolvane::test {

using Lines = std::vector<std::string>;

class ObjTest : public ::testing::Test {
 protected:
  static std::filesystem::path data(const std::string& relative) {
    return std::filesystem::path(TOLVANE_TEST_DATA) / "obj" / relative;
  }
  // Lines of a data file, one entry a line.
  static Lines linesOf(const std::filesystem::path& file);

  // Copies a data file into the files folder and returns its path.
  std::string copy(const std::string& relative) { return copyInto(data(relative), tp.files()).string(); }
  // Writes an OBJ of CR LF lines into the files folder.
  std::string writeObj(const std::string& name, const Lines& lines);
  // Opens the OBJ by itself, shows the workbench and loads it.
  void load(const std::string& path);
  bool fire(const std::string& control, EventKind kind, const EventArgs& args = {}) {
    return fireEvent(*tp, "FormOBJ", control, kind, args);
  }
  void key(int code) {
    EventArgs a;
    a.keyCode = code;
    fire("FormOBJ", EventKind::Key, a);
  }
  std::filesystem::path work(const std::string& name) const { return tp.work() / name; }
  std::string lastMessage() const;

  TestProgram tp;
  ui::FormOBJ& f = tp->formOBJ;
  ui::ScriptedServices& services = tp.services;
};

}  // namespace tolvane::test
