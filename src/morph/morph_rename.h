// Rename: PictureRenameMorph renames one morph channel or one body part of the
// destination through "\RenMorph.txt". The first click offers the two kinds, the
// second takes the new name as a typed line and rewrites the file.
#pragma once

namespace tolvane {
class Program;
struct EventArgs;
}  // namespace tolvane

namespace tolvane::morph {

void RenameMorphClick(Program& program);
void RenameMorphRightClick(Program& program);
// A key in TextMorphRename: Enter (13) ends the wait for the typed name.
void TextMorphRenameKey(Program& program, const EventArgs& args);

}  // namespace tolvane::morph
