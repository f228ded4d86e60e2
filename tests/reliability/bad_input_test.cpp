// Broken and hostile inputs crossed with every entry point that reads a figure: File,
// Open, the Manual Editor, the Bracket Checker, the channel viewer and each morph tool.
// A user who answers every prompt with its first button (OK, Yes), saves under a new
// name and types "Renamed" drives each cell. Every cell must end within a time bound
// and without a crash, keep its memory bounded, leave every file as it was (a repaired
// figure only with its original kept as the backup, and the tool's output only under
// the new name), and where the input is a folder, a missing file or an unreadable one,
// the message must name that cause.
// TOLVANE_BAD_INPUT_SMALL=1 makes the long line 5 MB instead of 50 MB (the sanitizer
// build sets it); TOLVANE_BAD_INPUT_DUMP=1 prints each cell's time, memory and messages.
#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <map>
#include <thread>

#include "app/app.h"
#include "program/events.h"
#include "program/program.h"
#include "test_files.h"
#include "text/figure_text.h"
#include "ui/scripted_services.h"
#include "ui/settings.h"
#include "workspace/list_readers.h"

namespace tolvane::test {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

const fs::path kFigure = fs::path(TOLVANE_TEST_DATA) / "morph" / "figures" / "dest.cr2";
const fs::path kSource = fs::path(TOLVANE_TEST_DATA) / "morph" / "figures" / "source.cr2";

// Answers every prompt without a script and keeps what was shown.
class PatientUser : public ui::ScriptedServices {
 public:
  fs::path openWith, saveAs;
  std::vector<std::string> shown;  // "title|text"

  ui::Answer message(const ui::Message& m) override {
    shown.push_back(m.title + "|" + m.text);
    switch (m.buttons) {
      case ui::Buttons::YesNo:
      case ui::Buttons::YesNoCancel:
        return ui::Answer::Yes;
      case ui::Buttons::AbortRetryIgnore:
        return ui::Answer::Abort;
      case ui::Buttons::RetryCancel:
        return ui::Answer::Cancel;
      default:
        return ui::Answer::OK;
    }
  }
  std::optional<std::string> fileDialog(const ui::FileDialogRequest& r) override {
    return (r.kind == ui::FileDialogRequest::Kind::Open ? openWith : saveAs).string();
  }
  std::optional<std::string> inputLine(const std::string&, const std::string&, const std::string&) override {
    return "Renamed";
  }
};

// A program of its own for each cell, its Poser and work folders beside the input's.
struct Cell {
  explicit Cell(const fs::path& input) {
    fs::create_directories(dir / "work");
    fs::create_directories(dir / "poser/Runtime/Geometries/Tolvane");
    settings.save(kAppName, "Startup", "PLoc", (dir / "poser").string() + "/");
    ProgramOptions options;
    options.workDir = dir / "work";
    options.currentDir = input.parent_path();
    options.appPath = options.workDir.string();
    program = std::make_unique<Program>(user, settings, options);
    app::wire(*program);
    user.openWith = input;
    user.saveAs = input.parent_path() / "saved.cr2";
    // The file as the channel tools find it after an Open of the figure it was made from.
    ui::Opening& f = program->opening;
    for (ui::Label* l : {&f.LabelFileName, &f.LabelChannelFileName})
      l->setCaption(displayPath(input.string()));
    for (ui::Label* l : {&f.LabelFileNameForEditor, &f.LabelChannelFileNameForEditor})
      l->setCaption(input.string());
    f.OpenFilePath = input.string();
    f.TextMainOBJ.setText("Tolvane:ava.obj");
    f.ListActors.setItems(
        {" BODY:1 * 7", "    hip:1 * 11", "    abdomen:1 * 16", "    chest:1 * 21", "    neck:1 * 26"});
  }
  ui::Opening& form() { return program->opening; }
  void fire(const std::string& control, EventKind kind, const std::string& from = "") {
    EventArgs args;
    args.source = from.empty() ? "" : "Opening." + from;
    fireEvent(*program, "Opening", control, kind, args);
  }
  void select(ui::ListBox& list, int index) {
    for (int i : list.selectedIndexes()) list.setSelected(i, false);
    list.setListIndex(index);
    list.setSelected(index, true);
  }
  void channels(const std::string& part, const std::string& morph) {
    form().ListChannels.setItems({"Channels for  " + part, "", "\t" + morph});
    select(form().ListChannels, 2);
    form().PictureViewChannels.setBackColor(ui::kToolOn);  // as the viewer leaves it
  }
  void trash(const std::string& list) {
    fire("PictureTrash", EventKind::Click);
    fire(list, EventKind::Press);
    fire(list, EventKind::Release);
    fire("PictureTrash", EventKind::Drop, list);
  }
  void rename(bool bodyPart) {
    fire("PictureRenameMorph", EventKind::Click);
    (bodyPart ? form().OptionBodyPartRename : form().OptionChannelRename).setValue(true);
    fire("PictureRenameMorph", EventKind::Click);
  }

