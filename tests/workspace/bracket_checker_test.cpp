#include "workspace/bracket_checker.h"

#include <gtest/gtest.h>

#include <sstream>

#include "workspace_fixture.h"

namespace tolvane::test {
namespace {

// The sample figure with `count` lines equal to `line` removed, the first ones after
// the second header `after` (the part's definition).
std::string withoutLines(const std::string& text, const std::string& after, const std::string& line,
                         int count) {
  std::istringstream in(text);
  std::string out, l;
  int headers = 0;
  while (std::getline(in, l)) {
    if (!l.empty() && l.back() == '\r') l.pop_back();
    if (l == after) ++headers;
    if (headers == 2 && count > 0 && l == line) {
      --count;
      continue;
    }
    out += l + "\r\n";
  }
  return out;
}

TEST(BracketChecker, FindsTheMissingBraceAndHoldsTheMenusTillThePictureIsClicked) {
  const struct {
    const char* what;
    std::string line;
    int count;
    std::string message;
    const char* picture;  // nullptr: none
  } cases[] = {
      {"balanced", "", 0, "", "PictureBrktsOK"},
      {"one right brace gone", "\t\t\t}", 1, "Missing right bracket in actor head. Fix this and test again!",
       nullptr},
      {"one left brace gone", "\t\t\t{", 1, "Missing left bracket in actor head. Fix this and test again!",
       nullptr},
      {"two right braces gone", "\t\t\t}", 2, "", "PictureBrktRight"},
      {"two left braces gone", "\t\t\t{", 2, "", "PictureBrktLeft"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    WorkspaceFixture w;
    auto file = w.t.files() / "fig.cr2";
    writeFile(file, withoutLines(readFile(w.lib("Character/Tolv/Ava.cr2")), "actor head:1", c.line, c.count));
    std::string before = readFile(file);
    ui::Opening& f = w.form();
    f.OpenFilePath = file.string();
    if (!c.message.empty()) w.expect({"Note!", c.message});
    ASSERT_TRUE(fireEvent(*w.t, "Opening", "MenuBrack", EventKind::Click));
    EXPECT_EQ(w.t.services.messages().size(), c.message.empty() ? 0u : 1u);
    for (ui::Picture* p : {&f.PictureBrktsOK, &f.PictureBrktLeft, &f.PictureBrktRight})
      EXPECT_EQ(p->visible(), c.picture && p->name() == c.picture) << p->name();
    EXPECT_EQ(f.MenuFile.enabled(), c.picture == nullptr);
    EXPECT_EQ(f.TimerPushpin.enabled(), c.picture != nullptr);
    EXPECT_EQ(readFile(file), before);
    EXPECT_FALSE(f.busy());
    if (!c.picture) continue;
    // The menus wait for a click on the picture, which the pushpin points at.
    EXPECT_FALSE(f.MenuCR2Tools.enabled());
    fireEvent(*w.t, "Opening", "TimerPushpin", EventKind::Timer);
    EXPECT_TRUE(f.PicturePushPin.visible());
    fireEvent(*w.t, "Opening", c.picture, EventKind::Click);
    for (ui::Control* p : std::initializer_list<ui::Control*>{&f.PictureBrktsOK, &f.PictureBrktLeft,
                                                              &f.PictureBrktRight, &f.PicturePushPin})
      EXPECT_FALSE(p->visible()) << p->name();
    EXPECT_FALSE(f.TimerPushpin.enabled());
    EXPECT_TRUE(f.MenuFile.enabled());
    EXPECT_TRUE(f.MenuCR2Tools.enabled());
  }
}

TEST(BracketChecker, PoseWithoutFigureResFileEndsWithoutAResult) {
  WorkspaceFixture w;
  ui::Opening& f = w.form();
  w.click("MenuBrack", w.lib("Pose/Tolv/Wave.pz2"));
  EXPECT_EQ(f.OpenFilePath, w.lib("Pose/Tolv/Wave.pz2").string());
  EXPECT_TRUE(w.t.services.messages().empty());
  EXPECT_FALSE(f.PictureBrktsOK.visible() || f.PictureBrktLeft.visible() || f.PictureBrktRight.visible());
  EXPECT_TRUE(f.MenuFile.enabled());

  f.OpenFilePath.clear();
  w.click("MenuBrack", {});
  EXPECT_TRUE(f.OpenFilePath.empty());
}

}  // namespace
}  // namespace tolvane::test
