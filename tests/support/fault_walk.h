// Walks a disk fault over every operation of a step, once with the Work folder on the
// user's disk and once as if it lay on another (every rename between folders refused,
// so the new text is first copied beside the user's file). A clean run learns how many
// disk operations the step makes, what the user's folder holds after it and what it
// shows; then, for each N, a fresh fixture runs the step with the N-th operation
// failing. After each run every file of the user's folder must be as it was before the
// step or as the clean run left it, with no other file beside them; a run that told the
// user nothing new must have left the folder as the clean run did; and the program must
// still work: with the folder put back, the step run again without a fault must leave it
// as the clean run did.
#pragma once

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>

#include "test_support.h"
#include "text/disk.h"

namespace tolvane::test {

// Relative path -> bytes of every file below `folder`.
using FolderShot = std::map<std::string, std::string>;
FolderShot snapshot(const std::filesystem::path& folder);
// Puts the files below `folder` back as `shot` holds them and removes any other file.
void restore(const std::filesystem::path& folder, const FolderShot& shot);
// "title|text" of every message shown so far.
std::set<std::string> shownMessages(const ui::ScriptedServices& services);

// Checks one faulted run; `told` is whether a run-time error report or a message the
// clean run did not show came.
void checkFaultedRun(const FolderShot& before, const FolderShot& after, const FolderShot& clean, bool told,
                     std::uint64_t n);

// Renames between folders fail as across file systems while it lives.
struct OtherDisk {
  explicit OtherDisk(bool on) { text::disk::refuseRenamesAcrossFolders(on); }
  ~OtherDisk() { text::disk::refuseRenamesAcrossFolders(false); }
};

template <class Fixture>
using Step = std::function<void(Fixture&)>;

// `Fixture` is default-constructible and has `TestProgram& program()` and
// `std::filesystem::path userFolder()`; `prepare` (optional) sets the tool up without
// faults, `step` runs it.
template <class Fixture>
void walkFaultsOnce(int error, const Step<Fixture>& step, const Step<Fixture>& prepare) {
  FolderShot clean;
  std::set<std::string> cleanMessages;
  std::uint64_t operations = 0;
  {
    Fixture f;
    if (prepare) prepare(f);
    FolderShot before = snapshot(f.userFolder());
    std::uint64_t start = text::disk::operationCount();
    step(f);
    operations = text::disk::operationCount() - start;
    clean = snapshot(f.userFolder());
    cleanMessages = shownMessages(f.program().services);
    ASSERT_EQ(f.program().services.runTimeErrorReports(), 0) << "the clean run failed";
    ASSERT_NE(clean, before) << "the clean run left the user's files as they were";
  }
  ASSERT_GT(operations, 0u) << "the step writes nothing";
  for (std::uint64_t n = 1; n <= operations; ++n) {
    SCOPED_TRACE("disk operation " + std::to_string(n) + " of " + std::to_string(operations) + " fails");
    Fixture f;
    ui::ScriptedServices& user = f.program().services;
    user.answerRunTimeErrors(true);
    if (prepare) prepare(f);
    FolderShot before = snapshot(f.userFolder());
    text::disk::failOperation(n, error);
    step(f);
    text::disk::failOperation(0, 0);
    bool told = user.runTimeErrorReports() > 0;
    for (const std::string& m : shownMessages(user)) told = told || !cleanMessages.count(m);
    checkFaultedRun(before, snapshot(f.userFolder()), clean, told, n);

    // The next step: the same again, on the folder as it was, with no fault.
    restore(f.userFolder(), before);
    user.dropAnswers();
    int reports = user.runTimeErrorReports();
    if (prepare) prepare(f);
    step(f);
    EXPECT_EQ(user.runTimeErrorReports(), reports) << "the step fails when run again after fault " << n;
    EXPECT_TRUE(snapshot(f.userFolder()) == clean)
        << "run again after fault " << n << ", the step ends otherwise";
  }
}

template <class Fixture>
void walkFaults(int error, const Step<Fixture>& step, const Step<Fixture>& prepare = {}) {
  for (bool otherDisk : {false, true}) {
    SCOPED_TRACE(otherDisk ? "Work folder on another disk" : "Work folder on the user's disk");
    OtherDisk layout(otherDisk);
    walkFaultsOnce<Fixture>(error, step, prepare);
  }
}

// The failures a writer meets: a full disk, an I/O error, a refused permission.
inline constexpr int kDiskErrors[] = {ENOSPC, EIO, EACCES};

// walkFaults with each of kDiskErrors in turn.
template <class Fixture>
void walkEveryFault(const Step<Fixture>& step, const Step<Fixture>& prepare = {}) {
  for (int error : kDiskErrors) {
    SCOPED_TRACE("errno " + std::to_string(error));
    walkFaults<Fixture>(error, step, prepare);
  }
}

}  // namespace tolvane::test
