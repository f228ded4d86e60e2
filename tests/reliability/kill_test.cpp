// The real runner, killed with SIGKILL at twenty moments of a long rewrite of a large
// generated figure: each time the figure on disk is exactly the old text or exactly the
// new one, and nothing else stands beside it. Half of the moments are spread over the
// whole run, half close in on the moment the file is replaced. The trials run
// with the work folder beside the figure, and again with it on another file system
// (/dev/shm) where there is one, so that the copy made beside the figure is killed too.
// TOLVANE_KILL_TEST_MB sets the figure's size (30 by default; 100 by hand).
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

#include "generator/generator.h"
#include "test_files.h"

extern "C" char** environ;

namespace tolvane::test {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

// The morph renamed is the first part's second morph: the whole file is read and written.
const char* kScript =
    "setting Startup PLoc $POSER/\n"
    "msg-any -> OK\n"  // more than one texture map
    "open $FIG\n"
    "select ListActors 1\n"
    "event PictureViewChannels click\n"
    "select-text ListChannels \"{TAB}hip_M2\"\n"
    "event PictureRenameMorph click\n"
    "check OptionChannelRename on\n"
    "input \"hip_Renamed\"\n"
    "msg-any -> Yes\n"
    "dialog $FIG\n"
    "event PictureRenameMorph click\n";

struct Trial {
  fs::path dir, figure, work;

  // Starts the runner on the script with a fresh work folder, its output dropped.
  pid_t start() const {
    fs::remove_all(work);
    fs::create_directories(work);
    std::string exe = TOLVANE_SCRIPT_EXE, workArg = work.string(), script = (dir / "rename.tvs").string();
    std::string fig = "FIG=" + figure.string(), poser = "POSER=" + (dir / "poser").string();
    char workFlag[] = "--work", varFlag[] = "--var";
    std::vector<char*> argv{exe.data(), workFlag,     workArg.data(), varFlag, fig.data(),
                            varFlag,    poser.data(), script.data(),  nullptr};
    posix_spawn_file_actions_t quiet;
    posix_spawn_file_actions_init(&quiet);
    posix_spawn_file_actions_addopen(&quiet, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&quiet, 2, "/dev/null", O_WRONLY, 0);
    pid_t pid = -1;
    EXPECT_EQ(posix_spawn(&pid, exe.c_str(), &quiet, nullptr, argv.data(), environ), 0) << exe;
    posix_spawn_file_actions_destroy(&quiet);
    return pid;
  }

  // An unkilled run; returns its length in seconds.
  double timedRun() const {
    auto started = Clock::now();
    int status = 0;
    ::waitpid(start(), &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
        << "the unkilled run failed: status " << status;
    return Seconds(Clock::now() - started).count();
  }

  // Ten kills spread over an unkilled run's length, then ten that close in on the moment
  // the figure is replaced: each one halfway between the latest kill that left the old
  // text and the earliest that left the new.
  void killAtTwentyMoments(const std::string& old, const std::string& renamed) const {
    writeFile(figure, old);
    const double length = timedRun();  // with the figure in the page cache, as below
    double lastOld = 0, firstNew = length * 1.2;
    int asOld = 0, asNew = 0;
    bool restore = true;  // the unkilled run left the new text
    for (int k = 0; k < 20; ++k) {
      double at = k < 10 ? length * (k + 1) / 11 : (lastOld + firstNew) / 2;
      SCOPED_TRACE("killed at " + std::to_string(at) + " s of " + std::to_string(length));
      if (restore) writeFile(figure, old);
      auto started = Clock::now();
      pid_t pid = start();
      std::this_thread::sleep_until(started + Seconds(at));
      ::kill(pid, SIGKILL);
      ::waitpid(pid, nullptr, 0);
      std::string now = readFile(figure);
      EXPECT_TRUE(now == old || now == renamed) << "the figure is neither text (" << now.size() << " bytes)";
      if (now == old) ++asOld, lastOld = std::max(lastOld, at);
      if (now == renamed) ++asNew, firstNew = std::min(firstNew, at);
      restore = now != old;
      for (const auto& entry : fs::directory_iterator(figure.parent_path()))
        EXPECT_EQ(entry.path(), figure) << "a file was left beside the figure";
    }
    std::printf("run %.2f s, replaced between %.3f s and %.3f s: %d kills left the old text, %d the new\n",
                length, lastOld, firstNew, asOld, asNew);
  }
};

TEST(KillAtAnyMoment, TheFigureIsTheOldOrTheNewText) {
  TempDir dir;
  Trial t{dir.path(), dir / "figures/large.cr2", dir / "work"};
  fs::create_directories(t.figure.parent_path());
  fs::create_directories(dir / "poser/Runtime/Geometries/Tolvane");
  writeFile(dir / "rename.tvs", kScript);
  gen::LargeFigureOptions options;
  const char* mb = std::getenv("TOLVANE_KILL_TEST_MB");
  options.targetBytes = (mb ? std::strtoull(mb, nullptr, 10) : 30) << 20;
  gen::writeLargeFigure(t.figure, options);
  const std::string old = readFile(t.figure);
  t.timedRun();
  const std::string renamed = readFile(t.figure);
  ASSERT_NE(renamed, old) << "the unkilled run changed nothing";
  std::printf("%.1f MB figure\n", old.size() / 1e6);

  {
    SCOPED_TRACE("work folder beside the figure");
    t.killAtTwentyMoments(old, renamed);
  }
  struct stat shm {
  }, here{};
  if (::stat("/dev/shm", &shm) == 0 && ::stat(dir.path().c_str(), &here) == 0 && shm.st_dev != here.st_dev) {
    SCOPED_TRACE("work folder on another file system");
    t.work = "/dev/shm/tolvane-kill-" + std::to_string(::getpid());
    t.killAtTwentyMoments(old, renamed);
    fs::remove_all(t.work);
  }
}

}  // namespace
}  // namespace tolvane::test
