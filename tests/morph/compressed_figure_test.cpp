// The channel tools on compressed figures: each tool, run on a gzip copy of a figure and
// saved under the same name, leaves a gzip file that unpacks to exactly the text the
// tool makes of the plain figure.
#include <gtest/gtest.h>

#include <cerrno>

#include "fault_walk.h"
#include "morph_fixture.h"

namespace tolvane::test {
namespace {

using ui::Answer;

struct Bench : MorphFixture {
  // dest and source under the given names, packed when `packed`.
  Bench(const std::string& destName, const std::string& sourceName, bool packed) {
    dest = place("dest.cr2", destName, packed);
    source = place("source.cr2", sourceName, packed);
  }
  std::string place(const std::string& fixture, const std::string& name, bool packed) {
    std::string text = readFile(data("figures/" + fixture));
    std::filesystem::path path = tp.files() / name;
    std::filesystem::create_directories(tp.files());
    writeFile(path, packed ? gzipBytes(text) : text);
    return path.string();
  }
  void trash(const std::string& list) {
    fire("PictureTrash", EventKind::Click);
    fire(list, EventKind::Press);
    fire(list, EventKind::Release);
    drop("PictureTrash", list);
  }
  void rename(bool bodyPart, const std::string& to) {
    fire("PictureRenameMorph", EventKind::Click);
    (bodyPart ? f.OptionBodyPartRename : f.OptionChannelRename).setValue(true);
    services.input(to);
    services.answer(Answer::Yes);
    services.dialog(dest);
    fire("PictureRenameMorph", EventKind::Click);
  }
  std::string source;
};

struct Tool {
  const char* name;
  void (*run)(Bench&);
};

const Tool kTools[] = {
    {"MorphCopy",
     [](Bench& b) {
       b.openSource(b.source);
       b.viewChannels("hip");
       b.selectChannels({"\tNarrow"});
       for (Answer a : {Answer::OK, Answer::OK, Answer::Yes}) b.services.answer(a);
       b.services.dialog(b.dest);
       b.fire("PictureCopyToDest", EventKind::Click);
     }},
    {"MorphRename",
     [](Bench& b) {
       b.viewChannels("neck");
       b.selectChannels({"\tSquare"});
       b.rename(false, "Boxy");
     }},
    {"BodyPartRename",
     [](Bench& b) {
       b.selectActor("chest");
       b.rename(true, "torso");
     }},
    {"MorphRemoval",
     [](Bench& b) {
       b.viewChannels("chest");
       b.selectChannels({"\tRound"});
       b.services.answer(Answer::Yes);
       b.services.dialog(b.dest);
       b.trash("ListChannels");
     }},
    {"BodyPartRemoval",
     [](Bench& b) {
       b.selectActor("abdomen");
       b.services.answer(Answer::Yes);
       b.services.dialog(b.dest);
       b.services.answer(Answer::OK);
       b.trash("ListActors");
     }},
};

class CompressedFigure : public ::testing::TestWithParam<Tool> {};

TEST_P(CompressedFigure, AToolWritesItBackPackedUnderItsOwnName) {
  Bench plain("dest.cr2", "source.cr2", false);
  plain.openDestination(plain.dest);
  GetParam().run(plain);
  const std::string expected = readFile(plain.dest);
  ASSERT_NE(expected, readFile(Bench::data("figures/dest.cr2"))) << plain.lastMessage();

  for (const char* name : {"dest.crz", "dest.cr2"}) {  // a packed figure by name and by its bytes
    SCOPED_TRACE(name);
    Bench packed(name, "source.crz", true);
    packed.openDestination(packed.dest);
    GetParam().run(packed);
    EXPECT_EQ(packed.services.pending(), 0u);
    EXPECT_EQ(packed.f.LabelFileNameForEditor.caption(), packed.dest);
    bool unpacked = false;
    EXPECT_EQ(gunzipBytes(readFile(packed.dest), &unpacked), expected) << packed.lastMessage();
    EXPECT_TRUE(unpacked);
    // The same questions, naming the packed files.
    ASSERT_EQ(packed.services.messages().size(), plain.services.messages().size());
    for (std::size_t i = 0; i < plain.services.messages().size(); ++i)
      EXPECT_EQ(packed.services.messages()[i].title, plain.services.messages()[i].title);
    // Nothing else beside the figures.
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(packed.tp.files()), {}), 2);
  }
}

// The packing step is walked like every other writer: a failure at any disk operation
// leaves the packed figure as it was or as the clean run packed it, with nothing beside.
struct PackedBench : Bench {
  PackedBench() : Bench("dest.crz", "source.crz", true) {}
  TestProgram& program() { return tp; }
  std::filesystem::path userFolder() { return tp.files(); }
};

TEST(CompressedFigureFaults, APackedRewriteStaysWholeWhateverOperationFails) {
  for (int error : {ENOSPC, EIO}) {
    SCOPED_TRACE("errno " + std::to_string(error));
    walkFaults<PackedBench>(
        error,
        [](PackedBench& b) {
          b.viewChannels("neck");
          b.selectChannels({"\tSquare"});
          b.rename(false, "Boxy");
        },
        [](PackedBench& b) { b.openDestination(b.dest); });
  }
}

INSTANTIATE_TEST_SUITE_P(Tools, CompressedFigure, ::testing::ValuesIn(kTools),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace tolvane::test
