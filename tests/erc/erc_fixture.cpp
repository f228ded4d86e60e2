#include "erc_fixture.h"

#include <algorithm>

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

std::string ErcFixture::expectedWith(const std::string& channel, const Lines& block, std::size_t dropped) {
  Lines lines = linesOf(data("figure.cr2"));
  auto at = std::find(lines.begin(), lines.end(), channel);
  EXPECT_NE(at, lines.end()) << channel;
  at = std::find_if(at, lines.end(), [](const std::string& l) { return l.find("interpStyleLocked") != l.npos; });
  at = lines.erase(at + 1, at + 1 + static_cast<long>(dropped));
  for (auto it = block.rbegin(); it != block.rend(); ++it) at = lines.insert(at, "\t\t\t" + *it);
  return crlf(lines);
}

std::string ErcFixture::lastMessage() const {
  const auto& m = services.messages();
  return m.empty() ? std::string("<no message>") : m.back().title + "|" + m.back().text;
}

}  // namespace tolvane::test
