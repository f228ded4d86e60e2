#include "erc/ecm_lists.h"

#include <unordered_set>

#include "text/figure_text.h"
#include "text/line_reader.h"

namespace tolvane::erc {

using text::contains;
using text::hasPrefix;
using text::InStr;
using text::Mid;
using text::Right;

namespace {

// The lines of a list in the order they came, each once.
class UniqueLines {
 public:
  bool add(const std::string& line) {
    if (!m_seen.insert(line).second) return false;
    m_lines.push_back(line);
    return true;
  }
  Lines take() { return std::move(m_lines); }

 private:
  Lines m_lines;
  std::unordered_set<std::string> m_seen;
};

// A dial's name from its raw name line: four characters behind "ame", or for a
// resource name everything from the ninth character.
std::string dialName(const std::string& nameLine) {
  if (contains(nameLine, "Get")) return Mid(nameLine, 9);
  return Mid(nameLine, static_cast<long long>(InStr(nameLine, "ame")) + 4);
}

bool isMinLine(const std::string& line) {
  std::size_t at = line.find_first_not_of("\t ");
  return at != std::string::npos && line.compare(at, 3, "min") == 0;
}

struct DialHeader {
  const char* header;
  const char* prefix;
  const char* suffix;
};
constexpr DialHeader kRotations[] = {
    {"rotateX", "xrot ", " [X]"}, {"rotateY", "yrot ", " [Y]"}, {"rotateZ", "zrot ", " [Z]"}};
constexpr DialHeader kTranslations[] = {
    {"translateX", "xtran ", " [X]"}, {"translateY", "ytran ", " [Y]"}, {"translateZ", "ztran ", " [Z]"}};

const DialHeader* dialHeader(const std::string& field, bool translation) {
  for (const DialHeader& h : translation ? kTranslations : kRotations)
    if (hasPrefix(field, h.header)) return &h;
  return nullptr;
}

// The channel behind a dial header: its name line and its min and max lines, read
// whole. False at the end of the file.
bool readDial(text::LineReader& in, const DialHeader& h, const std::string& actor, UniqueLines& dials,
              Lines& minMax) {
  std::string brace, nameLine, minLine, maxLine;
  if (!in.readRawLine(brace) || !in.readRawLine(nameLine)) return false;
  do {
    if (!in.readRawLine(minLine)) return false;
  } while (!isMinLine(minLine));
  if (!in.readRawLine(maxLine)) return false;
  std::string dial = h.prefix + actor + " " + dialName(nameLine) + h.suffix;
  if (!dials.add(dial)) return true;
  minMax.push_back(dial);
  minMax.push_back(dial + "*" + minLine);
  minMax.push_back(dial + "*" + maxLine);
  return true;
}

}  // namespace

std::string ownFigureNumber(const std::string& path) {
  text::LineReader in(text::nativePath(path));
  std::string field;
  do field = in.ReadField();
  while (!hasPrefix(field, "figure") || contains(field, "Res"));
  for (int i = 0; i < 3; ++i) field = in.ReadField();
  return Mid(field, static_cast<long long>(InStr(field, ":")) + 1);
}

Lines listMorphs(const std::string& path, ui::ErcKind kind) {
  text::LineReader in(text::nativePath(path));
  UniqueLines lines;
  std::string field, bodyNumber, figure;
  if (kind == ui::ErcKind::CM) {
    while (in.readField(field) && !hasPrefix(field, "actor BODY:")) {
    }
    bodyNumber = Right(field, 1);
  }
  while (in.readField(field)) {
    if (hasPrefix(field, "parent")) figure = Right(field, 1);
    if (!hasPrefix(field, "targetGeom")) continue;
    if (kind == ui::ErcKind::CM && figure == bodyNumber) continue;
    std::string id = Mid(field, 12);
    lines.add(kind == ui::ErcKind::PBM ? id : id + ":" + figure);
  }
  return lines.take();
}

DialListing listDials(const std::string& path, bool translation, ui::ErcKind kind,
                      const std::string& ownFigure) {
  text::LineReader in(text::nativePath(path));
  DialListing out;
  UniqueLines dials;
  std::string field, actor, actorFigure;
  int resFiles = 0;
  while (in.readField(field)) {
    if (contains(field, "figureResFile") && ++resFiles == 2) break;
    if (hasPrefix(field, "actor")) {
      actor = Mid(field, 7);
      actorFigure = Right(field, 1);
      continue;
    }
    const DialHeader* h = dialHeader(field, translation);
    if (h == nullptr) continue;
    if (kind == ui::ErcKind::CM && actorFigure == ownFigure) continue;
    if (kind == ui::ErcKind::JCM && actorFigure != ownFigure) continue;
    if (!readDial(in, *h, actor, dials, out.minMax)) break;
  }
  out.dials = dials.take();
  return out;
}

Lines listFigureNames(const std::string& path) {
  text::LineReader in(text::nativePath(path));
  Lines names;
  std::string field, brace, name;
  while (in.readField(field)) {
    if (field != "figure") continue;
    // The two lines behind are read whole: the name line's tab makes the seventh
    // character the first of the name.
    if (!in.readRawLine(brace) || !in.readRawLine(name)) break;
    names.push_back(Mid(name, 7));
  }
  return names;
}

Lines listBodyParts(const std::string& path) {
  text::LineReader in(text::nativePath(path));
  Lines parts;
  std::string field, first, second;
  int resFiles = 0;
  auto counts = [&resFiles](const std::string& f) { return contains(f, "figureResFile") && ++resFiles == 2; };
  for (int read = 0; in.readField(field); ++read) {
    if (counts(field)) break;
    if (resFiles == 0 && read >= 1000) break;
    if (!hasPrefix(field, "actor")) continue;
    if (!in.readField(first) || !in.readField(second)) break;
    if (!second.empty()) {
      parts.push_back(Mid(field, 7));
      continue;
    }
    parts.push_back(" ");
    bool last = false;
    while (!last && in.readField(field)) last = contains(field, "figureResFile");
    if (last && ++resFiles == 2) break;
  }
  return parts;
}

}  // namespace tolvane::erc
