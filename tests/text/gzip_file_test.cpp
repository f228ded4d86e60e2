// Compressed figures at the lowest layer: a reader sees the text a gzip file holds, a
// damaged or oversized stream is refused with a text that says so, and the last move
// of a rewrite packs the new text when the file it replaces is packed.
#include "text/gzip_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "test_files.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/read_only_file.h"
#include "text/runtime_error.h"
#include "text/scratch_move.h"

namespace tolvane::test {
namespace {

const std::string kText =
    crlf({"{", "version", "\t{", "\tnumber 4.01", "\t}", "actor hip:1", "\t{", "\t}", "}"});

std::string readAll(const std::filesystem::path& path) {
  text::ReadOnlyFile in(path);
  std::string bytes(in.length(), '\0');
  bytes.resize(in.readAt(0, bytes.data(), bytes.size()));
  return bytes;
}

TEST(GzipFile, ReadersSeeThePackedText) {
  TempDir dir;
  struct Case {
    const char* name;
    std::string bytes;
  };
  const Case cases[] = {
      {"fig.crz", gzipBytes(kText)},
      {"fig.cr2", gzipBytes(kText)},  // told by its bytes, not its name
      {"two.pzz", gzipBytes(kText.substr(0, 20)) + gzipBytes(kText.substr(20))},  // two members
      {"plain.crz", kText},                                                       // a plain figure so named
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    writeFile(dir / c.name, c.bytes);
    EXPECT_EQ(readAll(dir / c.name), kText);
    text::LineReader in(dir / c.name);
    EXPECT_EQ(in.ReadRawLine(), "{");
    EXPECT_EQ(in.ReadRawLine(), "version");
    // The file itself is as it was, and a byte copy of it keeps the packed bytes.
    EXPECT_EQ(readFile(dir / c.name), c.bytes);
    text::ReadOnlyFile stored(dir / c.name, true);
    EXPECT_EQ(stored.length(), c.bytes.size());
  }
}

TEST(GzipFile, AChangedFileIsUnpackedAgain) {
  TempDir dir;
  writeFile(dir / "fig.crz", gzipBytes(kText));
  EXPECT_EQ(readAll(dir / "fig.crz"), kText);
  const std::string other = crlf({"{", "version", "}"});
  writeFile(dir / "next.crz", gzipBytes(other));
  std::filesystem::rename(dir / "next.crz", dir / "fig.crz");
  EXPECT_EQ(readAll(dir / "fig.crz"), other);
}

TEST(GzipFile, BadStreamsAreRefusedWithWhatIsWrong) {
  TempDir dir;
  const std::string packed = gzipBytes(kText);
  std::string flipped = packed;
  flipped[packed.size() - 6] ^= 0x55;  // the checksum no longer matches
  std::string bad = packed;
  bad[12] = static_cast<char>(0xff);  // a block type that does not exist
  struct Case {
    const char* name;
    std::string bytes;
    int error;
    const char* says;
  };
  const Case cases[] = {
      {"cut short", packed.substr(0, packed.size() / 2), text::kDeviceIOError, "damaged or cut short"},
      {"header only", packed.substr(0, 10), text::kDeviceIOError, "damaged or cut short"},
      {"checksum", flipped, text::kDeviceIOError, "damaged or cut short"},
      {"bad block", bad, text::kDeviceIOError, "damaged or cut short"},
      {"bomb", gzipBytes(std::string(std::size_t{8} << 20, '\0')), text::kOutOfMemory, "more than 4 GB"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    writeFile(dir / "fig.crz", c.bytes);
    try {
      text::ReadOnlyFile in(dir / "fig.crz");
      ADD_FAILURE() << "opened";
    } catch (const text::RuntimeError& e) {
      EXPECT_EQ(e.number(), c.error);
      EXPECT_NE(e.text().find(c.says), std::string::npos) << e.text();
      EXPECT_EQ(e.path(), (dir / "fig.crz").string());
    }
    EXPECT_EQ(readFile(dir / "fig.crz"), c.bytes);
  }
}

TEST(GzipFile, TheLastMovePacksWhatReplacesAPackedFile) {
  struct Case {
    const char* target;
    std::string before;  // empty: no file yet
    bool packed;
  };
  const Case cases[] = {
      {"fig.crz", gzipBytes(kText), true},
      {"fig.cr2", gzipBytes(kText), true},
      {"fig.crz", kText, false},
      {"new.P2Z", "", true},
      {"new.hrz", "", true},
      {"new.cr2", "", false},
      {"fig.cr2", kText, false},
  };
  const std::string changed = crlf({"{", "version", "\t{", "\tnumber 6", "\t}", "}"});
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.target) + (c.before.empty() ? " new" : ""));
    TempDir dir;
    if (!c.before.empty()) writeFile(dir / c.target, c.before);
    writeFile(dir / "scratch.txt", changed);
    text::moveScratchInto(dir / "scratch.txt", dir / c.target, true);
    bool unpacked = false;
    std::string now = readFile(dir / c.target);
    EXPECT_EQ(gunzipBytes(now, &unpacked), c.packed ? changed : "");
    EXPECT_EQ(unpacked, c.packed);
    if (!c.packed) {
      EXPECT_EQ(now, changed);
    }
    EXPECT_FALSE(std::filesystem::exists(dir / "scratch.txt"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 1);
  }
}

// The file kind is the lower-cased last three characters, no dot looked for; the
// compressed kinds are taken as the plain ones.
TEST(GzipFile, FileKindsWithTheCompressedOnesAsThePlain) {
  const std::pair<const char*, const char*> kinds[] = {
      {"a.crz", "cr2"},       {"a.P2Z", "pz2"},  {"a.pzz", "pz3"}, {"a.hrz", "hr2"},
      {"a.ppz", "pp2"},       {"a.fcz", "fc2"},  {"a.obj", "obj"}, {"C:\\x\\Fig.CR2", "cr2"},
      {"/a/pose.pz2", "pz2"}, {"figcr2", "cr2"}, {"ab", "ab"},
  };
  for (const auto& [path, kind] : kinds) EXPECT_EQ(text::FileKind(path), kind) << path;
}

}  // namespace
}  // namespace tolvane::test
