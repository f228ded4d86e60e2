// The settings store of the desktop program, kept in QSettings (an INI file under the
// user's configuration folder, or the file that TOLVANE_SETTINGS names).
#pragma once

#include <QSettings>
#include <memory>

#include "ui/settings.h"

namespace tolvane::gui {

class QtSettings : public ui::Settings {
 public:
  // The store named by TOLVANE_SETTINGS, else the per-user store of the application.
  QtSettings();
  // A store in the given INI file.
  explicit QtSettings(const QString& iniFile);

  std::string get(const std::string& app, const std::string& section, const std::string& key,
                  const std::string& fallback) override;
  void save(const std::string& app, const std::string& section, const std::string& key,
            const std::string& value) override;

  QString fileName() const { return m_store->fileName(); }

 private:
  std::unique_ptr<QSettings> m_store;
};

// The same store through QSettings, for what the window keeps of itself (its place).
std::unique_ptr<QSettings> windowSettings();

}  // namespace tolvane::gui