  TempDir dir;
  PatientUser user;
  ui::MemorySettings settings;
  std::unique_ptr<Program> program;
};

struct EntryPoint {
  const char* name;
  std::function<void(Cell&)> run;
  bool writes = false;  // saves a figure when the input is one
};

const EntryPoint kEntryPoints[] = {
    {"Open", [](Cell& c) { c.fire("MenuFileOpen", EventKind::Click); }},
    {"Editor", [](Cell& c) { c.fire("LabelFileName", EventKind::Click); }},
    {"Bracket Checker", [](Cell& c) { c.fire("MenuBrack", EventKind::Click); }},
    {"channel viewer",
     [](Cell& c) {
       c.select(c.form().ListActors, 1);
       c.fire("PictureViewChannels", EventKind::Click);
     }},
    {"morph copy",
     [](Cell& c) {
       std::string source = copyInto(kSource, c.dir.path()).string();
       c.form().LabelChannelFileName.setCaption("source: source.cr2");
       c.form().LabelChannelFileNameForEditor.setCaption(source);
       c.channels("hip:1", "Narrow");
       c.fire("PictureCopyToDest", EventKind::Click);
     },
     true},
    {"morph rename",
     [](Cell& c) {
       c.channels("neck:1", "Square");
       c.select(c.form().ListActors, 4);
       c.rename(false);
     },
     true},
    {"body part rename",
     [](Cell& c) {
       c.select(c.form().ListActors, 3);
       c.rename(true);
     },
     true},
    {"morph removal",
     [](Cell& c) {
       c.channels("chest:1", "Round");
       c.trash("ListChannels");
     },
     true},
    {"body part removal",
     [](Cell& c) {
       c.select(c.form().ListActors, 2);
       c.trash("ListActors");
     },
     true},
    {"channel reorder",
     [](Cell& c) {
       ui::Opening& f = c.form();
       f.ListChannelsReorder.setItems({"chest:1*Bust^ 267@Bust", "chest:1*Round^ 267@Round"});
       c.select(f.ListActors, 3);
       c.fire("ListActors", EventKind::DblClick);
       if (f.ListChannelsReorderByPart.listCount() > 0) {
         f.ListChannelsReorderByPart.setListIndex(0);
         c.fire("ListChannelsReorderNewOrder", EventKind::Drop, "ListChannelsReorderByPart");
       }
       c.fire("PictureChannelReorderDone", EventKind::Click);
     },
     true},
    // The ratio change saves only over the listed file; the user here picks another name.
    {"control ratio",
     [](Cell& c) {
       c.fire("PictureChangeRatio", EventKind::Click);
       ui::FormListEMCs& f = c.program->formListEMCs;
       for (int i = 0; i < f.ListEMCs.listCount(); ++i)
         if (f.ListEMCs.list(i).rfind("\tdelta", 0) == 0) f.ListEMCs.setListIndex(i);
       fireEvent(*c.program, "FormListEMCs", "ListEMCs", EventKind::Click);
       f.Text1.setText("2");
       fireEvent(*c.program, "FormListEMCs", "Text1", EventKind::Enter);
     }},
    {"controlled morph builder",
     [](Cell& c) {
       c.fire("PictureEMC", EventKind::Click);
       fireEvent(*c.program, "DialogERC", "LabelDone", EventKind::Click);
       ui::FormECM& f = c.program->formECM;
       f.TextPBM1.setText("Wide");
       f.TextPBM2.setText("Figure 1");
       f.TextPBM3.setText("PBMBreathe");
       f.TextPBM4.setText("BODY");
       fireEvent(*c.program, "FormECM", "TextPBMRatio", EventKind::Enter);
     },
     true},
    {"unique name",
     [](Cell& c) {
       c.fire("menuERCUnique", EventKind::Click);
       c.form().TextERCUnique.setText("Ava");
       c.fire("TextERCUnique", EventKind::Enter);
     }},
};

// ---- the inputs ----

Lines figureLines() { return crlfLines(readFile(kFigure)); }

std::string joined(const std::vector<std::string>& lines, const std::vector<std::string>& ends) {
  std::string text;
  for (std::size_t i = 0; i < lines.size(); ++i) text += lines[i] + ends[i % ends.size()];
  return text;
}

std::size_t longLineBytes() {
  const char* small = std::getenv("TOLVANE_BAD_INPUT_SMALL");
  return (small && *small == '1' ? 5 : 50) << 20;
}

struct Input {
  const char* name;
  std::function<void(const fs::path&)> make;  // makes the input at the given path
  std::vector<std::string> cause = {};        // a message must name one of these
  const char* file = "fig.cr2";
  // Runs beside the entry point: the file is cut to a third of its length while it is read.
  bool shrinks = false;
  bool made = true;    // false: a name no file can have
  bool sound = false;  // a whole figure, which every writer saves
};

const std::string kLongName = std::string(300, 'a') + ".cr2";
const std::vector<std::string> kLineTooLong{"longer than 64 MB", "more than the Manual Editor can hold"};

const Input kInputs[] = {
    {"empty file", [](const fs::path& p) { writeFile(p, ""); }},
    {"binary file",
     [](const fs::path& p) {
       std::string bytes(256 << 10, '\0');
       std::uint32_t x = 12345;
       for (char& b : bytes) b = static_cast<char>((x = x * 1664525u + 1013904223u) >> 24);
       writeFile(p, bytes);
     }},
    {"NUL bytes inside lines",
     [](const fs::path& p) {
       auto lines = figureLines();
       for (std::size_t i = 0; i < lines.size(); i += 3) lines[i].insert(lines[i].size() / 2, 1, '\0');
       writeFile(p, joined(lines, {"\r\n"}));
     }},
    {"one long line",
     [](const fs::path& p) {
       static const std::string text = [] {
         auto lines = figureLines();
         lines.insert(lines.begin() + 8, "\t\tdeltas " + std::string(longLineBytes(), '7'));
         return joined(lines, {"\r\n"});
       }();
       writeFile(p, text);
     }},
    {"UTF-16 with a byte-order mark",
     [](const fs::path& p) {
       std::string text = "\xFF\xFE";
       for (char ch : readFile(kFigure)) text += std::string{ch, '\0'};
       writeFile(p, text);
     }},
    {"LF only", [](const fs::path& p) { writeFile(p, joined(figureLines(), {"\n"})); }},
    {"CR only", [](const fs::path& p) { writeFile(p, joined(figureLines(), {"\r"})); }},
    {"mixed line ends",
     [](const fs::path& p) {
       writeFile(p, joined(figureLines(), {"\r\n", "\n", "\r"}));
     }},
    {"cut in the middle of an actor",
     [](const fs::path& p) {
       std::string text = readFile(kFigure);
       writeFile(p, text.substr(0, text.rfind("actor chest:1") + 60));
     }},
    {"unbalanced braces",
     [](const fs::path& p) {
       std::string text = readFile(kFigure);
       for (int i = 0; i < 3; ++i) text.erase(text.find("\t\t}\r\n", text.size() / 3), 5);
       writeFile(p, text + "{\r\n{\r\n");
     }},
    {"folder named like a figure",
     [](const fs::path& p) { fs::create_directory(p); },
     {"Path/File access error"}},
    {"dangling symbolic link",
     [](const fs::path& p) { fs::create_symlink("gone.cr2", p); },
     {"File not found"}},
    {.name = "name longer than 255 bytes",
     .make = [](const fs::path&) {},
     .cause = {"Bad file name"},
     .file = kLongName.c_str(),
     .made = false},
    {.name = "non-ASCII path with blanks",
     .make = [](const fs::path& p) { writeFile(p, readFile(kFigure)); },
     .file = "Fïgür mit Leerzeichen é/Ava 2 (copie).cr2",
     .sound = true},
    {.name = "file that shrinks while it is read",
     .make =
         [](const fs::path& p) {
           static const std::string many = [] {
             std::string text = readFile(kFigure), many;
             while (many.size() < (16 << 20)) many += text;
             return many;
           }();
           writeFile(p, many);
         },
     .shrinks = true},
    {.name = "compressed figure",
     .make = [](const fs::path& p) { writeFile(p, gzipBytes(readFile(kFigure))); },
     .file = "fig.crz",
     .sound = true},
    {.name = "compressed figure cut short",
     .make =
         [](const fs::path& p) {
           std::string packed = gzipBytes(readFile(kFigure));
           writeFile(p, packed.substr(0, packed.size() / 2));
         },
     .cause = {"damaged or cut short"},
     .file = "fig.crz"},
    {.name = "gzip bomb",
     .make = [](const fs::path& p) { writeFile(p, gzipBytes(std::string(std::size_t{16} << 20, '\t'))); },
     .cause = {"more than 4 GB or more than a thousand times"},
     .file = "fig.crz"},
    {"4 GB sparse file",
     [](const fs::path& p) {
       int fd = ::open(p.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
       bool made = fd >= 0 && ::ftruncate(fd, 4ll << 30) == 0;
       if (fd >= 0) ::close(fd);
       if (!made) fs::remove(p);
     },
     kLineTooLong},
};

// Only a user other than root is refused by the permission bits.
const Input kUnreadable{"unreadable file",
                        [](const fs::path& p) {
                          writeFile(p, readFile(kFigure));
                          fs::permissions(p, fs::perms::none);
                        },
                        {"Permission denied"}};

// ---- the checks ----

// What a file holds: its bytes, or for a large one its length and change time.
std::map<std::string, std::string> folderShot(const fs::path& folder) {
  std::map<std::string, std::string> shot;
  for (const auto& e : fs::recursive_directory_iterator(folder)) {
    struct stat st {};
    if (::lstat(e.path().c_str(), &st) != 0) continue;
    std::string name = fs::relative(e.path(), folder).string();
    if (S_ISDIR(st.st_mode))
      shot[name] = "#folder";
    else if (S_ISLNK(st.st_mode))
      shot[name] = "#link to " + fs::read_symlink(e.path()).string();
    else if (st.st_size <= (64 << 20) && (st.st_mode & S_IRUSR))
      shot[name] = readFile(e.path());
    else  // its length and the time its bytes last changed
      shot[name] = "#" + std::to_string(st.st_size) + "/" + std::to_string(st.st_mtim.tv_sec) + "." +
                   std::to_string(st.st_mtim.tv_nsec);
  }
  return shot;
}

// Kilobytes of the process's memory: "VmRSS" now, "VmHWM" its peak since resetPeak().
long memoryKb(const std::string& key) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind(key + ":", 0) == 0) return std::stol(line.substr(key.size() + 1));
  return 0;
}
void resetPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }

