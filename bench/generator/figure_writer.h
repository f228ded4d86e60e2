// Writes figure text: the head of a file, one figure's run (figureResFile, the
// declaration run, the definition run, the second figureResFile and the figure
// section), and single channels for the pose, hair and prop files. Everything is
// indented with tabs to the depths Poser uses.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "figure_plan.h"
#include "text_format.h"

namespace tolvane::gen {

// Sizes the morphs of a large figure while it is written: each morph gets enough
// delta lines that the file reaches `targetBytes` when the last morph is written.
struct DeltaBudget {
  std::uint64_t targetBytes = 0;
  int morphsLeft = 0;
  std::uint64_t deltaBytes = 0;  // delta lines written so far, for the average line length
  std::uint64_t deltaLines = 0;
};

struct RunOptions {
  int figureNumber = 1;
  const Pose* pose = nullptr;     // rotation values for the parts' keys
  DeltaBudget* budget = nullptr;  // set for large figures
};

struct Channel {
  std::string word;  // targetGeom, valueParm, rotateX, twistY, ...
  std::string id;
  std::string name;
  std::string initValue = "0";
  std::string hidden = "0";
  std::string forceLimits = "0";
  std::string min = "-100000";
  std::string max = "100000";
  std::string trackingScale = "0.02";
  std::string key = "0";
  std::vector<Control> controls;
  std::vector<std::string> after;  // fields behind interpStyleLocked (and the control blocks)
  const Morph* morph = nullptr;    // a targetGeom's deltas
};

// "{", an empty line and the version block.
void writeHead(Sink& out);
void writeFigureRun(Sink& out, const Figure& figure, const RunOptions& options);
void writeChannel(Sink& out, const Channel& channel, int figureNumber, DeltaBudget* budget = nullptr);
// A channel of a pose file: the header and its keys only.
void writePoseChannel(Sink& out, const std::string& header, const std::string& value);
// The rotation, scale and translation channels every part and prop has.
std::vector<Channel> motionChannels(bool body, const std::string& part, const Pose* pose);
void writeMaterial(Sink& out, const Material& material, int depth);
Material previewMaterial();

}  // namespace tolvane::gen
