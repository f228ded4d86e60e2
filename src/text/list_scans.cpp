#include "text/list_scans.h"

#include <algorithm>

#include "text/figure_text.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"

namespace tolvane::text {

namespace {

bool listed(const std::vector<std::string>& a, const std::vector<std::string>& b, const std::string& v) {
  return std::find(a.begin(), a.end(), v) != a.end() || std::find(b.begin(), b.end(), v) != b.end();
}

// Up to the first line that holds figureResFile or opens the BODY actor; the test for
// figureResFile stands before each read, beside the end of the file (a hair file has
// neither line and then lists nothing).
long long readToFirstFigure(FigureScanner& in) {
  Needles keys{"figureResFile", "actor BODY"};
  long long count = 0;
  std::string_view line;
  while (!contains(line, "figureResFile")) {
    count += static_cast<long long>(in.skipLines(keys, false, true));
    if (!in.rawLine(line)) break;
    ++count;
    if (hasPrefix(line, "actor BODY")) break;
  }
  return count;
}

}  // namespace

std::vector<std::string> scanBodyParts(FigureScanner& in, const std::string& kind) {
  std::vector<std::string> entries;
  long long count = 0;
  if (kind != "fc2" && kind != "pz2" && kind != "pp2") count = readToFirstFigure(in);
  Needles actors{"actor"};
  Needles figureRes{"figureResFile"};
  std::string_view line;
  for (;;) {
    count += static_cast<long long>(in.skipLines(actors, false, true));
    if (!in.rawLine(line)) break;
    ++count;
    if (!hasPrefix(line, "actor")) continue;
    std::string entry = Mid(line, 6) + " *" + StrInteger(count);
    in.ReadRawLine();
    std::string_view second = in.ReadRawLine();
    count += 2;
    if (second.empty()) {
      // The first definition block: the declarations of this figure are all listed.
      entry.assign(1, ' ');
      std::string_view f;
      do {
        count += static_cast<long long>(in.skipLines(figureRes, true, true));
        f = in.ReadField();
        ++count;
      } while (!contains(f, "figureResFile"));
      in.ReadField();
      ++count;
    }
    if (!contains(entry, "BODY")) entry = "   " + entry;
    entries.push_back(std::move(entry));
  }
  in.close();
  return entries;
}

namespace {

// One part's channels, from the line after its header; returns the line that ends
// the part (an actor header) or nothing when the part's listing stops.
class ChannelWalk {
 public:
  ChannelWalk(FigureScanner& in, ChannelScan& out, long long& count) : m_in(in), m_out(out), m_count(count) {}

  // Returns true when it stopped at an actor header, which is then in `header`.
  bool walkPart(const std::string& part, long long partLine, std::string& header) {
    for (;;) {
      std::string_view line;
      for (;;) {
        m_count += static_cast<long long>(m_in.skipLines(m_channelKeys, false, true));
        line = m_in.ReadRawLine();
        ++m_count;
        if (hasPrefix(line, "actor")) {
          header.assign(line);
          return true;
        }
        if (contains(line, "valueOpDeltaAdd")) break;
        if (contains(line, "targetGeom")) break;
      }
      if (contains(line, "valueOpDeltaAdd") && !contains(line, "targetGeom")) {
        addRemote(part);
        continue;
      }
      std::string internal = Mid(line, 14);
      m_in.ReadRawLine();
      std::string_view nameLine = m_in.ReadRawLine();
      m_count += 2;
      m_dial = Mid(nameLine, static_cast<long long>(InStr(nameLine, "name")) + 5);
      m_out.reorder.push_back(part + "*" + m_dial + "^" + StrInteger(partLine) + "@" + internal);
      for (;;) {
        m_count += static_cast<long long>(m_in.skipLines(m_interpKeys, false, true));
        ++m_count;
        if (contains(m_in.ReadRawLine(), "interpStyleLocked")) break;
      }
      std::string_view after = m_in.ReadRawLine();
      ++m_count;
      if (contains(after, "valueOpDeltaAdd")) return false;
      m_out.channels.push_back(part);
      m_out.channels.push_back("\t" + m_dial);
    }
  }

 private:
  void addRemote(const std::string& part) {
    std::string figure(m_in.ReadField());
    std::string masterPart(m_in.ReadField());
    std::string masterChannel(m_in.ReadField());
    std::string ratio(m_in.ReadField());
    m_count += 4;
    m_out.channels.insert(m_out.channels.end(),
                          {part, "\tEMC Channel", "\tSlave: " + m_dial, "\tMaster: " + masterChannel,
                           "\tFigure: " + figure, "\tMaster Part: " + masterPart, "\t" + ratio});
  }

