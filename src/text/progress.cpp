#include "text/progress.h"

#include <algorithm>
#include <vector>

namespace tolvane::text {

namespace {
// The live scopes of this thread, the innermost last. A vector rather than a chain of
// previous pointers, so that a scope may end out of order (two programs of a test).
thread_local std::vector<Pace*> t_paces;
}  // namespace

Pace::Pace(Beat beat, std::chrono::steady_clock::duration every)
    : m_beat(std::move(beat)), m_every(every), m_last(std::chrono::steady_clock::now()) {}

void Pace::at(std::uint64_t done, std::uint64_t total) {
  m_done = done;
  m_total = total;
  auto now = std::chrono::steady_clock::now();
  if (now - m_last < m_every) return;
  m_last = now;
  if (m_beat) m_beat(done, total);
  // The beat may run the event loop for a while: the next period starts after it.
  m_last = std::chrono::steady_clock::now();
}

void Pace::restart() {
  m_last = std::chrono::steady_clock::now();
  m_done = m_total = 0;
}

PaceScope::PaceScope(Pace& pace) : m_pace(&pace) { t_paces.push_back(m_pace); }

PaceScope::~PaceScope() {
  auto it = std::find(t_paces.rbegin(), t_paces.rend(), m_pace);
  if (it != t_paces.rend()) t_paces.erase(std::next(it).base());
}

void reportProgress(std::uint64_t done, std::uint64_t total) {
  if (!t_paces.empty()) t_paces.back()->at(done, total);
}

}  // namespace tolvane::text
