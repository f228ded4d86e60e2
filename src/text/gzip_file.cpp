#include "text/gzip_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "text/disk.h"
#include "text/progress.h"
#include "text/read_only_file.h"
#include "text/runtime_error.h"

namespace tolvane::text::gzip {

namespace {

constexpr std::size_t kInBlock = 1 << 20;
constexpr std::size_t kOutBlock = 4 << 20;
// Below this the ratio is not looked at: a short figure of repeated lines packs well.
constexpr std::uint64_t kRatioFloor = 1 << 20;
constexpr std::size_t kKeptCopies = 4;

// The packed file an unpacked copy was made from: the same file, unchanged.
struct Identity {
  dev_t dev = 0;
  ino_t ino = 0;
  off_t size = 0;
  long long mtimeSec = 0;
  long long mtimeNsec = 0;
  bool operator==(const Identity&) const = default;
};

struct Copy {
  Identity of;
  int fd = -1;
  std::uint64_t length = 0;
};

std::mutex g_mutex;
std::vector<Copy> g_copies;  // the most recent last
std::filesystem::path g_folder;

Identity identityOf(const struct stat& st) {
  return {st.st_dev, st.st_ino, st.st_size, static_cast<long long>(st.st_mtim.tv_sec),
          static_cast<long long>(st.st_mtim.tv_nsec)};
}

[[noreturn]] void raiseDamaged(const std::filesystem::path& shownAs) {
  throw RuntimeError(
      kDeviceIOError,
      "This file is compressed (gzip), but its compressed stream is damaged or cut short, so it "
      "cannot be read. The file is left as it was.",
      shownAs.string());
}

[[noreturn]] void raiseTooLarge(const std::filesystem::path& shownAs) {
  throw RuntimeError(
      kOutOfMemory,
      "This file is compressed (gzip) and unpacks to more than 4 GB or more than a thousand times "
      "its own size, which no figure does. The file is left as it was.",
      shownAs.string());
}

struct Descriptor {
  int fd = -1;
  ~Descriptor() {
    if (fd >= 0) ::close(fd);
  }
  int release() { return std::exchange(fd, -1); }
};

// An unnamed file for the unpacked text, gone with its last descriptor: in the unpack
// folder, or the system's temporary folder when that one cannot take it.
int openScratchIn(const std::filesystem::path& folder) {
  int fd = -1;
#ifdef O_TMPFILE
  fd = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (fd >= 0) return fd;
#endif
  std::string name = (folder / ".tolvane-unpacked-XXXXXX").string();
  fd = ::mkostemp(name.data(), O_CLOEXEC);
  if (fd >= 0) ::unlink(name.c_str());
  return fd;
}

int openScratch(const std::filesystem::path& shownAs) {
  int fd = g_folder.empty() ? -1 : openScratchIn(g_folder);
  if (fd < 0) fd = openScratchIn(std::filesystem::temp_directory_path());
  if (fd < 0) raiseError(errorNumberFromErrno(errno, true), shownAs.string());
  return fd;
}

void writeAll(int fd, const char* bytes, std::size_t size, const std::filesystem::path& shownAs) {
  for (std::size_t done = 0; done < size;) {
    ssize_t n = ::write(fd, bytes + done, size - done);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) raiseError(errorNumberFromErrno(errno, true), shownAs.string());
    done += static_cast<std::size_t>(n);
  }
}

struct Inflater {
  z_stream zs{};
  Inflater() {
    if (inflateInit2(&zs, 15 + 16) != Z_OK) raiseError(kOutOfMemory);
  }
  ~Inflater() { inflateEnd(&zs); }
};

// Streams the gzip members of `packed` into `to`; returns the unpacked length.
std::uint64_t unpack(int packed, std::uint64_t packedLength, int to, const std::filesystem::path& shownAs) {
  Inflater z;
  std::unique_ptr<unsigned char[]> in(new unsigned char[kInBlock]);
  std::unique_ptr<unsigned char[]> out(new unsigned char[kOutBlock]);
  const std::uint64_t most = std::min(kLargestUnpacked, std::max(kRatioFloor, packedLength * kLargestRatio));
  std::uint64_t total = 0;
  std::uint64_t at = 0;
  bool ended = false;  // the last member ended and no other began
  for (;;) {
    ssize_t n = ::pread(packed, in.get(), kInBlock, static_cast<off_t>(at));
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) raiseError(kDeviceIOError, shownAs.string());
    if (n == 0) break;
    at += static_cast<std::uint64_t>(n);
    reportProgress(at, packedLength);
    z.zs.next_in = in.get();
    z.zs.avail_in = static_cast<uInt>(n);
    while (z.zs.avail_in > 0) {
      if (ended) {
        // Another member follows, as `gzip` writes for appended files; other trailing
        // bytes are left, as `gzip -d` leaves them.
        if (z.zs.next_in[0] != 0x1f) return total;
        inflateReset(&z.zs);
        ended = false;
      }
      z.zs.next_out = out.get();
      z.zs.avail_out = kOutBlock;
      int rc = inflate(&z.zs, Z_NO_FLUSH);
      if (rc != Z_OK && rc != Z_STREAM_END && rc != Z_BUF_ERROR) raiseDamaged(shownAs);
      std::size_t produced = kOutBlock - z.zs.avail_out;
      total += produced;
      if (total > most) raiseTooLarge(shownAs);
      writeAll(to, reinterpret_cast<const char*>(out.get()), produced, shownAs);
      if (rc == Z_STREAM_END) ended = true;
      if (rc == Z_BUF_ERROR && produced == 0) break;
    }
  }
  if (!ended) raiseDamaged(shownAs);
  return total;
}