// A cell that outlasts its bound ends the run with its name: a hang must fail here
// rather than stall the suite.
char g_cell[256];
void onHang(int) {
  const char head[] = "bad-input cell hung: ";
  (void)!::write(2, head, sizeof head - 1);
  (void)!::write(2, g_cell, std::strlen(g_cell));
  std::abort();
}

// The most a cell may add to the memory: Open's five scans each hold the line at hand
// twice, and a line is refused beyond 64 MB. Nothing grows with the file's length.
constexpr long kMemoryBoundKb = 768 << 10;

// Runs one cell and checks it.
void runCell(const Input& in, const EntryPoint& entry) {
  const std::string name = std::string(in.name) + " through " + entry.name;
  SCOPED_TRACE(name);
  TempDir folder;
  fs::path file = folder / in.file;
  fs::create_directories(file.parent_path());
  in.make(file);
  if (in.made && !fs::exists(fs::symlink_status(file))) {
    std::printf("%s: not made on this file system, cell left out\n", in.name);
    return;
  }
  auto before = folderShot(folder.path());
  Cell cell(file);
  long resident = memoryKb("VmRSS");
  resetPeak();
  auto started = Clock::now();
  std::snprintf(g_cell, sizeof g_cell, "%s\n", name.c_str());
  std::signal(SIGALRM, onHang);
  ::alarm(60);
  std::thread beside;
  if (in.shrinks) {
    auto length = fs::file_size(file);
    before[in.file].resize(length / 3);
    beside = std::thread([file, length] {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
      fs::resize_file(file, length / 3);
    });
  }
  entry.run(cell);
  if (beside.joinable()) beside.join();
  ::alarm(0);
  double seconds = std::chrono::duration<double>(Clock::now() - started).count();
  long grown = memoryKb("VmHWM") - resident;

  std::string messages;
  for (const auto& m : cell.user.shown) messages += "\n  " + m.substr(0, 160);
  if (std::getenv("TOLVANE_BAD_INPUT_DUMP"))
    std::printf("[%s | %s] %.2f s, +%ld MB%s\n", in.name, entry.name, seconds, grown >> 10, messages.c_str());
  EXPECT_LT(grown, kMemoryBoundKb) << "memory grew by " << (grown >> 10) << " MB";
  if (!in.cause.empty()) {
    bool named = false;
    for (const auto& m : cell.user.shown)
      for (const auto& cause : in.cause) named = named || m.find(cause) != std::string::npos;
    EXPECT_TRUE(named) << "no message names the cause (" << in.cause.front() << "):" << messages;
  }
  // Every file as it was; new beside it only the tool's output under the chosen name and a
  // backup of the input's bytes, which alone lets the input change (the repair).
  auto after = folderShot(folder.path());
  const std::string input = before.count(in.file) ? before.at(in.file) : "";
  auto isBackup = [&](const std::string& path, const std::string& bytes) {
    return !before.count(path) && fs::path(path).extension() == ".bak" && bytes == input;
  };
  bool backedUp =
      std::any_of(after.begin(), after.end(), [&](const auto& a) { return isBackup(a.first, a.second); });
  for (const auto& [path, bytes] : after) {
    auto old = before.find(path);
    bool kept = old != before.end() && (old->second == bytes || (old->second == input && backedUp));
    bool output = old == before.end() && fs::path(path).filename() == "saved.cr2";
    EXPECT_TRUE(kept || output || isBackup(path, bytes))
        << path << " changed or was left beside it" << messages;
  }
  for (const auto& [path, bytes] : before) EXPECT_TRUE(after.count(path)) << path << " is gone" << messages;
  EXPECT_TRUE(!in.sound || !entry.writes || fs::exists(cell.user.saveAs)) << "nothing was saved" << messages;
}

TEST(BadInput, EveryEntryPointOnEveryInput) {
  for (const Input& in : kInputs)
    for (const EntryPoint& entry : kEntryPoints) runCell(in, entry);
}

// Root reads any file, so as root the cells run in a child that has become "nobody".
TEST(BadInput, EveryEntryPointOnAnUnreadableFile) {
  auto cells = [] {
    for (const EntryPoint& entry : kEntryPoints) runCell(kUnreadable, entry);
  };
  if (::geteuid() != 0) return cells();
  std::fflush(stdout);
  pid_t child = ::fork();
  if (child == 0) {
    const uid_t nobody = 65534;
    if (::setgroups(0, nullptr) != 0 || ::setresgid(nobody, nobody, nobody) != 0 ||
        ::setresuid(nobody, nobody, nobody) != 0)
      ::_exit(77);
    ::prctl(PR_SET_DUMPABLE, 1);  // /proc/self stays the child's own, for the memory peak
    cells();
    std::fflush(stdout);
    ::_exit(::testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  if (WIFEXITED(status) && WEXITSTATUS(status) == 77)
    GTEST_SKIP() << "root could not become another user here";
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
      << "the cells failed as shown above, status " << status;
}

}  // namespace
}  // namespace tolvane::test
