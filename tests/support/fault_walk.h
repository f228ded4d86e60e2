// Walks a disk fault over every operation of a step: a clean run first learns how many
// disk operations the step makes and what the user's folder holds after it; then, for
// each N, a fresh fixture runs the step with the N-th operation failing. After each run
// every file of the user's folder must be as it was before the step or as the clean run
// left it, no other file may stand there, and a failure the user was not told of must
// have changed nothing that the clean run did not.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <string>

#include "text/disk.h"
#include "test_support.h"

namespace tolvane::test {

// Relative path -> bytes of every file below `folder`.
using FolderShot = std::map<std::string, std::string>;
FolderShot snapshot(const std::filesystem::path& folder);

// Checks one faulted run; `reported` is whether a run-time error report came.
void checkFaultedRun(const FolderShot& before, const FolderShot& after, const FolderShot& clean, bool reported,
                     std::uint64_t n);

// `Fixture` is default-constructible (the step's setting up, without faults) and has
// `TestProgram& program()` and `std::filesystem::path userFolder()`; `step` runs the tool.
template <class Fixture>
void walkFaults(int error, const std::function<void(Fixture&)>& step) {
  FolderShot clean;
  std::uint64_t operations = 0;
  {
    Fixture f;
    std::uint64_t start = text::disk::operationCount();
    step(f);
    operations = text::disk::operationCount() - start;
    clean = snapshot(f.userFolder());
    ASSERT_EQ(f.program().services.runTimeErrorReports(), 0) << "the clean run failed";
  }
  ASSERT_GT(operations, 0u) << "the step writes nothing";
  for (std::uint64_t n = 1; n <= operations; ++n) {
    SCOPED_TRACE("disk operation " + std::to_string(n) + " of " + std::to_string(operations) + " fails");
    Fixture f;
    f.program().services.answerRunTimeErrors(true);
    FolderShot before = snapshot(f.userFolder());
    text::disk::failOperation(n, error);
    step(f);
    text::disk::failOperation(0, 0);
    checkFaultedRun(before, snapshot(f.userFolder()), clean, f.program().services.runTimeErrorReports() > 0, n);
  }
}

}  // namespace tolvane::test
