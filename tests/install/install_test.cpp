#include "install/install_cr2.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>

#include "fault_walk.h"
#include "install/inventory.h"
#include "program/events.h"
#include "test_support.h"
#include "zip_builder.h"

namespace tolvane::test {
namespace {

namespace fs = std::filesystem;

const std::vector<std::string> kFigure = {
    "{",
    "version",
    "\t{",
    "\tnumber 4",
    "\t}",
    "figureResFile :Runtime:Geometries:Fig:fig.obj",
    "actor BODY:1",
    "\t{",
    "\t}",
    "figure",
    "\t{",
    "\tmaterial skin",
    "\t\t{",
    "\t\ttextureMap \":Runtime:Textures:Fig:tex.jpg\"",
    "\t\tbumpMap \":Runtime:Textures:Fig:bump.bmp\"",
    "\t\t}",
    "\t}",
    "}"};

struct Installer {
  Installer() {
    poser = t.dir.path() / "Poser";
    fs::create_directories(poser);
    t.settings.save(kAppName, "Startup", "PLoc", poser.string() + "/");
  }
  void click(const std::string& control, EventKind kind = EventKind::Click) {
    fireEvent(*t, "Opening", control, kind);
  }
  void fire(const std::string& control, EventKind kind) { fireEvent(*t, "FormCR2Install", control, kind); }
  fs::path zipWith(const std::vector<ZipEntry>& entries) {
    fs::path zip = t.files() / "fig.zip";
    writeZip(zip, entries);
    return zip;
  }
  // The menu with the zip chosen, the install picture, the library folder and Enter.
  void installZip(const fs::path& zip, const fs::path& library) {
    t.services.dialog(zip.string());
    click("MenuInstallCR2");
    click("PictureInstallCR2");
    t->formCR2Install.DirCR2Install.setText(library.string());
    fire("DirCR2Install", EventKind::Enter);
  }
  TestProgram& program() { return t; }
  fs::path userFolder() { return t.dir.path() / "Poser"; }
  TestProgram t;
  fs::path poser;
};

std::vector<ZipEntry> figureZip() {
  return {{"fig.cr2", crlf(kFigure)}, {"fig.obj", "v 0 0 0\r\n"}, {"tex.jpg", "jpg"},
          {"bump.bmp", "bmp"},       {"readme.txt", "read me"},  {"fig.mtl", "mtl"}};
}

TEST(Install, AZippedFigureGoesWhereItsOwnPathsSay) {
  Installer in;
  fs::path library = in.poser / "Runtime" / "Libraries" / "Character" / "Mine";
  fs::create_directories(library);
  fs::path zip = in.zipWith(figureZip());
  in.t.services.dialog(zip.string());
  in.click("MenuInstallCR2");
  ui::Opening& o = in.t->opening;
  EXPECT_EQ(o.LabelOBJFileName.caption(), in.poser.string() + "/cr2install\\fig.cr2");
  EXPECT_EQ(o.ListboxListCR2Files.items(),
            (std::vector<std::string>{kFigure[5], kFigure[13], kFigure[14]}));
  EXPECT_TRUE(o.PictureInstallCR2.visible() && o.PicturePrintCR2Files.visible() && o.PictureCR2InstallCancel.visible());

  in.click("PictureInstallCR2");
  EXPECT_EQ(o.LabelObjPathCR2Install.caption(), in.poser.string() + "\\Runtime\\Geometries\\Fig");
  EXPECT_EQ(o.LabelTexPathCR2Install.caption(), "\\Runtime\\Textures\\Fig");
  EXPECT_EQ(o.LabelOBJFileName.caption(), "fig.cr2");
  EXPECT_EQ(o.LabelCR2NameLength.caption(), "3");
  EXPECT_TRUE(fs::is_directory(in.poser / "Runtime" / "Libraries" / "Character" / "fig"));
  EXPECT_TRUE(in.t->formCR2Install.visible());
  EXPECT_EQ(in.t->formCR2Install.DirCR2Install.text(), in.poser.string());

  in.t.services.expect("Alert!",
                       "These files are not listed in the CR2, or have already been installed, or are simply unrelated "
                       "files in this directory. You may place them manually. Print the list?",
                       ui::Answer::Yes);
  in.t.services.queue(ui::ScriptedAnswer::print((in.t.dir.path() / "left.pdf").string()));
  in.t.services.expect("Success!", "Your CR2 has been installed!");
  in.t->formCR2Install.DirCR2Install.setText(library.string());
  in.fire("DirCR2Install", EventKind::Enter);
  EXPECT_EQ(in.t.services.pending(), 0u);

  EXPECT_EQ(readFile(library / "fig.cr2"), crlf(kFigure));
  EXPECT_EQ(readFile(in.poser / "Runtime" / "Geometries" / "Fig" / "fig.obj"), "v 0 0 0\r\n");
  // The walk runs from the last file back: tex.jpg moves and readme.txt in front of it is
  // passed over; fig.mtl is renamed in place and bump.bmp in front of it is passed over.
  EXPECT_EQ(readFile(in.poser / "Runtime" / "Textures" / "Fig" / "tex.jpg"), "jpg");
  for (const char* stays : {"bump.bmp", "readme.txt", "fig.mtl", "fig.zip"})
    EXPECT_TRUE(fs::exists(in.poser / "cr2install" / stays)) << stays;
  ASSERT_EQ(in.t.services.printed().size(), 1u);
  EXPECT_EQ(in.t.services.printed()[0].text,
            "\r\n\r\n\r\n               Files Not Installed -- fig.cr2\r\n\r\n\r\n         bump.bmp\r\n"
            "         readme.txt\r\n");
  EXPECT_FALSE(in.t->formCR2Install.visible());
  EXPECT_EQ(o.LabelRtDir.caption(), "");
  EXPECT_FALSE(o.ListboxListCR2Files.visible());
}

TEST(Install, RefusalsOfTheMenuLeaveTheRuntimeTreeAlone) {
  struct Case {
    const char* what;
    std::vector<ZipEntry> entries;  // empty: the empty zip; one without a name: the whole file
    std::vector<std::string> laidByHand;
    std::string title, text;
  };
  const std::string critical = "Error!";
  const Case cases[] = {
      {"two CR2 files laid by hand", {}, {"a.cr2", "b.CR2"}, critical,
       "There is more than one CR2 in the cr2install folder!"},
      {"no CR2 in the zip", {{"tex.jpg", "jpg"}}, {}, critical,
       "No CR2 File in this zip file, or it has not been unzipped!"},
      {"two CR2 in the zip", {{"a.cr2", "a"}, {"b.cr2", "b"}}, {}, critical,
       "There is more than one CR2 in the cr2install folder!"},
      {"the CR2 in a folder of the zip", {{"Fig/fig.cr2", "x"}, {"tex.jpg", "jpg"}}, {}, critical,
       "No CR2 File in this zip file, or it has not been unzipped!"},
      {"an empty zip", {}, {}, critical, "No CR2 File in this zip file, or it has not been unzipped!"},
      {"no zip at all", {{"", "PK but not a zip"}}, {}, critical,
       "No CR2 File in this zip file, or it has not been unzipped!"},
      {"a path out of the folder", {{"fig.cr2", "x"}, {"../../escape.txt", "x"}}, {}, critical,
       "The zip file cr2install\\fig.zip was not unpacked: the entry \"../../escape.txt\" leads out of the install "
       "folder. Nothing was installed."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Installer in;
    for (const std::string& name : c.laidByHand) writeFile(in.poser / "cr2install" / name, "x");
    if (c.laidByHand.empty()) {
      fs::path zip = in.t.files() / "fig.zip";
      if (c.entries.empty()) writeEmptyZip(zip);
      else if (c.entries[0].name.empty()) writeFile(zip, c.entries[0].bytes);
      else writeZip(zip, c.entries);
      in.t.services.dialog(zip.string());
    }
    in.t.services.expect(c.title, c.text);
    in.click("MenuInstallCR2");
    EXPECT_EQ(in.t.services.pending(), 0u);
    EXPECT_EQ(in.t.services.beeps(), c.text.rfind("The zip", 0) == 0 ? 0 : 1);
    EXPECT_FALSE(in.t->opening.ListboxListCR2Files.visible());
    EXPECT_FALSE(fs::exists(in.poser / "Runtime"));
    EXPECT_FALSE(fs::exists(in.t.dir.path() / "escape.txt"));
    EXPECT_FALSE(fs::exists(in.poser / "escape.txt"));
  }
}

TEST(Install, TargetFoldersFollowTheLastEntry) {
  // Each case: the inventory's lines and the hidden labels they leave; without a texture
  // folder a note says so.
  struct Case {
    const char* what;
    std::vector<std::string> lines;
    std::function<std::string(const std::string& poser)> texture;
    std::string geometry;
  };
  const auto none = [](const std::string&) { return std::string(); };
  // An entry without a Poser path takes the stock folder a "3" or "4" in the Poser
  // folder's path names, the later one winning.
  const auto stock = [](const std::string& root) {
    if (root.find('3') != std::string::npos) return root + "Runtime\\textures\\Poser 3 Textures";
    if (root.find('4') != std::string::npos) return root + "Runtime\\textures\\Poser 4 Textures";
    return std::string();
  };
  const Case cases[] = {
      {"a geometry line last empties the texture folder",
       {"\ttextureMap \":Runtime:Textures:A:t.jpg\"", "figureResFile :Runtime:Geometries:A:a.obj"},
       none,
       "\\Runtime\\Geometries\\A"},
      {"lower-case textures are no textures folder", {"\ttextureMap \":Runtime:textures:A:t.jpg\""}, none, ""},
      {"an entry without a Poser path", {"figureResFile :Runtime:Geometries:A:a.obj", "x.jpg"}, stock,
       "\\Runtime\\Geometries\\A"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Installer in;
    writeFile(in.poser / "cr2install" / "fig.cr2", crlf(c.lines));
    in.click("MenuInstallCR2");
    const std::string texture = c.texture(in.poser.string());
    if (texture.empty())
      in.t.services.expect("Note!",
                           "There is no location for the texture files listed in the CR2, or the path is invalid.  "
                           "The textures will be put with the CR2 for this file.");
    in.click("PictureInstallCR2");
    EXPECT_EQ(in.t.services.pending(), 0u);
    ui::Opening& o = in.t->opening;
    EXPECT_EQ(o.LabelTexPathCR2Install.caption(), texture);
    std::string geometry = o.LabelObjPathCR2Install.caption();
    EXPECT_EQ(geometry.substr(geometry.find('\\') == std::string::npos ? 0 : geometry.find('\\')), c.geometry);
  }
}

TEST(Install, InventoryListsEveryMentionAndCancelClearsIt) {
  Installer in;
  const std::vector<std::string> lines = {
      "figureResFile :Runtime:Geometries:A:a.OBJ", "\ttextureMap \"a.jpg\" % also a.bmp", "\ttextureMap \"a.jpg\" % also a.bmp",
      "\tmaterial my.jpg.look", "\tx.mtl", "\tb.pict", "\ttextureMap \"a.jpg\" % also a.bmp"};
  writeFile(in.poser / "cr2install" / "fig.cr2", crlf(lines));
  in.click("MenuInstallCR2");
  EXPECT_EQ(in.t->opening.ListboxListCR2Files.items(),
            (std::vector<std::string>{lines[0], lines[1], lines[3], lines[5], lines[6]}));
  in.t.services.queue(ui::ScriptedAnswer::print((in.t.dir.path() / "list.pdf").string()));
  in.click("PicturePrintCR2Files");
  ASSERT_EQ(in.t.services.printed().size(), 1u);
  EXPECT_EQ(in.t.services.printed()[0].text.substr(0, 22), "   Files Used in  -- " + std::string(1, '/'));
  in.t.services.expect("Information", "Click here to cancel installing the CR2.");
  in.click("PictureCR2InstallCancel", EventKind::RightClick);
  in.click("PictureCR2InstallCancel");
  EXPECT_EQ(in.t->opening.ListboxListCR2Files.listCount(), 0);
  EXPECT_FALSE(in.t->opening.PictureInstallCR2.visible());
  EXPECT_TRUE(fs::exists(in.poser / "cr2install" / "fig.cr2"));

  Installer empty;
  writeFile(empty.poser / "cr2install" / "fig.cr2", crlf({"{", "}"}));
  empty.t.services.expect("Note!", "No external files called in this CR2, but you can still install the CR2 itself.");
  empty.click("MenuInstallCR2");
  EXPECT_EQ(empty.t.services.pending(), 0u);
}

TEST(Install, KnownExtensionsAreCountedInAnyCase) {
  const std::pair<const char*, int> cases[] = {{"a.OBJ", 1}, {"a.Pict b.jpg", 2}, {"a.mtl", 0}, {"no dot", 0},
                                               {"x.bum.tif.gif.png", 4}, {".", 0}, {"a.pic", 0}};
  for (const auto& c : cases) EXPECT_EQ(install::knownExtensionCount(c.first), c.second) << c.first;
}

// The inventory reads the file in large blocks: lines that straddle a block's edge, CR
// LF, lone CR and lone LF line ends must come out as the line reader has them.
TEST(Install, InventoryAgreesWithTheLineReaderAcrossBlocks) {
  TempDir dir;
  std::string text;
  std::vector<std::string> expected;
  const char* ends[] = {"\r\n", "\r", "\n"};
  std::string line;
  for (int i = 0; text.size() < (9u << 20); ++i) {
    std::string piece = i % 7 == 0 ? "\ttextureMap \":Runtime:textures:m" + std::to_string(i) + ".JPG\""
                                   : "\tv 0.125 " + std::to_string(i) + ".5 1.0";
    if (i % 1000 == 0) piece += std::string(70000, 'x') + " a.obj";
    const char* end = ends[i % 3];
    text += piece + end;
    line += piece;
    if (end[0] == '\n') {
      line += "\n";
      continue;
    }
    if (install::knownExtensionCount(line) > 0 && (expected.empty() || expected.back() != line)) expected.push_back(line);
    line.clear();
  }
  if (install::knownExtensionCount(line) > 0 && expected.back() != line) expected.push_back(line);
  writeFile(dir / "big.cr2", text);
  EXPECT_EQ(install::externalFileLines(dir / "big.cr2"), expected);
  EXPECT_EQ(runTimeErrorOf([&] { install::externalFileLines(dir / "missing.cr2"); }), 53);
}

TEST(Install, FolderFormMakesAndRemovesFolders) {
  Installer in;
  writeFile(in.poser / "cr2install" / "fig.cr2", crlf({"figureResFile :Runtime:Geometries:A:a.obj"}));
  in.click("MenuInstallCR2");
  in.t.services.answer(ui::Answer::OK);  // the note on the texture folder
  in.click("PictureInstallCR2");
  in.fire("LabelNewDir", EventKind::Click);
  EXPECT_TRUE(in.t->formCR2Install.TextNewDir.visible());
  in.t->formCR2Install.TextNewDir.setText("New One");
  in.fire("TextNewDir", EventKind::Enter);
  EXPECT_TRUE(fs::is_directory(in.poser / "New One"));
  EXPECT_EQ(in.t->formCR2Install.DirCR2Install.text(), (in.poser / "New One").string());
  EXPECT_FALSE(in.t->formCR2Install.TextNewDir.visible());
  in.t.services.expect("Confirm", "Are you sure you want to remove " + (in.poser / "New One").string() + "?",
                       ui::Answer::Cancel);
  in.fire("LabelRemoveDir", EventKind::Click);
  EXPECT_TRUE(fs::is_directory(in.poser / "New One"));
  in.t.services.expect("Confirm", "Are you sure you want to remove " + (in.poser / "New One").string() + "?",
                       ui::Answer::OK);
  in.fire("LabelRemoveDir", EventKind::Click);
  EXPECT_FALSE(fs::exists(in.poser / "New One"));
  EXPECT_EQ(in.t->formCR2Install.DirCR2Install.text(), in.poser.string());
}

// Every disk operation of the moves fails in turn, on one disk and across two: the
// moves run with errors ignored, so a failed one leaves its file where it was. Every file
// of the zip must then stand exactly once in the Poser tree, whole, with no staging
// copy left beside it, and the program must go on.
TEST(Install, AFailedMoveLeavesEveryFileWholeInOnePlace) {
  auto prepare = [](Installer& f) {
    fs::create_directories(f.poser / "Lib");
    for (const ZipEntry& e : figureZip())
      writeFile(f.poser / "cr2install" / e.name.substr(e.name.find_last_of('/') + 1), e.bytes);
    f.click("MenuInstallCR2");
    f.click("PictureInstallCR2");
    f.t->formCR2Install.DirCR2Install.setText((f.poser / "Lib").string());
    f.t.services.answer(ui::Answer::No);
    f.t.services.answer(ui::Answer::OK);
  };
  auto placed = [](Installer& f) {
    std::map<std::string, std::string> byName;
    for (const auto& e : fs::recursive_directory_iterator(f.poser)) {
      if (!e.is_regular_file()) continue;
      std::string name = e.path().filename().string();
      EXPECT_NE(name[0], '.') << "a staging copy is left: " << e.path();
      EXPECT_EQ(byName.count(name), 0u) << name << " stands twice";
      byName[name] = readFile(e.path());
    }
    return byName;
  };
  for (bool otherDisk : {false, true}) {
    SCOPED_TRACE(otherDisk ? "across file systems" : "on one file system");
    OtherDisk layout(otherDisk);
    std::uint64_t operations = 0;
    std::map<std::string, std::string> clean;
    {
      Installer f;
      prepare(f);
      std::uint64_t start = text::disk::operationCount();
      f.fire("DirCR2Install", EventKind::Enter);
      operations = text::disk::operationCount() - start;
      clean = placed(f);
      EXPECT_TRUE(fs::exists(f.poser / "Lib" / "fig.cr2"));
    }
    ASSERT_GT(operations, 2u);
    for (std::uint64_t n = 1; n <= operations; ++n) {
      SCOPED_TRACE("disk operation " + std::to_string(n) + " fails");
      Installer f;
      f.t.services.answerRunTimeErrors(true);
      prepare(f);
      text::disk::failOperation(n, ENOSPC);
      f.fire("DirCR2Install", EventKind::Enter);
      text::disk::failOperation(0, 0);
      std::map<std::string, std::string> now = placed(f);
      EXPECT_EQ(now.size(), clean.size());
      for (const auto& [name, bytes] : clean) EXPECT_EQ(now[name], bytes) << name;
      EXPECT_FALSE(f.t->formCR2Install.visible()) << "the install ran to its end";
    }
  }
}

}  // namespace
}  // namespace tolvane::test
