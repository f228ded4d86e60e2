// Install benchmark: unpacks a generated zip (200 MB in 2,000 entries by default) into
// the install folder in-process, against `unzip -q` of the same zip in the same run,
// and lists the outside files of a generated 100 MB figure against `grep -c` of it.
// Usage: install_bench [ZIP_MB] [FIGURE_MB]; the aims are within 2x of unzip and within
// 3x of grep.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>

#include "generator/generator.h"
#include "install/inventory.h"
#include "install/zip_extract.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double timed(const std::function<void()>& work) {
  auto start = Clock::now();
  work();
  return std::chrono::duration<double>(Clock::now() - start).count();
}

void run(const std::string& command) {
  if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

// Files of texture-like bytes: half random, half repeated, so that they pack about as
// well as real pictures and geometry do.
void writeEntries(const fs::path& folder, int count, std::uint64_t bytesEach) {
  std::mt19937 random(7);
  fs::create_directories(folder / "Runtime" / "textures");
  for (int i = 0; i < count; ++i) {
    std::string bytes(bytesEach, '\0');
    for (std::size_t b = 0; b < bytes.size(); ++b)
      bytes[b] = (b / 64) % 2 ? static_cast<char>(random()) : static_cast<char>('a' + b % 26);
    std::ofstream(folder / "Runtime" / "textures" / ("map" + std::to_string(i) + ".bmp"), std::ios::binary)
        << bytes;
  }
}

}  // namespace

int main(int argc, char** argv) {
  std::uint64_t zipMb = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 200;
  std::uint64_t figureMb = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 100;
  fs::path dir = fs::temp_directory_path() / ("tolvane-install-bench-" + std::to_string(::getpid()));
  try {
    const int entries = 2000;
    writeEntries(dir / "src", entries, (zipMb << 20) / entries);
    run("cd '" + (dir / "src").string() + "' && zip -q -r ../figure.zip Runtime");
    fs::remove_all(dir / "src");
    std::printf("zip: %.1f MB packed, %d entries\n", fs::file_size(dir / "figure.zip") / 1e6, entries);

    fs::create_directories(dir / "ours");
    fs::create_directories(dir / "unzip");
    double unzip = timed([&] { run("unzip -q -o '" + (dir / "figure.zip").string() + "' -d '" +
                                   (dir / "unzip").string() + "'"); });
    double ours = timed([&] {
      auto result = tolvane::install::extractZip(dir / "figure.zip", dir / "ours");
      if (!result.refusal.empty()) throw std::runtime_error(result.refusal);
    });
    std::printf("unpack: %.2f s, unzip -q %.2f s, ratio %.2f (aim: under 2)\n", ours, unzip, ours / unzip);
    fs::remove_all(dir / "ours");
    fs::remove_all(dir / "unzip");

    tolvane::gen::LargeFigureOptions options;
    options.targetBytes = figureMb << 20;
    fs::path figure = dir / "large.cr2";
    tolvane::gen::writeLargeFigure(figure, options);
    std::size_t listed = 0;
    double grep = timed([&] { run("grep -c . '" + figure.string() + "' > /dev/null"); });
    double inventory = timed([&] { listed = tolvane::install::externalFileLines(figure).size(); });
    std::printf("inventory of %.1f MB: %zu lines in %.3f s, grep -c . %.3f s, ratio %.2f (aim: under 3)\n",
                fs::file_size(figure) / 1e6, listed, inventory, grep, inventory / grep);
    // For scale: grep counting the lines that hold one of the extensions in any case.
    std::string patterns;
    for (const char* ext : {".obj", ".bmp", ".png", ".gif", ".bum", ".tif", ".jpg", ".pict"})
      patterns += std::string(" -e '") + ext + "'";
    double same = timed([&] { run("grep -c -i -F" + patterns + " '" + figure.string() + "' > /dev/null"); });
    std::printf("for scale: grep -c -i -F of the extensions %.3f s\n", same);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "install_bench: %s\n", e.what());
    fs::remove_all(dir);
    return 1;
  }
  fs::remove_all(dir);
  return 0;
}
