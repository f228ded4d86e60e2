// Fuzzes the line reader (ReadRawLine, ReadField, positions and seeks) against the plain
// reading rules of TextModel. Input: a layout byte, a seed byte for the order of the
// reads, then the text. With the layout's low bit set the text sits behind lines of
// padding that end just short of the reader's 1 MB block, so that its lines and fields
// cross the block's edge.
#include "text/line_reader.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdint>
#include <string>

#include "fuzz_files.h"
#include "text/runtime_error.h"
#include "text_model.h"

namespace tolvane::fuzz {
namespace {

constexpr std::size_t kReaderBlock = 1 << 20;  // LineReader's block
constexpr std::size_t kFixedPad = kReaderBlock - 256;

// Whole lines of padding, `length` bytes in all, the last ending in CR LF.
std::string padding(std::size_t length) {
  std::string pad;
  pad.reserve(length);
  while (length - pad.size() > 65536) pad.append(65534, 'x').append("\r\n");
  pad.append(length - pad.size() - 2, 'x').append("\r\n");
  return pad;
}

// The file of a padded input: the same padding lines up to kFixedPad, written once,
// then one padding line of the length asked for and the text, written for each input.
std::filesystem::path writePadded(std::size_t padLength, std::string_view body) {
  static const std::filesystem::path file = writeInput("padded.cr2", padding(kFixedPad));
  std::string tail = padding(padLength - kFixedPad);
  tail.append(body);
  int fd = ::open(file.c_str(), O_WRONLY | O_CLOEXEC);
  bool ok = fd >= 0 && ::ftruncate(fd, static_cast<off_t>(kFixedPad)) == 0 &&
            ::pwrite(fd, tail.data(), tail.size(), static_cast<off_t>(kFixedPad)) ==
                static_cast<ssize_t>(tail.size());
  if (fd >= 0) ::close(fd);
  check(ok, "cannot write the padded input");
  return file;
}

void expectEnd(text::LineReader& in, bool raw) {
  try {
    raw ? in.ReadRawLine() : in.ReadField();
  } catch (const text::RuntimeError& e) {
    check(e.number() == text::kInputPastEndOfFile, "a read past the end is not error 62");
    return;
  }
  fail("a read past the end returned text");
}

void run(std::uint8_t layout, std::uint8_t seed, std::string_view body) {
  std::size_t padLength = (layout & 1) ? kReaderBlock - 1 - (layout >> 1) % 64 : 0;
  text::LineReader in(padLength > 0 ? writePadded(padLength, body) : writeInput("figure.cr2", body));
  check(in.length() == padLength + body.size(), "length differs from the file's size");
  TextModel model(body);
  std::string got;
  while (in.position() < padLength) in.readRawLine(got);
  check(in.position() == padLength, "the padding did not end on a line end");

  Steps steps(seed);
  for (int i = 0; i < 4096; ++i) {
    check(in.atEnd() == model.atEnd(), "atEnd differs");
    if (model.atEnd()) break;
    std::uint32_t op = steps.next(8);
    if (op < 3) {
      check(in.ReadRawLine() == model.rawLine(), "ReadRawLine differs");
    } else if (op < 6) {
      check(in.ReadField() == model.field(), "ReadField differs");
    } else if (op == 6) {
      std::size_t to = steps.next(static_cast<std::uint32_t>(body.size() + 1));
      in.seek(padLength + to);
      model.seek(to);
    } else {
      check(in.readField(got) && got == model.field(), "readField differs");
    }
    check(in.position() == padLength + model.position(), "position differs");
  }
  while (!model.atEnd()) check(in.ReadRawLine() == model.rawLine(), "ReadRawLine differs at the end");
  check(in.atEnd() && in.position() == padLength + body.size(), "the reader did not end with the text");
  expectEnd(in, true);
  expectEnd(in, false);
  check(!in.readRawLine(got) && !in.readField(got), "a read past the end returned true");
}

}  // namespace
}  // namespace tolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tolvane::fuzz;
  std::string_view input = asText(data, size);
  std::uint8_t layout = size > 0 ? data[0] : 0;
  std::uint8_t seed = size > 1 ? data[1] : 0;
  run(layout, seed, input.substr(std::min<std::size_t>(size, 2)));
  return 0;
}
