#include "figure_plan.h"

#include <algorithm>
#include <stdexcept>

namespace tolvane::gen {

namespace {

// One side of the figure, written for the left (positive x); the right side mirrors it.
struct SidePart {
  const char* name;
  const char* parent;  // "" for the trunk part given per side below
  int leftRes;
  int rightRes;
  Vec center;
  Vec half;
};

const SidePart kArm[] = {
    {"Collar", "chest", 19, 20, {35000, 560000, 0}, {30000, 12000, 20000}},
    {"Shldr", "Collar", 13, 16, {110000, 560000, 0}, {45000, 18000, 18000}},
    {"ForeArm", "Shldr", 14, 17, {195000, 560000, 0}, {40000, 15000, 15000}},
    {"Hand", "ForeArm", 15, 18, {255000, 560000, 0}, {20000, 6000, 15000}},
};

const SidePart kLeg[] = {
    {"Thigh", "hip", 7, 10, {45000, 300000, 0}, {32000, 70000, 32000}},
    {"Shin", "Thigh", 8, 11, {45000, 160000, 0}, {25000, 70000, 25000}},
    {"Foot", "Shin", 9, 12, {45000, 35000, 15000}, {22000, 20000, 40000}},
    {"Toe", "Foot", 52, 53, {45000, 10000, 70000}, {22000, 10000, 15000}},
};

struct Finger {
  const char* name;
  int leftRes;  // number of segment 1 in the body table
  int rightRes;
  std::int64_t z;
};

const Finger kFingers[] = {
    {"Thumb", 46, 49, 22000}, {"Index", 40, 43, 10000},  {"Mid", 34, 37, 3000},
    {"Ring", 28, 31, -4000},  {"Pinky", 22, 25, -11000},
};

std::string sided(char side, const char* parent) {
  std::string p = parent;
  if (p == "chest" || p == "hip") return p;
  return std::string(1, side) + p;
}

void addSide(std::vector<Part>& parts, char side, const SidePart* table, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) {
    const SidePart& s = table[i];
    Vec c = s.center;
    if (side == 'r') c[0] = -c[0];
    parts.push_back({std::string(1, side) + s.name, sided(side, s.parent),
                     side == 'l' ? s.leftRes : s.rightRes, c, s.half});
  }
}

void addFingers(std::vector<Part>& parts, char side) {
  for (const Finger& f : kFingers) {
    bool thumb = std::string(f.name) == "Thumb";
    for (int seg = 1; seg <= 3; ++seg) {
      std::int64_t x = thumb ? 262000 + 10000 * seg : 270000 + 13000 * seg;
      Vec c{side == 'r' ? -x : x, thumb ? 556000 : 560000, f.z};
      Vec h{thumb ? 5000 : 7000 - 1000 * (seg - 1), 4000, 3000};
      std::string name = std::string(1, side) + f.name + std::to_string(seg);
      std::string parent =
          seg == 1 ? std::string(1, side) + "Hand" : std::string(1, side) + f.name + std::to_string(seg - 1);
      int res = (side == 'l' ? f.leftRes : f.rightRes) + seg - 1;
      parts.push_back({name, parent, res, c, h});
    }
  }
}

}  // namespace

std::vector<Part> humanParts() {
  std::vector<Part> parts = {
      {"hip", "BODY", 6, {0, 400000, 0}, {60000, 30000, 40000}},
      {"abdomen", "hip", 5, {0, 455000, 0}, {55000, 25000, 38000}},
      {"chest", "abdomen", 4, {0, 525000, 0}, {65000, 45000, 42000}},
      {"neck", "chest", 3, {0, 590000, 0}, {18000, 20000, 18000}},
      {"head", "neck", 2, {0, 645000, 5000}, {38000, 45000, 42000}},
  };
  for (char side : {'l', 'r'}) {
    addSide(parts, side, kArm, 4);
    addFingers(parts, side);
  }
  for (char side : {'l', 'r'}) addSide(parts, side, kLeg, 4);
  return parts;
}

