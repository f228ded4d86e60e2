// The settings store: strings under application, section and key. The GUI keeps them
// in QSettings; the script runner in an INI file; tests in memory.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace tolvane::ui {

class Settings {
 public:
  virtual ~Settings() = default;
  virtual std::string get(const std::string& app, const std::string& section, const std::string& key,
                          const std::string& fallback) = 0;
  // Throws text::RuntimeError when the store cannot be written.
  virtual void save(const std::string& app, const std::string& section, const std::string& key,
                    const std::string& value) = 0;
};

// A key counts as not set when its value compares equal to the number 0 ("0", "", "0.0").
bool isUnset(const std::string& value);

class MemorySettings : public Settings {
 public:
  std::string get(const std::string& app, const std::string& section, const std::string& key,
                  const std::string& fallback) override;
  void save(const std::string& app, const std::string& section, const std::string& key,
            const std::string& value) override;
  // Makes every later save fail, as a store that cannot be written does.
  void setReadOnly(bool readOnly) { m_readOnly = readOnly; }

 private:
  std::map<std::string, std::string> m_values;
  bool m_readOnly = false;
};

// INI file: [App/Section] groups, key=value lines, written back on every save.
class IniSettings : public Settings {
 public:
  explicit IniSettings(std::filesystem::path file);
  std::string get(const std::string& app, const std::string& section, const std::string& key,
                  const std::string& fallback) override;
  void save(const std::string& app, const std::string& section, const std::string& key,
            const std::string& value) override;

 private:
  void load();
  void write() const;
  std::filesystem::path m_file;
  std::map<std::string, std::map<std::string, std::string>> m_groups;
};

}  // namespace tolvane::ui
