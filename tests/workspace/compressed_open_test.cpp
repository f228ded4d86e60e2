// Open on compressed figures: a gzip figure fills the page as the plain one does (the
// save tests write it back packed), and a damaged or oversized stream is reported while
// the file stays as it was.
#include <gtest/gtest.h>

#include "workspace_fixture.h"

namespace tolvane::test {
namespace {

const std::filesystem::path kSave = std::filesystem::path(TOLVANE_TEST_DATA) / "workspace" / "save";

struct Page {
  Entries actors, channels, materials, props;
  std::string obj, tex;
  bool operator==(const Page&) const = default;
};

Page pageOf(ui::Opening& f) {
  return {f.ListActors.items(),  f.ListChannels.items(), f.ListMaterials.items(),
          f.ListPropObj.items(), f.TextMainOBJ.text(),   f.TextMainTex.text()};
}

std::filesystem::path place(WorkspaceFixture& w, const std::string& name, const std::string& bytes) {
  writeFile(w.t.files() / name, bytes);
  return w.t.files() / name;
}

TEST(CompressedOpen, APackedFigureFillsThePageAsThePlainOneDoes) {
  const std::string text = readFile(kSave / "figure.cr2");
  WorkspaceFixture plain;
  plain.open(place(plain, "figure.cr2", text), {kMoreThanOneMap});
  const Page expected = pageOf(plain.form());
  ASSERT_FALSE(expected.actors.empty());
  for (const char* name : {"figure.crz", "figure.CRZ", "figure.cr2"}) {
    SCOPED_TRACE(name);
    WorkspaceFixture w;
    std::filesystem::path file = place(w, name, gzipBytes(text));
    w.open(file, {kMoreThanOneMap});
    EXPECT_EQ(pageOf(w.form()), expected);
    EXPECT_EQ(w.form().LabelFileNameForEditor.caption(), file.string());
    EXPECT_EQ(readFile(file), gzipBytes(text));
  }
}

TEST(CompressedOpen, ARepairKeepsThePackedOriginalAsItsBackup) {
  WorkspaceFixture w;
  const std::string lf = "{\nversion\n\t{\n\tnumber 4.01\n\t}\nactor hip:1\n\t{\n\t}\n}\n";
  std::filesystem::path file = place(w, "bare.crz", gzipBytes(lf));
  // Repair the line ends; the notes of the repair and of the page are taken as they come.
  w.t.services.dialog(file.string());
  for (int i = 0; i < 6; ++i) w.t.services.answer(ui::Answer::OK);
  EXPECT_TRUE(fireEvent(*w.t, "Opening", "MenuFileOpen", EventKind::Click));
  EXPECT_EQ(w.t.services.messages().at(0).title, "Sorry!");
  w.t.services.dropAnswers();
  bool unpacked = false;
  std::string now = gunzipBytes(readFile(file), &unpacked);
  EXPECT_TRUE(unpacked);
  EXPECT_EQ(now, crlf({"{", "version", "\t{", "\tnumber 4.01", "\t}", "actor hip:1", "\t{", "\t}", "}"}));
  EXPECT_EQ(readFile(w.t.files() / "bareCRZ.bak"), gzipBytes(lf));
}

TEST(CompressedOpen, BadStreamsAreReportedAndLeaveTheFile) {
  const std::string packed = gzipBytes(readFile(kSave / "figure.cr2"));
  struct Case {
    const char* name;
    std::string bytes;
    const char* report;  // the start of the run-time error report; empty: it opens
  };
  const Case cases[] = {
      {"cut short", packed.substr(0, packed.size() - 40),
       "Run-time error '57':\r\n\r\nThis file is compressed (gzip), but"},
      {"bomb", gzipBytes(std::string(std::size_t{16} << 20, ' ')),
       "Run-time error '7':\r\n\r\nThis file is compressed"},
      {"not gzip", std::string("\x1f\x8b\x08\x00 no deflate here", 20), "Run-time error '57':"},
      {"plain under the name", readFile(kSave / "figure.cr2"), ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    WorkspaceFixture w;
    std::filesystem::path file = place(w, "figure.crz", c.bytes);
    w.t.services.dialog(file.string());
    for (int i = 0; i < 4; ++i) w.t.services.answer(ui::Answer::OK);
    EXPECT_TRUE(fireEvent(*w.t, "Opening", "MenuFileOpen", EventKind::Click));
    w.t.services.dropAnswers();
    std::vector<std::string> shown;
    for (const ui::Message& m : w.t.services.messages()) shown.push_back(m.text);
    if (*c.report) {
      ASSERT_FALSE(shown.empty());
      EXPECT_EQ(shown.back().rfind(c.report, 0), 0u) << shown.back();
    } else {
      EXPECT_FALSE(w.form().ListActors.items().empty());
    }
    EXPECT_EQ(readFile(file), c.bytes);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(w.t.files()), {}), 1);
  }
}

}  // namespace
}  // namespace tolvane::test
