#include "morph_fixture.h"

#include "workspace/list_readers.h"

namespace tolvane::test {

Lines MorphFixture::partList(const std::string& part, const Lines& lines) {
  Lines list{"Channels for  " + part, ""};
  list.insert(list.end(), lines.begin(), lines.end());
  return list;
}

Lines MorphFixture::emcGroup(const std::string& part, const std::string& slave, const std::string& master,
                             const std::string& delta) {
  return partList(part, {"\tEMC Channel", "\tSlave: " + slave, "\tMaster: " + master, "\tFigure: Figure 1",
                         "\tMaster Part: BODY:1", "\tdeltaAddDelta " + delta});
}

void MorphFixture::openDestination(const std::string& path) {
  dest = path;
  for (ui::Label* l : {&f.LabelFileName, &f.LabelChannelFileName}) l->setCaption(displayPath(path));
  for (ui::Label* l : {&f.LabelFileNameForEditor, &f.LabelChannelFileNameForEditor}) l->setCaption(path);
  f.OpenFilePath = path;
  f.TextMainOBJ.setText("Tolvane:ava.obj");
  f.ListActors.setItems(
      {" BODY:1 * 7", "    hip:1 * 11", "    abdomen:1 * 16", "    chest:1 * 21", "    neck:1 * 26"});
  f.ListChannels.setItems({"ALL CHANNELS", "************************"});
  f.PictureViewChannels.setBackColor(ui::kToolRest);
}

void MorphFixture::openSource(const std::string& path) {
  f.LabelChannelFileName.setCaption("source: " + std::filesystem::path(path).filename().string());
  f.LabelChannelFileNameForEditor.setCaption(path);
}

void MorphFixture::selectActor(const std::string& name) {
  for (int i = 0; i < f.ListActors.listCount(); ++i)
    if (f.ListActors.list(i).find(" " + name + ":") != std::string::npos) {
      for (int j : f.ListActors.selectedIndexes()) f.ListActors.setSelected(j, false);
      f.ListActors.setSelected(i, true);
      return;
    }
  FAIL() << "no actor " << name;
}

void MorphFixture::viewChannels(const std::string& part) {
  selectActor(part);
  ASSERT_TRUE(fire("PictureViewChannels", EventKind::Click));
  ASSERT_EQ(f.PictureViewChannels.backColor(), ui::kToolOn) << lastMessage();
}

void MorphFixture::selectChannels(const Lines& lines) {
  for (const auto& line : lines) {
    int index = f.ListChannels.indexOf(line);
    ASSERT_GE(index, 0) << "no channel line " << line;
    f.ListChannels.setSelected(index, true);
  }
}

bool MorphFixture::drop(const std::string& control, const std::string& source) {
  EventArgs args;
  args.source = "Opening." + source;
  return fire(control, EventKind::Drop, args);
}

std::string MorphFixture::lastMessage() const {
  const auto& shown = services.messages();
  return shown.empty() ? "" : shown.back().title + "|" + shown.back().text;
}

}  // namespace tolvane::test
