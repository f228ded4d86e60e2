// The joint parameter transfer, the mirrored morph copy and the morph target export
// through their handlers, on dest.cr2, dials.cr2 and small OBJ files.
#include <gtest/gtest.h>

#include "morph/mirror_morph.h"
#include "morph/morph_target_export.h"
#include "morph_fixture.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"

namespace tolvane::test {
namespace {

using ui::Answer;

// The text with `from` replaced by `to` at its first place behind `anchor`.
std::string replacedAfter(std::string text, const std::string& anchor, const std::string& from,
                          const std::string& to) {
  std::size_t at = text.find(from, text.find(anchor));
  EXPECT_NE(at, std::string::npos) << anchor << " / " << from;
  if (at != std::string::npos) text.replace(at, from.size(), to);
  return text;
}

// The lines of a channel block, from its header through its closing line.
std::string channelText(const std::string& text, const std::string& header) {
  std::size_t from = text.find(header + "\r\n");
  std::size_t to = text.find("\r\n\t\t\t}\r\n", from) + 8;
  return text.substr(from, to - from);
}

TEST(MirrorDeltaLine, FlipsTheChosenAxesOnly) {
  struct Case {
    const char* line;
    bool flip[3];
    const char* expected;
  };
  const Case cases[] = {
      {"\t\t\t\td 3 0.001 -0.002 0.00000", {true, true, true}, "\t\t\t\td 3 -0.001 0.002 -0.00000"},
      {"\t\t\t\td 7  -1.5e-005   2 4", {false, true, false}, "\t\t\t\td 7 -1.5e-005 -2 4"},
      {"\t\t\tindexes 2", {true, true, true}, "\t\t\tindexes 2"},  // no "d" in the fifth place
      {"\t\t\t\t{", {true, true, true}, "\t\t\t\t{"},
  };
  for (const auto& c : cases) EXPECT_EQ(morph::mirrorDeltaLine(c.line, c.flip), c.expected) << c.line;
}

class MirrorTest : public DestinationTest {
 protected:
  void chooseMorph(const std::string& morph) {
    fire("menuMirror", EventKind::Click);
    ASSERT_TRUE(f.PictureMirror.visible());
    fire("PictureMirror", EventKind::Click);
    ASSERT_EQ(f.PictureMirror.backColor(), ui::kToolOn);
    viewChannels("hip");
    selectChannels({"\t" + morph});
    services.expect("Note", "Now doubleclick the body part to transfer this morph to.");
    fire("ListChannels", EventKind::DblClick);
    EXPECT_EQ(f.MirrorMorph, morph);
  }
  std::filesystem::path result() { return tp.work() / "mirmorph.cr2"; }
};

TEST_F(MirrorTest, CopiesTheMorphAheadOfTheTargetPartsChannels) {
  struct Case {
    const char* what;
    Answer mirror;
    bool flip[3];
    const char* deltas;
  };
  const Case cases[] = {
      {"as it stands", Answer::No, {}, "\t\t\t\td 3 0.001 0.002 0.003\r\n\t\t\t\td 7 -0.001 0 0.004"},
      {"X and Z mirrored",
       Answer::Yes,
       {true, false, true},
       "\t\t\t\td 3 -0.001 0.002 -0.003\r\n\t\t\t\td 7 0.001 0 -0.004"},
  };
  chooseMorph("Wide");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    selectActor("abdomen");
    services.expect("Alert!", "Mirror the Wide morph translations when applying to the abdomen:1?", c.mirror);
    if (c.mirror == Answer::Yes)
      for (int i = 0; i < 3; ++i) {
        std::string axis(1, static_cast<char>('X' + i));
        services.expect(axis, "Mirror " + axis + " translations?", c.flip[i] ? Answer::Yes : Answer::No);
      }
    fire("ListActors", EventKind::DblClick);
    EXPECT_EQ(services.pending(), 0u);
    std::string channel =
        replacedAfter(channelText(original, "\t\ttargetGeom Wide"), "\t\t\t\td 3",
                      "\t\t\t\td 3 0.001 0.002 0.003\r\n\t\t\t\td 7 -0.001 0 0.004", c.deltas);
    std::string expected = original;
    std::size_t definition = expected.find("actor abdomen:1", expected.find("actor abdomen:1") + 1);
    std::size_t brace = expected.find("\t\t{\r\n", expected.find("\tchannels\r\n", definition)) + 5;
    expected.insert(brace, channel);
    EXPECT_EQ(readFile(result()), expected);
    EXPECT_EQ(readFile(dest), original);  // the working file stays
    EXPECT_EQ(f.MirrorMorph, "Wide");     // a second double-click copies it again
  }
  // Cancel forgets the morph; a double-click then does nothing.
  services.answer(Answer::Cancel);
  fire("ListActors", EventKind::DblClick);
  EXPECT_EQ(f.MirrorMorph, "");
  fire("ListActors", EventKind::DblClick);
  EXPECT_EQ(services.pending(), 0u);
  // The result opens into the workspace.
  services.answer(Answer::OK);  // the note on the texture maps
  fire("menuMirrorOpen", EventKind::Click);
  EXPECT_EQ(f.LabelFileNameForEditor.caption(), result().string());
}

TEST_F(MirrorTest, MenuAndButton) {
  openSource(copyFigure("source.cr2"));
  services.expect("Error!", "This tool will not transfer between different figures.");
  fire("menuMirror", EventKind::Click);
  EXPECT_FALSE(f.PictureMirror.visible());
  openDestination(dest);
  fire("menuMirror", EventKind::Click);
  fire("PictureMirror", EventKind::Click);
  fire("PictureMirror", EventKind::Click);
  EXPECT_EQ(f.PictureMirror.backColor(), ui::kToolRest);
  EXPECT_FALSE(f.PictureMirror.visible());
  services.expect("Info",
                  "Left click this to enable morph copying.  Choose a body part to show its morphs, then "
                  "click the Channel Icon, then doubleclick the morph you want to copy.");
  fire("PictureMirror", EventKind::RightClick);
}

TEST(PlainDecimal, ExpandsTheExponent) {
  const std::pair<const char*, const char*> cases[] = {
      {"1.5e-005", "0.000015"}, {"-1.5E-005", "-0.000015"}, {"4E-3", "0.004"},  {"-2.5E+2", "-250"},
      {"1.25e1", "12.5"},       {"12.5", "12.5"},           {"-0.25", "-0.25"}, {"7e0", "7"},
  };
  for (const auto& [in, out] : cases) EXPECT_EQ(morph::plainDecimal(in), out) << in;
}

class ExportTest : public MorphTest {
 protected:
  void SetUp() override {
    openDestination(copyFigure("dials.cr2"));
    f.ListActors.setItems({" BODY:1 * 7", "    hip:1 * 11", "    lThigh:1 * 16"});
    useObj("ava.obj");
  }
  void useObj(const std::string& name) {
    f.LabelOBJFileName.setCaption(copyInto(data("export/" + name), tp.files()).string());
  }
  std::filesystem::path result() { return tp.work() / "NewMor.obj"; }
};

TEST_F(ExportTest, AppliesTheDeltasToTheGroupsVertices) {
  viewChannels("hip");
  selectChannels({"\tWide"});
  fire("ListChannels", EventKind::RightRelease);
  EXPECT_TRUE(services.messages().empty()) << lastMessage();
  EXPECT_EQ(readFile(tp.work() / "Extract.obj"), crlf({"0 0.001 -0.002 0.00000", "2 -1.5e-005 0 4E-3"}));
  EXPECT_EQ(readFile(result()), crlf({"v 0 0 0", "v 1.001 -.002 0", "v 0 1 0", "v .999985 1 .004", "v 0 0 1",
                                      "vt 0 0", "vt 1 1", "# export test mesh", "g hip", "usemtl skin",
                                      "f 2/1 3/2 4/1", "f 4 3 1", "g abdomen", "f 5 1 2"}));
}

TEST_F(ExportTest, RefusalsAndBadInput) {
  struct Case {
    const char* what;
    const char* obj;
    bool partList;
    int line;
    const char *title, *text;
  };
  const Case cases[] = {
      {"all channels", "ava.obj", false, 1, "Error!", "Choose a bodypart first!"},
      {"head line", "ava.obj", true, 0, "Error!", "Select a morph before right clicking!"},
      {"empty line", "ava.obj", true, 1, "Error!", "Select a morph before right clicking!"},
      {"deltas past the group", "small_group.obj", true, 2, kAppName, "Run-time error '9':..."},
      {"no group of the part", "no_such.obj", true, 2, kAppName, "Run-time error '53':..."},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    text::deleteIgnoringErrors(result());
    if (text::fileExists(data(std::string("export/") + c.obj)))
      useObj(c.obj);
    else
      f.LabelOBJFileName.setCaption((tp.files() / c.obj).string());
    if (c.partList)
      f.ListChannels.setItems({"Channels for  hip:1", "", "\tWide"});
    else
      f.ListChannels.setItems({"ALL CHANNELS", "************************"});
    f.ListChannels.setListIndex(c.line);
    services.expect(c.title, c.text);
    fire("ListChannels", EventKind::RightRelease);
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_FALSE(text::fileExists(result()));
  }
  // An OBJ without the part's group runs to its end.
  writeFile(tp.files() / "other.obj", crlf({"v 0 0 0", "g head", "f 1 1 1"}));
  f.LabelOBJFileName.setCaption((tp.files() / "other.obj").string());
  services.expect(kAppName, "Run-time error '62':...");
  fire("ListChannels", EventKind::RightRelease);
  EXPECT_EQ(services.pending(), 0u);
}

class JointsTest : public DestinationTest {
 protected:
  void SetUp() override {
    DestinationTest::SetUp();
    openSource(copyFigure("joints_source.cr2"));
    f.ListChannels.setItems({"BODY PARTS", " BODY:1 * 7", "    hip:1 * 11", "    abdomen:1 * 16"});
  }
};

TEST_F(JointsTest, SourceBlocksReplaceTheDestinationsLineForLine) {
  // The line number of the source's hip definition, where its channels follow.
  f.ListChannels.addItem("    hip:1 * 66");
  f.ListChannels.setListIndex(4);
  selectActor("hip");
  services.dialog(dest);
  fire("PictureJoints", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u) << lastMessage();
  // The destination's twist block stays; its first joint block takes the source's
  // first block (the twist) and its second the source's jointX.
  std::string expected =
      replacedAfter(original, "\t\tjointX hip_jointx", "\t\t\tmin -100000", "\t\t\tmin -45");
  expected = replacedAfter(expected, "\t\tjointZ hip_jointz", "\t\t\tmax 100000", "\t\t\tmax 60");
  EXPECT_EQ(readFile(dest), expected);
  EXPECT_EQ(f.LabelFileSize.caption(), " " + std::to_string(expected.size()) + " bytes");
  EXPECT_EQ(f.ListActors.listIndex(), -1);
  EXPECT_EQ(f.ListChannels.listIndex(), -1);
}

TEST_F(JointsTest, Refusals) {
  struct Case {
    const char* what;
    bool sameFile;
    int source, actor;
    const char *title, *text;
  };
  const Case cases[] = {
      {"no source", true, 2, 1, "Note!", "Open a source file first."},
      {"no source part", false, -1, 1, "Alert!", "Choose a source body part to work with."},
      {"no destination part", false, 2, -1, "Alert!", "Choose a destination body part to work with."},
      {"BODY", false, 1, 1, "Alert!", "You can't work with the entire body...."},
      // The first channels behind the declaration are BODY's, which hold no joints.
      {"declaration line", false, 2, 1, "Error!", "There are no joints in the bodypart hip:1"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    if (c.sameFile)
      f.LabelChannelFileName.setCaption(f.LabelFileName.caption());
    else
      f.LabelChannelFileName.setCaption("source: joints_source.cr2");
    f.ListChannels.setListIndex(c.source);
    f.ListActors.setListIndex(c.actor);
    services.expect(c.title, c.text);
    fire("PictureJoints", EventKind::Click);
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_EQ(readFile(dest), original);
  }
  services.expect("Information", "Click this button to enable transfering joint parameters.");
  fire("PictureJoints", EventKind::RightClick);
}

}  // namespace
}  // namespace tolvane::test
