#include "utilities/dial_renamer.h"

#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "ui/folder_pickers.h"
#include "ui/services.h"

namespace tolvane::utilities {

namespace {

const char* const kDials[] = {
    "Taper",   "Twist",   "Side-Side", "Bend",      "Scale",     "xScale",      "yScale",     "zScale",
    "xRotate", "yRotate", "zRotate",   "xTrans",    "yTrans",    "zTrans",      "Focal",      "Pitch",
    "Yaw",     "Roll",    "Red",       "Green",     "Blue",      "Intensity",   "Turn",       "Front-Back",
    "Dollyx",  "Dollyy",  "Dollyz",    "Shadow",    "Map Size",  "Panx",        "Pany",       "Zoom",
    "xTranB",  "yTranB",  "zTranB",    "xOffset",   "yOffset",   "zOffset",     "xOrbit",     "yOrbit",
    "zOrbit",  "Hand Type", "BreastSize", "OriginX", "OriginY", "OriginZ",     "Fatness",    "Grasp",
    "Thumb Grasp", "Spread", "Curve",  "curve",     "Up-Down"};

const char* const kBodyParts[] = {
    "Body",           "Head",           "Neck",           "Chest",          "Abdomen",        "Hip",
    "Left Thigh",     "Left Shin",      "Left Foot",      "Right Thigh",    "Right Shin",     "Right Foot",
    "Left Shoulder",  "Left Forearm",   "Left Hand",      "Right Shoulder", "Right Forearm",  "Right Hand",
    "Left Collar",    "Right Collar",   "Jaw",            "Left Pinky 1",   "Left Pinky 2",   "Left Pinky 3",
    "Right Pinky 1",  "Right Pinky 2",  "Right Pinky 3",  "Left Ring 1",    "Left Ring 2",    "Left Ring 3",
    "Right Ring 1",   "Right Ring 2",   "Right Ring 3",   "Left Mid 1",     "Left Mid 2",     "Left Mid 3",
    "Right Mid 1",    "Right Mid 2",    "Right Mid 3",    "Left Index 1",   "Left Index 2",   "Left Index 3",
    "Right Index 1",  "Right Index 2",  "Right Index 3",  "Left Thumb 1",   "Left Thumb 2",   "Left Thumb 3",
    "Right Thumb 1",  "Right Thumb 2",  "Right Thumb 3",  "Left Toe",       "Right Toe",      "Neck 1",
    "Neck 2",         "Right Finger 1", "Right Claw 1",   "Right Finger 2", "Right Claw 2",   "Right Finger 3",
    "Right Claw 3",   "Left Finger 1",  "Left Claw 1",    "Left Finger 2",  "Left Claw 2",    "Left Finger 3",
    "Left Claw 3",    "Right Toe 1",    "Right Toe 2",    "Left Toe 1",     "Left Toe 2",     "Tail 1",
    "Tail 2",         "Tail 3",         "Tail 4",         "Left Up Arm",    "Right Up Arm",   "Left Wrist",
    "Right Wrist",    "Lower Neck",     "Upper Neck",     "Left Leg",       "Right Leg",      "Left Ankle",
    "Right Ankle",    "Waist",          "Left Ear 1",     "Right Ear 1",    "Left Ear 2",     "Right Ear 2",
    "Left Ear 3",     "Right Ear 3",    "Tail Fins",      "Right Pect Fin", "Left Pect Fin",  "Body 1",
    "Body 2",         "Body 3",         "Body 4",         "Body 5",         "Left Eye",       "Right Eye",
    "innerMatSphere", "outerMatSphere", "nullMatSphere"};

constexpr int kDialRows = sizeof(kDials) / sizeof(kDials[0]);
constexpr int kBodyRows = sizeof(kBodyParts) / sizeof(kBodyParts[0]);
static_assert(kDialRows == 53 && kBodyRows == 105);

// The number text a row is found by: the dial table compares three characters, so
// ",5)" and ",12"; the body table four, where a one-digit row compares its first three.
bool dialKeyMatches(int n, const std::string& three) {
  return three == (n < 10 ? "," + std::to_string(n) + ")" : "," + std::to_string(n));
}
bool bodyKeyMatches(int n, const std::string& four) {
  if (n < 10) return text::Left(four, 3) == "," + std::to_string(n) + ")";
  return four == (n < 100 ? "," + std::to_string(n) + ")" : "," + std::to_string(n));
}

}  // namespace

const char* dialName(int number) { return number >= 1 && number <= kDialRows ? kDials[number - 1] : nullptr; }
const char* bodyPartName(int number) {
  return number >= 1 && number <= kBodyRows ? kBodyParts[number - 1] : nullptr;
}

std::string toFriendlyLine(const std::string& line, std::string& name) {
  std::size_t g = text::InStr(line, "GetStringRes");
  if (g <= 1) return line;
  bool threeTabs = g == 9;
  long long at = static_cast<long long>(g);
  if (text::Mid(line, at + 15, 2) == "28") {
    std::string three = text::Mid(line, at + 17, 3);
    for (int n = 1; n <= kDialRows; ++n)
      if (dialKeyMatches(n, three)) name = kDials[n - 1];
  } else {
    std::string four = text::Mid(line, at + 17, 4);
    for (int n = 1; n <= kBodyRows; ++n)
      if (bodyKeyMatches(n, four)) name = kBodyParts[n - 1];
  }
  return threeTabs ? "\t\t\tname " + name : "\tname    " + name;
}

std::string toGetStringResLine(const std::string& line, std::string& number) {
  std::size_t at = text::InStr(line, "name");
  if (at <= 1) return line;
  bool oneTab = at == 2;
  std::string friendly = text::Mid(line, static_cast<long long>(at) + (oneTab ? 8 : 5));
  bool found = false;
  for (int n = 1; n <= kDialRows && !found; ++n)
    if (friendly == kDials[n - 1]) {
      number = std::to_string(n) + ")";
      found = true;
    }
  for (int n = 1; n <= kBodyRows && !found; ++n) {
    // This direction spells the row of "Left Hand" with a closing double quote.
    std::string row = n == 15 ? std::string("Left Hand\"") : std::string(kBodyParts[n - 1]);
    if (friendly == row) {
      number = std::to_string(n) + ")";
      found = true;
    }
  }
  return oneTab ? "\tname   GetStringRes(1024," + number : "\t\t\tname GetStringRes(1028," + number;
}

namespace {

std::string chosenFile(Program& program) {
  ui::Renamer& r = program.renamer;
  return (text::nativePath(r.Dir1.text()) / r.File1.text()).string();
}

void showModes(ui::Renamer& r) {
  r.LabelFriendly.setBackColor(r.Mode == 1 ? ui::kToolOn : ui::kToolRest);
  r.LabelGetSR.setBackColor(r.Mode == 2 ? ui::kToolOn : ui::kToolRest);
}

// The rewrite of one file through Dials.tmp in the current directory; false when the
// line loop failed and the user was told.
bool renameDials(Program& program, const std::string& file, int mode) {
  std::filesystem::path source = text::nativePath(file);
  text::StreamRewrite scratch(program.currentDir / "Dials.tmp", true);
  try {
    text::LineReader in(source);
    std::string carried;
    std::string line;
    while (in.readRawLine(line))
      scratch.WriteLine(mode == 1 ? toFriendlyLine(line, carried) : toGetStringResLine(line, carried));
    in.close();
  } catch (const text::RuntimeError&) {
    // The source stays as it was; Dials.tmp stays behind with what was written.
    text::ignoreErrors([&scratch] { scratch.close(); });
    program.setBusy(false);
    ui::msgBox(program.services, "ERROR!", "Error!");
    return false;
  }
  scratch.replace(source);
  return true;
}

}  // namespace

void RenamerLoad(Program& program) {
  ui::Renamer& r = program.renamer;
  r.Drive1.clear();
  for (const std::string& d : ui::driveList()) r.Drive1.addItem(d);
  r.Drive1.setText("/");
  ui::showFolder(r.Dir1, program.currentDir);
  ui::showFiles(r.File1, program.currentDir, "*.*");
  r.Label1.setCaption("");
  r.Mode = 0;
  showModes(r);
}

void RenamerDriveChange(Program& program) {
  ui::Renamer& r = program.renamer;
  r.Dir1.setText(r.Drive1.text());
  RenamerDirChange(program);
}

void RenamerDirChange(Program& program) {
  ui::Renamer& r = program.renamer;
  std::filesystem::path folder = text::nativePath(r.Dir1.text());
  ui::showFolder(r.Dir1, folder);
  ui::showFiles(r.File1, folder, "*.*");
  // The scratch file goes wherever the folder list leaves the process.
  program.currentDir = folder;
}

void RenamerFileClick(Program& program) {
  ui::Renamer& r = program.renamer;
  if (r.File1.listIndex() < 0) return;
  std::string file = chosenFile(program);
  if (text::isReadOnly(text::nativePath(file)) &&
      ui::msgBox(program.services,
                 "This is a read-only file, probably from a CD.  It cannot be edited.  Would you like to change this "
                 "attribute so it can be edited by Tolvane?",
                 "Note!", ui::Buttons::OKCancel) == ui::Answer::OK)
    text::clearReadOnly(text::nativePath(file));
  r.Label1.setCaption(r.File1.text());
}

void RenamerModeClick(Program& program, int mode) {
  program.renamer.Mode = mode;
  showModes(program.renamer);
}

void RenamerPictureClick(Program& program) {
  ui::msgBox(program.services, "You must choose a file first, and drag it from the label to here!", "Note!");
}

void RenamerDrop(Program& program) {
  ui::Renamer& r = program.renamer;
  if (r.File1.listIndex() < 0) {
    ui::msgBox(program.services, "You must choose a file first!", "Note!");
    return;
  }
  if (r.Mode == 0) {
    ui::msgBox(program.services, "Choose from the buttons below first.", "Note!");
    return;
  }
  program.setBusy(true);
  if (!renameDials(program, chosenFile(program), r.Mode)) return;
  r.Mode = 0;
  showModes(r);
  program.setBusy(false);
}

void RenamerHelp(Program& program) {
  ui::msgBox(program.services,
             "Pick either Change to Friendly or Revert.  Choose a file, then drag and drop it on the picture. Be sure "
             "to revert to GetStringRes before releasing the CR2 to avoid conflict in non-English Poser versions!",
             "Help");
}

void RenamerAbout(Program& program) {
  ui::msgBox(program.services, "Dial Renamer: GetStringRes names to friendly names and back.", "About");
}

}  // namespace tolvane::utilities
