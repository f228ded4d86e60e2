// The dial attribute tools through their handlers on dials.cr2: the hide toggle's one
// byte, bending, IK chains, the tracking speed, the material colours, and the twist and
// limit routines that no control starts.
#include "morph/dial_tools.h"

#include <gtest/gtest.h>

#include "morph_fixture.h"
#include "text/byte_patch.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"

namespace tolvane::test {
namespace {

using ui::Answer;

// Replaces the first occurrence of a whole line; the test fails when it is missing.
std::string withLine(std::string text, const std::string& from, const std::string& to) {
  std::size_t at = text.find(from + "\r\n");
  EXPECT_NE(at, std::string::npos) << from;
  if (at != std::string::npos) text.replace(at, from.size(), to);
  return text;
}

// The number of byte positions at which two texts of one length differ.
int changedBytes(const std::string& a, const std::string& b) {
  EXPECT_EQ(a.size(), b.size());
  int n = 0;
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) n += a[i] != b[i];
  return n;
}

class DialToolsTest : public MorphTest {
 protected:
  void SetUp() override {
    openDestination(copyFigure("dials.cr2"));
    f.ListActors.setItems({" BODY:1 * 7", "    hip:1 * 11", "    lThigh:1 * 16"});
    f.ListMaterials.setItems({"skin", "lips"});
    f.ListMATColors.setItems({"256  256  256", "204.8  51.2  51.2"});
    original = readFile(dest);
  }
  std::string original;
};

TEST_F(DialToolsTest, HideToggleChangesExactlyOneByte) {
  struct Case {
    char axis;
    const char* part;
    const char *after, *message;
  };
  const Case cases[] = {
      {'X', "hip", "1", "The dial was showing, now it is hidden."},
      {'Y', "hip", "0", "The dial was hidden, now it will show."},
      {'Z', "hip", "0", ""},  // any other digit shows again
      // The search starts at the part's declaration, so the X dial of lThigh is the
      // first one behind it: hip's, whose definition follows the declarations.
      {'X', "lThigh", "1", "The dial was showing, now it is hidden."},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(1, c.axis) + c.part);
    writeFile(dest, original);
    selectActor(c.part);
    fire("MenuDials", EventKind::Click);
    EXPECT_TRUE(f.LabelX.visible());
    EXPECT_FALSE(f.PictureViewChannels.visible());
    services.expect("Confirm!", std::string("Hide or un-hide ") + c.axis + " dial for " + c.part + ":1?",
                    Answer::Yes);
    services.expect("Note!", c.message);
    fire(std::string("Label") + c.axis, EventKind::Click);
    EXPECT_EQ(services.pending(), 0u);
    std::string after = readFile(dest);
    EXPECT_EQ(changedBytes(original, after), 1);
    const std::string dial = std::string(1, static_cast<char>(c.axis + 'x' - 'X')) + "tran";
    std::string block = "\t\t\tname " + dial + "\r\n\t\t\tinitValue 0\r\n\t\t\thidden ";
    EXPECT_NE(after.find(block + c.after + "\r\n"), std::string::npos);
    EXPECT_FALSE(f.LabelY.visible());
    EXPECT_TRUE(f.PictureViewChannels.visible());
  }
}

