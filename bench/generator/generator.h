// Writes realistic Poser content for the demo set, the tests and the benchmarks: a
// human figure with its OBJ, textures, poses, a scene, hair, a prop and an MTL, laid
// out as a small Poser folder; and large figures of a chosen size for benchmarks.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace tolvane::gen {

// Paths of the demo set, relative to the Poser folder it is written into.
struct SampleSet {
  static constexpr const char* kFigure = "Runtime/Libraries/Character/Tolvane/Ava.cr2";
  static constexpr const char* kObj = "Runtime/Geometries/Tolvane/ava.obj";
  static constexpr const char* kMtl = "Runtime/Geometries/Tolvane/ava.mtl";
  static constexpr const char* kPose = "Runtime/Libraries/Pose/Tolvane/Wave.pz2";
  static constexpr const char* kFace = "Runtime/Libraries/Face/Tolvane/Smile.fc2";
  static constexpr const char* kScene = "Runtime/Libraries/Scene/Tolvane/Duet.pz3";
  static constexpr const char* kHair = "Runtime/Libraries/Hair/Tolvane/Bob.hr2";
  static constexpr const char* kProp = "Runtime/Libraries/Props/Tolvane/Vase.pp2";
  static constexpr const char* kTextureFolder = "Runtime/textures/Tolvane";
  // Geometry of the props, the hair and the scene's ground.
  static constexpr const char* kEarringsObj = "Runtime/Geometries/Tolvane/earrings.obj";
  static constexpr const char* kHairObj = "Runtime/Geometries/Tolvane/bob.obj";
  static constexpr const char* kGroundObj = "Runtime/Geometries/Tolvane/ground.obj";
  // Texture pictures, in kTextureFolder.
  static constexpr const char* kTextures[] = {"ava_skin.bmp", "ava_bump.bmp",    "ava_lips.bmp",
                                              "ava_eyes.bmp", "ava_reflect.bmp", "ava_lashes_tr.bmp",
                                              "bob_hair.bmp", "bob_hair_tr.bmp", "vase.bmp"};
};

// Writes the whole demo set under `poserFolder` (which becomes a small Poser folder).
void writeSampleSet(const std::filesystem::path& poserFolder);

struct LargeFigureOptions {
  std::uint64_t targetBytes = 100ull << 20;  // grows the morph deltas until the file reaches this
  int actors = 84;                           // body parts (at least the standard human set)
  int morphs = 3200;                         // targetGeom channels spread over the parts
  int props = 6;
  int materials = 12;
};

// Writes one large figure CR2 (and no OBJ). Returns the number of bytes written.
std::uint64_t writeLargeFigure(const std::filesystem::path& cr2, const LargeFigureOptions& options);
// Writes one large scene: the universe, the movie, one large figure as above, the ground,
// two lights, the camera and the document settings.
std::uint64_t writeLargeScene(const std::filesystem::path& pz3, const LargeFigureOptions& options);

}  // namespace tolvane::gen
