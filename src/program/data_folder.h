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
// The folder of the running executable.
std::filesystem::path runningProgramFolder();

}  // namespace tolvane
