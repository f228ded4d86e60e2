// The buffered line reader against a plain model of its rules, over crafted texts and
// long random texts whose lines and fields straddle the reader's buffer boundaries.
#include <gtest/gtest.h>

#include <random>

#include "core/line_reader.h"
#include "core/runtime_error.h"
#include "support/test_support.h"

namespace tolvane::test {
namespace {

// The reading rules, stated as simply as possible on a whole string.
struct Model {
  std::string text;
  std::size_t pos = 0;

  bool rawLine(std::string& out) {
    if (pos >= text.size()) return false;
    std::size_t cr = text.find('\r', pos);
    if (cr == std::string::npos) cr = text.size();
    out = text.substr(pos, cr - pos);
    pos = cr;
    skipEnding();
    return true;
  }

  bool field(std::string& out) {
    if (pos >= text.size()) return false;
    out.clear();
    while (pos < text.size() && (text[pos] == ' ' || text[pos] == '\t')) ++pos;
    if (pos < text.size() && text[pos] == '"') {
      std::size_t close = text.find('"', pos + 1);
      if (close == std::string::npos) close = text.size();
      out = text.substr(pos + 1, close - pos - 1);
      pos = std::min(close + 1, text.size());
      while (pos < text.size() && text[pos] != ',' && text[pos] != '\r') ++pos;
    } else {
      while (pos < text.size() && text[pos] != ',' && text[pos] != '\r') out.push_back(text[pos++]);
    }
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
  core::LineReader reader(dir / "t.cr2");
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
  try {
    reader.ReadField();
    ADD_FAILURE() << "no error past the end";
  } catch (const core::RuntimeError& e) {
    EXPECT_EQ(e.number(), core::kInputPastEndOfFile);
  }
}

std::string randomText(std::size_t size, unsigned seed, std::string_view alphabet) {
  std::mt19937 random(seed);
  std::string text(size, ' ');
  for (char& c : text) c = alphabet[random() % alphabet.size()];
  return text;
}

TEST(LineReaderModel, CraftedTextsReadAsTheRulesSay) {
  const struct {
    const char* name;
    std::string text;
  } cases[] = {
      {"comma splits a name line", "\t\t\tname GetStringRes(1024,6)\r\nnext\r\n"},
      {"tab-only and empty lines", "actor BODY:1\r\n\t{\r\n\t\r\n\t}\r\n\r\n"},
      {"lone LF belongs to the line", "one\ntwo\r\nthree\r"},
      {"lone CR ends a line", "a\rb\r\rc"},
      {"last line without an ending", "figure\r\n\t{"},
      {"quoted fields",
       "\t\ttextureMap \"C:\\a,b.bmp\" x\r\n\"quoted, with comma\" tail,rest\r\n\"open\r\nquote"},
      {"blanks before the end of the file", "x\r\n \t "},
      {"CR LF split from its CR", "a\r"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    for (unsigned seed = 1; seed <= 6; ++seed) compareWithModel(c.text, seed);
  }
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

}  // namespace
}  // namespace tolvane::test
