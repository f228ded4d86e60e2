#include "figure_writer.h"

#include <algorithm>

#include "geometry.h"

namespace tolvane::gen {

namespace {

std::string partName(const Part& part) {
  return part.stringRes > 0 ? "GetStringRes(1024," + std::to_string(part.stringRes) + ")" : part.name;
}

int deltaCount(const Sink& out, const Morph& morph, DeltaBudget* budget) {
  if (budget == nullptr) return morph.deltas;
  std::uint64_t need = budget->targetBytes > out.bytes() ? budget->targetBytes - out.bytes() : 0;
  std::uint64_t average = budget->deltaLines > 0 ? budget->deltaBytes / budget->deltaLines : 40;
  auto left = static_cast<std::uint64_t>(std::max(budget->morphsLeft, 1));
  std::uint64_t lines = (need + left * average - 1) / (left * average);
  --budget->morphsLeft;
  return static_cast<int>(std::max<std::uint64_t>(lines, 1));
}

std::int64_t deltaValue(Random& random, std::int64_t amplitude) {
  if (random.next() % 16 == 0) return random.between(-99, 99);  // a tiny value, written with an exponent
  return random.between(-amplitude, amplitude);
}

void writeDeltas(Sink& out, const Morph& morph, DeltaBudget* budget) {
  int count = deltaCount(out, morph, budget);
  int vertices = budget != nullptr ? 2 * count : morph.vertices;
  count = std::min(count, vertices);
  out.line(3, "indexes " + std::to_string(vertices));
  out.line(3, "numbDeltas " + std::to_string(count));
  out.line(3, "deltas");
  out.line(4, "{");
  Random random(morph.seed);
  bool spread = vertices >= 2 * count;
  std::uint64_t before = out.bytes();
  char text[96];
  for (int k = 0; k < count; ++k) {
    auto index = static_cast<std::uint64_t>(spread ? 2 * k + static_cast<int>(random.next() & 1) : k);
    std::size_t n = 0;
    text[n++] = 'd';
    text[n++] = ' ';
    n += appendInteger(text + n, index);
    for (int axis = 0; axis < 3; ++axis) {
      text[n++] = ' ';
      n += appendDelta(text + n, deltaValue(random, morph.amplitude));
    }
    out.line(4, std::string_view(text, n));
  }
  if (budget != nullptr) {
    budget->deltaBytes += out.bytes() - before;
    budget->deltaLines += static_cast<std::uint64_t>(count);
  }
  out.line(4, "}");
}

Channel rotation(const std::string& word, const std::string& id, int res, int key, const char* min,
                 const char* max) {
  Channel c;
  c.word = word;
  c.id = id;
  c.name = "GetStringRes(1028," + std::to_string(res) + ")";
  c.forceLimits = "1";
  c.min = min;
  c.max = max;
  c.trackingScale = "1";
  c.key = std::to_string(key);
  return c;
}

Channel translation(const std::string& word, const std::string& id, int res, bool hidden) {
  Channel c;
  c.word = word;
  c.id = id;
  c.name = "GetStringRes(1028," + std::to_string(res) + ")";
  c.hidden = hidden ? "1" : "0";
  c.trackingScale = "0.004";
  return c;
}

std::vector<Channel> jointChannels(const Part& part, int n) {
  std::vector<Channel> joints(3);
  const char* words[] = {"twistY", "jointX", "jointZ"};
  const char* ids[] = {"_twisty", "_jointx", "_jointz"};
  for (int i = 0; i < 3; ++i) {
    Channel& c = joints[static_cast<std::size_t>(i)];
    c.word = words[i];
    c.id = part.name + ids[i];
    c.name = c.id;
    c.hidden = "1";
    c.trackingScale = "1";
    const Vec& m = part.center;
    if (i == 0) {
      c.after = {"startPt " + triple(m[0], m[1] - part.half[1], m[2]),
                 "endPt " + triple(m[0], m[1] + part.half[1], m[2]), "calcWeights 1"};
    } else {
      c.after = {"otherActor " + suffix(part.parent, n), "matrixActor NULL",
                 "center " + triple(m[0], m[1], m[2]), "angles -110 -90 90 110", "calcWeights 1"};
    }
  }
  return joints;
}

void writeDeclarations(Sink& out, const Figure& figure, int n) {
  out.line(0, "actor " + suffix("BODY", n));
  out.line(1, "{");
  out.line(1, "");
  out.line(1, "}");
  for (const Part& part : figure.parts) {
    out.line(0, "actor " + suffix(part.name, n));
    out.line(1, "{");
    out.line(1, "storageOffset 0 0 0");
    out.line(1, "geomHandlerGeom 13 " + part.name);
    out.line(1, "}");
  }
  for (const Prop& prop : figure.props) {
    out.line(0, "prop " + suffix(prop.name, n));
    out.line(1, "{");
    if (prop.objFile.empty()) {
      out.line(1, "storageOffset 0 0 0");
      writeGeomCustom(out, 1, prop.center, prop.half, prop.name, "gold");
    } else {
      out.line(1, "storageOffset 0 0.3487 0");
      out.line(1, "objFileGeom 0 0 " + prop.objFile);
    }
    out.line(1, "}");
  }
}

void writeFlags(Sink& out, const std::string& name, const std::string& parent) {
  out.line(1, "name " + name);
  for (const char* flag :
       {"on", "bend 1", "dynamicsLock 1", "hidden 0", "addToMenu 1", "castsShadow 1", "includeInDepthCue 1"})
    out.line(1, flag);
  out.line(1, "parent " + parent);
}

void writeTail(Sink& out, const Vec& center, const Vec& half) {
  out.line(1, "endPoint " + triple(center[0], center[1] + half[1], center[2]));
  out.line(1, "origin " + triple(center[0], center[1], center[2]));
  out.line(1, "orientation 0 0 0");
  out.line(1, "displayOrigin 0");
  out.line(1, "displayMode USEPARENT");
  out.line(1, "locked 0");
  out.line(1, "}");
}

void writeChannels(Sink& out, const std::vector<Channel>& channels, int n, DeltaBudget* budget) {
  out.line(1, "channels");
  out.line(2, "{");
  for (const Channel& c : channels) writeChannel(out, c, n, budget);
  out.line(2, "}");
}

std::vector<Channel> partChannels(const Figure& figure, std::size_t index, const RunOptions& options) {
  std::vector<Channel> channels;
  const Part& part = figure.parts[index];
  for (const Morph& morph : figure.morphs) {
    if (morph.part != static_cast<int>(index)) continue;
    Channel c;
    c.word = "targetGeom";
    c.id = morph.id;
    c.name = morph.dialName;
    c.controls = morph.controls;
    c.morph = &morph;
    channels.push_back(std::move(c));
  }
  if (part.parent != "BODY") {
    auto joints = jointChannels(part, options.figureNumber);
    channels.insert(channels.end(), joints.begin(), joints.end());
  }
  auto motion = motionChannels(false, part.name, options.pose);
  channels.insert(channels.end(), motion.begin(), motion.end());
  return channels;
}

void writeDefinitions(Sink& out, const Figure& figure, const RunOptions& options) {
  int n = options.figureNumber;
  out.line(0, "actor " + suffix("BODY", n));
  out.line(1, "{");
  out.line(0, "");
  writeFlags(out, "GetStringRes(1024,1)", "UNIVERSE");
  std::vector<Channel> body;
  for (const ValueParm& dial : figure.bodyDials) {
    Channel c;
    c.word = "valueParm";
    c.id = dial.id;
    c.name = dial.dialName;
    c.trackingScale = "0.004";
    body.push_back(std::move(c));
  }
  auto motion = motionChannels(true, "BODY", options.pose);
  body.insert(body.end(), motion.begin(), motion.end());
  writeChannels(out, body, n, options.budget);
  writeTail(out, Vec{0, 0, 0}, Vec{0, 0, 0});
  for (std::size_t i = 0; i < figure.parts.size(); ++i) {
    const Part& part = figure.parts[i];
    out.line(0, "actor " + suffix(part.name, n));
    out.line(1, "{");
    out.line(0, "");
    writeFlags(out, partName(part), suffix(part.parent, n));
    writeChannels(out, partChannels(figure, i, options), n, options.budget);
    writeTail(out, part.center, part.half);
  }
  for (const Prop& prop : figure.props) {
    out.line(0, "prop " + suffix(prop.name, n));
    out.line(1, "{");
    writeFlags(out, prop.name, suffix(prop.parent, n));
    writeChannels(out, motionChannels(false, prop.name, nullptr), n, nullptr);
    writeTail(out, prop.center, prop.half);
  }
}

void writeChain(Sink& out, const std::array<std::string, 4>& chain, int n) {
  out.line(1, "inkyChain " + chain[0]);
  out.line(2, "{");
  out.line(2, "on 0");
  out.line(2, "name " + chain[0]);
  for (int i = 1; i <= 3; ++i) out.line(2, "addLink " + suffix(chain[static_cast<std::size_t>(i)], n));
  out.line(2, "goal " + suffix(chain[3], n));
  for (int i = 0; i < 3; ++i) out.line(2, "linkWeight " + std::to_string(i) + " 0.5");
  out.line(2, "}");
}

void writeFigureSection(Sink& out, const Figure& figure, int n) {
  out.line(0, "figure");
  out.line(1, "{");
  out.line(1, "name    Figure " + std::to_string(n));
  out.line(1, "root " + suffix("BODY", n));
  out.line(1, "displayOn 1");
  for (const Part& part : figure.parts) {
    out.line(1, "addChild    " + suffix(part.name, n));
    out.line(2, suffix(part.parent, n));
  }
  for (const Part& part : figure.parts) {
    if (part.parent == "BODY") continue;
    out.line(1, "weld    " + suffix(part.name, n));
    out.line(2, suffix(part.parent, n));
  }
  for (const auto& chain : figure.chains) writeChain(out, chain, n);
  out.line(1, "defaultPick " + suffix(figure.parts.front().name, n));
  out.line(1, "allowsBending 1");
  out.line(1, "figureType 0");
  out.line(1, "origFigureType 0");
  out.line(1, "canonType 4");
  out.line(1, "conforming 1");
  for (const Material& material : figure.materials) writeMaterial(out, material, 1);
  writeMaterial(out, previewMaterial(), 1);
  out.line(1, "presetMaterial " + figure.materials.front().name);
  out.line(1, "displayMode USEPARENT");
  out.line(1, "}");
}

}  // namespace

void writeHead(Sink& out) {
  out.line(0, "{");
  out.empty();
  out.line(0, "version");
  out.line(1, "{");
  out.line(1, "number 4.01");
  out.line(1, "}");
}

void writeFigureRun(Sink& out, const Figure& figure, const RunOptions& options) {
  out.line(0, "figureResFile " + figure.objFile);
  writeDeclarations(out, figure, options.figureNumber);
  writeDefinitions(out, figure, options);
  out.line(0, "figureResFile " + figure.objFile);
  writeFigureSection(out, figure, options.figureNumber);
}

void writeChannel(Sink& out, const Channel& c, int n, DeltaBudget* budget) {
  out.line(2, c.word + " " + c.id);
  out.line(3, "{");
  out.line(3, "name " + c.name);
  out.line(3, "initValue " + c.initValue);
  out.line(3, "hidden " + c.hidden);
  out.line(3, "forceLimits " + c.forceLimits);
  out.line(3, "min " + c.min);
  out.line(3, "max " + c.max);
  out.line(3, "trackingScale " + c.trackingScale);
  out.line(3, "keys");
  out.line(4, "{");
  out.line(4, "static 0");
  out.line(4, "k 0 " + c.key);
  out.line(4, "}");
  out.line(3, "interpStyleLocked 0");
  for (const Control& control : c.controls) {
    out.line(3, "valueOpDeltaAdd");
    // A second figure of a scene drives its own channels.
    out.line(3, control.figure == "Figure 1" ? "Figure " + std::to_string(n) : control.figure);
    out.line(3, suffix(control.part, n));
    out.line(3, control.dial);
    out.line(3, "deltaAddDelta " + control.ratio);
  }
  for (const std::string& field : c.after) out.line(3, field);
  if (c.morph != nullptr) writeDeltas(out, *c.morph, budget);
  out.line(3, "}");
}

void writePoseChannel(Sink& out, const std::string& header, const std::string& value) {
  out.line(2, header);
  out.line(3, "{");
  out.line(3, "keys");
  out.line(4, "{");
  out.line(4, "static 0");
  out.line(4, "k 0 " + value);
  out.line(4, "}");
  out.line(3, "}");
}

std::vector<Channel> motionChannels(bool body, const std::string& part, const Pose* pose) {
  std::array<int, 3> angles{0, 0, 0};
  if (pose != nullptr) {
    auto it = pose->find(part);
    if (it != pose->end()) angles = it->second;
  }
  Channel scale;
  scale.word = "scale";
  scale.id = "scale";
  scale.name = "GetStringRes(1028,5)";
  scale.initValue = "1";
  scale.min = "0";
  scale.trackingScale = "0.005";
  scale.key = "1";
  std::vector<Channel> channels{scale};
  if (body) {
    channels.push_back(rotation("rotateY", "yrot", 10, 0, "-100000", "100000"));
    channels.push_back(rotation("rotateZ", "zrot", 11, 0, "-100000", "100000"));
    channels.push_back(rotation("rotateX", "xrot", 9, 0, "-100000", "100000"));
  } else {
    bool elbow = part == "lForeArm" || part == "rForeArm";
    channels.push_back(rotation("rotateY", "twist", 2, angles[0], "-45", "45"));
    channels.push_back(rotation("rotateZ", "side", 3, angles[1], "-90", "90"));
    channels.push_back(rotation("rotateX", "bend", 4, angles[2], elbow ? "-5" : "-90", elbow ? "140" : "90"));
  }
  channels.push_back(translation("translateX", "xtran", 12, !body));
  channels.push_back(translation("translateY", "ytran", 13, !body));
  channels.push_back(translation("translateZ", "ztran", 14, !body));
  return channels;
}

void writeMaterial(Sink& out, const Material& m, int depth) {
  int in = depth + 1;
  out.line(depth, "material " + m.name);
  out.line(in, "{");
  out.line(in, "KdColor " + m.kd);
  out.line(in, "KaColor 0 0 0 1");
  out.line(in, "KsColor " + m.ks);
  out.line(in, "TextureColor 1 1 1 1");
  out.line(in, "NsExponent " + m.ns);
  out.line(in, "tMin 0");
  out.line(in, "tMax " + m.tMax);
  out.line(in, "tExpo 0.6");
  out.line(in, "bumpStrength " + m.bumpStrength);
  out.line(in, "ksIgnoreTexture 0");
  out.line(in, "reflectThruLights 1");
  if (m.textureOnNextLine) {
    out.line(in, "textureMap");
    out.line(in + 1, m.textureMap);
  } else {
    out.line(in, "textureMap " + m.textureMap);
  }
  out.line(in, "bumpMap " + m.bumpMap);
  out.line(in, "reflectionMap " + m.reflectionMap);
  out.line(in, "transparencyMap " + m.transparencyMap);
  out.line(in, "ReflectionColor 1 1 1 1");
  out.line(in, "reflectionStrength " + m.reflectionStrength);
  out.line(in, "}");
}

Material previewMaterial() {
  Material m;
  m.name = "Preview";
  return m;
}

}  // namespace tolvane::gen
