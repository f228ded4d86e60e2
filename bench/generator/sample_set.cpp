#include "figure_plan.h"
#include "figure_writer.h"
#include "generator.h"
#include "geometry_files.h"
#include "library_files.h"

namespace tolvane::gen {

namespace {

namespace fs = std::filesystem;

fs::path prepared(const fs::path& folder, const char* relative) {
  fs::path path = folder / relative;
  fs::create_directories(path.parent_path());
  return path;
}

void writeFigureFile(const fs::path& path, const Figure& figure) {
  Sink out(path);
  writeHead(out);
  writeFigureRun(out, figure, RunOptions{});
  out.line(0, "}");
  out.close();
}

void writeTextures(const fs::path& folder) {
  // Colours in the order of SampleSet::kTextures.
  const int colours[][3] = {{230, 190, 160}, {128, 128, 128}, {200, 90, 100},
                            {90, 130, 200},  {180, 200, 230}, {255, 255, 255},
                            {110, 70, 40},   {255, 255, 255}, {50, 110, 180}};
  fs::create_directories(folder);
  int seed = 1;
  for (const char* name : SampleSet::kTextures) {
    const int* c = colours[seed - 1];
    writeBmp(folder / name, 32, seed, c[0], c[1], c[2]);
    ++seed;
  }
}

void writeGeometry(const fs::path& folder, const Figure& ava) {
  writeFigureObj(prepared(folder, SampleSet::kObj), ava, "ava.mtl");
  writeMtl(prepared(folder, SampleSet::kMtl), ava.materials);
  const Prop& earrings = ava.props.front();
  Vec left = earrings.center, right = earrings.center;
  left[0] += earrings.half[0];
  right[0] -= earrings.half[0];
  writeBoxObj(prepared(folder, SampleSet::kEarringsObj), "Earrings", "gold",
              {{left, {3000, 6000, 3000}}, {right, {3000, 6000, 3000}}});
  writeBoxObj(prepared(folder, SampleSet::kHairObj), "BobHair", "hair",
              {{{0, 660000, -5000}, {44000, 40000, 46000}}});
  writeBoxObj(prepared(folder, SampleSet::kGroundObj), "GROUND", "ground",
              {{{0, -1000, 0}, {500000, 1000, 500000}}});
}

}  // namespace

void writeSampleSet(const fs::path& poserFolder) {
  const Figure ava = avaFigure();
  const Pose pose = wavePose();
  writeFigureFile(prepared(poserFolder, SampleSet::kFigure), ava);
  writeGeometry(poserFolder, ava);
  writeTextures(poserFolder / SampleSet::kTextureFolder);
  writePose(prepared(poserFolder, SampleSet::kPose), ava, pose);
  writeFacePose(prepared(poserFolder, SampleSet::kFace));
  writeScene(prepared(poserFolder, SampleSet::kScene), ava, pose);
  writeHair(prepared(poserFolder, SampleSet::kHair));
  writePropFile(prepared(poserFolder, SampleSet::kProp));
}

std::uint64_t writeLargeFigure(const fs::path& cr2, const LargeFigureOptions& options) {
  const Figure figure = largeFigure(options.actors, options.morphs, options.props, options.materials);
  if (cr2.has_parent_path()) fs::create_directories(cr2.parent_path());
  Sink out(cr2);
  DeltaBudget budget;
  budget.targetBytes = options.targetBytes;
  budget.morphsLeft = static_cast<int>(figure.morphs.size());
  writeHead(out);
  writeFigureRun(out, figure, RunOptions{1, nullptr, &budget});
  out.line(0, "}");
  out.close();
  return out.bytes();
}

std::uint64_t writeLargeScene(const fs::path& pz3, const LargeFigureOptions& options) {
  const Figure figure = largeFigure(options.actors, options.morphs, options.props, options.materials);
  if (pz3.has_parent_path()) fs::create_directories(pz3.parent_path());
  DeltaBudget budget;
  budget.targetBytes = options.targetBytes;
  budget.morphsLeft = static_cast<int>(figure.morphs.size());
  return writeLargeSceneFile(pz3, figure, budget);
}

}  // namespace tolvane::gen
