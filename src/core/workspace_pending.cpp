// Temporary definitions until the workspace lands: each reports that the command is
// not available yet.
#include "core/runtime_error.h"
#include "core/workspace.h"

namespace tolvane {
void OpenFile(Program&) { core::raiseError(core::kInvalidProcedureCall, "Open is not available yet"); }
void LoadWithoutDialog(Program&, const std::string& path) { core::raiseError(core::kInvalidProcedureCall, path); }
void OpenSource(Program&) { core::raiseError(core::kInvalidProcedureCall, "Open source is not available yet"); }
void WritePathChanges(Program&, PathWriteVariant) {
  core::raiseError(core::kInvalidProcedureCall, "Path write is not available yet");
}
}  // namespace tolvane

#include "core/list_readers.h"

namespace tolvane {
void ListPropGeometry(Program&, const std::string& p) { core::raiseError(core::kInvalidProcedureCall, p); }
void ListPropGeometryPropFile(Program&, const std::string& p) { core::raiseError(core::kInvalidProcedureCall, p); }
void ListFileMaterials(Program&, const std::string& p) { core::raiseError(core::kInvalidProcedureCall, p); }
void ListBodyParts(Program&, const std::string& p) { core::raiseError(core::kInvalidProcedureCall, p); }
void ListAllChannels(Program&, const std::string& p) { core::raiseError(core::kInvalidProcedureCall, p); }
void ListTextureMaps(Program&, const std::string& p) { core::raiseError(core::kInvalidProcedureCall, p); }
std::string displayPath(const std::string& path) { return path; }
}  // namespace tolvane
