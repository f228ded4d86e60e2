// File operations with the platform's rules (delete, rename, read-only bit) and the
// Stream rewrite that every tool writes through: a scratch copy in the Work folder,
// opened for appending, that replaces the original only when the tool is told to.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "text/line_writer.h"

namespace tolvane::text {

// Deletes a file; a missing file is run-time error 53.
void killFile(const std::filesystem::path& path);
// Deletes a file with errors ignored: how every scratch file is removed.
void deleteIgnoringErrors(const std::filesystem::path& path);
// Renames; error 58 when the target exists, 53 when the source is missing.
void renameFile(const std::filesystem::path& from, const std::filesystem::path& to);
// The original goes, the scratch copy takes its name.
void replaceWithScratch(const std::filesystem::path& original, const std::filesystem::path& scratch);

bool fileExists(const std::filesystem::path& path);
std::uint64_t fileLength(const std::filesystem::path& path);  // error 53 when missing
bool isReadOnly(const std::filesystem::path& path);
void clearReadOnly(const std::filesystem::path& path);
void setReadOnly(const std::filesystem::path& path);

// The scratch side of a rewrite. The scratch file is opened for appending, as the
// tools do; `deleteFirst` removes what an interrupted run left.
class StreamRewrite {
 public:
  StreamRewrite(std::filesystem::path scratch, bool deleteFirst);
  ~StreamRewrite();

  LineWriter& out() { return *m_writer; }
  void WriteLine(std::string_view text) { m_writer->WriteLine(text); }
  const std::filesystem::path& scratch() const { return m_scratch; }

  void close();                                       // flush and close the scratch file
  void replace(const std::filesystem::path& original);  // close, then take the original's place
  void discard();                                     // close and delete the scratch file

 private:
  std::filesystem::path m_scratch;
  std::unique_ptr<LineWriter> m_writer;
};

}  // namespace tolvane::text
