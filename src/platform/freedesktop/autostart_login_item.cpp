#include "platform/freedesktop/autostart_login_item.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include "platform/freedesktop/desktop_entry_file.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr auto entryName = "/autostart/lumeno.desktop"_L1;

QString ownPath() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + entryName;
}

/// The entry that holds outside the user's own folder; empty when there is none.
QString systemPath() {
  const QString own = ownPath();
  for (const QString& folder : QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation)) {
    const QString path = folder + entryName;
    if (path != own && QFile::exists(path)) return path;
  }
  return {};
}

bool writeOwn(const QString& content) {
  const QString path = ownPath();
  if (!QDir().mkpath(QFileInfo(path).path())) return false;
  QSaveFile file(path);
  const QByteArray bytes = content.toUtf8();
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

}  // namespace

bool AutostartLoginItem::isEnabled() {
  // The user's own entry decides alone, also when it only hides the system's.
  for (const QString& path : {ownPath(), systemPath()}) {
    if (const auto entry = DesktopEntryFile::read(path))
      return entry->isInstalled() && entry->isForThisDesktop();
  }
  return false;
}

bool AutostartLoginItem::registerItem() {
  return writeOwn(u"[Desktop Entry]\nType=Application\nName=Lumeno\nIcon=org.lumeno.Lumeno\nExec=%1\n"_s.arg(
      quotedForExec(program_)));
}

bool AutostartLoginItem::unregisterItem() {
  if (!systemPath().isEmpty())
    return writeOwn(u"[Desktop Entry]\nType=Application\nName=Lumeno\nHidden=true\n"_s);
  return !QFile::exists(ownPath()) || QFile::remove(ownPath());
}

}  // namespace lumeno