  FigureScanner& m_in;
  ChannelScan& m_out;
  long long& m_count;
  std::string m_dial;
  Needles m_channelKeys{"actor", "valueOpDeltaAdd", "targetGeom"};
  Needles m_interpKeys{"interpStyleLocked"};
};

}  // namespace

ChannelScan scanChannels(FigureScanner& in, bool hair) {
  ChannelScan lists;
  Needles heads = hair ? Needles{"actor", "prop"} : Needles{"actor"};
  long long count = 0;
  std::string part;
  long long partLine = 0;
  std::string header;
  ChannelWalk walk(in, lists, count);
  bool trapped = false;
  std::string_view line;
  while (!trapped) {
    if (header.empty()) {
      count += static_cast<long long>(in.skipLines(heads, false, true));
      if (!in.rawLine(line)) break;
      ++count;
      if (hasPrefix(line, "actor")) {
        part = ActorName(line);
        partLine = count - 1;
      } else if (!(hair && hasPrefix(line, "prop"))) {
        continue;
      }
    } else {
      part = ActorName(header);
      partLine = count - 1;
    }
    header.clear();
    // Any fault inside a part, reading past the end above all, ends the listing.
    try {
      walk.walkPart(part, partLine, header);
    } catch (const RuntimeError&) {
      trapped = true;
    }
  }
  in.close();
  return lists;
}

std::string colourEntry(std::string_view line) {
  std::string rest = LTrim(Mid(line, static_cast<long long>(InStr(line, " ")) + 1));
  std::string entry;
  for (int i = 0; i < 3; ++i) {
    std::size_t blank = rest.find(' ');
    if (i > 0) entry += ' ';
    entry += StrDouble(Val(rest.substr(0, blank)) * 256);
    rest = blank == std::string::npos ? std::string() : LTrim(rest.substr(blank));
  }
  return LTrim(entry);
}

namespace {

enum class MatState { Props, ReadOne, MaterialTest, Done };

// The material listing as its states: props (collecting prop names), read one (the
// next field), material test (list the field's material).
class MaterialReader {
 public:
  MaterialReader(FigureScanner& in, const std::string& kind, bool kdTextOnly, MaterialScan& out)
      : m_kind(kind), m_propFile(kind == "hr2" || kind == "pp2"), m_kdTextOnly(kdTextOnly), m_in(in), m_out(out) {}

  void run() {
    MatState state = m_kind == "pz2" || m_kind == "fc2" ? MatState::MaterialTest : findStart();
    while (state != MatState::Done) {
      if (state == MatState::Props)
        state = props();
      else if (state == MatState::ReadOne)
        state = readOne();
      else
        state = materialTest();
    }
    m_in.close();
  }

 private:
  MatState findStart() {
    Needles start = m_propFile ? Needles{"figureResFile", "figure", "material"} : Needles{"figureResFile", "figure"};
    for (;;) {
      m_in.skipLines(start, true, false);
      m_field.assign(m_in.ReadField());
      if (contains(m_field, "figureResFile")) return m_propFile ? MatState::MaterialTest : MatState::Props;
      if (m_field == "figure") return MatState::ReadOne;
      if (m_propFile && hasPrefix(m_field, "material")) return MatState::MaterialTest;
    }
  }

  MatState props() {
    std::string_view view;
    m_in.skipLines(m_propKeys, true, false);
    if (!m_in.field(view)) return MatState::Done;
    if (hasPrefix(view, "prop")) m_propNames.push_back(Mid(view, 6));
    return view == "figure" ? MatState::ReadOne : MatState::Props;
  }

  MatState readOne() {
    std::string_view view;
    m_in.skipLines(m_materialKeys, true, false);
    if (!m_in.field(view)) return MatState::Props;
    m_field.assign(view);
    return MatState::MaterialTest;
  }

  MatState materialTest() {
    if (!hasPrefix(m_field, "material")) return MatState::ReadOne;
    std::string name = Mid(m_field, 10);
    if (name == "Preview") return MatState::ReadOne;
    if (std::find(m_propNames.begin(), m_propNames.end(), name) != m_propNames.end()) return MatState::Props;
    m_out.names.push_back(name);
    m_in.ReadField();
    std::string kd(m_in.ReadField());
    if (m_kdTextOnly) {
      m_out.colours.push_back(Mid(kd, 9));
      return MatState::ReadOne;
    }
    m_in.ReadField();
    std::string ks(m_in.ReadField());
    m_out.colours.push_back(colourEntry(kd));
    m_out.hiLites.push_back(colourEntry(ks));
    return MatState::ReadOne;
  }

