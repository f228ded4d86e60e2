#include "obj_fixture.h"

#include <fstream>

namespace tolvane::test {

Lines ObjTest::linesOf(const std::filesystem::path& file) {
  Lines lines;
  std::ifstream in(file, std::ios::binary);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::string ObjTest::writeObj(const std::string& name, const Lines& lines) {
  std::filesystem::path path = tp.files() / name;
  writeFile(path, crlf(lines));
  return path.string();
}

void ObjTest::load(const std::string& path) {
  tp->opening.OpenFilePath = path;
  fireEvent(*tp, "Opening", "PictureOBJView", EventKind::Click);
  fire("LabelView", EventKind::Click);
}

std::string ObjTest::lastMessage() const {
  const auto& m = services.messages();
  return m.empty() ? std::string("<none>") : m.back().title + "|" + m.back().text;
}

}  // namespace tolvane::test
