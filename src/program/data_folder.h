// Where the program's run-time files stand (the exit sound, the samples): beside an
// installed program, in share/tolvane next to its bin folder; for a program run from its
// build folder, in the source tree it was built from. One lookup serves both programs.
#pragma once

#include <filesystem>

namespace tolvane {

// The folder of run-time files for a program that runs from `programFolder`.
std::filesystem::path runtimeDataFolder(const std::filesystem::path& programFolder);
// The bundled demo figures for the same program.
std::filesystem::path samplesFolder(const std::filesystem::path& programFolder);
// True when the program runs from an installed tree (share/tolvane beside its bin).
bool isInstalled(const std::filesystem::path& programFolder);
// The Work folder: `chosen` when it is not empty (TOLVANE_WORKDIR); else the program's
// own folder when it is a portable copy that can be written; else `userData`, the
// per-user data folder. An installed program never writes into its bin folder, even
// where it could (run as root).
std::filesystem::path chooseWorkFolder(const std::filesystem::path& chosen,
                                       const std::filesystem::path& programFolder,
                                       const std::filesystem::path& userData);
// The folder of the running executable.
std::filesystem::path runningProgramFolder();

}  // namespace tolvane
