// What every tool assumes about Poser figure text: the four match forms, the header
// recognisers, the file kind, Poser's colon path form, and the 1-based string helpers
// the tools use to cut lines at the character positions their rules give.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tolvane::text {

// Match forms. All are case-sensitive and byte-exact.
inline bool isExact(std::string_view line, std::string_view literal) { return line == literal; }
inline bool hasPrefix(std::string_view line, std::string_view literal) {
  return line.substr(0, literal.size()) == literal;
}
inline bool contains(std::string_view line, std::string_view literal) {
  return line.find(literal) != std::string_view::npos;
}
// Column form: the character at 1-based position `column`, or 0 past the end.
inline char charAt(std::string_view line, std::size_t column) {
  return column >= 1 && column <= line.size() ? line[column - 1] : '\0';
}

// 1-based substring helpers with the run-time's rules: Mid from `start` (start 0 is
// run-time error 5), Left and Right clamp to the text.
std::string Mid(std::string_view text, long long start);
std::string Mid(std::string_view text, long long start, long long length);
std::string Left(std::string_view text, long long length);
std::string Right(std::string_view text, long long length);
// 1-based position of `what` in `text` from `start`, 0 when absent.
std::size_t InStr(std::string_view text, std::string_view what, std::size_t start = 1);
std::string UCase(std::string_view text);
std::string LCase(std::string_view text);
std::string Replace(std::string_view text, std::string_view from, std::string_view to);

// Header recognisers.
bool IsActorHeader(std::string_view line);  // prefix "actor"
bool IsPropHeader(std::string_view line);   // prefix "prop"
std::string ActorName(std::string_view line);  // from character 7, suffix kept
char FigureNumber(std::string_view line);      // the last character

// Lower-cased last three characters of a path; no dot is looked for. A compressed kind
// gives the plain kind it holds ("crz" gives "cr2"), so every tool takes it as that kind.
std::string FileKind(std::string_view path);
// The last three characters of a path as they stand (so "CR2" is not "cr2"), except that a
// compressed kind gives the plain kind it holds: the kind test of the tools that compare
// the name's end exactly.
std::string PlainKind(std::string_view path);

// From a file path to the colon form inside figure text: the text from the first
// "Runtime" on, every backslash (and, on this platform, every slash) a colon.
// A path without "Runtime" is run-time error 5, which the callers trap.
std::string ToPoserPath(std::string_view path);

// From the colon form back to a file path under the Poser folder `ploc` (which ends
// in a separator). Each colon becomes a separator. When the path does not exist as
// spelled, it is looked up case-insensitively, folder by folder.
std::filesystem::path FromPoserPath(std::string_view text, std::string_view ploc);

// Case-insensitive lookup of an existing path, component by component; the path as
// given when no match exists.
std::filesystem::path resolveCaseInsensitive(const std::filesystem::path& path);

// A scratch name of the Work folder: "\Reorder.cr2" and "cr2temp.txt" both name a file
// directly in `workDir`.
std::filesystem::path workFile(const std::filesystem::path& workDir, std::string_view name);

// The path of a file whose name the user or a figure gave in the platform's form or
// with backslashes, as this file system names it.
std::filesystem::path nativePath(std::string_view text);

}  // namespace tolvane::text
