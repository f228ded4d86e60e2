#include "erc_fixture.h"

namespace tolvane::test {

ErcFixture::ErcFixture() { std::filesystem::create_directories(tp.files()); }

void ErcFixture::openDestination(const std::string& name) {
  dest = copyInto(data(name), tp.files()).string();
  original = readFile(dest);
  auto& f = tp->opening;
  f.LabelFileName.setCaption(std::filesystem::path(dest).filename().string());
  for (ui::Label* l : {&f.LabelFileNameForEditor, &f.LabelChannelFileNameForEditor}) l->setCaption(dest);
  f.OpenFilePath = dest;
  tp->currentDir = tp.files();
}

void ErcFixture::dblClick(const std::string& form, ui::ListBox& list, const std::string& line) {
  int index = list.indexOf(line);
  ASSERT_GE(index, 0) << "no entry " << line << " in " << list.name();
  list.setListIndex(index);
  fire(form, list.name(), EventKind::DblClick);
}

std::string ErcFixture::lastMessage() const {
  const auto& m = services.messages();
  return m.empty() ? std::string("<no message>") : m.back().title + "|" + m.back().text;
}

}  // namespace tolvane::test
