#include "library_files.h"

#include "figure_writer.h"
#include "geometry.h"

namespace tolvane::gen {

namespace {

void openActor(Sink& out, const std::string& header) {
  out.line(0, header);
  out.line(1, "{");
  out.line(1, "channels");
  out.line(2, "{");
}

void closeActor(Sink& out) {
  out.line(2, "}");
  out.line(1, "}");
}

// The head of a prop definition in a hair, prop or scene file.
void writePropFlags(Sink& out, const std::string& name, const std::string& parent) {
  out.line(1, "name " + name);
  for (const char* flag :
       {"on", "bend 1", "dynamicsLock 1", "hidden 0", "addToMenu 1", "castsShadow 1", "includeInDepthCue 1"})
    out.line(1, flag);
  out.line(1, "parent " + parent);
}

void writePropTail(Sink& out, const Vec& origin) {
  out.line(1, "endPoint " + triple(origin[0], origin[1], origin[2]));
  out.line(1, "origin " + triple(origin[0], origin[1], origin[2]));
  out.line(1, "orientation 0 0 0");
  out.line(1, "displayOrigin 0");
  out.line(1, "displayMode USEPARENT");
}

void writeChannelBlock(Sink& out, const std::vector<Channel>& channels) {
  out.line(1, "channels");
  out.line(2, "{");
  for (const Channel& c : channels) writeChannel(out, c, 1);
  out.line(2, "}");
}

Channel simple(const std::string& word, const std::string& id, const std::string& name,
               const std::string& key) {
  Channel c;
  c.word = word;
  c.id = id;
  c.name = name;
  c.key = key;
  c.trackingScale = "0.01";
  return c;
}

void writeLight(Sink& out, int number, const std::string& colour, const std::string& angle) {
  out.line(0, "light LIGHT_" + std::to_string(number));
  out.line(1, "{");
  writePropFlags(out, "Light " + std::to_string(number), "UNIVERSE");
  std::vector<Channel> channels = {
      simple("kdRed", "red", "GetStringRes(1028,19)", colour.substr(0, colour.find(' '))),
      simple("kdGreen", "green", "GetStringRes(1028,20)", "1"),
      simple("kdBlue", "blue", "GetStringRes(1028,21)", "1"),
      simple("kdIntensity", "intensity", "GetStringRes(1028,22)", "1"),
      simple("rotateY", "yrot", "GetStringRes(1028,10)", angle),
      simple("rotateX", "xrot", "GetStringRes(1028,9)", "-30"),
  };
  writeChannelBlock(out, channels);
  writePropTail(out, Vec{0, 0, 0});
  out.line(1, "lightType 1");
  out.line(1, "}");
}

void writeCamera(Sink& out) {
  out.line(0, "camera MAIN_CAMERA");
  out.line(1, "{");
  writePropFlags(out, "Main Camera", "UNIVERSE");
  std::vector<Channel> channels = {
      simple("focal", "focal", "GetStringRes(1028,15)", "55"),
      simple("rotateX", "pitch", "GetStringRes(1028,16)", "-5"),
      simple("rotateY", "yaw", "GetStringRes(1028,17)", "0"),
      simple("rotateZ", "roll", "GetStringRes(1028,18)", "0"),
      simple("translateX", "dollyX", "GetStringRes(1028,25)", "0"),
      simple("translateY", "dollyY", "GetStringRes(1028,26)", "0.45"),
      simple("translateZ", "dollyZ", "GetStringRes(1028,27)", "2.2"),
  };
  writeChannelBlock(out, channels);
  writePropTail(out, Vec{0, 0, 0});
  out.line(1, "}");
}

void writeGround(Sink& out) {
  out.line(0, "prop GROUND");
  out.line(1, "{");
  out.line(1, "storageOffset 0 0 0");
  out.line(1, "objFileGeom 0 0 :Runtime:Geometries:Tolvane:ground.obj");
  out.line(1, "}");
  out.line(0, "prop GROUND");
  out.line(1, "{");
  writePropFlags(out, "GROUND", "UNIVERSE");
  writeChannelBlock(out, motionChannels(false, "GROUND", nullptr));
  writePropTail(out, Vec{0, 0, 0});
  out.line(1, "}");
}

Material hairMaterial() {
  Material m;
  m.name = "hair";
  m.kd = "0.35 0.22 0.12 1";
  m.ks = "0.3 0.25 0.2 1";
  m.ns = "20";
  m.textureMap = ":Runtime:textures:Tolvane:bob_hair.bmp";
  m.transparencyMap = ":Runtime:textures:Tolvane:bob_hair_tr.bmp";
  m.tMax = "1";
  return m;
}

}  // namespace

void writePose(const std::filesystem::path& path, const Figure& figure, const Pose& pose) {
  Sink out(path);
  writeHead(out);
  openActor(out, "actor BODY:1");
  writePoseChannel(out, "translateY ytran", "0.012");
  closeActor(out);
  for (const Part& part : figure.parts) {
    auto it = pose.find(part.name);
    if (it == pose.end()) continue;
    openActor(out, "actor " + suffix(part.name, 1));
    writePoseChannel(out, "rotateY twist", std::to_string(it->second[0]));
    writePoseChannel(out, "rotateZ side", std::to_string(it->second[1]));
    writePoseChannel(out, "rotateX bend", std::to_string(it->second[2]));
    closeActor(out);
  }
  out.line(0, "}");
  out.close();
}

void writeFacePose(const std::filesystem::path& path) {
  Sink out(path);
  writeHead(out);
  openActor(out, "actor BODY:1");
  writePoseChannel(out, "valueParm Expression", "0.5");
  closeActor(out);
  openActor(out, "actor head:1");
  writePoseChannel(out, "targetGeom Smile", "0.8");
  writePoseChannel(out, "targetGeom Frown", "0");
  writePoseChannel(out, "targetGeom BrowUp", "0.35");
  writePoseChannel(out, "targetGeom Blink", "0.1");
  writePoseChannel(out, "targetGeom MouthO", "0");
  closeActor(out);
  out.line(0, "}");
  out.close();
}

namespace {

// A scene: the universe, the movie, the figure runs, the stage (ground, two lights, the
// camera) and the document settings.
std::uint64_t writeSceneFile(const std::filesystem::path& path, const Figure& figure, const Pose* secondPose,
                             DeltaBudget* budget) {
  Sink out(path);
  writeHead(out);
  out.line(0, "actor UNIVERSE");
  out.line(1, "{");
  out.line(1, "");
  out.line(1, "}");
  out.line(0, "movie");
  out.line(1, "{");
  for (const char* field :
       {"output 0", "frameRate 30", "outputStartFrame 0", "outputEndFrame 29", "loopMovie 0"})
    out.line(1, field);
  out.line(1, "}");
  writeFigureRun(out, figure, RunOptions{1, nullptr, budget});
  if (secondPose != nullptr) writeFigureRun(out, figure, RunOptions{2, secondPose, nullptr});
  writeGround(out);
  writeLight(out, 1, "1 1 1", "-40");
  writeLight(out, 2, "0.6 0.7 1", "120");
  writeCamera(out);
  out.line(0, "doc");
  out.line(1, "{");
  for (const char* field : {"useLimitsOnIK 1", "viewType 1", "leftWindowPos 8 8", "rightWindowPos 640 8"})
    out.line(1, field);
  out.line(1, "}");
  out.line(0, "setGeomHandlerOffset 0 0.3487 0");
  out.line(0, "}");
  out.close();
  return out.bytes();
}

}  // namespace

void writeScene(const std::filesystem::path& path, const Figure& figure, const Pose& secondPose) {
  writeSceneFile(path, figure, &secondPose, nullptr);
}

std::uint64_t writeLargeSceneFile(const std::filesystem::path& path, const Figure& figure, DeltaBudget& budget) {
  return writeSceneFile(path, figure, nullptr, &budget);
}

void writeHair(const std::filesystem::path& path) {
  Sink out(path);
  writeHead(out);
  out.line(0, "prop BobHair");
  out.line(1, "{");
  out.line(1, "storageOffset 0 0.3487 0");
  out.line(1, "objFileGeom 0 0 :Runtime:Geometries:Tolvane:bob.obj");
  out.line(1, "}");
  out.line(0, "prop BobHair");
  out.line(1, "{");
  writePropFlags(out, "Bob", "UNIVERSE");
  Morph windswept;
  windswept.id = "Windswept";
  windswept.dialName = "Windswept";
  windswept.deltas = 6;
  windswept.seed = 77;
  Channel morph = simple("targetGeom", "Windswept", "Windswept", "0");
  morph.trackingScale = "0.02";
  morph.morph = &windswept;
  std::vector<Channel> channels{morph};
  auto motion = motionChannels(false, "BobHair", nullptr);
  channels.insert(channels.end(), motion.begin(), motion.end());
  writeChannelBlock(out, channels);
  writePropTail(out, Vec{0, 660000, 0});
  writeMaterial(out, hairMaterial(), 1);
  writeMaterial(out, previewMaterial(), 1);
  out.line(1, "locked 0");
  out.line(1, "}");
  out.line(0, "}");
  out.close();
}

void writePropFile(const std::filesystem::path& path) {
  Sink out(path);
  writeHead(out);
  const Vec center{0, 60000, 0}, half{40000, 60000, 40000};
  out.line(0, "prop Vase");
  out.line(1, "{");
  out.line(1, "storageOffset 0 0 0");
  writeGeomCustom(out, 1, center, half, "Vase", "vase");
  out.line(1, "}");
  out.line(0, "prop Vase");
  out.line(1, "{");
  writePropFlags(out, "Vase", "UNIVERSE");
  writeChannelBlock(out, motionChannels(false, "Vase", nullptr));
  writePropTail(out, center);
  Material vase;
  vase.name = "vase";
  vase.kd = "0.2 0.45 0.7 1";
  vase.ks = "1 1 1 1";
  vase.ns = "70";
  vase.textureMap = ":Runtime:textures:Tolvane:vase.bmp";
  vase.reflectionMap = ":Runtime:textures:Tolvane:ava_reflect.bmp";
  vase.reflectionStrength = "0.3";
  writeMaterial(out, vase, 1);
  writeMaterial(out, previewMaterial(), 1);
  out.line(1, "locked 0");
  out.line(1, "}");
  out.line(0, "}");
  out.close();
}

}  // namespace tolvane::gen
