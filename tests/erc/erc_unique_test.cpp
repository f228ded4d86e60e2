// The unique figure name: the kinds it refuses, the warning, and the copy in the work
// folder in which every line holding "Figure " ends in the new name.
#include <gtest/gtest.h>

#include "erc_fixture.h"

namespace tolvane::test {
namespace {

using ui::Answer;

const char* kAlert =
    "Do not use this tool with files that have multiple figures in them!  If this is the case, use the "
    "Manual "
    "Editor, Find\\Replace.\rIf you continue, a text box will appear. Type in your new name and hit enter.";

TEST(ErcUnique, RefusesAllButLowerCaseCr2AndPz3) {
  for (const char* name : {"figure.CR2", "figure.pz2", "figure.obj", "figure"}) {
    SCOPED_TRACE(name);
    ErcFixture f;
    f.tp->opening.LabelFileNameForEditor.setCaption((f.tp.files() / name).string());
    f.services.answer(Answer::OK);
    f.fire("Opening", "menuERCUnique", EventKind::Click);
    ASSERT_EQ(f.services.messages().size(), 1u);
    EXPECT_EQ(f.lastMessage(), "Error!|CR2 or PZ3 files only!");
    EXPECT_EQ(f.services.messages()[0].icon, ui::Icon::Critical);
    EXPECT_FALSE(f.tp->opening.TextERCUnique.visible());
  }
}

class ErcUniqueTest : public ErcTest {};

TEST_F(ErcUniqueTest, EveryFigureNameBecomesTheNewOne) {
  services.answer(Answer::OK);
  services.answer(Answer::OK);
  fire("Opening", "menuERCUnique", EventKind::Click);
  EXPECT_EQ(lastMessage(), std::string("Alert!|") + kAlert);
  EXPECT_TRUE(tp->opening.TextERCUnique.visible());
  EXPECT_TRUE(tp->opening.TextERCUnique.hasFocus());
  Lines lines = linesOf(dest);
  lines.push_back("\tname Figure 1 and more");
  lines.push_back("\tname figure 1");
  writeFile(dest, crlf(lines));
  std::string before = readFile(dest);
  // An output of an earlier run goes without a question.
  writeFile(tp.work() / "Unique.cr2", "old");
  tp->opening.TextERCUnique.setText("Ava");
  fire("Opening", "TextERCUnique", EventKind::Enter);
  std::filesystem::path output = tp.work() / "Unique.cr2";
  EXPECT_EQ(lastMessage(),
            "Note!|New file saved as " + output.string() + ", move or rename before doing another.");
  for (std::string& l : lines) {
    std::size_t at = l.find("Figure ");
    if (at != std::string::npos) l = l.substr(0, at) + "Ava";
  }
  EXPECT_EQ(lines[111 - 1 + 1], "\t\t\tAva");  // the control block's figure line
  EXPECT_EQ(lines[lines.size() - 2], "\tname Ava");
  EXPECT_EQ(lines.back(), "\tname figure 1");
  EXPECT_EQ(readFile(output), crlf(lines));
  EXPECT_EQ(readFile(dest), before);
  EXPECT_FALSE(std::filesystem::exists(tp.work() / "Unique.tmp"));
}

TEST_F(ErcUniqueTest, APz3GivesAPz3Copy) {
  std::filesystem::path scene = tp.files() / "scene.pz3";
  writeFile(scene, crlf({"{", "\t\t\tFigure 2", "}"}));
  tp->opening.LabelFileNameForEditor.setCaption(scene.string());
  tp->opening.TextERCUnique.setText("");
  services.answer(Answer::OK);
  fire("Opening", "TextERCUnique", EventKind::Enter);
  EXPECT_EQ(readFile(tp.work() / "Unique.pz3"), crlf({"{", "\t\t\t", "}"}));
}

}  // namespace
}  // namespace tolvane::test