std::vector<Part> extraParts(int count) {
  std::vector<Part> named = {
      {"jaw", "head", 21, {0, 625000, 15000}, {25000, 12000, 20000}},
      {"lEye", "head", 101, {14000, 655000, 38000}, {6000, 6000, 6000}},
      {"rEye", "head", 102, {-14000, 655000, 38000}, {6000, 6000, 6000}},
      {"tongue1", "jaw", 0, {0, 622000, 22000}, {8000, 3000, 6000}},
      {"tongue2", "tongue1", 0, {0, 622000, 28000}, {7000, 3000, 5000}},
      {"tongue3", "tongue2", 0, {0, 622000, 33000}, {6000, 3000, 4000}},
      {"lBreast", "chest", 0, {30000, 520000, 40000}, {25000, 25000, 15000}},
      {"rBreast", "chest", 0, {-30000, 520000, 40000}, {25000, 25000, 15000}},
      {"lEar", "head", 0, {40000, 650000, 0}, {4000, 12000, 8000}},
      {"rEar", "head", 0, {-40000, 650000, 0}, {4000, 12000, 8000}},
      {"upperLip", "head", 0, {0, 632000, 45000}, {12000, 3000, 3000}},
      {"lowerLip", "jaw", 0, {0, 626000, 44000}, {12000, 3000, 3000}},
  };
  std::vector<Part> parts;
  for (int i = 0; i < count; ++i) {
    if (i < static_cast<int>(named.size())) {
      parts.push_back(named[static_cast<std::size_t>(i)]);
      continue;
    }
    // Toes of the large figures: small boxes in a row in front of each foot.
    int k = i - static_cast<int>(named.size());
    char side = k % 2 == 0 ? 'l' : 'r';
    int toe = k / 2 + 1;
    std::int64_t x = 30000 + 6000 * (toe % 6);
    parts.push_back({std::string(1, side) + "SmallToe" + std::to_string(toe),
                     std::string(1, side) + "Toe",
                     0,
                     {side == 'l' ? x : -x, 8000, 90000 + 2000 * (toe / 6)},
                     {2500, 2500, 4000}});
  }
  return parts;
}

int partIndex(const Figure& figure, const std::string& name) {
  for (std::size_t i = 0; i < figure.parts.size(); ++i)
    if (figure.parts[i].name == name) return static_cast<int>(i);
  throw std::logic_error("no part " + name);
}

namespace {

void addMorph(Figure& f, const std::string& part, const std::string& id, const std::string& dial, int deltas,
              std::vector<Control> controls = {}) {
  Morph m;
  m.part = partIndex(f, part);
  m.id = id;
  m.dialName = dial;
  m.deltas = deltas;
  m.vertices = part == "head" ? 24 : 8;  // the head's box carries the eye, lash and brow quads
  m.seed = f.morphs.size() + 11;
  m.controls = std::move(controls);
  f.morphs.push_back(std::move(m));
}

std::vector<Material> avaMaterials() {
  const std::string tex = ":Runtime:textures:Tolvane:";
  std::vector<Material> m(7);
  m[0].name = "skin";
  m[0].textureMap = tex + "ava_skin.bmp";
  m[0].bumpMap = tex + "ava_bump.bmp";
  m[0].bumpStrength = "0.4";
  m[1].name = "lips";
  m[1].kd = "0.8 0.35 0.4 1";
  m[1].ks = "0.4 0.3 0.3 1";
  m[1].ns = "45";
  m[1].textureMap = "\"" + tex + "ava_lips.bmp\"";
  m[2].name = "eyes";
  m[2].kd = "0.9 0.9 0.95 1";
  m[2].ks = "1 1 1 1";
  m[2].ns = "80";
  m[2].textureMap = "\"" + tex + "ava_eyes.bmp\"";
  m[2].textureOnNextLine = true;
  m[2].reflectionMap = tex + "ava_reflect.bmp";
  m[2].reflectionStrength = "0.5";
  m[3].name = "lashes";
  m[3].kd = "0.1 0.08 0.06 1";
  m[3].ks = "0 0 0 1";
  m[3].tMax = "1";
  m[3].transparencyMap = tex + "ava_lashes_tr.bmp";
  m[4].name = "brows";
  m[4].kd = "0.25 0.18 0.1 1";
  m[4].ks = "0.0392157 0.0392157 0.0392157 1";
  m[4].textureMap = "GetStringRes(1029,53)";
  m[5].name = "nails";
  m[5].kd = "0.95 0.8 0.8 1";
  m[5].ks = "0.6 0.6 0.6 1";
  m[5].ns = "60";
  m[6].name = "gold";
  m[6].kd = "0.85 0.65 0.2 1";
  m[6].ks = "1 0.9 0.5 1";
  m[6].ns = "90";
  m[6].reflectionMap = "\"" + tex + "ava_reflect.bmp\"";
  return m;
}

}  // namespace

