#include "text/figure_text.h"

#include <algorithm>
#include <cctype>
#include <system_error>

#include "text/gzip_file.h"
#include "text/runtime_error.h"

namespace tolvane::text {

std::string Mid(std::string_view text, long long start) {
  if (start < 1) raiseError(kInvalidProcedureCall);
  if (static_cast<std::size_t>(start) > text.size()) return {};
  return std::string(text.substr(static_cast<std::size_t>(start - 1)));
}

std::string Mid(std::string_view text, long long start, long long length) {
  if (start < 1 || length < 0) raiseError(kInvalidProcedureCall);
  if (static_cast<std::size_t>(start) > text.size()) return {};
  return std::string(text.substr(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(length)));
}

std::string Left(std::string_view text, long long length) {
  if (length < 0) raiseError(kInvalidProcedureCall);
  return std::string(text.substr(0, static_cast<std::size_t>(length)));
}

std::string Right(std::string_view text, long long length) {
  if (length < 0) raiseError(kInvalidProcedureCall);
  std::size_t n = std::min(text.size(), static_cast<std::size_t>(length));
  return std::string(text.substr(text.size() - n));
}

std::size_t InStr(std::string_view text, std::string_view what, std::size_t start) {
  if (start < 1) raiseError(kInvalidProcedureCall);
  if (start > text.size() + 1) return 0;
  std::size_t p = text.find(what, start - 1);
  return p == std::string_view::npos ? 0 : p + 1;
}

std::string UCase(std::string_view text) {
  std::string s(text);
  for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return s;
}

std::string LCase(std::string_view text) {
  std::string s(text);
  for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

std::string Replace(std::string_view text, std::string_view from, std::string_view to) {
  if (from.empty()) return std::string(text);
  std::string out;
  std::size_t pos = 0;
  for (;;) {
    std::size_t hit = text.find(from, pos);
    if (hit == std::string_view::npos) break;
    out.append(text.substr(pos, hit - pos));
    out.append(to);
    pos = hit + from.size();
  }
  out.append(text.substr(pos));
  return out;
}

bool IsActorHeader(std::string_view line) { return hasPrefix(line, "actor"); }
bool IsPropHeader(std::string_view line) { return hasPrefix(line, "prop"); }
std::string ActorName(std::string_view line) { return Mid(line, 7); }
char FigureNumber(std::string_view line) { return line.empty() ? '\0' : line.back(); }

std::string FileKind(std::string_view path) { return gzip::plainKind(LCase(Right(path, 3))); }

std::string PlainKind(std::string_view path) { return gzip::plainKind(Right(path, 3)); }

std::string ToPoserPath(std::string_view path) {
  std::string text = Mid(path, static_cast<long long>(InStr(path, "Runtime")));
  std::replace(text.begin(), text.end(), '\\', ':');
  std::replace(text.begin(), text.end(), '/', ':');
  return text;
}

std::filesystem::path resolveCaseInsensitive(const std::filesystem::path& path) {
  std::error_code ec;
  if (path.empty() || std::filesystem::exists(path, ec)) return path;
  std::filesystem::path resolved = path.root_path();
  for (const auto& part : path.relative_path()) {
    std::filesystem::path next = resolved / part;
    if (!std::filesystem::exists(next, ec)) {
      std::string wanted = LCase(part.string());
      std::filesystem::path base = resolved.empty() ? std::filesystem::path(".") : resolved;
      bool found = false;
      for (std::filesystem::directory_iterator it(base, ec), end; !ec && it != end; it.increment(ec)) {
        if (LCase(it->path().filename().string()) == wanted) {
          next = resolved / it->path().filename();
          found = true;
          break;
        }
      }
      if (!found) return path;
    }
    resolved = next;
  }
  return resolved;
}

std::filesystem::path FromPoserPath(std::string_view text, std::string_view ploc) {
  std::string rel(text);
  std::replace(rel.begin(), rel.end(), ':', '/');
  std::replace(rel.begin(), rel.end(), '\\', '/');
  while (!rel.empty() && rel.front() == '/') rel.erase(rel.begin());
  std::filesystem::path base = nativePath(ploc);
  return resolveCaseInsensitive(base / rel);
}

std::filesystem::path workFile(const std::filesystem::path& workDir, std::string_view name) {
  while (!name.empty() && (name.front() == '\\' || name.front() == '/')) name.remove_prefix(1);
  return workDir / std::string(name);
}

std::filesystem::path nativePath(std::string_view text) {
  std::string s(text);
  std::replace(s.begin(), s.end(), '\\', '/');
  return std::filesystem::path(s);
}

}  // namespace tolvane::text
