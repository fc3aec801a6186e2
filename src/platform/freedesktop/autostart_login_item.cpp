#include "platform/freedesktop/autostart_login_item.h"

#include <QFile>
#include <QStandardPaths>

#include "platform/desktop_entry/desktop_entry_file.h"
#include "platform/freedesktop/write_file.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr auto entryName = "/autostart/lumeno.desktop"_L1;

/// Some desktops' own tools switch an entry off in this way instead of hiding it.
bool isSwitchedOff(const DesktopEntryFile& entry) {
  return entry.value(u"X-GNOME-Autostart-enabled"_s) == "false"_L1;
}

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

}  // namespace

bool AutostartLoginItem::isEnabled() {
  // The user's own entry decides alone, also when it only hides the system's.
  for (const QString& path : {ownPath(), systemPath()}) {
    if (const auto entry = DesktopEntryFile::read(path))
      return entry->isInstalled() && entry->isForThisDesktop() && !isSwitchedOff(*entry);
  }
  return false;
}

bool AutostartLoginItem::registerItem() {
  const QString entry =
      u"[Desktop Entry]\nType=Application\nName=Lumeno\nIcon=org.lumeno.Lumeno\nTryExec=%1\nExec=%2\n"_s;
  const QString tried = QString(program_).replace(u'\\', u"\\\\"_s);
  return writeFileAtomically(ownPath(), entry.arg(tried, quotedForExec(program_)).toUtf8());
}

bool AutostartLoginItem::unregisterItem() {
  if (!systemPath().isEmpty()) {
    return writeFileAtomically(ownPath(), "[Desktop Entry]\nType=Application\nName=Lumeno\nHidden=true\n");
  }
  return !QFile::exists(ownPath()) || QFile::remove(ownPath());
}

}  // namespace lumeno
