// Checks of the progress that long jobs report through the scripted services: each
// pass over a file counts its bytes upward, only while the program is busy, and the
// program is at rest again when the job ends.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <vector>

#include "test_support.h"

namespace tolvane::test {

// Makes the program report at every chance instead of every 100 ms, so that a job on a
// file of a few megabytes reports as a long one does, whatever the machine's speed.
inline void reportEveryStep(TestProgram& t) {
  t->pace().setEvery(std::chrono::steady_clock::duration::zero());
}

// The totals of the passes the reports make, in order: reports in a row with the same
// total and rising bytes are one pass over one file; bytes that fall start another
// pass. No report passes its total, and with `allBusy` every one came while the
// program was busy.
inline std::vector<std::uint64_t> progressPasses(
    const std::vector<ui::ScriptedServices::ProgressReport>& reports, bool allBusy = true) {
  std::vector<std::uint64_t> passes;
  for (std::size_t i = 0; i < reports.size(); ++i) {
    const auto& r = reports[i];
    SCOPED_TRACE("report " + std::to_string(i) + ": " + std::to_string(r.done) + " of " +
                 std::to_string(r.total));
    if (allBusy) {
      EXPECT_TRUE(r.busy);
    }
    EXPECT_LE(r.done, r.total);
    if (passes.empty() || passes.back() != r.total || r.done < reports[i - 1].done) passes.push_back(r.total);
  }
  return passes;
}

// The job has ended: nothing is busy and the main form holds no progress.
inline void expectAtRest(TestProgram& t) {
  EXPECT_FALSE(t.services.busy());
  EXPECT_FALSE(t->opening.busy());
  EXPECT_EQ(t->opening.progressDone(), 0u);
  EXPECT_EQ(t->opening.progressTotal(), 0u);
}

}  // namespace tolvane::test
