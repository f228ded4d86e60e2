#include "ui/settings.h"

#include <fstream>

#include "text/run_time_number.h"
#include "text/runtime_error.h"

namespace tolvane::ui {

bool isUnset(const std::string& value) {
  std::string t = text::Trim(value);
  if (t.empty()) return true;
  // Compared as a number: only text that reads wholly as zero counts.
  char* end = nullptr;
  double v = std::strtod(t.c_str(), &end);
  return end != nullptr && *end == '\0' && v == 0;
}

namespace {
std::string keyOf(const std::string& app, const std::string& section, const std::string& key) {
  return app + '\x1f' + section + '\x1f' + key;
}
}  // namespace

std::string MemorySettings::get(const std::string& app, const std::string& section, const std::string& key,
                                const std::string& fallback) {
  auto it = m_values.find(keyOf(app, section, key));
  return it == m_values.end() ? fallback : it->second;
}

void MemorySettings::save(const std::string& app, const std::string& section, const std::string& key,
                          const std::string& value) {
  if (m_readOnly) text::raiseError(text::kPermissionDenied, "settings");
  m_values[keyOf(app, section, key)] = value;
}

IniSettings::IniSettings(std::filesystem::path file) : m_file(std::move(file)) { load(); }

void IniSettings::load() {
  std::ifstream in(m_file);
  std::string line, group;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == ';' || line[0] == '#') continue;
    if (line.front() == '[' && line.back() == ']') {
      group = line.substr(1, line.size() - 2);
      continue;
    }
    auto eq = line.find('=');
    if (eq != std::string::npos) m_groups[group][line.substr(0, eq)] = line.substr(eq + 1);
  }
}

void IniSettings::write() const {
  std::filesystem::path tmp = m_file;
  tmp += ".tmp";
  {
    std::ofstream out(tmp, std::ios::trunc);
    for (const auto& [group, values] : m_groups) {
      out << '[' << group << "]\n";
      for (const auto& [k, v] : values) out << k << '=' << v << '\n';
      out << '\n';
    }
    out.flush();
    if (!out) text::raiseError(text::kPermissionDenied, m_file.string());
  }
  std::error_code ec;
  std::filesystem::rename(tmp, m_file, ec);
  if (ec) text::raiseError(text::kPermissionDenied, m_file.string());
}

std::string IniSettings::get(const std::string& app, const std::string& section, const std::string& key,
                             const std::string& fallback) {
  auto g = m_groups.find(app + "/" + section);
  if (g == m_groups.end()) return fallback;
  auto it = g->second.find(key);
  return it == g->second.end() ? fallback : it->second;
}

void IniSettings::save(const std::string& app, const std::string& section, const std::string& key,
                       const std::string& value) {
  m_groups[app + "/" + section][key] = value;
  write();
}

}  // namespace tolvane::ui
