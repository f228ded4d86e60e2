// How far a long piece of work is, told by elapsed time. The reading and copying loops
// call reportProgress with the bytes done and the bytes in all as often as they like
// (once per buffer, never per line); the pace of the calling thread passes the figures
// on about every 100 ms, and no more often, so the check costs a clock read per buffer.
// A pace belongs to one thread: the one that shows the work. Loops on other threads
// find no pace there and report nothing.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace tolvane::text {

class Pace {
 public:
  // Called with the bytes done and the bytes in all; a total of 0 means "not known".
  using Beat = std::function<void(std::uint64_t done, std::uint64_t total)>;
  explicit Pace(Beat beat, std::chrono::steady_clock::duration every = std::chrono::milliseconds(100));
  Pace(const Pace&) = delete;
  Pace& operator=(const Pace&) = delete;

  // Beats with these figures when the time has come.
  void at(std::uint64_t done, std::uint64_t total);
  // Beats with the last figures when the time has come: work that counts no bytes.
  void tick() { at(m_done, m_total); }
  // Starts a new piece of work: the clock from now and no figures.
  void restart();
  // The time between beats; tests make it zero to see every report.
  void setEvery(std::chrono::steady_clock::duration every) { m_every = every; }

 private:
  Beat m_beat;
  std::chrono::steady_clock::duration m_every;
  std::chrono::steady_clock::time_point m_last;
  std::uint64_t m_done = 0;
  std::uint64_t m_total = 0;
};

// Makes `pace` the calling thread's pace while it lives; the pace it covered comes back
// after it, whatever the order in which scopes end.
class PaceScope {
 public:
  explicit PaceScope(Pace& pace);
  ~PaceScope();
  PaceScope(const PaceScope&) = delete;
  PaceScope& operator=(const PaceScope&) = delete;

 private:
  Pace* m_pace;
};

// Reports to the calling thread's pace; nothing when it has none.
void reportProgress(std::uint64_t done, std::uint64_t total);

}  // namespace tolvane::text
