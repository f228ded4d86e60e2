#include "install/install_cr2.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "install/inventory.h"
#include "install/zip_extract.h"
#include "program/program.h"
#include "text/disk.h"
#include "text/figure_text.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "ui/folder_pickers.h"
#include "ui/services.h"

namespace tolvane::install {

namespace fs = std::filesystem;
using text::contains;

namespace {

constexpr ui::Colour kPaleBlue = 0xFFFFC0;

std::string posersRoot(Program& program) {
  std::string ploc = program.posersFolder();
  return text::Left(ploc, static_cast<long long>(ploc.size()) - 1);
}

// The files of `folder` that match `pattern`, sorted as the platform lists them.
std::vector<std::string> filesIn(const fs::path& folder, const std::string& pattern) {
  ui::Form scratchForm("scratch");
  ui::ListBox list(&scratchForm, "list");
  ui::showFiles(list, folder, pattern);
  return list.items();
}

// A move with the platform's rules: a missing source or an existing target is an error
// and nothing moves; between two file systems the file is copied whole, then the
// original goes, and if it cannot go the copy goes again, so the file is in one place.
void moveFile(const fs::path& from, const fs::path& to) {
  struct stat st {};
  if (::stat(from.c_str(), &st) != 0 || S_ISDIR(st.st_mode)) text::raiseError(text::kFileNotFound, from.string());
  if (::stat(to.c_str(), &st) == 0) text::raiseError(text::kFileAlreadyExists, to.string());
  if (text::disk::rename(from, to) == 0) return;
  if (errno != EXDEV) text::raiseError(text::errorNumberFromErrno(errno, true), to.string());
  text::copyFileSafely(from, to);
  if (text::disk::unlink(from) != 0) {
    int err = errno;
    text::deleteIgnoringErrors(to);
    text::raiseError(text::errorNumberFromErrno(err, true), from.string());
  }
}

void moveIgnoringErrors(const fs::path& from, const fs::path& to) {
  text::ignoreErrors([&] { moveFile(from, to); });
}

// Changes to a folder, creating it (with the folders it needs) when the change fails; a
// second failure ends the command.
void changeOrCreate(Program& program, const fs::path& folder) {
  std::error_code ec;
  if (!fs::is_directory(folder, ec)) {
    fs::create_directories(folder, ec);
    if (!fs::is_directory(folder))
      text::raiseError(ec ? text::errorNumberFromErrno(ec.value(), true) : text::kPathNotFound, folder.string());
  }
  program.currentDir = folder;
}

// Puts a zip into the install folder: copied whole under a hidden name, then renamed.
void copyZipInto(const fs::path& zip, const fs::path& target) {
  std::error_code ec;
  if (fs::equivalent(zip, target, ec)) return;
  fs::path staged = target.parent_path() / ("." + target.filename().string() + ".tolvane-copy");
  text::deleteIgnoringErrors(staged);
  text::copyFileSafely(zip, staged);
  try {
    text::replaceAtomically(staged, target);
  } catch (...) {
    text::deleteIgnoringErrors(staged);
    throw;
  }
}

void showSingleCR2Error(Program& program, const std::string& text) {
  program.services.beep();
  ui::msgBox(program.services, text, "Error!", ui::Buttons::OK, ui::Icon::Critical);
}

// Unpacks the chosen zip into the install folder; false when it was refused.
bool unpackZip(Program& program, const std::string& folderText, const std::string& zip) {
  fs::path folder = text::nativePath(folderText);
  std::error_code ec;
  fs::create_directories(folder, ec);
  std::string zipName = text::nativePath(zip).filename().string();
  copyZipInto(text::nativePath(zip), folder / zipName);
  // The files are unpacked by this program into the install folder, so the search for
  // the CR2 looks there; a figure the zip keeps in a folder of its own is not found.
  program.currentDir = folder;
  ZipResult result = extractZip(folder / zipName, folder);
  // A zip that cannot be read leaves nothing unpacked, as an unzip program that fails on
  // it does, and the search then finds no figure. Only an unsafe zip is refused aloud.
  if (result.refusal.empty() || result.refusal.rfind(kDamagedZip, 0) == 0) return true;
  ui::msgBox(program.services,
             "The zip file cr2install\\" + zipName + " was not unpacked: " + result.refusal +
                 ". Nothing was installed.",
             "Error!", ui::Buttons::OK, ui::Icon::Critical);
  return false;
}

void clearHiddenLabels(ui::Opening& f) {
  for (ui::Label* l : {&f.LabelRtDir, &f.LabelSaveObjPath, &f.LabelCR2NameLength, &f.LabelTexPathCR2Install,
                       &f.LabelObjPathCR2Install})
    l->setCaption("");
}

// The main window as it was before the install began.
void restoreMainWindow(Program& program) {
  ui::Opening& f = program.opening;
  f.ListboxListCR2Files.clear();
  f.ListboxListCR2Files.setVisible(false);
  for (ui::Picture* p : {&f.PicturePrintCR2Files, &f.PictureInstallCR2, &f.PictureCR2InstallCancel})
    p->setVisible(false);
  clearHiddenLabels(f);
  f.LabelOBJFileName.setCaption("");
  f.LabelOBJFileName.setVisible(false);
  f.LabelOBJFileName.setBackColor(ui::kWhite);
  if (!f.LabelFileNameForEditor.caption().empty()) {
    for (ui::Control* c :
         std::initializer_list<ui::Control*>{&f.PictureOBJView, &f.LabelChannelFileName, &f.ListChannels})
      c->setVisible(true);
  }
}

}  // namespace

std::string driveTop(const std::string& posersRoot) { return posersRoot; }

fs::path installPath(const std::string& text, const std::string& top) {
  if (!text.empty() && text[0] == '\\' && (text.size() < 2 || text[1] != '\\'))
    return text::resolveCaseInsensitive(text::nativePath(top + text));
  return text::resolveCaseInsensitive(text::nativePath(text));
}

void MenuInstallCR2Click(Program& program) {
  ui::Opening& f = program.opening;
  std::string folderText = program.posersFolder() + "cr2install\\";
  std::vector<std::string> found = filesIn(text::nativePath(folderText), "*.cr2");
  if (found.size() > 1) return showSingleCR2Error(program, "There is more than one CR2 in the cr2install folder!");
  if (found.empty()) {
    ui::FileDialogRequest request;
    request.filter = "ZIP(*.zip)|*.zip";
    request.startFolder = program.currentDir;
    std::optional<std::string> zip = program.services.fileDialog(request);
    if (!zip) return;
    program.setCurrentDirFromFile(*zip);
    if (!unpackZip(program, folderText, *zip)) return;
    found = filesIn(program.currentDir, "*.cr2");
    if (found.empty())
      return showSingleCR2Error(program, "No CR2 File in this zip file, or it has not been unzipped!");
    if (found.size() > 1)
      return showSingleCR2Error(program, "There is more than one CR2 in the cr2install folder!");
  }
  program.setBusy(true);
  std::string cr2 = folderText + found.front();
  f.LabelOBJFileName.setCaption(cr2);
  f.LabelOBJFileName.setBackColor(kPaleBlue);
  f.LabelOBJFileName.setVisible(true);
  for (ui::Picture* p : {&f.PictureOBJView, &f.PictureScaleObj, &f.PictureMash}) p->setVisible(false);
  // The source pane is hidden while the install runs; its caption stays, so that the
  // panes come back as they were when the install ends or is cancelled.
  if (f.LabelChannelFileName.visible()) {
    for (ui::Control* c : std::initializer_list<ui::Control*>{&f.LabelChannelFileName, &f.ListChannels})
      c->setVisible(false);
  }
  ListCR2Files(program, cr2);
  program.setBusy(false);
}

namespace {

// The texture target of an entry inside a textures folder, from the rest of its text:
// the positions of the second and later backslashes, each counted from the one before,
// summed over every entry so far.
std::string textureFromRest(const std::string& rest, long long& sum, const std::string& masterLib) {
  std::size_t at = text::InStr(rest, "\\");
  while (at > 0) {
    std::size_t next = text::InStr(rest, "\\", at + 1);
    if (next == 0) break;
    sum += static_cast<long long>(next - at);
    at = next;
  }
  return masterLib + text::Left(rest, sum);
}

}  // namespace

void InstallCR2Click(Program& program) {
  ui::Opening& f = program.opening;
  std::string root = posersRoot(program);
  std::string top = driveTop(root);
  f.LabelRtDir.setCaption(root + "\\cr2install");
  std::string running = root, texTarget, geomTarget;
  bool textureSeen = false;
  long long sum = 0;
  for (const std::string& entry : f.ListboxListCR2Files.items()) {
    std::size_t colon = text::InStr(entry, ":");
    std::string rest = colon > 0 ? text::Mid(entry, static_cast<long long>(colon) + 1) : entry;
    for (std::size_t c = text::InStr(rest, ":"); c > 0; c = text::InStr(rest, ":")) {
      running += "\\" + text::Left(rest, static_cast<long long>(c) - 1);
      changeOrCreate(program, installPath(running, top));
      rest = text::Mid(rest, static_cast<long long>(c) + 1);
    }
    if (contains(running, "Textures")) {
      texTarget = textureFromRest(rest, sum, f.MasterLibPath);
      textureSeen = true;
    } else {
      texTarget.clear();
      // An entry with no Poser path after its first colon: the stock texture folders.
      if (!contains(running, "\\") && !contains(running, ":") && !contains(running, "/")) {
        if (contains(root, "4")) texTarget = root + "Runtime\\textures\\Poser 4 Textures";
        if (contains(root, "3")) texTarget = root + "Runtime\\textures\\Poser 3 Textures";
        textureSeen = true;
      }
    }
    if (contains(running, "Textures")) texTarget = running;
    if (contains(running, "eometries")) geomTarget = running;
    running.clear();
  }
  f.LabelTexPathCR2Install.setCaption(textureSeen ? texTarget : "");
  f.LabelObjPathCR2Install.setCaption(geomTarget);
  if (f.LabelTexPathCR2Install.caption().empty())
    ui::msgBox(program.services,
               "There is no location for the texture files listed in the CR2, or the path is invalid.  The textures "
               "will be put with the CR2 for this file.",
               "Note!");
  std::string name = text::nativePath(f.LabelOBJFileName.caption()).filename().string();
  f.LabelCR2NameLength.setCaption(std::to_string(static_cast<long long>(name.size()) - 4));
  f.LabelOBJFileName.setCaption(name);
  std::string stem = text::Left(name, static_cast<long long>(name.size()) - 4);
  changeOrCreate(program, installPath(f.MasterLibPath + "\\Runtime\\Libraries", top));
  changeOrCreate(program, installPath(f.MasterLibPath + "\\Runtime\\Libraries\\Character\\" + stem, top));
  program.formCR2Install.setVisible(true);
  FormCR2InstallLoad(program);
}

void FormCR2InstallLoad(Program& program) {
  ui::FormCR2Install& form = program.formCR2Install;
  std::string top = driveTop(posersRoot(program));
  form.DriveCR2Install.clear();
  for (const std::string& d : ui::driveList(top)) form.DriveCR2Install.addItem(d);
  form.DriveCR2Install.setText(top);
  program.currentDir = text::nativePath(top);
  ui::showFolder(form.DirCR2Install, program.currentDir);
}

void DriveCR2InstallChange(Program& program) {
  ui::FormCR2Install& form = program.formCR2Install;
  ui::showFolder(form.DirCR2Install, text::nativePath(form.DriveCR2Install.text()));
}

void DirCR2InstallChange(Program& program) {
  ui::FormCR2Install& form = program.formCR2Install;
  ui::showFolder(form.DirCR2Install, text::nativePath(form.DirCR2Install.text()));
}

void NewDirClick(Program& program) {
  program.formCR2Install.TextNewDir.setVisible(true);
  program.formCR2Install.TextNewDir.setFocus();
}

void NewDirEnter(Program& program) {
  ui::FormCR2Install& form = program.formCR2Install;
  fs::path folder = text::nativePath(form.DirCR2Install.text() + "\\" + form.TextNewDir.text());
  std::error_code ec;
  if (!fs::create_directory(folder, ec) && !fs::is_directory(folder))
    text::raiseError(ec ? text::errorNumberFromErrno(ec.value(), true) : text::kPathFileAccessError, folder.string());
  ui::showFolder(form.DirCR2Install, folder);
  form.TextNewDir.setText("");
  form.TextNewDir.setVisible(false);
}

void RemoveDirClick(Program& program) {
  ui::FormCR2Install& form = program.formCR2Install;
  std::string path = form.DirCR2Install.text();
  if (ui::msgBox(program.services, "Are you sure you want to remove " + path + "?", "Confirm",
                 ui::Buttons::OKCancel) != ui::Answer::OK)
    return;
  fs::path folder = text::nativePath(path);
  fs::path parent = folder.parent_path();
  program.currentDir = parent;
  std::error_code ec;
  if (!fs::remove(folder, ec) || ec)
    text::raiseError(ec ? text::errorNumberFromErrno(ec.value(), true) : text::kPathNotFound, folder.string());
  ui::showFolder(form.DirCR2Install, parent);
}

namespace {

// The walk over the files left in the install folder: the first row that fits the
// entry's extension decides, and a file moved or renamed takes one more step off the
// index, so the entry in front of it is passed over.
void placeLeftovers(Program& program, const std::string& rt, const fs::path& texFolder, const std::string& stem) {
  ui::ListBox& list = program.formCR2Install.ListCR2Install;
  static const std::string kKeep[] = {"lst", "txt", "zip", "sit", "obj", "rsr"};
  static const std::string kPictures[] = {"tif", "iff", "bmp", "jpg", "png", "bum", "pz2"};
  fs::path folder = text::nativePath(rt);
  for (int i = list.listCount(); i >= 0; --i) {
    std::string entry = i < list.listCount() ? list.list(i) : std::string();
    std::string ext = text::LCase(text::Right(entry, 3));
    if (ext == "Lst" || std::find(std::begin(kKeep), std::end(kKeep), ext) != std::end(kKeep)) {
      list.removeItem(i);
    } else if (ext == "mtl") {
      moveIgnoringErrors(folder / entry, folder / (stem + "mtl"));
      list.removeItem(i);
      --i;
    } else if (std::find(std::begin(kPictures), std::end(kPictures), ext) != std::end(kPictures)) {
      moveIgnoringErrors(folder / entry, texFolder / entry);
      list.removeItem(i);
      --i;
    }
  }
}

void printNotInstalled(Program& program, const std::string& name) {
  ui::PrintJob job;
  job.title = "Files Not Installed";
  job.fontSize = 12;
  job.text = "\r\n\r\n\r\n" + std::string(15, ' ') + "Files Not Installed -- " + name + "\r\n\r\n\r\n";
  for (const std::string& entry : program.formCR2Install.ListCR2Install.items())
    job.text += std::string(9, ' ') + entry + "\r\n";
  program.services.print(job);
}

}  // namespace

void InstallIntoFolder(Program& program) {
  ui::Opening& f = program.opening;
  ui::FormCR2Install& form = program.formCR2Install;
  std::string top = driveTop(posersRoot(program));
  fs::path target = text::nativePath(form.DirCR2Install.text());
  std::string name = f.LabelOBJFileName.caption();
  std::string rt = f.LabelRtDir.caption();
  fs::path rtFolder = text::nativePath(rt);
  moveIgnoringErrors(rtFolder / name, target / name);
  std::string stem = text::Left(name, static_cast<long long>(text::InStr(name, ".")));
  // Without a geometry folder the path is "\" and the name: the top of the drive.
  moveIgnoringErrors(rtFolder / (stem + "obj"),
                     installPath(f.LabelObjPathCR2Install.caption() + "\\" + stem + "obj", top));
  std::vector<std::string> rsr = filesIn(rtFolder, "*.rsr");
  if (!rsr.empty()) moveIgnoringErrors(rtFolder / rsr.front(), target / rsr.front());
  program.currentDir = rtFolder;
  form.ListCR2Install.setItems(filesIn(rtFolder, "*.*"));
  if (form.ListCR2Install.listCount() > 0) {
    std::string tex = f.LabelTexPathCR2Install.caption();
    fs::path texFolder = tex.empty() ? target : installPath(tex, top);
    placeLeftovers(program, rt, texFolder, stem);
    if (form.ListCR2Install.listCount() > 0) {
      form.ListCR2Install.setVisible(true);
      if (ui::msgBox(program.services,
                     "These files are not listed in the CR2, or have already been installed, or are simply "
                     "unrelated files in this directory. You may place them manually. Print the list?",
                     "Alert!", ui::Buttons::YesNo) == ui::Answer::Yes)
        printNotInstalled(program, name);
    }
  }
  form.ListCR2Install.clear();
  form.ListCR2Install.setVisible(false);
  ui::msgBox(program.services, "Your CR2 has been installed!", "Success!");
  form.setVisible(false);
  restoreMainWindow(program);
}

void CancelInstall(Program& program) { restoreMainWindow(program); }

}  // namespace tolvane::install
