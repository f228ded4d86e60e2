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
