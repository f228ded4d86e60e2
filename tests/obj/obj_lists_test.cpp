#include <gtest/gtest.h>

#include <chrono>
#include <ctime>

#include "obj_fixture.h"
#include "text/scratch_file.h"

namespace tolvane::test {
namespace {

using ui::Answer;

class ObjListsTest : public ObjTest {
 protected:
  void SetUp() override {
    obj = copy("lists/model.obj");
    load(obj);
    ASSERT_TRUE(f.loaded) << lastMessage();
  }
  void rename(ui::ListBox& list, const std::string& from, const std::string& to) {
    list.setListIndex(list.indexOf(from));
    fire(list.name(), EventKind::DblClick);
    ui::TextBox& box = &list == &f.ListGroups ? f.TextGrpRename : f.TextMatRename;
    ASSERT_EQ(box.text(), from);
    ASSERT_TRUE(box.visible());
    box.setText(to);
    EventArgs enter;
    enter.keyCode = 13;
    fire(box.name(), EventKind::Key, enter);
  }
  // Turns selection mode on, chooses the entries and clicks "DONE".
  void saveChosen(bool groups, const Lines& chosen) {
    ui::CheckBox& check = groups ? f.CheckSaveGroups : f.CheckSaveMaterials;
    ui::ListBox& save = groups ? f.ListGroupsSave : f.ListMaterialsSave;
    check.setValue(true);
    fire(check.name(), EventKind::Click);
    for (const std::string& name : chosen) save.setSelected(save.indexOf(name), true);
    save.setListIndex(save.indexOf("DONE"));
    fire(save.name(), EventKind::Click);
  }
  bool close() {
    fire("FormOBJ", EventKind::Unload);
    return !f.visible();
  }
  std::string obj;
};

TEST_F(ObjListsTest, TheListingColoursEachNameByItsColourItem) {
  fire("CommandListGroups", EventKind::Click);
  EXPECT_TRUE(f.RichTextBoxGroups.visible());
  EXPECT_EQ(f.RichTextBoxGroups.items(), (Lines{"head", "neck"}));
  ASSERT_EQ(f.RichTextBoxGroups.colours().size(), 2u);
  EXPECT_EQ(f.RichTextBoxGroups.colours()[0], 0xA3F6BDu);  // g head*189 246 163
  EXPECT_EQ(f.RichTextBoxGroups.colours()[1], 0xA7DCBCu);  // g neck*188 220 167
  EXPECT_TRUE(f.CheckSaveGroups.visible());
  EXPECT_TRUE(f.LabelRichRename.visible());
  fire("CommandListMats", EventKind::Click);
  EXPECT_TRUE(f.RichTextBoxMaterials.visible());
  EXPECT_FALSE(f.RichTextBoxGroups.visible());
  EXPECT_EQ(f.RichTextBoxMaterials.items(), (Lines{"skin", "lips"}));
  fire("CommandListMats", EventKind::Click);
  EXPECT_FALSE(f.RichTextBoxMaterials.visible());
  EXPECT_FALSE(f.CheckSaveGroups.visible());
  EXPECT_FALSE(f.LabelRichRename.visible());
}

TEST_F(ObjListsTest, RenamesWaitForTheCloseThatRewritesThroughNewobj) {
  rename(f.ListGroups, "head", "face");
  rename(f.ListGroups, "neck", "");
  EXPECT_EQ(f.ListGroups.items(), (Lines{"face"}));
  EXPECT_EQ(f.ListGrpRen.items(), (Lines{"head*face", "neck* NULL"}));
  EXPECT_FALSE(f.TextGrpRename.visible());
  EXPECT_EQ(readFile(obj), readFile(data("lists/model.obj")));

  // The close waits while the renamable list shows.
  f.ListGroups.setVisible(true);
  services.expect("Error!", "Close the Group List first!");
  EXPECT_FALSE(close());
  f.ListGroups.setVisible(false);

  std::string saved = (tp.files() / "renamed.obj").string();
  services.dialog(saved);
  f.TextNotes.setText("Check the hands");
  services.setNow(std::chrono::system_clock::from_time_t(0) + std::chrono::hours(24 * 400 + 12));
  writeFile(work("UV.txt"), "x");
  EXPECT_TRUE(close());
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(firstDifference(saved, data("lists/renamed_face_neck_deleted.obj")), "");
  EXPECT_EQ(readFile(obj), readFile(data("lists/model.obj")));
  EXPECT_FALSE(text::fileExists(work("newobj.txt")));
  EXPECT_FALSE(text::fileExists(work("newobj1.txt")));
  EXPECT_FALSE(text::fileExists(work("UV.txt")));
  EXPECT_EQ(readFile(tp.files() / "Notes.txt"),
            crlf({"**** 2/5/1971 ****", "** " + obj + " **", "Check the hands"}));
  // The form is back to its start.
  EXPECT_EQ(f.ListGrpRen.listCount(), 0);
  EXPECT_FALSE(f.renamed);
  EXPECT_EQ(f.TextNotes.text(), "");
}

TEST_F(ObjListsTest, ARenameOntoANeighbourMergesTheGroupsAndACancelKeepsTheResultInTheWorkFolder) {
  obj = copy("lists/adjacent.obj");
  load(obj);
  rename(f.ListGroups, "head", "neck");
  services.cancelDialog();
  EXPECT_TRUE(close());
  EXPECT_EQ(firstDifference(work("newobj.txt"), data("lists/adjacent_head_as_neck.obj")), "");
}

TEST_F(ObjListsTest, SavingChosenGroupsKeepsAllVerticesAndEachGroupsMaterial) {
  std::string saved = (tp.files() / "neck.obj").string();
  services.dialog(saved);
  saveChosen(true, {"neck"});
  EXPECT_EQ(firstDifference(saved, data("lists/saved_neck.obj")), "");
  EXPECT_FALSE(f.CheckSaveGroups.value());
  EXPECT_FALSE(f.ListGroupsSave.visible());
  EXPECT_TRUE(f.ListGroups.visible());
  EXPECT_FALSE(text::fileExists(work("newobj.obj")));
}

TEST_F(ObjListsTest, SavingChosenMaterialsDropsOnlyTheOtherMaterialLines) {
  rename(f.ListMaterials, "skin", "flesh");  // a material rename does not refuse the save
  std::string saved = (tp.files() / "lips.obj").string();
  services.dialog(saved);
  saveChosen(false, {"lips"});
  EXPECT_EQ(services.messages().size(), 0u) << lastMessage();
  EXPECT_EQ(firstDifference(saved, data("lists/saved_lips.obj")), "");
}

TEST_F(ObjListsTest, AGroupRenameRefusesBothSaves) {
  rename(f.ListGroups, "head", "face");
  services.expect(
      "Error!",
      "You must save the file by exiting the OBJ Screen before saving groups from the file, since you "
      "have renamed some.");
  saveChosen(true, {"face"});
  services.expect(
      "Error!",
      "You must save the file by exiting the OBJ Screen before saving materials from the file, since you "
      "have renamed some materials.");
  saveChosen(false, {"lips"});
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_FALSE(text::fileExists(work("newobj.obj")));
  EXPECT_TRUE(f.CheckSaveGroups.value());  // the selection mode stays
}

}  // namespace
}  // namespace tolvane::test
