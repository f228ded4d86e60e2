// Buffered output of figure text: WriteLine puts the text and CR LF. Files are opened
// new (truncated) or for appending, as the scratch files of the tools are. A failed
// write (a full disk, a removed folder) throws the platform's run-time error.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::text {

class LineWriter {
 public:
  enum class Mode { Output, Append };

  LineWriter(const std::filesystem::path& path, Mode mode);
  ~LineWriter();  // closes; errors at this point are lost, so callers close() explicitly
  LineWriter(const LineWriter&) = delete;
  LineWriter& operator=(const LineWriter&) = delete;

  void WriteLine(std::string_view text);
  void write(std::string_view bytes);  // bytes as they stand, no line ending
  // Writes what is buffered and waits until the file's bytes are on the device.
  void flushToDevice();
  void close();
  bool isOpen() const { return m_fd >= 0; }
  const std::filesystem::path& path() const { return m_path; }

  // Test hook: every writer fails with "Disk full" once this many bytes have been
  // written in the process; a negative value switches the fault off.
  static void failAfterBytesForTesting(std::int64_t bytes);

 private:
  void flush();

  std::filesystem::path m_path;
  int m_fd = -1;
  std::vector<char> m_buffer;
  std::size_t m_used = 0;
};

}  // namespace tolvane::text
