#include "core/line_reader.h"

#include <gtest/gtest.h>

#include "core/line_writer.h"
#include "core/runtime_error.h"
#include "test_support.h"

namespace tolvane::core {
namespace {

using test::TempDir;
using test::writeFile;

std::vector<std::string> rawLines(const std::string& bytes) {
  TempDir dir;
  writeFile(dir / "f.cr2", bytes);
  LineReader r(dir / "f.cr2");
  std::vector<std::string> out;
  while (!r.atEnd()) out.push_back(r.ReadRawLine());
  return out;
}

std::vector<std::string> fields(const std::string& bytes) {
  TempDir dir;
  writeFile(dir / "f.cr2", bytes);
  LineReader r(dir / "f.cr2");
  std::vector<std::string> out;
  while (!r.atEnd()) out.push_back(r.ReadField());
  return out;
}

using Lines = std::vector<std::string>;

TEST(LineReader, RawLinesEndAtCrLfOrLoneCrAndKeepIndentation) {
  struct Case {
    const char* what;
    std::string bytes;
    Lines expected;
  } cases[] = {
      {"crlf with indentation", "actor hip:1\r\n\t{\r\n\t\tname hip\r\n", {"actor hip:1", "\t{", "\t\tname hip"}},
      {"last line without ending", "a\r\nb", {"a", "b"}},
      {"empty lines stay", "a\r\n\r\n\r\nb\r\n", {"a", "", "", "b"}},
      {"tab-only line is not empty", "{\r\n\t\r\n}\r\n", {"{", "\t", "}"}},
      {"lone CR ends a line", "a\rb\r\n", {"a", "b"}},
      {"lone LF belongs to the line", "a\nb\nc\r\n", {"a\nb\nc"}},
      {"bare LF file reads as one line", "a\nb\n", {"a\nb\n"}},
      {"comma is kept", "name GetStringRes(1024,6)\r\n", {"name GetStringRes(1024,6)"}},
      {"empty file", "", {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(rawLines(c.bytes), c.expected);
  }
}

TEST(LineReader, FieldsDropLeadingBlanksAndSplitAtCommas) {
  struct Case {
    const char* what;
    std::string bytes;
    Lines expected;
  } cases[] = {
      {"indentation dropped", "\t\tname hip\r\n  x\r\n", {"name hip", "x"}},
      {"comma splits the line", "\t\t\tname GetStringRes(1024,6)\r\nnext\r\n",
       {"name GetStringRes(1024", "6)", "next"}},
      {"tab-only line is empty", "{\r\n\t\r\n}\r\n", {"{", "", "}"}},
      {"empty line is empty", "a\r\n\r\nb\r\n", {"a", "", "b"}},
      {"quoted field drops the quotes", "\"C:\\a b.tif\"\r\nx\r\n", {"C:\\a b.tif", "x"}},
      {"text after the closing quote is dropped", "\"ab\"cd,ef\r\n", {"ab", "ef"}},
      {"quote inside a field is kept", "textureMap \"a.tif\"\r\n", {"textureMap \"a.tif\""}},
      {"trailing comma gives an empty field", "a,\r\nb\r\n", {"a", "", "b"}},
      {"last field without ending", "a\r\nb", {"a", "b"}},
      {"lone CR ends a field", "a\rb", {"a", "b"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(fields(c.bytes), c.expected);
  }
}

TEST(LineReader, ReadingPastTheEndIsError62) {
  TempDir dir;
  writeFile(dir / "f.cr2", "only\r\n");
  LineReader r(dir / "f.cr2");
  EXPECT_EQ(r.ReadRawLine(), "only");
  EXPECT_TRUE(r.atEnd());
  try {
    r.ReadRawLine();
    FAIL() << "no error";
  } catch (const RuntimeError& e) {
    EXPECT_EQ(e.number(), kInputPastEndOfFile);
  }
  EXPECT_THROW(r.ReadField(), RuntimeError);
}

TEST(LineReader, PositionsCountBytesForPatching) {
  TempDir dir;
  writeFile(dir / "f.cr2", "abc\r\nde\rfg\r\n");
  LineReader r(dir / "f.cr2");
  EXPECT_EQ(r.position(), 0u);
  r.ReadRawLine();
  EXPECT_EQ(r.position(), 5u);
  r.ReadRawLine();
  EXPECT_EQ(r.position(), 8u);
  r.seek(5);
  EXPECT_EQ(r.ReadRawLine(), "de");
  EXPECT_EQ(r.length(), 12u);
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
  try {
    LineReader r(dir / "none.cr2");
    FAIL();
  } catch (const RuntimeError& e) {
    EXPECT_EQ(e.number(), kFileNotFound);
  }
  EXPECT_THROW(LineReader r(dir.path()), RuntimeError);
}

TEST(LineWriter, WritesCrLfAndAppends) {
  TempDir dir;
  {
    LineWriter w(dir / "o.txt", LineWriter::Mode::Output);
    w.WriteLine("a");
    w.WriteLine("");
    w.close();
  }
  {
    LineWriter w(dir / "o.txt", LineWriter::Mode::Append);
    w.WriteLine("\tb");
    w.close();
  }
  EXPECT_EQ(test::readFile(dir / "o.txt"), "a\r\n\r\n\tb\r\n");
}

TEST(LineWriter, FullDiskIsError61AndOutputIsTruncated) {
  TempDir dir;
  LineWriter::failAfterBytesForTesting(10);
  try {
    LineWriter w(dir / "o.txt", LineWriter::Mode::Output);
    for (int i = 0; i < 10; ++i) w.WriteLine("0123456789");
    w.close();
    LineWriter::failAfterBytesForTesting(-1);
    FAIL() << "no error";
  } catch (const RuntimeError& e) {
    LineWriter::failAfterBytesForTesting(-1);
    EXPECT_EQ(e.number(), kDiskFull);
  }
  EXPECT_EQ(test::readFile(dir / "o.txt").size(), 10u);
}

}  // namespace
}  // namespace tolvane::core
