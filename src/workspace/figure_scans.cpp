// Open's five scans in one read of the file: the geometry, the materials, the body parts,
// the channels and the texture maps each walk the figure on a thread of their own, while
// the blocks of the file are read once and shared among them.
#include <memory>

#include "program/program.h"
#include "text/figure_text.h"
#include "text/runtime_error.h"
#include "text/shared_read.h"
#include "workspace/list_readers.h"

namespace tolvane {

FigureScans scanFigureTogether(Program& program, const std::filesystem::path& file, const std::string& kind) {
  FigureScans s;
  std::vector<std::string> knownProps = program.opening.ListPropObj.items();
  std::vector<std::string> knownMaps = program.opening.ListAllTexMaps.items();
  std::shared_ptr<text::SharedRead> shared;
  try {
    shared = std::make_shared<text::SharedRead>(file);
  } catch (const text::RuntimeError&) {
    s.geometryFault = s.materialsFault = s.partsFault = s.channelsFault = s.texturesFault = std::current_exception();
    return s;
  }
  bool propFile = kind == "hr2" || kind == "pp2";
  bool hair = kind == "hr2";
  // Each scanner is made inside its job, so that a reader that stops early leaves the
  // shared read at once and the others do not wait for it.
  std::vector<std::function<void()>> jobs = {
      [&] {
        text::FigureScanner in(shared, 0);
        text::scanGeometry(in, propFile, knownProps, s.geometry);
      },
      [&] {
        text::FigureScanner in(shared, 1);
        s.materials = text::scanMaterials(in, kind);
      },
      [&] {
        text::FigureScanner in(shared, 2);
        s.parts = text::scanBodyParts(in, kind);
      },
      [&] {
        text::FigureScanner in(shared, 3);
        s.channels = text::scanChannels(in, hair);
      },
      [&] {
        text::FigureScanner in(shared, 4);
        text::scanTextures(in, hair, knownMaps, s.textures);
      },
  };
  std::vector<std::exception_ptr> faults = text::runTogether(jobs, [&program, &shared] {
    program.progress(shared->bytesRead(), shared->length());
  });
  s.geometryFault = faults[0];
  s.materialsFault = faults[1];
  s.partsFault = faults[2];
  s.channelsFault = faults[3];
  s.texturesFault = faults[4];
  return s;
}

}  // namespace tolvane
