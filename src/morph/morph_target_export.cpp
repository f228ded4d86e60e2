#include "morph/morph_target_export.h"

#include <unordered_set>
#include <vector>

#include "morph/morph_common.h"
#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/obj_text.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "ui/services.h"

namespace tolvane::morph {

using text::contains;
using text::hasPrefix;
using text::InStr;
using text::Left;
using text::Mid;

namespace {

std::vector<std::string> words(std::string_view line) {
  std::vector<std::string> out;
  std::size_t at = 0;
  while (at < line.size()) {
    std::size_t blank = line.find(' ', at);
    if (blank == std::string_view::npos) blank = line.size();
    if (blank > at) out.emplace_back(line.substr(at, blank - at));
    at = blank + 1;
  }
  return out;
}

std::string field(text::LineReader& in) {
  std::string f;
  if (!in.readField(f)) text::raiseError(text::kInputPastEndOfFile, in.path().string());
  return f;
}

// The vertex numbers the group's faces use, in order of first use. The field loop
// stops at the next group line or at the end of the file.
std::vector<long long> groupVertices(Program& program, const std::filesystem::path& obj,
                                     const std::string& part) {
  text::LineReader in(obj);
  Pacer pacer(program);
  std::string f;
  do {
    f = field(in);
    pacer.tick();
  } while (!(hasPrefix(f, "g") && contains(f, part)));
  std::vector<long long> vertices;
  std::unordered_set<long long> listed;
  while (in.readField(f) && !hasPrefix(f, "g")) {
    pacer.tick();
    if (!hasPrefix(f, "f ") && !hasPrefix(f, "fo")) continue;
    std::vector<std::string> corners = words(f);
    for (std::size_t i = 1; i < corners.size(); ++i) {
      std::size_t slash = InStr(corners[i], "/");
      auto number = static_cast<long long>(
          text::Val(slash > 0 ? Left(corners[i], static_cast<long long>(slash) - 1) : corners[i]));
      if (listed.insert(number).second) vertices.push_back(number);
    }
  }
  return vertices;
}

// "\Extract.obj": the morph's delta lines without their "d ".
void extractDeltas(Program& program, const std::string& morph, const std::filesystem::path& extract) {
  text::StreamRewrite out(extract, true);
  text::LineReader in(text::nativePath(program.opening.LabelChannelFileNameForEditor.caption()));
  Pacer pacer(program);
  const std::string header = "targetGeom " + morph;
  while (field(in) != header) pacer.tick();
  while (field(in) != "deltas") pacer.tick();
  field(in);  // the brace
  std::string f;
  while (in.readField(f) && hasPrefix(f, "d")) out.WriteLine(Mid(f, 3));
  out.close();
}

// The three numbers of a vertex or delta text, each as a plain decimal's value.
void addNumbers(const std::vector<std::string>& fields, std::size_t first, double sum[3]) {
  for (int i = 0; i < 3; ++i) {
    std::size_t at = first + static_cast<std::size_t>(i);
    if (at < fields.size()) sum[i] += text::Val(plainDecimal(fields[at]));
  }
}

std::string numberText(double value) { return plainDecimal(text::Trim(text::StrDouble(value))); }

struct Mesh {
  std::vector<std::string> vertices;  // the text of each "v " line, by vertex number
  std::vector<std::string> textures;
};

Mesh readMesh(Program& program, const std::filesystem::path& obj) {
  Mesh mesh;
  text::LineReader in(obj);
  Pacer pacer(program);
  std::string raw, scratch;
  while (in.readRawLine(raw)) {
    pacer.tick();
    std::string_view line;
    auto kind = text::normaliseObjLine(raw, scratch, line);
    if (kind == text::ObjLineKind::Vertex) mesh.vertices.emplace_back(line);
    if (kind == text::ObjLineKind::TextureVertex) mesh.textures.emplace_back(line);
  }
  return mesh;
}

void applyDeltas(const std::filesystem::path& extract, const std::vector<long long>& group, Mesh& mesh) {
  text::LineReader in(extract);
  std::string line;
  while (in.readRawLine(line)) {
    std::size_t blank = InStr(line, " ");
    auto index =
        static_cast<long long>(text::Val(blank > 0 ? Left(line, static_cast<long long>(blank) - 1) : line));
    if (index < 0 || index >= static_cast<long long>(group.size()))
      throw text::RuntimeError(text::kSubscriptOutOfRange, "Subscript out of range",
                               "Delta index " + std::to_string(index) + " is past the " +
                                   std::to_string(group.size()) + " vertices of the group");
    long long vertex = group[static_cast<std::size_t>(index)];
    if (vertex < 1 || vertex > static_cast<long long>(mesh.vertices.size()))
      throw text::RuntimeError(text::kSubscriptOutOfRange, "Subscript out of range",
                               "Vertex " + std::to_string(vertex) + " is not in the OBJ");
    std::string& v = mesh.vertices[static_cast<std::size_t>(vertex - 1)];
    double sum[3] = {0, 0, 0};
    addNumbers(words(v), 1, sum);
    addNumbers(words(line), 1, sum);
    v = "v " + numberText(sum[0]) + " " + numberText(sum[1]) + " " + numberText(sum[2]);
  }
}

// The morphed vertices, the texture vertices and the rest of the OBJ in its order.
void writeResult(Program& program, const std::filesystem::path& obj, const Mesh& mesh) {
  text::StreamRewrite out(program.workFile("\\NewMor.obj"), true);
  for (const auto& v : mesh.vertices) out.WriteLine(v);
  for (const auto& vt : mesh.textures) out.WriteLine(vt);
  text::LineReader in(obj);
  Pacer pacer(program);
  std::string raw, scratch;
  while (in.readRawLine(raw)) {
    pacer.tick();
    std::string_view line;
    auto kind = text::normaliseObjLine(raw, scratch, line);
    if (kind != text::ObjLineKind::Vertex && kind != text::ObjLineKind::TextureVertex) out.WriteLine(raw);
  }
  out.close();
}

}  // namespace

std::string plainDecimal(std::string_view number) {
  std::string t = text::LCase(number);
  std::size_t e = t.find('e');
  if (e == std::string::npos) return t;
  long long exponent = static_cast<long long>(text::Val(t.substr(e + 1)));
  std::string mantissa = text::Trim(t.substr(0, e));
  std::string sign;
  if (!mantissa.empty() && (mantissa[0] == '-' || mantissa[0] == '+')) {
    if (mantissa[0] == '-') sign = "-";
    mantissa.erase(0, 1);
  }
  std::size_t point = mantissa.find('.');
  std::string digits = mantissa;
  long long before = static_cast<long long>(mantissa.size());
  if (point != std::string::npos) {
    digits.erase(point, 1);
    before = static_cast<long long>(point);
  }
  // A text of no sensible size (a corrupt file) keeps its exponent rather than become
  // millions of zeros.
  if (exponent > 400 || exponent < -400) return t;
  long long at = before + exponent;
  std::string out;
  if (at <= 0)
    out = "0." + std::string(static_cast<std::size_t>(-at), '0') + digits;
  else if (at >= static_cast<long long>(digits.size()))
    out = digits + std::string(static_cast<std::size_t>(at - static_cast<long long>(digits.size())), '0');
  else
    out = digits.substr(0, static_cast<std::size_t>(at)) + "." + digits.substr(static_cast<std::size_t>(at));
  return sign + out;
}

void ExportMorphTarget(Program& program) {
  auto& f = program.opening;
  const std::string head = f.ListChannels.listCount() > 0 ? f.ListChannels.list(0) : std::string();
  if (contains(head, "ALL")) {
    ui::msgBox(program.services, "Choose a bodypart first!", "Error!");
    return;
  }
  // "Channels for  hip:1" names the group "hip".
  std::size_t colon = InStr(head, ":");
  std::string part = text::Trim(colon > 0 ? Left(head, static_cast<long long>(colon) - 1) : head);
  if (hasPrefix(part, "Channels for")) part = text::Trim(Mid(part, 13));
  const auto obj = text::nativePath(f.LabelOBJFileName.caption());
  program.setBusy(true);
  std::vector<long long> group = groupVertices(program, obj, part);
  program.setBusy(false);
  const std::string line = f.ListChannels.listIndex() > 0 ? f.ListChannels.text() : std::string();
  if (line.empty()) {
    ui::msgBox(program.services, "Select a morph before right clicking!", "Error!");
    return;
  }
  program.setBusy(true);
  const auto extract = program.workFile("\\Extract.obj");
  extractDeltas(program, Mid(line, 2), extract);
  text::deleteIgnoringErrors(program.workFile("\\NewMor.obj"));
  Mesh mesh = readMesh(program, obj);
  applyDeltas(extract, group, mesh);
  writeResult(program, obj, mesh);
  program.setBusy(false);
}

}  // namespace tolvane::morph