const std::string_view kPackedKinds[][2] = {{"crz", "cr2"}, {"p2z", "pz2"}, {"pzz", "pz3"},
                                            {"hrz", "hr2"}, {"ppz", "pp2"}, {"fcz", "fc2"}};

std::string lower(std::string_view s) {
  std::string out(s);
  for (char& c : out)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return out;
}

}  // namespace

bool hasMagic(std::string_view head) {
  return head.size() >= 2 && static_cast<unsigned char>(head[0]) == 0x1f &&
         static_cast<unsigned char>(head[1]) == 0x8b;
}

bool isPacked(const std::filesystem::path& path) {
  Descriptor d;
  d.fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (d.fd < 0) return false;
  char head[2];
  ssize_t n = ::pread(d.fd, head, sizeof head, 0);
  return n == 2 && hasMagic(std::string_view(head, 2));
}

bool hasPackedName(std::string_view path) {
  if (path.size() < 4 || path[path.size() - 4] != '.') return false;
  std::string kind = lower(path.substr(path.size() - 3));
  return std::any_of(std::begin(kPackedKinds), std::end(kPackedKinds),
                     [&](const auto& k) { return k[0] == kind; });
}

std::string plainKind(const std::string& kind) {
  for (const auto& k : kPackedKinds)
    if (k[0] == kind) return std::string(k[1]);
  return kind;
}

bool packsInto(const std::filesystem::path& target) {
  struct stat st {};
  if (::stat(target.c_str(), &st) == 0) return S_ISREG(st.st_mode) && isPacked(target);
  return hasPackedName(target.string());
}

int openUnpacked(int packed, const std::filesystem::path& shownAs, std::uint64_t& length) {
  struct stat st {};
  if (::fstat(packed, &st) != 0) raiseError(kDeviceIOError, shownAs.string());
  Identity id = identityOf(st);
  std::lock_guard<std::mutex> lock(g_mutex);
  auto kept = std::find_if(g_copies.begin(), g_copies.end(), [&](const Copy& c) { return c.of == id; });
  if (kept == g_copies.end()) {
    Descriptor scratch;
    scratch.fd = openScratch(shownAs);
    std::uint64_t total = unpack(packed, static_cast<std::uint64_t>(st.st_size), scratch.fd, shownAs);
    if (g_copies.size() == kKeptCopies) {
      ::close(g_copies.front().fd);
      g_copies.erase(g_copies.begin());
    }
    g_copies.push_back({id, scratch.release(), total});
    kept = g_copies.end() - 1;
  }
  // Each reader reads at offsets of its own, so a second descriptor of the copy serves.
  int fd = ::fcntl(kept->fd, F_DUPFD_CLOEXEC, 0);
  if (fd < 0) raiseError(errorNumberFromErrno(errno, false), shownAs.string());
  length = kept->length;
  return fd;
}

void packInto(const std::filesystem::path& from, int fd, const std::filesystem::path& shownAs) {
  ReadOnlyFile in(from);
  z_stream zs{};
  if (deflateInit2(&zs, Z_DEFAULT_COMPRESSION, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY) != Z_OK)
    raiseError(kOutOfMemory);
  std::unique_ptr<z_stream, int (*)(z_stream*)> end(&zs, deflateEnd);
  std::unique_ptr<char[]> plain(new char[kOutBlock]);
  std::unique_ptr<unsigned char[]> packed(new unsigned char[kInBlock]);
  auto drain = [&](int flush) {
    do {
      zs.next_out = packed.get();
      zs.avail_out = kInBlock;
      deflate(&zs, flush);
      std::size_t n = kInBlock - zs.avail_out;
      for (std::size_t done = 0; done < n;) {
        ssize_t w = disk::write(fd, reinterpret_cast<const char*>(packed.get()) + done, n - done);
        if (w < 0 && errno == EINTR) continue;
        if (w < 0) raiseError(errorNumberFromErrno(errno, true), shownAs.string());
        done += static_cast<std::size_t>(w);
      }
    } while (zs.avail_out == 0);
  };
  for (std::uint64_t at = 0;;) {
    std::size_t n = in.readAt(at, plain.get(), kOutBlock);
    if (n == 0) break;
    at += n;
    zs.next_in = reinterpret_cast<unsigned char*>(plain.get());
    zs.avail_in = static_cast<uInt>(n);
    drain(Z_NO_FLUSH);
    reportProgress(at, in.length());
  }
  drain(Z_FINISH);
  if (disk::flushToDevice(fd) != 0) raiseError(errorNumberFromErrno(errno, true), shownAs.string());
}

void setUnpackFolder(const std::filesystem::path& folder) {
  std::lock_guard<std::mutex> lock(g_mutex);
  g_folder = folder;
}

}  // namespace tolvane::text::gzip
