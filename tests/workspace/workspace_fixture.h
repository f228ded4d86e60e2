// A program with a copy of a Poser folder (by default the small one of the workspace
// tests), its PLoc setting pointing there, and helpers to open a file through File, Open
// and to compare the figure page's lists.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "program/events.h"
#include "test_support.h"

namespace tolvane::test {

using Entries = std::vector<std::string>;

// A message box expected on the way, with the button that answers it.
struct Prompt {
  std::string title, text;
  ui::Answer answer = ui::Answer::OK;
};

struct WorkspaceFixture {
  explicit WorkspaceFixture(const std::filesystem::path& source = std::filesystem::path(TOLVANE_TEST_DATA) /
                                                                  "workspace" / "poser") {
    poser = copyInto(source, t.dir.path());
    t.settings.save(kAppName, "Startup", "PLoc", poser.string() + "/");
  }
  std::filesystem::path lib(const std::string& rel) const { return poser / "Runtime" / "Libraries" / rel; }
  ui::Opening& form() { return t->opening; }
  void expect(const Prompt& p) { t.services.expect(p.title, p.text, p.answer); }

  // A click on `control` whose file dialog answers `file` (cancelled when empty), with
  // `prompts` answered on the way.
  void click(const std::string& control, const std::filesystem::path& file,
             const std::vector<Prompt>& prompts = {}) {
    if (file.empty())
      t.services.cancelDialog();
    else
      t.services.dialog(file.string());
    for (const Prompt& p : prompts) expect(p);
    EXPECT_TRUE(fireEvent(*t, "Opening", control, EventKind::Click));
  }
  // File, Open on `file`; every answer queued must be used.
  ui::Opening& open(const std::filesystem::path& file, const std::vector<Prompt>& prompts = {}) {
    click("MenuFileOpen", file, prompts);
    EXPECT_EQ(t.services.pending(), 0u);
    return form();
  }

  TestProgram t;
  std::filesystem::path poser;
};

// For TEST_F: one such program per test.
struct WorkspaceTest : ::testing::Test {
  WorkspaceFixture w;
};

inline const Prompt kMoreThanOneMap{"ALERT!", "There is more than one texture map used in this CR2."};
inline const Prompt kNoSkin{
    "Note!", "Either there is no texture map listed, or the primary material is not called \"skin\"."};
inline const Prompt kNoBodyParts{"Note!", "No body parts in this file!"};
inline const Entries kHeadings{"ALL CHANNELS", "************************"};
inline Entries with(Entries a, const Entries& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

// The save tests' figure, copied into the user's folder (the folder a fault walk
// watches), gzip-packed as figure.crz when `packed`, and opened on the figure page;
// `handEdit` types into a path box and takes it.
inline const std::filesystem::path kSaveData = std::filesystem::path(TOLVANE_TEST_DATA) / "workspace" / "save";
struct OpenedFigure : WorkspaceFixture {
  explicit OpenedFigure(bool packed = false) : file(t.files() / (packed ? "figure.crz" : "figure.cr2")) {
    std::string text = readFile(kSaveData / "figure.cr2");
    writeFile(file, packed ? gzipBytes(text) : text);
    open(file, {kMoreThanOneMap});
    original = readFile(file);
  }
  TestProgram& program() { return t; }
  std::filesystem::path userFolder() { return t.files(); }
  void handEdit(ui::TextBox& box, const std::string& text) {
    box.setText(text);
    EXPECT_TRUE(fireEvent(*t, "Opening", box.name(), EventKind::DblClick));
  }
  std::filesystem::path file;
  std::string original;
};

// What the figure page shows after an open: its lists and the main path boxes. Every
// member has an initialiser, so a designated initialiser may leave any of them out.
struct Lists {
  Entries actors{}, channels = kHeadings, reorder{}, materials{}, colours{}, hiLites{}, texMaps{};
  Entries props{"No Props in CR2"};
  std::string obj{}, tex = "NO_MAP", trans{};
};

inline void expectLists(ui::Opening& f, const Lists& l) {
  EXPECT_EQ(f.ListActors.items(), l.actors);
  EXPECT_EQ(f.ListChannels.items(), l.channels);
  EXPECT_EQ(f.ListChannelsReorder.items(), l.reorder);
  EXPECT_EQ(f.ListMaterials.items(), l.materials);
  EXPECT_EQ(f.ListMATColors.items(), l.colours);
  EXPECT_EQ(f.ListMatHiLite.items(), l.hiLites);
  EXPECT_EQ(f.ListAllTexMaps.items(), l.texMaps);
  EXPECT_EQ(f.ListPropObj.items(), l.props);
  EXPECT_EQ(f.TextMainOBJ.text(), l.obj);
  EXPECT_EQ(f.TextMainTex.text(), l.tex);
  EXPECT_EQ(f.TextMainTrans.text(), l.trans);
}

}  // namespace tolvane::test
