#include "surface/system/files/SettingsStore.h"

#include <QSettings>
#include <QStringList>
#include <map>
#include <memory>

#include "surface/system/text/QtText.h"

namespace zelvane {

namespace {

/// Opened once an application: opening costs more than looking whether the file changed.
QSettings& StoreOf(const std::string& application) {
  static std::map<std::string, std::unique_ptr<QSettings>> stores;
  std::unique_ptr<QSettings>& store = stores[application];
  if (!store) {
    store = std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope, ToQt(application));
    store->setFallbacksEnabled(false);
  }
  return *store;
}

QString PathOf(const std::string& section, const std::string& key) {
  return section.empty() ? ToQt(key) : ToQt(section + '/' + key);
}

/// The file is UTF-8 and takes other bytes only as such.
QVariant ValueOf(const std::string& text) {
  const QString value = ToQt(text);
  return value.isValidUtf16() ? QVariant(value) : QVariant(QByteArray::fromStdString(text));
}

std::string TextOf(const QVariant& value) {
  if (value.typeId() == QMetaType::QByteArray) return value.toByteArray().toStdString();
  // A value typed into the file by hand with bare commas reads as a list.
  if (value.typeId() == QMetaType::QStringList) return FromQt(value.toStringList().join(", "));
  return FromQt(value.toString());
}

}  // namespace

std::string GetSetting(const std::string& application, const std::string& section, const std::string& key,
                       const std::string& fallback) {
  QSettings& store = StoreOf(application);
  store.sync();
  const QVariant value = store.value(PathOf(section, key));
  return value.isValid() ? TextOf(value) : fallback;
}

void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                 const std::string& value) {
  QSettings& store = StoreOf(application);
  store.sync();
  // A file that says so already isn't written anew, which would wait for the disk.
  const QVariant written = store.value(PathOf(section, key));
  if (written.isValid() && TextOf(written) == value) return;
  store.setValue(PathOf(section, key), ValueOf(value));
  store.sync();
}

}  // namespace zelvane
