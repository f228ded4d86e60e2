// The version check against the maker's web server, the help and tutorial pages, and
// the outside programs started from the main form's menus (Poser, Quickboot).
#pragma once

#include <string>

namespace tolvane {
class Program;
}

namespace tolvane::utilities {

// The program's own version text, as the version file publishes it.
inline constexpr const char* kProgramVersion = "5.0";
// The maker's web server: the setting "WebSite" of "Startup", or this address.
inline constexpr const char* kDefaultWebSite = "http://www.tolvane.net";
std::string webSite(Program& program);

// menuCheckVer.
void CheckVersion(Program& program);
// The published version in the first field of a version file: the text behind its
// first blank.
std::string publishedVersion(const std::string& firstField);

// MenuHelp (and MenuHelpContents), menuWebTutorials, MenuPoser, MenuQuickboot.
void ShowHelp(Program& program);
void ShowTutorials(Program& program);
void StartPoser(Program& program);
void StartQuickboot(Program& program);

}  // namespace tolvane::utilities
