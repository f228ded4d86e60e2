#include "install/zip_extract.h"

#include <archive.h>
#include <archive_entry.h>

#include <memory>

#include "text/disk.h"
#include "text/line_writer.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"

namespace tolvane::install {

namespace {

using ArchivePtr = std::unique_ptr<archive, int (*)(archive*)>;

ArchivePtr openZip(const std::filesystem::path& zip) {
  ArchivePtr a(archive_read_new(), archive_read_free);
  archive_read_support_format_zip(a.get());
  if (archive_read_open_filename(a.get(), zip.c_str(), 1 << 16) != ARCHIVE_OK) {
    if (!std::filesystem::exists(zip)) text::raiseError(text::kFileNotFound, zip.string());
    return ArchivePtr(nullptr, archive_read_free);
  }
  return a;
}

// The entry's place under the install folder, with "/" between its folders; empty for
// a name that is a folder alone.
std::string placeOf(const std::string& name) {
  std::string place = name;
  for (char& c : place)
    if (c == '\\') c = '/';
  while (!place.empty() && place.back() == '/') place.pop_back();
  return place;
}

// Makes the folders of `place` under `folder`, noting the ones it made; a folder that is
// a link (or a file in its way) is refused, so that nothing is written outside.
std::string makeFolders(const std::filesystem::path& folder, const std::string& place,
                        std::vector<std::filesystem::path>& made) {
  std::filesystem::path at = folder;
  std::size_t start = 0;
  for (std::size_t cut = place.find('/'); cut != std::string::npos; cut = place.find('/', start)) {
    std::string part = place.substr(start, cut - start);
    start = cut + 1;
    if (part.empty() || part == ".") continue;
    at /= part;
    std::error_code ec;
    auto status = std::filesystem::symlink_status(at, ec);
    if (status.type() == std::filesystem::file_type::not_found) {
      if (!std::filesystem::create_directory(at, ec) && ec)
        text::raiseError(text::errorNumberFromErrno(ec.value(), true), at.string());
      made.push_back(at);
    } else if (status.type() != std::filesystem::file_type::directory) {
      return "the entry \"" + place + "\" leads through \"" + part + "\", which is no folder";
    }
  }
  return {};
}

std::string damaged(archive* a) {
  const char* why = archive_error_string(a);
  return std::string(kDamagedZip) + (why ? " (" + std::string(why) + ")" : "");
}

// The first pass: every entry's name, kind and stated size, before a byte is written.
std::string checkEntries(const std::filesystem::path& zip, const ZipLimits& limits) {
  ArchivePtr a = openZip(zip);
  if (!a) return kDamagedZip;
  archive_entry* entry = nullptr;
  for (;;) {
    int r = archive_read_next_header(a.get(), &entry);
    if (r == ARCHIVE_EOF) return {};
    if (r < ARCHIVE_WARN) return damaged(a.get());
    std::string name = archive_entry_pathname(entry) ? archive_entry_pathname(entry) : "";
    std::string why = unsafeEntryName(name);
    if (why.empty() && (archive_entry_filetype(entry) == AE_IFLNK || archive_entry_hardlink(entry) != nullptr))
      why = "is a link";
    if (why.empty() && archive_entry_is_encrypted(entry)) why = "is encrypted";
    if (why.empty() && archive_entry_size_is_set(entry) &&
        static_cast<std::uint64_t>(archive_entry_size(entry)) > limits.maxEntryBytes)
      why = "would unpack to more than " + std::to_string(limits.maxEntryBytes >> 20) + " MB";
    if (!why.empty()) return "the entry \"" + name + "\" " + why;
    archive_read_data_skip(a.get());
  }
}

// Writes one entry under a hidden name beside its place and gives it its name when
// whole; returns a refusal when the entry turns out to be a bomb.
std::string writeEntry(archive* a, const std::string& name, const std::filesystem::path& target,
                       const ZipLimits& limits) {
  std::filesystem::path scratch = target.parent_path() / ("." + target.filename().string() + ".tolvane-unzip");
  text::deleteIgnoringErrors(scratch);
  std::uint64_t packedStart = static_cast<std::uint64_t>(archive_filter_bytes(a, -1));
  std::uint64_t written = 0;
  try {
    text::LineWriter out(scratch, text::LineWriter::Mode::Output);
    const void* block = nullptr;
    size_t size = 0;
    la_int64_t offset = 0;
    for (;;) {
      int r = archive_read_data_block(a, &block, &size, &offset);
      if (r == ARCHIVE_EOF) break;
      if (r < ARCHIVE_WARN) {
        out.close();
        text::deleteIgnoringErrors(scratch);
        return damaged(a);
      }
      written += size;
      std::uint64_t packed = static_cast<std::uint64_t>(archive_filter_bytes(a, -1)) - packedStart;
      if (written > limits.maxEntryBytes ||
          (written > limits.ratioFloor && written > limits.maxRatio * std::max<std::uint64_t>(packed, 1))) {
        out.close();
        text::deleteIgnoringErrors(scratch);
        return "the entry \"" + name + "\" unpacks to far more than it holds (a zip bomb)";
      }
      out.write(std::string_view(static_cast<const char*>(block), size));
    }
    out.close();
    if (text::disk::rename(scratch, target) != 0)
      text::raiseError(text::errorNumberFromErrno(errno, true), target.string());
  } catch (...) {
    text::deleteIgnoringErrors(scratch);
    throw;
  }
  return {};
}

}  // namespace

std::string unsafeEntryName(const std::string& name) {
  if (name.empty()) return "has no name";
  if (name[0] == '/' || name[0] == '\\' || (name.size() > 1 && name[1] == ':'))
    return "has an absolute path";
  std::size_t start = 0;
  while (start <= name.size()) {
    std::size_t end = name.find_first_of("/\\", start);
    if (end == std::string::npos) end = name.size();
    if (name.compare(start, end - start, "..") == 0) return "leads out of the install folder";
    start = end + 1;
  }
  return {};
}

ZipResult extractZip(const std::filesystem::path& zip, const std::filesystem::path& folder,
                      const ZipLimits& limits) {
  ZipResult result;
  result.refusal = checkEntries(zip, limits);
  if (!result.refusal.empty()) return result;
  ArchivePtr a = openZip(zip);
  if (!a) {
    result.refusal = kDamagedZip;
    return result;
  }
  // Only files and folders this job created go again; one that replaced a file of the
  // same name cannot give the old one back, so the check pass is what keeps a refusal
  // harmless.
  std::vector<std::string> created;
  std::vector<std::filesystem::path> madeFolders;
  auto undo = [&result, &created, &madeFolders, &folder] {
    for (const auto& f : created) text::deleteIgnoringErrors(folder / f);
    for (auto it = madeFolders.rbegin(); it != madeFolders.rend(); ++it) {
      std::error_code ec;
      std::filesystem::remove(*it, ec);
    }
    result.files.clear();
  };
  try {
    archive_entry* entry = nullptr;
    for (;;) {
      int r = archive_read_next_header(a.get(), &entry);
      if (r == ARCHIVE_EOF) break;
      if (r < ARCHIVE_WARN) {
        result.refusal = damaged(a.get());
        break;
      }
      std::string name = archive_entry_pathname(entry);
      std::string place = placeOf(name);
      bool isFolder = archive_entry_filetype(entry) == AE_IFDIR;
      result.refusal = makeFolders(folder, isFolder ? place + "/" : place, madeFolders);
      if (!result.refusal.empty()) break;
      if (isFolder || place.empty()) continue;
      bool existed = text::fileExists(folder / place);
      result.refusal = writeEntry(a.get(), name, folder / place, limits);
      if (!result.refusal.empty()) break;
      result.files.push_back(place);
      if (!existed) created.push_back(place);
    }
  } catch (...) {
    undo();
    throw;
  }
  if (!result.refusal.empty()) undo();
  return result;
}

}  // namespace tolvane::install