Figure avaFigure() {
  Figure f;
  f.objFile = ":Runtime:Geometries:Tolvane:ava.obj";
  f.parts = humanParts();
  f.props = {
      {"Earrings", "head", ":Runtime:Geometries:Tolvane:earrings.obj", {0, 640000, 0}, {42000, 6000, 4000}},
      {"Bangle", "lHand", "", {240000, 560000, 0}, {4000, 12000, 12000}},
  };
  f.materials = avaMaterials();
  f.bodyDials = {{"Heavy", "Heavy"}, {"Expression", "Expression"}};
  const Control heavy{"Figure 1", "BODY", "Heavy", "1.000000"};
  addMorph(f, "hip", "Heavy", "Heavy", 6, {heavy});
  addMorph(f, "abdomen", "Heavy", "Heavy", 6, {heavy});
  addMorph(f, "chest", "breastSize", "GetStringRes(1028,43)", 4);
  addMorph(f, "chest", "Heavy", "Heavy", 6, {heavy});
  addMorph(f, "head", "Smile", "Smile", 5);
  addMorph(f, "head", "Frown", "Frown", 5);
  addMorph(f, "head", "BrowUp", "BrowUp", 3);
  addMorph(f, "head", "Blink", "Blink", 4);
  addMorph(f, "head", "MouthO", "Mouth O", 4);
  addMorph(f, "head", "Grin", "Grin", 5, {{"Figure 1", "BODY", "Expression", "1.000000"}});
  addMorph(f, "lShldr", "JCMlShldrBend", "JCMlShldrBend", 4, {{"Figure 1", "lShldr", "bend", "0.010000"}});
  for (const char* side : {"l", "r"}) {
    std::string hand = std::string(side) + "Hand";
    addMorph(f, hand, "grasp", "GetStringRes(1028,48)", 6);
    addMorph(f, hand, "thumbGrasp", "GetStringRes(1028,49)", 4);
    addMorph(f, hand, "spread", "GetStringRes(1028,50)", 4);
  }
  addMorph(f, "lThigh", "ThighSlim", "ThighSlim", 6);
  addMorph(f, "lThigh", "Heavy", "Heavy", 6, {heavy});
  addMorph(f, "rThigh", "ThighSlim", "ThighSlim", 6);
  addMorph(f, "rThigh", "Heavy", "Heavy", 6, {heavy});
  f.chains = {{"lLeg", "lThigh", "lShin", "lFoot"}, {"rLeg", "rThigh", "rShin", "rFoot"}};
  return f;
}

Figure largeFigure(int actors, int morphs, int props, int materials) {
  Figure f;
  f.objFile = ":Runtime:Geometries:Tolvane:large.obj";
  f.parts = humanParts();
  int extra = actors - static_cast<int>(f.parts.size());
  if (extra > 0) {
    auto more = extraParts(extra);
    f.parts.insert(f.parts.end(), more.begin(), more.end());
  }
  for (int i = 0; i < props; ++i) {
    std::string name = "Prop" + std::to_string(i + 1);
    bool external = i % 2 == 0;
    const Part& holder = f.parts[static_cast<std::size_t>(i * 7) % f.parts.size()];
    f.props.push_back({name,
                       holder.name,
                       external ? ":Runtime:Geometries:Tolvane:" + name + ".obj" : "",
                       holder.center,
                       {5000, 5000, 5000}});
  }
  f.materials = avaMaterials();
  const char* more[] = {"teeth", "tongue", "gums", "iris", "cornea", "toenails", "hair", "brass"};
  for (int i = 0; static_cast<int>(f.materials.size()) < materials; ++i) {
    Material m;
    m.name = i < 8 ? more[i] : "material" + std::to_string(i + 1);
    m.kd = "0." + std::to_string(30 + i * 7 % 60) + " 0.5 0.6 1";
    f.materials.push_back(std::move(m));
  }
  f.materials.resize(static_cast<std::size_t>(std::max(materials, 1)));
  const int masters = 20;
  for (int k = 0; k < masters; ++k)
    f.bodyDials.push_back({"Master" + std::to_string(k), "Master " + std::to_string(k)});
  int partCount = static_cast<int>(f.parts.size());
  for (int i = 0; i < morphs; ++i) {
    Morph m;
    m.part = i % partCount;
    m.id = f.parts[static_cast<std::size_t>(m.part)].name + "_M" + std::to_string(i / partCount + 1);
    m.dialName = i % 7 == 3 ? "GetStringRes(1028," + std::to_string(i % 53 + 1) + ")" : m.id;
    m.amplitude = 5000;
    m.seed = static_cast<std::uint64_t>(i) + 101;
    if (i % 10 == 9)
      m.controls.push_back({"Figure 1", "BODY", "Master" + std::to_string(i % masters), "1.000000"});
    f.morphs.push_back(std::move(m));
  }
  f.chains = {{"lLeg", "lThigh", "lShin", "lFoot"}, {"rLeg", "rThigh", "rShin", "rFoot"}};
  return f;
}

Pose wavePose() {
  return {
      {"rCollar", {0, -10, 0}}, {"rShldr", {15, -80, 10}}, {"rForeArm", {-20, -45, 30}},
      {"rHand", {25, 0, -10}},  {"lShldr", {0, 70, 0}},    {"lForeArm", {0, 10, 0}},
      {"head", {12, 6, -5}},    {"neck", {5, 0, 0}},       {"chest", {-4, 2, 0}},
  };
}

}  // namespace tolvane::gen
