#include "gui/qt_settings.h"

#include <QFileInfo>

#include "text/runtime_error.h"
#include "gui/qt_text.h"
#include "program/program.h"

namespace tolvane::gui {

namespace {
// The program's own sections sit at the top of its store; another application name
// gets its own group level.
QString keyPath(const std::string& app, const std::string& section, const std::string& key) {
  QString path = fromPathText(section) + '/' + fromPathText(key);
  if (app != kAppName) path.prepend(fromPathText(app) + '/');
  return path;
}
}  // namespace

std::unique_ptr<QSettings> windowSettings() {
  QString file = qEnvironmentVariable("TOLVANE_SETTINGS");
  if (!file.isEmpty()) return std::make_unique<QSettings>(file, QSettings::IniFormat);
  return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope, kAppName, kAppName);
}

QtSettings::QtSettings() : m_store(windowSettings()) {}

QtSettings::QtSettings(const QString& iniFile)
    : m_store(std::make_unique<QSettings>(iniFile, QSettings::IniFormat)) {}

std::string QtSettings::get(const std::string& app, const std::string& section, const std::string& key,
                            const std::string& fallback) {
  QVariant value = m_store->value(keyPath(app, section, key));
  if (!value.isValid()) return fallback;
  // A hand-edited value with commas reads back as a list.
  if (value.typeId() == QMetaType::QStringList) return toPathText(value.toStringList().join(", "));
  return toPathText(value.toString());
}

void QtSettings::save(const std::string& app, const std::string& section, const std::string& key,
                      const std::string& value) {
  const std::string where = toPathText(m_store->fileName());
  if (!m_store->isWritable()) text::raiseError(text::kPermissionDenied, where);
  m_store->setValue(keyPath(app, section, key), fromPathText(value));
  m_store->sync();
  if (m_store->status() != QSettings::NoError) text::raiseError(text::kPermissionDenied, where);
}

}  // namespace tolvane::gui
