// A program with a copy of the small Poser folder of the workspace tests, its PLoc
// setting pointing there, and helpers to open a file through File, Open.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "program/events.h"
#include "test_support.h"

namespace tolvane::test {

struct WorkspaceFixture {
  WorkspaceFixture() {
    poser = copyInto(std::filesystem::path(TOLVANE_TEST_DATA) / "workspace" / "poser", t.dir.path());
    t.settings.save(kAppName, "Startup", "PLoc", poser.string() + "/");
  }
  std::filesystem::path lib(const std::string& rel) const { return poser / "Runtime" / "Libraries" / rel; }
  ui::Opening& form() { return t->opening; }

  // File, Open on `file` with the dialog answered; `messages` are the boxes expected
  // on the way, as {title, text}, each answered OK.
  void open(const std::filesystem::path& file,
            const std::vector<std::pair<std::string, std::string>>& messages = {}) {
    t.services.dialog(file.string());
    for (const auto& [title, text] : messages) t.services.expect(title, text);
    ASSERT_TRUE(fireEvent(*t, "Opening", "MenuFileOpen", EventKind::Click));
    EXPECT_EQ(t.services.pending(), 0u);
  }

  TestProgram t;
  std::filesystem::path poser;
};

inline const std::pair<std::string, std::string> kMoreThanOneMap{
    "ALERT!", "There is more than one texture map used in this CR2."};
inline const std::pair<std::string, std::string> kNoSkin{
    "Note!", "Either there is no texture map listed, or the primary material is not called \"skin\"."};
inline const std::pair<std::string, std::string> kNoBodyParts{"Note!", "No body parts in this file!"};

}  // namespace tolvane::test
