// The buffered line reader: its rules case by case, and against a plain model of them
// over long random texts whose lines and fields straddle the reader's buffer boundaries.
#include "text/line_reader.h"

#include <gtest/gtest.h>

#include <random>

#include "text/line_writer.h"
#include "text/runtime_error.h"
#include "test_files.h"

namespace tolvane::text {
namespace {

using test::runTimeErrorOf;
using test::TempDir;
using test::writeFile;
using Lines = std::vector<std::string>;

// The whole of `bytes` read as raw lines, or as fields.
Lines readAll(const std::string& bytes, bool raw) {
  TempDir dir;
  writeFile(dir / "f.cr2", bytes);
  LineReader r(dir / "f.cr2");
  Lines out;
  while (!r.atEnd()) out.push_back(raw ? r.ReadRawLine() : r.ReadField());
  return out;
}

// Raw lines end at CR LF or a lone CR and keep their indentation; fields drop leading
// blanks, split at commas and drop quotes.
TEST(LineReader, RawLinesAndFields) {
  const bool kRaw = true, kField = false;
  const struct {
    const char* what;
    bool raw;
    std::string bytes;
    Lines expected;
  } cases[] = {
      {"crlf with indentation",
       kRaw,
       "actor hip:1\r\n\t{\r\n\t\tname hip\r\n",
       {"actor hip:1", "\t{", "\t\tname hip"}},
      {"last line without ending", kRaw, "a\r\nb", {"a", "b"}},
      {"empty lines stay", kRaw, "a\r\n\r\n\r\nb\r\n", {"a", "", "", "b"}},
      {"tab-only line is not empty", kRaw, "{\r\n\t\r\n}\r\n", {"{", "\t", "}"}},
      {"lone CR ends a line", kRaw, "a\rb\r\n", {"a", "b"}},
      {"lone LF belongs to the line", kRaw, "a\nb\nc\r\n", {"a\nb\nc"}},
      {"bare LF file reads as one line", kRaw, "a\nb\n", {"a\nb\n"}},
      {"comma is kept", kRaw, "name GetStringRes(1024,6)\r\n", {"name GetStringRes(1024,6)"}},
      {"empty file", kRaw, "", {}},
      {"indentation dropped", kField, "\t\tname hip\r\n  x\r\n", {"name hip", "x"}},
      {"comma splits the line",
       kField,
       "\t\t\tname GetStringRes(1024,6)\r\nnext\r\n",
       {"name GetStringRes(1024", "6)", "next"}},
      {"tab-only field is empty", kField, "{\r\n\t\r\n}\r\n", {"{", "", "}"}},
      {"empty field", kField, "a\r\n\r\nb\r\n", {"a", "", "b"}},
      {"quoted field drops the quotes", kField, "\"C:\\a b.tif\"\r\nx\r\n", {"C:\\a b.tif", "x"}},
      {"text after the closing quote is dropped", kField, "\"ab\"cd,ef\r\n", {"ab", "ef"}},
      {"quote inside a field is kept", kField, "textureMap \"a.tif\"\r\n", {"textureMap \"a.tif\""}},
      {"trailing comma gives an empty field", kField, "a,\r\nb\r\n", {"a", "", "b"}},
      {"last field without ending", kField, "a\r\nb", {"a", "b"}},
      {"lone CR ends a field", kField, "a\rb", {"a", "b"}},
      {"CR at the very end", kField, "a\r", {"a"}},
      {"blanks before the end of the file", kField, "x\r\n \t ", {"x", ""}},
      {"unclosed quote runs to the end", kField, "\"open\r\nquote", {"open\r\nquote"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(readAll(c.bytes, c.raw), c.expected);
  }
}

// Positions after each read are checked against the model below; seeks take them back.
TEST(LineReader, SeekAndLengthCountBytesAndReadingPastTheEndIsError62) {
  TempDir dir;
  writeFile(dir / "f.cr2", "abc\r\nde\rfg\r\n");
  LineReader r(dir / "f.cr2");
  EXPECT_EQ(r.length(), 12u);
  r.seek(5);
  EXPECT_EQ(r.ReadRawLine(), "de");
  EXPECT_EQ(r.position(), 8u);
  EXPECT_EQ(r.ReadRawLine(), "fg");
  EXPECT_TRUE(r.atEnd());
  EXPECT_EQ(runTimeErrorOf([&] { r.ReadRawLine(); }), kInputPastEndOfFile);
}

TEST(LineReader, LinesLongerThanTheBufferAndCrLfAcrossBlocks) {
  TempDir dir;
  std::string longLine(3 << 20, 'x');
  // The CR of the second line is the last byte of the first 1 MiB block.
  std::string filler((1 << 20) - 2, 'y');
  writeFile(dir / "f.cr2", longLine + "\r\n" + filler + "\r\nz");
  LineReader r(dir / "f.cr2");
  EXPECT_EQ(r.ReadRawLine(), longLine);
  EXPECT_EQ(r.ReadRawLine(), filler);
  EXPECT_EQ(r.ReadRawLine(), "z");
  EXPECT_TRUE(r.atEnd());
}

TEST(LineReader, MissingFileAndFolderAreRunTimeErrors) {
  TempDir dir;
  EXPECT_EQ(runTimeErrorOf([&] { LineReader r(dir / "none.cr2"); }), kFileNotFound);
  EXPECT_EQ(runTimeErrorOf([&] { LineReader r(dir.path()); }), kPathFileAccessError);
}

// The reading rules, stated as simply as possible on a whole string.
struct Model {
  std::string text;
  std::size_t pos = 0;

  // The first of `stops` from `from` on, or the end of the text.
  std::size_t until(const char* stops, std::size_t from) const {
    return std::min(text.find_first_of(stops, from), text.size());
  }

  bool rawLine(std::string& out) {
    if (pos >= text.size()) return false;
    std::size_t cr = until("\r", pos);
    out = text.substr(pos, cr - pos);
    pos = cr;
    skipEnding();
    return true;
  }

  bool field(std::string& out) {
    if (pos >= text.size()) return false;
    pos = std::min(text.find_first_not_of(" \t", pos), text.size());
    bool quoted = pos < text.size() && text[pos] == '"';
    std::size_t stop = quoted ? until("\"", pos + 1) : until(",\r", pos);
    out = text.substr(pos + quoted, stop - pos - quoted);
    pos = quoted ? until(",\r", std::min(stop + 1, text.size())) : stop;
    if (pos < text.size() && text[pos] == ',')
      ++pos;
    else
      skipEnding();
    return true;
  }

  void skipEnding() {
    if (pos < text.size() && text[pos] == '\r' && ++pos < text.size() && text[pos] == '\n') ++pos;
  }
};

// Reads the whole text with a seeded mix of raw and field reads and compares every
// result and position with the model.
void compareWithModel(const std::string& text, unsigned seed) {
  TempDir dir;
  writeFile(dir / "t.cr2", text);
  LineReader reader(dir / "t.cr2");
  Model model{text};
  std::mt19937 random(seed);
  std::string got, want;
  for (std::size_t step = 0;; ++step) {
    bool raw = random() % 3 == 0;
    bool more = raw ? reader.readRawLine(got) : reader.readField(got);
    bool modelMore = raw ? model.rawLine(want) : model.field(want);
    ASSERT_EQ(more, modelMore) << "step " << step;
    if (!more) break;
    ASSERT_EQ(got, want) << "step " << step << (raw ? " raw" : " field") << " at byte " << model.pos;
    ASSERT_EQ(reader.position(), model.pos) << "step " << step;
    ASSERT_EQ(reader.atEnd(), model.pos == text.size());
  }
  EXPECT_EQ(runTimeErrorOf([&] { reader.ReadField(); }), kInputPastEndOfFile) << "past the end";
}

std::string randomText(std::size_t size, unsigned seed, std::string_view alphabet) {
  std::mt19937 random(seed);
  std::string text(size, ' ');
  for (char& c : text) c = alphabet[random() % alphabet.size()];
  return text;
}

TEST(LineReaderModel, LongTextsAcrossBufferBoundaries) {
  // Short lines of figure text, with every delimiter the rules know, over several
  // buffers of the reader; long runs without a delimiter cross a whole buffer.
  const std::string dense = randomText(3'200'000, 7, "ab\t ,\"\r\n\r\nxyz0123456789");
  std::string sparse = randomText(2'500'000, 8, "abcdefgh \t");
  for (std::size_t i = 0; i < sparse.size(); i += 700'001) sparse[i] = '\r';
  for (std::size_t i = 350'000; i < sparse.size(); i += 900'017) sparse[i] = ',';
  for (unsigned seed = 1; seed <= 3; ++seed) {
    compareWithModel(dense, seed);
    compareWithModel(sparse, seed);
  }
}

TEST(LineWriter, WritesCrLfAndAppends) {
  TempDir dir;
  LineWriter out(dir / "o.txt", LineWriter::Mode::Output);
  out.WriteLine("a");
  out.WriteLine("");
  out.close();
  LineWriter append(dir / "o.txt", LineWriter::Mode::Append);
  append.WriteLine("\tb");
  append.close();
  EXPECT_EQ(test::readFile(dir / "o.txt"), "a\r\n\r\n\tb\r\n");
}

TEST(LineWriter, FullDiskIsError61AndOutputIsTruncated) {
  TempDir dir;
  LineWriter::failAfterBytesForTesting(10);
  int error = runTimeErrorOf([&] {
    LineWriter w(dir / "o.txt", LineWriter::Mode::Output);
    for (int i = 0; i < 10; ++i) w.WriteLine("0123456789");
    w.close();
  });
  LineWriter::failAfterBytesForTesting(-1);
  EXPECT_EQ(error, kDiskFull);
  EXPECT_EQ(test::readFile(dir / "o.txt").size(), 10u);
}

}  // namespace
}  // namespace tolvane::text
