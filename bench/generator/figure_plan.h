// The figures the generator writes, as plain data: body parts with their place in the
// hierarchy and a box of geometry, props, materials, morphs with their delta budget and
// control blocks, and a pose. Ava (the demo figure) and the large benchmark figures are
// both built here and written by the same figure writer.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tolvane::gen {

using Vec = std::array<std::int64_t, 3>;  // millionths of a Poser unit

struct Part {
  std::string name;    // "lHand", without suffix
  std::string parent;  // "lForeArm", or "BODY"
  int stringRes = 0;   // number in the body-part name table, 0 for a plain name
  Vec center{};
  Vec half{};  // half the size of the part's box
};

struct Prop {
  std::string name;     // "Earrings", without suffix
  std::string parent;   // body part
  std::string objFile;  // Poser path of its OBJ; empty for embedded geometry
  Vec center{};
  Vec half{};
};

// A remote control: the five lines behind interpStyleLocked.
struct Control {
  std::string figure;  // "Figure 1"
  std::string part;    // "BODY" (suffix added by the writer)
  std::string dial;    // the master channel's internal name
  std::string ratio;   // "1.000000"
};

struct Morph {
  int part = 0;          // index into Figure::parts
  std::string id;        // internal name behind targetGeom
  std::string dialName;  // the `name` value
  int deltas = 0;        // number of delta lines; the large figure sets it as it writes
  int vertices = 8;      // vertices of the part the deltas index
  std::int64_t amplitude = 4000;
  std::uint64_t seed = 1;
  std::vector<Control> controls;
};

struct ValueParm {
  std::string id;
  std::string dialName;
};

struct Material {
  std::string name;
  std::string kd = "1 1 1 1";
  std::string ks = "0.156863 0.129412 0.0980392 1";
  std::string ns = "30";
  std::string tMax = "0";
  std::string bumpStrength = "0";
  std::string textureMap = "NO_MAP";
  bool textureOnNextLine = false;  // the bare word, its value on the line below
  std::string bumpMap = "NO_MAP";
  std::string reflectionMap = "NO_MAP";
  std::string transparencyMap = "NO_MAP";
  std::string reflectionStrength = "1";
};

// Rotation values of a pose, in degrees: twist, side, bend.
using Pose = std::map<std::string, std::array<int, 3>>;

struct Figure {
  std::string objFile;      // Poser path of the main geometry
  std::vector<Part> parts;  // without BODY
  std::vector<Prop> props;
  std::vector<Material> materials;                 // without Preview, which the writer adds last
  std::vector<Morph> morphs;                       // in file order within each part
  std::vector<ValueParm> bodyDials;                // valueParm channels of BODY
  std::vector<std::array<std::string, 4>> chains;  // IK: name, first, middle, last link
};

// The standard human parts in file order, with a T-pose box layout.
std::vector<Part> humanParts();
// Parts beyond the standard set for large figures (eyes, jaw, toes, ...), `count` of them.
std::vector<Part> extraParts(int count);

Figure avaFigure();
// A figure of `actors` body parts (at least the standard set), with `morphs` morphs
// spread over them, `props` props (external and embedded in turn) and `materials`
// materials. The morphs' delta counts are left to the writer's budget.
Figure largeFigure(int actors, int morphs, int props, int materials);
Pose wavePose();

int partIndex(const Figure& figure, const std::string& name);

}  // namespace tolvane::gen
