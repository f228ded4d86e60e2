// The scans that fill the builder's lists from the destination: the figure's own
// number, the morphs, the joint and translation dials with their limits, the figure
// names, and the body parts. Each walks the file from its start and returns plain lines.
#pragma once

#include <string>
#include <vector>

#include "ui/form_erc.h"

namespace tolvane::erc {

using Lines = std::vector<std::string>;

// The text behind the ":" of the third field behind the first "figure" field that is no
// figureResFile line. Reading past the end is run-time error 62.
std::string ownFigureNumber(const std::string& path);

// The morphs, as "id:n" (the id alone for a partial body morph); for a conforming morph
// only those of figures other than the one of the first "actor BODY:" line.
Lines listMorphs(const std::string& path, ui::ErcKind kind);

// Dial lines such as "xrot lShldr:1 bend [X]" and, per dial, its three ListMinMax rows.
struct DialListing {
  Lines dials;
  Lines minMax;
};
// `translation` lists translateX/Y/Z in place of rotateX/Y/Z. A conforming morph takes
// the dials of other figures than `ownFigure`, a joint-controlled morph those of it.
DialListing listDials(const std::string& path, bool translation, ui::ErcKind kind,
                      const std::string& ownFigure);

// The names of the figure blocks, in file order.
Lines listFigureNames(const std::string& path);

// The body parts, as "hip:1"; the start of the definitions gives a single blank.
Lines listBodyParts(const std::string& path);

}  // namespace tolvane::erc
