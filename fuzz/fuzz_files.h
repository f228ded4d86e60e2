// What every fuzz target needs around the code it drives: a scratch folder of its own
// for the fuzzed bytes written as a file, a small generator of operation sequences
// seeded from the input, and a stop that marks a disagreement as a finding.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace tolvane::fuzz {

// The process's scratch folder, on a memory file system where there is one; it goes
// when the process ends normally.
const std::filesystem::path& scratchFolder();

// Writes `bytes` as `name` in `folder` (the scratch folder by default), replacing it.
std::filesystem::path writeInput(std::string_view name, std::string_view bytes,
                                 const std::filesystem::path& folder = scratchFolder());
std::string_view asText(const std::uint8_t* data, std::size_t size);

// Removes everything inside `folder`, read-only files too.
void emptyFolder(const std::filesystem::path& folder);

// Ends the run as a finding: prints what went wrong and aborts, so that libFuzzer keeps
// the input (and a replay fails).
[[noreturn]] void fail(const std::string& what);
inline void check(bool ok, const char* what) {
  if (!ok) fail(what);
}

// A tiny deterministic generator (64-bit LCG) for the order of operations a target
// applies, so that an input always replays the same way.
class Steps {
 public:
  explicit Steps(std::uint64_t seed) : m_state(seed * 0x9E3779B97F4A7C15ull + 1) {}
  std::uint32_t next(std::uint32_t below) {
    m_state = m_state * 6364136223846793005ull + 1442695040888963407ull;
    return below == 0 ? 0 : static_cast<std::uint32_t>((m_state >> 33) % below);
  }

 private:
  std::uint64_t m_state;
};

}  // namespace tolvane::fuzz
