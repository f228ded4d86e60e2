// Installing a figure: a downloaded zip (or files laid by hand in the install folder
// `cr2install` under the Poser folder) is unpacked there, its CR2's outside files are
// listed, the target folders are worked out from the CR2's own paths, and on Enter in the
// installer's folder list the CR2, its geometry and its pictures are moved into place.
// What cannot be placed is listed and may be printed.
#pragma once

#include <filesystem>
#include <string>

namespace tolvane {
class Program;
}

namespace tolvane::install {

// MenuInstallCR2: find the CR2 in the install folder, or unpack the chosen zip there.
void MenuInstallCR2Click(Program& program);
// PictureInstallCR2: the target folders, the library folder, the installer form.
void InstallCR2Click(Program& program);
// PictureCR2InstallCancel.
void CancelInstall(Program& program);
// Enter in DirCR2Install: the moves.
void InstallIntoFolder(Program& program);

// FormCR2Install: its load, the drive and folder pickers, the folder labels.
void FormCR2InstallLoad(Program& program);
void DriveCR2InstallChange(Program& program);
void DirCR2InstallChange(Program& program);
void NewDirClick(Program& program);
void NewDirEnter(Program& program);
void RemoveDirClick(Program& program);

// The top of the drive that holds the Poser folder. On this platform it is the folder
// that holds the Poser folder, as "C:\" holds "C:\Poser4\": paths that the install
// builds "from the top of the drive" stay beside the Poser folder.
std::string driveTop(const std::string& posersRoot);
// A path in the install's own text form as this file system names it: a path that
// begins with one backslash is taken from the top of the drive.
std::filesystem::path installPath(const std::string& text, const std::string& top);

}  // namespace tolvane::install
