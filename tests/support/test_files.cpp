#include "test_files.h"

#include <unistd.h>
#include <zlib.h>

#include <fstream>
#include <random>
#include <sstream>

#include "text/runtime_error.h"

namespace tolvane::test {

TempDir::TempDir() {
  std::random_device rd;
  auto base = std::filesystem::temp_directory_path();
  for (;;) {
    m_path = base / ("tolvane-test-" + std::to_string(::getpid()) + "-" + std::to_string(rd()));
    if (std::filesystem::create_directory(m_path)) break;
  }
}

TempDir::~TempDir() {
  std::error_code ec;
  // Read-only files made by tests must not stop the clean-up.
  for (auto it = std::filesystem::recursive_directory_iterator(m_path, ec);
       !ec && it != std::filesystem::recursive_directory_iterator(); it.increment(ec))
    std::filesystem::permissions(it->path(), std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ec);
  std::filesystem::remove_all(m_path, ec);
}

std::string readFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

void writeFile(const std::filesystem::path& path, const std::string& bytes) {
  if (path.has_parent_path()) std::filesystem::create_directories(path.parent_path());
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << bytes;
}

std::string crlf(const Lines& lines) {
  std::string s;
  for (const auto& l : lines) s += l + "\r\n";
  return s;
}

Lines crlfLines(const std::string& text) {
  Lines lines;
  for (std::size_t at = 0; at < text.size();) {
    std::size_t end = std::min(text.find("\r\n", at), text.size());
    lines.push_back(text.substr(at, end - at));
    at = end + 2;
  }
  return lines;
}

Lines join(std::initializer_list<Lines> parts) {
  Lines all;
  for (const Lines& p : parts) all.insert(all.end(), p.begin(), p.end());
  return all;
}

namespace {
std::vector<std::string> splitLines(const std::string& text) {
  std::vector<std::string> lines;
  std::string cur;
  for (char c : text) {
    cur.push_back(c);
    if (c == '\n') {
      lines.push_back(cur);
      cur.clear();
    }
  }
  if (!cur.empty()) lines.push_back(cur);
  return lines;
}
}  // namespace

std::string firstDifference(const std::filesystem::path& actual, const std::filesystem::path& expected) {
  if (!std::filesystem::exists(actual)) return "missing file " + actual.string();
  auto a = splitLines(readFile(actual));
  auto e = splitLines(readFile(expected));
  for (std::size_t i = 0; i < std::max(a.size(), e.size()); ++i) {
    std::string la = i < a.size() ? a[i] : "<end of file>";
    std::string le = i < e.size() ? e[i] : "<end of file>";
    if (la != le) return "line " + std::to_string(i + 1) + ": got [" + la + "] expected [" + le + "]";
  }
  return {};
}

std::filesystem::path copyInto(const std::filesystem::path& source, const std::filesystem::path& dir) {
  std::filesystem::create_directories(dir);
  auto target = dir / source.filename();
  std::filesystem::copy(source, target,
                        std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing);
  return target;
}

int runTimeErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const text::RuntimeError& e) {
    return e.number();
  }
  return 0;
}

}  // namespace tolvane::test

namespace tolvane::test {

std::string gzipBytes(const std::string& bytes) {
  z_stream zs{};
  deflateInit2(&zs, 9, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY);
  std::string out(deflateBound(&zs, bytes.size()) + 64, '\0');
  zs.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  zs.avail_in = static_cast<uInt>(bytes.size());
  zs.next_out = reinterpret_cast<Bytef*>(out.data());
  zs.avail_out = static_cast<uInt>(out.size());
  deflate(&zs, Z_FINISH);
  out.resize(zs.total_out);
  deflateEnd(&zs);
  return out;
}

std::string gunzipBytes(const std::string& packed, bool* ok) {
  z_stream zs{};
  inflateInit2(&zs, 15 + 16);
  zs.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
  zs.avail_in = static_cast<uInt>(packed.size());
  std::string out;
  int rc = Z_OK;
  char block[1 << 16];
  while (rc == Z_OK) {
    zs.next_out = reinterpret_cast<Bytef*>(block);
    zs.avail_out = sizeof block;
    rc = inflate(&zs, Z_NO_FLUSH);
    out.append(block, sizeof block - zs.avail_out);
  }
  inflateEnd(&zs);
  if (ok) *ok = rc == Z_STREAM_END;
  return rc == Z_STREAM_END ? out : std::string();
}

}  // namespace tolvane::test
