#include "surface/system/files/SettingsStore.h"

#include <QSettings>
#include <QStringList>
#include <map>
#include <memory>

namespace zelvane {

namespace {

/// Opened once an application: opening costs more than looking whether the file changed.
QSettings& StoreOf(const std::string& application) {
  static std::map<std::string, std::unique_ptr<QSettings>> stores;
  std::unique_ptr<QSettings>& store = stores[application];
  if (!store) {
    store = std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                        QString::fromStdString(application));
    store->setFallbacksEnabled(false);
  }
  return *store;
}

QString PathOf(const std::string& section, const std::string& key) {
  const QString name = QString::fromStdString(key);
  return section.empty() ? name : QString::fromStdString(section) + QLatin1Char('/') + name;
}

}  // namespace

std::string GetSetting(const std::string& application, const std::string& section, const std::string& key,
                       const std::string& fallback) {
  QSettings& store = StoreOf(application);
  store.sync();
  const QVariant value = store.value(PathOf(section, key));
  if (!value.isValid()) return fallback;
  // A value typed into the file by hand with bare commas reads as a list.
  if (value.typeId() == QMetaType::QStringList) return value.toStringList().join(", ").toStdString();
  return value.toString().toStdString();
}

void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                 const std::string& value) {
  QSettings& store = StoreOf(application);
  store.sync();
  // A file that says so already isn't written anew, which would wait for the disk.
  const QVariant written = store.value(PathOf(section, key));
  if (written.isValid() && written.toString() == QString::fromStdString(value)) return;
  store.setValue(PathOf(section, key), QString::fromStdString(value));
  store.sync();
}

}  // namespace zelvane
