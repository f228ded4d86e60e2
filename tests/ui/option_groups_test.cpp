// Option buttons are exclusive within their container, a frame or the form, as the
// window's radio buttons are: the model has to agree, since the tools and the runner
// read and set the options without a window.
#include <gtest/gtest.h>

#include <set>
#include <stdexcept>

#include "test_support.h"

namespace tolvane::test {
namespace {

ui::OptionButton& option(Program& program, const std::string& form, const std::string& name) {
  auto* o = dynamic_cast<ui::OptionButton*>(program.form(form)->control(name));
  if (o == nullptr) throw std::logic_error("no option " + form + "." + name);
  return *o;
}

TEST(OptionGroups, AnOptionTurnedOnTurnsOffOnlyTheOthersOfItsContainer) {
  struct Case {
    const char *form, *on;
    std::vector<const char*> off;   // the same container
    std::vector<const char*> stay;  // another container
  };
  std::vector<Case> cases = {
      {"Opening", "OptionBodyPartRename", {"OptionChannelRename"}, {"OptionMashOBJ"}},
      {"Opening", "OptionChannelRename", {"OptionBodyPartRename"}, {"OptionMashMorph"}},
      {"Opening", "OptionMashMorph", {"OptionMashOBJ"}, {"OptionChannelRename"}},
      {"Opening", "OptionMashOBJ", {"OptionMashMorph"}, {"OptionBodyPartRename"}},
      {"FormOBJ", "OptionFrontView", {"OptionSideView", "OptionTopView"}, {"OptionNoColors"}},
      {"FormOBJ", "OptionSideView", {"OptionFrontView", "OptionTopView"}, {"OptionColorGroups"}},
      {"FormOBJ", "OptionTopView", {"OptionFrontView", "OptionSideView"}, {"OptionColorMaterials"}},
      {"FormOBJ", "OptionColorGroups", {"OptionColorMaterials", "OptionNoColors"}, {"OptionTopView"}},
      {"FormOBJ", "OptionColorMaterials", {"OptionColorGroups", "OptionNoColors"}, {"OptionFrontView"}},
      {"FormOBJ", "OptionNoColors", {"OptionColorGroups", "OptionColorMaterials"}, {"OptionSideView"}},
      {"Opening", "OptionSepObjFiles", {"OptionOneObjFile"}, {"OptionMashOBJ"}},
      {"Opening", "OptionOneObjFile", {"OptionSepObjFiles"}, {"OptionChannelRename"}},
      {"FormRenumber", "OptionBMP", {"OptionOBJ"}, {}},
      {"FormRenumber", "OptionOBJ", {"OptionBMP"}, {}},
      {"FormScale", "OptionMM", {"OptionPixels"}, {}},
      {"FormScale", "OptionPixels", {"OptionMM"}, {}},
  };
  // The ten kinds of the controlled morph dialog are one group.
  const char* kinds[] = {"OptionPBM", "OptionCM",  "OptionJCM", "OptionMCM", "OptionJCJ",
                         "OptionMCJ", "OptionJCT", "OptionMCT", "OptionTCM", "OptionTCJ"};
  for (const char* on : kinds) {
    Case c{"DialogERC", on, {}, {}};
    for (const char* other : kinds)
      if (other != on) c.off.push_back(other);
    cases.push_back(c);
  }
  std::set<std::string> covered;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.on);
    TestProgram tp;
    for (const char* name : c.off) option(*tp, c.form, name).setValue(true);
    for (const char* name : c.stay) option(*tp, c.form, name).setValue(true);
    option(*tp, c.form, c.on).setValue(true);
    EXPECT_TRUE(option(*tp, c.form, c.on).value());
    for (const char* name : c.off) EXPECT_FALSE(option(*tp, c.form, name).value()) << name;
    for (const char* name : c.stay) EXPECT_TRUE(option(*tp, c.form, name).value()) << name;
    // Turned off, an option leaves the others as they are.
    option(*tp, c.form, c.on).setValue(false);
    for (const char* name : c.stay) EXPECT_TRUE(option(*tp, c.form, name).value()) << name;
    covered.insert(std::string(c.form) + "." + c.on);
  }
  // Every option of every form has its group named above.
  TestProgram tp;
  for (ui::Form* form : tp->forms()) {
    for (ui::Control* control : form->controls()) {
      if (control->kind() != ui::ControlKind::Option) continue;
      EXPECT_TRUE(covered.count(form->name() + "." + control->name())) << control->name();
    }
  }
}

}  // namespace
}  // namespace tolvane::test
