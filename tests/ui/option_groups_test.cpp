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
  struct Group {
    const char* form;
    std::vector<const char*> options;
  };
  const Group groups[] = {
      {"Opening", {"OptionBodyPartRename", "OptionChannelRename"}},
      {"Opening", {"OptionMashMorph", "OptionMashOBJ"}},
      {"Opening", {"OptionSepObjFiles", "OptionOneObjFile"}},
      {"FormOBJ", {"OptionFrontView", "OptionSideView", "OptionTopView"}},
      {"FormOBJ", {"OptionColorGroups", "OptionColorMaterials", "OptionNoColors"}},
      {"FormRenumber", {"OptionBMP", "OptionOBJ"}},
      {"FormScale", {"OptionMM", "OptionPixels"}},
      {"DialogERC", {"OptionPBM", "OptionCM", "OptionJCM", "OptionMCM", "OptionJCJ", "OptionMCJ", "OptionJCT",
                     "OptionMCT", "OptionTCM", "OptionTCJ"}},
  };
  std::set<std::string> covered;
  for (const Group& g : groups) {
    for (const char* on : g.options) {
      SCOPED_TRACE(on);
      TestProgram tp;
      // One option of each other group of the form is on, and every other of its own.
      std::vector<const char*> stay;
      for (const Group& other : groups)
        if (&other != &g && std::string(other.form) == g.form) stay.push_back(other.options.back());
      for (const char* name : g.options) option(*tp, g.form, name).setValue(true);
      for (const char* name : stay) option(*tp, g.form, name).setValue(true);
      option(*tp, g.form, on).setValue(true);
      for (const char* name : g.options)
        EXPECT_EQ(option(*tp, g.form, name).value(), name == on) << name;
      for (const char* name : stay) EXPECT_TRUE(option(*tp, g.form, name).value()) << name;
      // Turned off, an option leaves the others as they are.
      option(*tp, g.form, on).setValue(false);
      for (const char* name : stay) EXPECT_TRUE(option(*tp, g.form, name).value()) << name;
      covered.insert(std::string(g.form) + "." + on);
    }
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
