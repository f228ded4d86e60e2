// The handlers of the OBJ workbench (FormOBJ) and of the main form's OBJ tools
// (PictureOBJView, Mash, the scaler).
#pragma once

#include "program/events.h"

namespace tolvane {

void registerObjEvents(EventTable& table);

}  // namespace tolvane
