// What the tool benchmarks share: a stopwatch, a check that stops the run, the `cp` they
// measure themselves against, and a main that reports a failed run.
#pragma once

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

namespace tolvane::bench {

using Clock = std::chrono::steady_clock;

inline double seconds(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

inline double timed(const std::function<void()>& work) {
  auto start = Clock::now();
  work();
  return seconds(start);
}

inline void require(bool ok, const std::string& what) {
  if (!ok) throw std::runtime_error(what);
}

// Seconds `cp` takes to copy `from` to `to`; with `flush`, until the copy is on the
// device, as every tool's replace flushes its new text before it takes the name.
inline double cpSeconds(const std::filesystem::path& from, const std::filesystem::path& to, bool flush = false) {
  std::string command = "cp '" + from.string() + "' '" + to.string() + "'";
  if (flush) command += " && sync -d '" + to.string() + "'";
  ::sync();
  return timed([&] { require(std::system(command.c_str()) == 0, "cp failed"); });
}

// Runs a benchmark's body; an exception is printed under the benchmark's name.
inline int benchMain(const char* name, int (*run)(int, char**), int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "%s: %s\n", name, e.what());
    return 1;
  }
}

}  // namespace tolvane::bench
