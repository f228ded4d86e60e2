// Pose files that hold nothing but morph settings. The MOR editor writes a skeleton of
// every morph target and value parameter of a figure with a value for each; the PZ2
// welder puts the checked settings of a second pose file into a first one, inserting
// the channels the first one lacks.
#pragma once

#include <string>

namespace tolvane {
class Program;
}

namespace tolvane::library {

void ShowMorEditor(Program& program);  // MenuMor: the skeleton written to Mor.txt
void MorMorphsClick(Program& program);  // ListMorphs: its value into TextValue
void MorValueEnter(Program& program);   // Enter in TextValue: the value of the chosen morph
void MorDone(Program& program);         // LabelDone: Mor1.txt with the values, then the save
void MorCancel(Program& program);

void ShowWelder(Program& program);        // menuCombinePZ2: the first file's morphs
void WelderOpenSecond(Program& program);  // LabelOpenSecond
void WelderFileClick(Program& program, bool second);  // a key line into LabelKey1 / LabelKey2
void WelderDone(Program& program);        // LabelDone: Combine.pz2, the missing channels, the save
void WelderCancel(Program& program);

// The name text of a morph line: from the 13th character of a targetGeom line, the
// 12th of a valueParm line, so that the blank in front of the name stays.
std::string morphName(const std::string& line);
// A MOR value as written: a leading point gets a "0" in front.
std::string morValue(const std::string& value);

}  // namespace tolvane::library
