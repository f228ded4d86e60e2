#include "zip_builder.h"

#include <sys/stat.h>
#include <zip.h>

#include <stdexcept>

#include "test_files.h"

namespace tolvane::test {

void writeZip(const std::filesystem::path& zip, const std::vector<ZipEntry>& entries) {
  std::filesystem::remove(zip);
  int error = 0;
  zip_t* archive = zip_open(zip.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
  if (archive == nullptr) throw std::runtime_error("cannot create " + zip.string());
  for (const ZipEntry& e : entries) {
    if (e.kind == ZipEntry::Kind::Folder) {
      zip_dir_add(archive, e.name.c_str(), ZIP_FL_ENC_UTF_8);
      continue;
    }
    zip_source_t* source = zip_source_buffer(archive, e.bytes.data(), e.bytes.size(), 0);
    zip_int64_t index = zip_file_add(archive, e.name.c_str(), source, ZIP_FL_ENC_UTF_8 | ZIP_FL_OVERWRITE);
    if (index < 0) throw std::runtime_error("cannot add " + e.name);
    if (e.kind == ZipEntry::Kind::Symlink)
      zip_file_set_external_attributes(archive, static_cast<zip_uint64_t>(index), 0, ZIP_OPSYS_UNIX,
                                       static_cast<zip_uint32_t>(S_IFLNK | 0777) << 16);
    if (e.kind == ZipEntry::Kind::Encrypted &&
        zip_file_set_encryption(archive, static_cast<zip_uint64_t>(index), ZIP_EM_AES_256, "secret") != 0)
      throw std::runtime_error("cannot encrypt " + e.name);
  }
  if (zip_close(archive) != 0) throw std::runtime_error("cannot write " + zip.string());
}

void writeEmptyZip(const std::filesystem::path& zip) {
  writeFile(zip, std::string("PK\x05\x06", 4) + std::string(18, '\0'));
}

}  // namespace tolvane::test
