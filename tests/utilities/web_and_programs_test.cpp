#include "utilities/web_and_programs.h"

#include <gtest/gtest.h>

#include "program/events.h"
#include "test_support.h"

namespace tolvane::test {
namespace {

TEST(VersionCheck, ThreeOutcomes) {
  struct Case {
    std::optional<std::string> served;
    std::string title, message;
  };
  const Case cases[] = {
      {"Version 5.0\r\nNews: none", "Info", "Your version of Tolvane is up to date!"},
      {"Version 5.1,news", "Info", "Your version of Tolvane can be updated, the current version is ver 5.1"},
      {"Version 5.00", "Info", "Your version of Tolvane can be updated, the current version is ver 5.00"},
      {"5.0", "Info", "Your version of Tolvane can be updated, the current version is ver "},
      {"", "Error!", "Info retrieval failed."},
      {std::nullopt, "Error!", "Info retrieval failed."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.message);
    TestProgram t;
    t.services.setHttpResponse(c.served);
    t.services.expect(c.title, c.message);
    fireEvent(*t, "Opening", "menuCheckVer", EventKind::Click);
    EXPECT_EQ(t.services.pending(), 0u);
    EXPECT_EQ(readFile(t.work() / "Tolvanever.txt"), c.served.value_or(""));
    EXPECT_FALSE(std::filesystem::exists(t.work() / "Tolvanever.tmp"));
  }
}

TEST(OutsidePrograms, PoserQuickbootAndHelpPages) {
  TestProgram t;
  t.settings.save(kAppName, "Startup", "PLoc", "/opt/Poser/");
  t.settings.save(kAppName, "Startup", "WebSite", "http://127.0.0.1:9");
  auto& o = t->opening;
  o.LabelFileNameForEditor.setCaption("/figs/scene.pz3");
  fireEvent(*t, "Opening", "MenuPoser", EventKind::Click);
  o.LabelFileNameForEditor.setCaption("/figs/fig.cr2");
  t.services.expect("NOTE!",
                    "If you start Poser with a CR2 file it will open with the default model.  Do you want to do this?",
                    ui::Answer::No);
  fireEvent(*t, "Opening", "MenuPoser", EventKind::Click);
  t.services.expect("NOTE!", "If you start Poser with a CR2 file it...", ui::Answer::Yes);
  fireEvent(*t, "Opening", "MenuPoser", EventKind::Click);
  fireEvent(*t, "Opening", "MenuQuickboot", EventKind::Click);
  fireEvent(*t, "Opening", "MenuHelp", EventKind::Click);
  writeFile(t.work() / "TolvaneManual" / "TolvaneWelcome.htm", "<html/>");
  fireEvent(*t, "Opening", "MenuHelpContents", EventKind::Click);
  fireEvent(*t, "Opening", "menuWebTutorials", EventKind::Click);
  const std::vector<std::string> expected = {
      "/opt/Poser/Poser.exe /figs/scene.pz3",
      "/opt/Poser/Poser.exe /figs/fig.cr2",
      (t.work() / "Quickboot.exe").string(),
      "xdg-open http://127.0.0.1:9/tolvane/help/TolvaneWelcome.htm",
      "xdg-open " + (t.work() / "TolvaneManual" / "TolvaneWelcome.htm").string(),
      "xdg-open http://127.0.0.1:9/tolvane/tutorials/tutorials.html",
  };
  EXPECT_EQ(t.services.processes(), expected);
  EXPECT_EQ(t.services.pending(), 0u);
}

}  // namespace
}  // namespace tolvane::test
