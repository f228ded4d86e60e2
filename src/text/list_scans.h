// The scans behind the workspace's lists: each walks a figure once from its first line
// and returns what it found as plain values, which the workspace puts into the forms and
// later tools reuse without them. A scan that stops on a run-time error keeps what it had
// found up to there in its result, for the lists whose entries show as they are read.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "text/figure_scan.h"

namespace tolvane::text {

// The body parts list: one entry per actor line, " *N" with its line number behind it
// (the declarations of a figure as a single blank entry); `kind` is the file's suffix.
std::vector<std::string> scanBodyParts(FigureScanner& in, const std::string& kind);

// All channels of every part: the channel view's lines, and the hidden reorder table
// ("part*dial^line@internal").
struct ChannelScan {
  std::vector<std::string> channels;
  std::vector<std::string> reorder;
};
// A fault inside a part ends the listing and is not raised; `hair` lists props too.
ChannelScan scanChannels(FigureScanner& in, bool hair);

// The materials with their two colour lists ("R G B" times 256, as the run-time prints).
struct MaterialScan {
  std::vector<std::string> names, colours, hiLites;
};
// The same scan serves the pose editor's material list: with `kdTextOnly` each entry
// of `colours` is the KdColor field as it stands from its 9th character (red, green,
// blue and alpha), no KsColor is read and `hiLites` stays empty.
MaterialScan scanMaterials(FigureScanner& in, const std::string& kind, bool kdTextOnly = false);
// Three colour numbers of a KdColor or KsColor line, times 256, joined by blanks. Val
// gives a double, and so does the product: a value shows up to 15 digits (0.333333 gives
// 85.333248).
std::string colourEntry(std::string_view line);

// The main geometry and the props' geometry files.
struct GeometryScan {
  bool customGeometry = false;       // a geomCustom before the main geometry
  bool mainFound = false;            // the main geometry was read
  std::string mainObj;               // the text behind "Geometries:" (TextMainOBJ)
  bool propCustomGeometry = false;   // a geomCustom among the props
  bool laterCustomGeometry = false;  // a geomCustom anywhere behind the main geometry
  std::vector<std::string> props;    // new values for the props list
};
// `propFile` for hair and prop files; `knownProps` are the props list's entries so far.
void scanGeometry(FigureScanner& in, bool propFile, const std::vector<std::string>& knownProps,
                  GeometryScan& out);

// The primary material's maps and every texture value of the file.
struct TextureScan {
  bool primaryFound = false;
  std::vector<std::string> newMaps;  // texture values not among the known ones, in order
  std::string texture, transparency, reflection, bump;  // empty: no such map
};
void scanTextures(FigureScanner& in, bool hair, const std::vector<std::string>& knownMaps, TextureScan& out);

}  // namespace tolvane::text