  std::string m_kind;
  bool m_propFile;
  bool m_kdTextOnly;
  FigureScanner& m_in;
  MaterialScan& m_out;
  std::string m_field;
  std::vector<std::string> m_propNames;
  Needles m_propKeys{"prop", "figure"};
  Needles m_materialKeys{"material"};
};

}  // namespace

MaterialScan scanMaterials(FigureScanner& in, const std::string& kind, bool kdTextOnly) {
  MaterialScan out;
  MaterialReader(in, kind, kdTextOnly, out).run();
  return out;
}

namespace {

// The text behind "Geometries:", or from character 11 when the word is missing.
std::string behindGeometries(std::string_view field) {
  return Mid(field, static_cast<long long>(InStr(field, "Geometries:")) + 11);
}

// The main geometry of a figure, pose or scene: the first field that starts with
// "figure". A pose may have no figure section at all: its last field then stands for it.
void scanMainGeometry(FigureScanner& in, GeometryScan& out) {
  Needles keys{"figure", "geomCustom"};
  std::string field;
  std::string_view view;
  for (;;) {
    if (in.skipLines(keys, true, false) > 0) field.clear();
    if (!in.field(view)) break;
    field.assign(view);
    if (contains(field, "geomCustom")) out.customGeometry = true;
    if (hasPrefix(field, "figure")) break;
  }
  out.mainObj = behindGeometries(field);
  out.mainFound = true;
}

// The geometry of a hair or prop file: the third field after its first prop line.
void scanMainGeometryPropFile(FigureScanner& in, GeometryScan& out) {
  Needles keys{"prop"};
  for (;;) {
    in.skipLines(keys, true, false);
    if (hasPrefix(in.ReadField(), "prop")) break;
  }
  for (int i = 0; i < 2; ++i)
    if (contains(in.ReadField(), "geomCustom")) out.customGeometry = true;
  out.mainObj = behindGeometries(in.ReadField());
  out.mainFound = true;
}

// The props' geometry files, from the reader's position to the end of the file.
void scanProps(FigureScanner& in, const std::vector<std::string>& known, GeometryScan& out) {
  // An embedded mesh of any part, a body part's too, offers the export of the geometry.
  Needles props{"prop ", "geomCustom"};
  std::string_view view;
  std::string field;
  bool pending = false;  // `field` is still to be examined
  for (;;) {
    if (!pending) {
      in.skipLines(props, true, false);
      if (!in.field(view)) break;
      field.assign(view);
    }
    pending = false;
    if (contains(field, "geomCustom")) out.laterCustomGeometry = true;
    if (!hasPrefix(field, "prop ")) continue;
    std::string name = Mid(field, 6);
    if (contains(in.ReadField(), "geomCustom")) out.propCustomGeometry = true;
    field.assign(in.ReadField());
    if (contains(field, "geomCustom")) out.propCustomGeometry = true;
    if (contains(field, "name")) {
      pending = true;  // a definition: look at this field as it stands
      continue;
    }
    field.assign(in.ReadField());
    if (contains(field, "geomCustom")) out.propCustomGeometry = true;
    std::size_t at = InStr(field, "Geometries:");
    std::string value = at > 0 ? Mid(field, static_cast<long long>(at) + 11) : name + " Custom Geometry in CR2";
    if (listed(out.props, known, value)) {
      field.assign(in.ReadField());
      pending = true;
      continue;
    }
    out.props.push_back(value);
  }
}

}  // namespace

void scanGeometry(FigureScanner& in, bool propFile, const std::vector<std::string>& knownProps,
                  GeometryScan& out) {
  if (propFile)
    scanMainGeometryPropFile(in, out);
  else
    scanMainGeometry(in, out);
  scanProps(in, knownProps, out);
  in.close();
}

namespace {

// Up to the primary material; false when the file has none.
bool findPrimaryMaterial(FigureScanner& in, bool hair) {
  Needles keys = hair ? Needles{"material skin", "\tmaterial"} : Needles{"material skin"};
  std::string_view line;
  for (;;) {
    in.skipLines(keys, false, false);
    if (!in.rawLine(line)) return false;
    if (contains(line, "material skin")) return true;
    if (hair && hasPrefix(line, "\tmaterial")) return true;
  }
}

}  // namespace

void scanTextures(FigureScanner& in, bool hair, const std::vector<std::string>& knownMaps, TextureScan& out) {
  out.primaryFound = findPrimaryMaterial(in, hair);
  if (!out.primaryFound) {
    in.close();
    return;
  }
  std::string lastTexture;
  bool noMoreTextures = false;
  Needles keys{"Map"};  // every map keyword ends so
  std::string_view view;
  for (;;) {
    in.skipLines(keys, true, false);
    if (!in.field(view)) break;
    std::string field(view);
    if (contains(field, "transparencyMap")) out.transparency = Mid(field, 17);
    if (contains(field, "reflectionMap")) out.reflection = Mid(field, 14);
    if (contains(field, "bumpMap")) out.bump = Mid(field, 8);
    if (!contains(field, "textureMap") || noMoreTextures) continue;
    if (field == "textureMap" && contains(in.ReadField(), "textureMap")) {
      noMoreTextures = true;
      continue;
    }
    std::string value = Mid(field, 12);
    if (!listed(out.newMaps, knownMaps, value)) out.newMaps.push_back(value);
    lastTexture = field;
  }
  in.close();
  std::size_t quote = InStr(lastTexture, "\"");
  out.texture = quote > 0 ? Mid(lastTexture, static_cast<long long>(quote)) : Mid(lastTexture, 12);
  if (contains(out.texture, "tringRes")) out.texture = "Default P4 Map";
}

}  // namespace tolvane::text
