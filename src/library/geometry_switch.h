// Geometry switching: an alternate geometry for one actor of a figure or one prop of a
// prop file. The tool adds an "alternateGeom" block that names a further OBJ and a dial
// channel that chooses among the geometries, and writes the result as AltGeom.cr2 or
// AltGeom.pp2 in the work folder for the user to move.
#pragma once

namespace tolvane {
class Program;
}

namespace tolvane::library {

// menuGeomSwitch: fills ListAltGeomActors from the open file.
void GeomSwitchMenu(Program& program);
// A double click on ListAltGeomActors: the tool on the chosen entry.
void AltGeomActorsDblClick(Program& program);
// The right mouse button on ListAltGeomActors: the chosen entry goes.
void AltGeomActorsRightClick(Program& program);

}  // namespace tolvane::library
