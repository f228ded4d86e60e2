// One-way conversions from the main menu: a scene to a figure file, a scene's materials to a Wavefront MTL file,
// a scene's background movie to a prop file, and a saved camera block put back into a
// scene. Each writes through its scratch file in the work folder.
#pragma once

#include <string>

namespace tolvane {
class Program;
}

namespace tolvane::library {

// MenuPZ3Cr2Conv: the open scene as a figure file under a chosen name, through PZ3.txt;
// a scene with a protected stock figure is refused and nothing is written.
void ConvertSceneToFigure(Program& program);
void MakeMTL(Program& program);          // MenuMakeMTL, through mtl.txt
void MakeAVIBackground(Program& program);  // MenuPZ3AVI, through Avi.txt
void RestoreCamera(Program& program);    // MenuP3P4Cam, through cam.txt

// One material field as an MTL line ("" when it writes nothing): colours and the
// shininess by their two letters, the texture and bump maps by file name.
std::string mtlLine(const std::string& field);

}  // namespace tolvane::library