TEST_F(DialToolsTest, HideToggleRefusalsLeaveTheFile) {
  fire("MenuDials", EventKind::Click);
  services.expect("Error!", "Choose a bodypart first.");
  fire("LabelX", EventKind::Click);
  selectActor("hip");
  services.expect("Confirm!", "Hide or un-hide Z dial for hip:1?", Answer::No);
  fire("LabelZ", EventKind::Click);
  EXPECT_FALSE(f.LabelZ.visible());
  EXPECT_TRUE(f.PictureViewChannels.visible());
  // A part the file does not hold: the search runs past the end of the file.
  f.ListActors.addItem("    neck:1 * 99");
  selectActor("neck");
  services.expect("Confirm!", "Hide or un-hide X dial for neck:1?", Answer::Yes);
  services.expect(kAppName, "Run-time error '62':...");
  fire("LabelX", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(readFile(dest), original);
}

TEST_F(DialToolsTest, BytePatchIsRefusedWhenTheByteChangedSinceTheScan) {
  std::size_t at = original.find("hidden 7") + 7;
  EXPECT_EQ(runTimeErrorOf([&] { text::patchByte(dest, at, '0', '1'); }), text::kPathFileAccessError);
  EXPECT_EQ(runTimeErrorOf([&] { text::patchByte(dest, original.size() + 10, '0', '1'); }),
            text::kPathFileAccessError);
  EXPECT_EQ(readFile(dest), original);
  text::patchByte(dest, at, '7', '3');
  EXPECT_EQ(changedBytes(original, readFile(dest)), 1);
}

TEST_F(DialToolsTest, BendingChangesTheFirstBendLineOfTheFile) {
  selectActor("lThigh");  // the part plays no part in the search
  services.expect("Note!", "Bending is already turned on for this part.");
  fire("MenuBendOn", EventKind::Click);
  EXPECT_EQ(readFile(dest), original);
  services.expect("Note!", "Bending turned off for lThigh:1");
  fire("MenuBendOff", EventKind::Click);
  EXPECT_EQ(readFile(dest), withLine(original, "\tbend 1", "\tbend 0"));
  services.expect("Note!", "Bending turned on for lThigh:1");
  fire("MenuBendOn", EventKind::Click);
  EXPECT_EQ(readFile(dest), original);
  EXPECT_FALSE(text::fileExists(tp.work() / "TempBend.txt"));
}

TEST_F(DialToolsTest, IKRemovalDropsTheChainsUpToDefaultPick) {
  services.expect("Alert!",
                  "This will remove all IK Chains from the file!  Are you sure you want to do this?",
                  Answer::No);
  fire("MenuDumpIK", EventKind::Click);
  EXPECT_EQ(readFile(dest), original);

  services.expect("Alert!",
                  "This will remove all IK Chains from the file!  Are you sure you want to do this?",
                  Answer::Yes);
  services.expect("Note", "IK Chains have been removed from the file.");
  fire("MenuDumpIK", EventKind::Click);
  std::string expected = original;
  std::size_t from = expected.find("\tinkyChain lLeg");
  expected.erase(from, expected.find("\tdefaultPick") - from);
  EXPECT_EQ(readFile(dest), expected);

  // Without a defaultPick line the file stays as it was.
  std::string noPick = withLine(original, "\tdefaultPick hip:1", "\tpick hip:1");
  writeFile(dest, noPick);
  services.answer(Answer::Yes);
  services.expect(kAppName, "Run-time error '62':...");
  fire("MenuDumpIK", EventKind::Click);
  EXPECT_EQ(readFile(dest), noPick);
}

TEST_F(DialToolsTest, TrackingSpeedRewritesTheLineTheReorderListFound) {
  fire("menuDialTrackSpeed", EventKind::Click);
  EXPECT_TRUE(f.ListChannelsReorder.visible());
  // ytran of hip: 48 lines stand before hip's definition.
  f.ListChannelsReorder.setItems({"hip:1*ytran^ 48@ytran"});
  f.ListChannelsReorder.setListIndex(0);
  fire("ListChannelsReorder", EventKind::DblClick);
  ASSERT_TRUE(f.TextTrackingSpeed.visible());
  EXPECT_EQ(f.TextTrackingSpeed.text(), "0.004");
  EventArgs escape;
  escape.keyCode = 27;
  fire("TextTrackingSpeed", EventKind::Key, escape);
  EXPECT_FALSE(f.TextTrackingSpeed.visible());
  EXPECT_EQ(readFile(dest), original);

  f.TextTrackingSpeed.setText("0.5");
  services.expect("Note!", "Dial tracking speed changed to 0.5");
  EventArgs enter;
  enter.keyCode = 13;
  fire("TextTrackingSpeed", EventKind::Key, enter);
  std::string expected = original;
  std::size_t at = expected.find("trackingScale", expected.find("name ytran"));
  expected.replace(at, std::string("trackingScale 0.004").size(), "trackingScale 0.5");
  EXPECT_EQ(readFile(dest), expected);
  EXPECT_FALSE(f.TextTrackingSpeed.visible());
}

TEST_F(DialToolsTest, MaterialColoursGoThroughTheColourDialogAndTheSaveDialog) {
  struct Case {
    bool highlight;
    const char *from, *to;
  };
  const Case cases[] = {
      {false, "\t\tKdColor 0.8 0.2 0.2 1", "\t\tKdColor  .99609375  .5  0 1"},
      {true, "\t\tKsColor 1 1 1 1", "\t\tKsColor  .99609375  .5  0 1"},
  };
  const ui::Colour orange = 0x0080FF;  // blue-green-red: red 255, green 128
  for (const auto& c : cases) {
    SCOPED_TRACE(c.from);
    writeFile(dest, original);
    const char* picture = c.highlight ? "PictureMatHiLite" : "PictureMatColor";
    f.ListMaterials.setListIndex(-1);
    services.expect("Error!", "Choose a material first.");
    fire(picture, EventKind::DblClick);
    f.ListMaterials.setListIndex(1);
    services.queue(ui::ScriptedAnswer::colourAnswer(orange));
    services.dialog(dest);
    services.expect("Note!", "Material lips will now show up in Poser as the color you have chosen!");
    fire(picture, EventKind::DblClick);
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_EQ(readFile(dest), withLine(original, c.from, c.to));
    EXPECT_EQ(f.PictureMatColor.backColor(), orange);
    EXPECT_EQ(f.ListMATColors.list(1), "255  128  0");
  }
  // A cancelled colour dialog changes nothing.
  writeFile(dest, original);
  services.queue(ui::ScriptedAnswer::colourCancel());
  fire("PictureMatColor", EventKind::DblClick);
  EXPECT_EQ(readFile(dest), original);
  services.expect("Note!", "Choose a material and doubleclick here to change the material highlight color.");
  fire("PictureMatHiLite", EventKind::RightClick);
}

// A figure whose twist lines stand behind the first 5000 bytes, where the scan begins.
std::string twistFigure() {
  std::vector<std::string> lines(120, "\t\t\tpadding 0123456789012345678901234567890123456789");
  for (const char* side : {"l", "r"})
    for (const char* line :
         {"\t\ttwistY ?Thigh_twisty", "\t\tjointZ ?Thigh_jointz", "\t\tjointX ?Thigh_jointx"}) {
      std::string l = line;
      l.replace(l.find('?'), 1, side);
      // The scan jumps 20 bytes behind each line it changes.
      lines.insert(lines.end(), {l, "\t\t\t{", "\t\t\tname 0123456789012345678901234"});
    }
  return crlf(lines);
}

TEST_F(DialToolsTest, TwistLinesAreCommentedOutAndRestoredInPlace) {
  const std::string figure = twistFigure();
  writeFile(dest, figure);
  // The side list that no control shows: a double click removes, a right click restores.
  auto onEntry = [&](const std::string& entry, EventKind kind) {
    f.ListTwistParts.setListIndex(f.ListTwistParts.indexOf(entry));
    fire("ListTwistParts", kind);
  };
  services.expect("Note!", "No Shoulder with twist parameters!");
  onEntry("Shoulder", EventKind::DblClick);
  services.expect("Note!", "Thigh\r Edited!6 lines were commented out.");
  onEntry("Thigh", EventKind::DblClick);
  std::string commented = readFile(dest);
  EXPECT_EQ(changedBytes(figure, commented), 6);
  EXPECT_NE(commented.find("\r\n*\ttwistY lThigh_twisty\r\n"), std::string::npos);
  // Commented lines no longer count.
  services.expect("Note!", "No Hip (as alternate Thigh name) with twist parameters!");
  morph::RemoveTwist(*tp, "Hip (as alternate Thigh name)");
  services.expect("Note!", "Thigh\r Restored!6 lines were restored.");
  onEntry("Thigh", EventKind::RightClick);
  EXPECT_EQ(readFile(dest), figure);
  services.expect("Note!", "No Thigh twist parameters were commented out!");
  morph::RestoreTwist(*tp, "Thigh");
  EXPECT_EQ(services.pending(), 0u);
  // The menu lines stay inert.
  fire("MenuTwist", EventKind::Click);
  fire("MenuLimits", EventKind::Click);
  EXPECT_EQ(readFile(dest), figure);
}

TEST_F(DialToolsTest, ForceLimitsFlipsEachFlagOfThePart) {
  f.ListLimitParts.setItems({"hip:1"});
  f.ListLimitParts.setVisible(true);
  f.ListLimitParts.setListIndex(0);
  services.expect("Confirm", "Force or restore limits for actor hip:1?", Answer::OK);
  services.expect("Note!", "Limits were in place, now they are forced.");
  fire("ListLimitParts", EventKind::DblClick);
  EXPECT_FALSE(f.ListLimitParts.visible());
  EXPECT_EQ(services.beeps(), 3);
  std::string after = readFile(dest);
  EXPECT_EQ(changedBytes(original, after), 4);
  EXPECT_NE(after.find("name ytran\r\n\t\t\tinitValue 0\r\n\t\t\thidden 1\r\n\t\t\tforceLimits 0"),
            std::string::npos);
  // A name with capitals is never found: the search ends at the end of the file.
  writeFile(dest, original);
  services.expect("Confirm", "Force or restore limits for actor lThigh:1?", Answer::OK);
  EXPECT_EQ(runTimeErrorOf([&] { morph::ForceLimits(*tp, "lThigh:1"); }), text::kInputPastEndOfFile);
  EXPECT_EQ(readFile(dest), original);
}

}  // namespace
}  // namespace tolvane::test
