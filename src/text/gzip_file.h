// Compressed figure files (CRZ, PZZ, P2Z, HRZ, PPZ, FCZ: gzip streams of the plain
// kinds). A reader that meets a gzip stream reads an unpacked copy of it, made once in
// an unnamed scratch file and kept while the packed file stays unchanged; the last move
// of a rewrite packs the new text again when the file it replaces is packed. So every
// tool reads and writes a compressed figure as it does a plain one, under its own name.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace tolvane::text::gzip {

// The largest text a packed file may unpack to, and the largest ratio of unpacked to
// packed length: past either it is refused as no figure (a "gzip bomb").
inline constexpr std::uint64_t kLargestUnpacked = std::uint64_t{4} << 30;
inline constexpr std::uint64_t kLargestRatio = 1000;

// True when `head` starts with the two bytes of a gzip stream.
bool hasMagic(std::string_view head);
// True when the file exists and starts with a gzip stream.
bool isPacked(const std::filesystem::path& path);
// True when the name ends in one of the compressed kinds (".crz", ".pzz", ...).
bool hasPackedName(std::string_view path);
// The plain kind a compressed kind stands for ("crz" -> "cr2"); other kinds as given.
std::string plainKind(const std::string& kind);

// Whether the text that takes `target`'s place is packed: when the target is a gzip
// stream, or when there is no target yet and its name is a compressed kind.
bool packsInto(const std::filesystem::path& target);

// A descriptor (open for reading) of the unpacked text of the packed file open on
// `packed`, and its length. A damaged or cut stream is run-time error 57 and a stream
// past the limits error 7, each with a text that says so; `shownAs` names the file.
int openUnpacked(int packed, const std::filesystem::path& shownAs, std::uint64_t& length);

// Packs every byte of `from` into `fd` (written through the disk seam), flushed to the
// device; a failed write is raised for `shownAs`.
void packInto(const std::filesystem::path& from, int fd, const std::filesystem::path& shownAs);

// The folder the unpacked copies are made in (the Work folder; the system's temporary
// folder until it is set).
void setUnpackFolder(const std::filesystem::path& folder);

}  // namespace tolvane::text::gzip
