#include <gtest/gtest.h>

#include "obj/mash.h"
#include "obj/obj_scaler.h"
#include "obj_fixture.h"
#include "text/line_writer.h"
#include "text/scratch_file.h"

namespace tolvane::test {
namespace {

using ui::Answer;

class MashScaleTest : public ObjTest {
 protected:
  // An OBJ opened by itself: the main form's OBJ page names it.
  std::string openObj(const std::string& relative) {
    std::string path = copy(relative);
    tp->opening.OpenFilePath = path;
    tp->opening.LabelOBJFileName.setCaption(path);
    return path;
  }
  bool fireMain(const std::string& control, EventKind kind, int key = 0) {
    EventArgs a;
    a.keyCode = key;
    return fireEvent(*tp, "Opening", control, kind, a);
  }
  void mash(bool morph) {
    fireMain("PictureMash", EventKind::Click);  // shows the modes
    ASSERT_TRUE(tp->opening.OptionMashOBJ.visible());
    (morph ? tp->opening.OptionMashMorph : tp->opening.OptionMashOBJ).setValue(true);
    fireMain("PictureMash", EventKind::Click);
  }
  void scale(const std::string& amount) {
    fireMain("PictureScaleObj", EventKind::Click);
    tp->opening.TextOBJScale.setText(amount);
    fireMain("TextOBJScale", EventKind::Key, 13);
  }
};

TEST_F(MashScaleTest, MashKeepsTheFirstLineBehindTheMarkerAndSelectsLinesByMode) {
  for (bool morph : {false, true}) {
    SCOPED_TRACE(morph ? "morph" : "obj");
    std::filesystem::remove_all(tp.files());
    std::filesystem::create_directories(tp.files());
    std::string obj = openObj("mash/cube.obj");
    auto before = text::fileLength(obj);
    services.answer(Answer::OK);
    mash(morph);
    EXPECT_EQ(firstDifference(obj, data(morph ? "mash/expected_morph.obj" : "mash/expected_obj.obj")), "");
    EXPECT_EQ(readFile(obj::mashBackupName(obj)), readFile(data("mash/cube.obj")));
    EXPECT_EQ(services.messages().back().text,
              "                  Converted!\rFile was " + std::to_string(before) + " bytes, now it is " +
                  std::to_string(text::fileLength(obj)) +
                  " bytes. A backup has been created with the extension BAK.");
    EXPECT_FALSE(tp->opening.FrameMash.visible());

    // A processed file is refused whatever the mode.
    std::string mashed = readFile(obj);
    services.expect("Note!", "File already mashed!");
    mash(!morph);
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_EQ(readFile(obj), mashed);
    EXPECT_FALSE(text::fileExists(work("tempobj.txt")));
  }
}

TEST_F(MashScaleTest, MashBackupIsCutAtTheFirstDotOfThePathAndAnExistingOneStopsIt) {
  EXPECT_EQ(obj::mashBackupName("C:\\My.Models\\cube.obj"), "C:\\My.bak");
  EXPECT_EQ(obj::mashBackupName("cube.obj"), "cube.bak");
  std::string obj = openObj("mash/cube.obj");
  writeFile(obj::mashBackupName(obj), "old backup");
  services.answer(Answer::OK);
  mash(false);
  EXPECT_EQ(services.messages().back().text.rfind("Run-time error '58':", 0), 0u);
  EXPECT_EQ(readFile(obj), readFile(data("mash/cube.obj")));
  EXPECT_TRUE(text::fileExists(work("tempobj.txt")));
}

TEST_F(MashScaleTest, ScalingPadsEveryFieldAndDropsTheNormals) {
  struct Case {
    const char* amount;
    const char* expected;
  };
  for (const Case& c : {Case{"2", "scale/times_2.obj"}, Case{"-2", "scale/divided_by_2.obj"}}) {
    SCOPED_TRACE(c.amount);
    std::string obj = openObj("scale/box.obj");
    services.answer(Answer::OK);
    scale(c.amount);
    EXPECT_EQ(firstDifference(obj, data(c.expected)), "");
    EXPECT_EQ(services.messages().back().title + "|" + services.messages().back().text,
              "Finished|" + obj + " object rescaled to " + c.amount + " times original.");
    EXPECT_FALSE(tp->opening.TextOBJScale.visible());
    EXPECT_EQ(tp->opening.TextOBJScale.text(), "0");
    EXPECT_EQ(tp->opening.SliderOBJScale.value(), 0);
  }
}

TEST_F(MashScaleTest, ScalingFieldsToTheCharacter) {
  struct Case {
    const char* text;
    double scale;
    const char* field;
  };
  const Case cases[] = {
      {"0.25", 2, "0.500000000"},      {"0.5", 2, "1.000000000"},
      {"-0.125", 2, "-0.250000000"},   {"0", 5, "0.000000"},
      {"0.00001", 1, "1E-05000000"},   {"-3", -2, "-1.500000000"},
      {"123456.5", 10, "1234565.000"}, {"1.23456789012", 1, "1.23456789012"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(obj::scaledField(c.text, c.scale), c.field);
  }
  EXPECT_EQ(obj::scaledVertexLine("v 0 0 0", 3), "v 0.000 0.000000 0.000000");
  EXPECT_EQ(obj::scaledVertexLine("v -.5 1 1", 1), "v -0.500000 1.000000000 1.000000000");
}

TEST_F(MashScaleTest, ScaleRefusalsAndABatchOverTheFolder) {
  std::string obj = openObj("scale/box.obj");
  services.expect("Error!", "Whole numbers only!");
  services.expect("Error!", "No scaling amount entered!");
  scale("1.5");
  services.expect("Error!", "No scaling amount entered!");
  scale("0");
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(readFile(obj), readFile(data("scale/box.obj")));

  copyInto(data("scale/box.obj"), tp.files() / "more");
  std::filesystem::rename(tp.files() / "more" / "box.obj", tp.files() / "second.OBJ");
  writeFile(tp.files() / "notes.txt", "v 1 1 1\r\n");
  tp->currentDir = tp.files();
  tp->opening.CheckOBJBatch.setValue(true);
  services.expect("Finished", "All OBJ's rescaled to 2 times original.");
  scale("2");
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(firstDifference(obj, data("scale/times_2.obj")), "");
  EXPECT_EQ(firstDifference(tp.files() / "second.OBJ", data("scale/times_2.obj")), "");
  EXPECT_EQ(readFile(tp.files() / "notes.txt"), "v 1 1 1\r\n");
  EXPECT_FALSE(tp->opening.CheckOBJBatch.visible());
}

TEST_F(MashScaleTest, AFailedWriteLeavesTheObjAsItWas) {
  std::string obj = openObj("scale/box.obj");
  services.answer(Answer::OK);
  text::LineWriter::failAfterBytesForTesting(20);
  scale("2");
  text::LineWriter::failAfterBytesForTesting(-1);
  EXPECT_EQ(services.messages().back().text.rfind("Run-time error '61':", 0), 0u);
  EXPECT_EQ(readFile(obj), readFile(data("scale/box.obj")));
}

}  // namespace
}  // namespace tolvane::test
