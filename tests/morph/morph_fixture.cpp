#include "morph_fixture.h"

#include "core/list_readers.h"

namespace tolvane::test {

std::filesystem::path MorphTest::data(const std::string& relative) {
  return std::filesystem::path(TOLVANE_TEST_DATA) / "morph" / relative;
}

std::string MorphTest::copyFigure(const std::string& name) {
  return copyInto(data("figures/" + name), tp.files()).string();
}

void MorphTest::openDestination(const std::string& path, std::vector<std::string> actors) {
  dest = path;
  for (ui::Label* l : {&f.LabelFileName, &f.LabelChannelFileName}) l->setCaption(displayPath(path));
  for (ui::Label* l : {&f.LabelFileNameForEditor, &f.LabelChannelFileNameForEditor}) l->setCaption(path);
  f.OpenFilePath = path;
  f.TextMainOBJ.setText("Tolvane:ava.obj");
  if (actors.empty())
    actors = {" BODY:1 * 7", "    hip:1 * 11", "    abdomen:1 * 16", "    chest:1 * 21", "    neck:1 * 26"};
  f.ListActors.setItems(actors);
  f.ListChannels.setItems({"ALL CHANNELS", "************************"});
}

void MorphTest::openSource(const std::string& path) {
  f.LabelChannelFileName.setCaption("source: " + std::filesystem::path(path).filename().string());
  f.LabelChannelFileNameForEditor.setCaption(path);
}

void MorphTest::selectActor(const std::string& name) {
  for (int i = 0; i < f.ListActors.listCount(); ++i)
    if (f.ListActors.list(i).find(" " + name + ":") != std::string::npos) {
      for (int j : f.ListActors.selectedIndexes()) f.ListActors.setSelected(j, false);
      f.ListActors.setSelected(i, true);
      return;
    }
  FAIL() << "no actor " << name;
}

void MorphTest::viewChannels(const std::string& part) {
  selectActor(part);
  ASSERT_TRUE(fire("PictureViewChannels", EventKind::Click));
  ASSERT_EQ(f.PictureViewChannels.backColor(), ui::kToolOn)
      << (messageTexts().empty() ? "" : messageTexts().back());
}

void MorphTest::selectChannels(const std::vector<std::string>& lines) {
  for (const auto& line : lines) {
    int index = f.ListChannels.indexOf(line);
    ASSERT_GE(index, 0) << "no channel line " << line;
    f.ListChannels.setSelected(index, true);
  }
}

void MorphTest::setChannels(const std::vector<std::string>& lines) { f.ListChannels.setItems(lines); }

bool MorphTest::fire(const std::string& control, EventKind kind, const EventArgs& args) {
  return fireEvent(*tp, "Opening", control, kind, args);
}

bool MorphTest::drop(const std::string& control, const std::string& source) {
  EventArgs args;
  args.source = "Opening." + source;
  return fire(control, EventKind::Drop, args);
}

std::vector<std::string> MorphTest::messageTexts() const {
  std::vector<std::string> texts;
  for (const auto& m : services.messages()) texts.push_back(m.title + "|" + m.text);
  return texts;
}

std::string MorphTest::differenceFrom(const std::string& path, const std::string& caseName) const {
  return firstDifference(path, data(caseName + "/expected.cr2"));
}

}  // namespace tolvane::test
