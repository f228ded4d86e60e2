// Fuzzes the figure scanner's reads and its skip over lines without keywords against
// the plain reading rules of TextModel, with windows and shared-read blocks small enough
// that lines, fields, line ends and keywords fall across their edges. Input: a layout
// byte (how the file is read), a seed byte for the order of the reads, then the text.
#include "text/figure_scan.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "fuzz_files.h"
#include "text/runtime_error.h"
#include "text/shared_read.h"
#include "text_model.h"

namespace tolvane::fuzz {
namespace {

// The keyword sets the list readers and the Bracket Checker pass over lines with.
struct KeywordSet {
  std::vector<std::string_view> words;
  text::Needles needles;
};

std::vector<KeywordSet> keywordSets() {
  std::vector<KeywordSet> sets;
  auto add = [&](std::initializer_list<std::string_view> words) {
    sets.push_back({words, text::Needles(words)});
  };
  add({"figureResFile", "actor BODY"});
  add({"actor"});
  add({"figureResFile"});
  add({"actor", "valueOpDeltaAdd", "targetGeom"});
  add({"interpStyleLocked"});
  add({"actor", "prop"});
  add({"figureResFile", "figure", "material"});
  add({"prop", "figure"});
  add({"figure", "geomCustom"});
  add({"prop "});
  add({"material skin", "\tmaterial"});
  add({"Map"});
  add({"{", "}", "actor"});
  return sets;
}

bool holdsAny(std::string_view text, const KeywordSet& set, bool quote) {
  for (std::string_view w : set.words)
    if (text.find(w) != std::string_view::npos) return true;
  return quote && text.find('"') != std::string_view::npos;
}

std::unique_ptr<text::FigureScanner> openScanner(const std::filesystem::path& file, std::uint8_t layout) {
  std::size_t low = layout & 63;
  switch (layout >> 6) {
    case 0:
      return std::make_unique<text::FigureScanner>(file, 2 + low);
    case 1:
      return std::make_unique<text::FigureScanner>(file);
    case 2:
      return std::make_unique<text::FigureScanner>(
          std::make_shared<text::SharedRead>(file, 1 + low, 2, low / 3), 0, 2 + (low & 7));
    default:
      return std::make_unique<text::FigureScanner>(
          std::make_shared<text::SharedRead>(file, 64 + low * 4, 2, 16), 0);
  }
}

// One skip: the lines passed over hold no keyword (nor, for fields, a double quote),
// the line it stops at holds one, and the count is the reads the model makes to get there.
void skip(text::FigureScanner& in, TextModel& model, KeywordSet& set, bool fields, bool count) {
  std::size_t from = model.position();
  std::uint64_t n = in.skipLines(set.needles, fields, count);
  if (model.midLine()) {
    check(n == 0, "skipLines moved inside a line");
    return;
  }
  if (!count) {
    model.seek(from + n);
  } else {
    for (std::uint64_t i = 0; i < n; ++i) {
      check(!model.atEnd(), "skipLines counted reads past the end");
      fields ? model.field() : model.rawLine();
    }
  }
  std::string_view text = model.text();
  check(!holdsAny(text.substr(from, model.position() - from), set, fields),
        "skipLines passed over a keyword");
  if (model.atEnd()) return;
  check(!model.midLine(), "skipLines stopped inside a line");
  std::size_t cr = text.find('\r', model.position());
  std::string_view next =
      text.substr(model.position(), cr == std::string_view::npos ? cr : cr - model.position());
  check(holdsAny(next, set, fields), "skipLines stopped before a line without a keyword");
}

void run(std::uint8_t layout, std::uint8_t seed, std::string_view body) {
  std::unique_ptr<text::FigureScanner> in = openScanner(writeInput("figure.cr2", body), layout);
  TextModel model(body);
  std::vector<KeywordSet> sets = keywordSets();
  Steps steps(seed);
  std::string_view got;
  for (int i = 0; i < 4096 && !model.atEnd(); ++i) {
    check(!in->atEnd(), "atEnd before the end");
    std::uint32_t op = steps.next(8);
    if (op < 3) {
      check(in->rawLine(got) && got == model.rawLine(), "rawLine differs");
    } else if (op < 6) {
      check(in->field(got) && got == model.field(), "field differs");
    } else {
      KeywordSet& set = sets[steps.next(static_cast<std::uint32_t>(sets.size()))];
      skip(*in, model, set, steps.next(2) == 0, steps.next(2) == 0);
    }
  }
  while (!model.atEnd()) check(in->rawLine(got) && got == model.rawLine(), "rawLine differs at the end");
  check(in->atEnd() && !in->rawLine(got) && !in->field(got), "a read past the end returned text");
  try {
    in->ReadField();
    fail("ReadField past the end returned text");
  } catch (const text::RuntimeError& e) {
    check(e.number() == text::kInputPastEndOfFile, "a read past the end is not error 62");
  }
}

}  // namespace
}  // namespace tolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tolvane::fuzz;
  std::string_view input = asText(data, size);
  run(size > 0 ? data[0] : 0, size > 1 ? data[1] : 0, input.substr(std::min<std::size_t>(size, 2)));
  return 0;
}
