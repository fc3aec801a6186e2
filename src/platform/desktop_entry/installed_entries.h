#pragma once

#include <QString>
#include <QStringList>
#include <functional>

#include "platform/desktop_entry/desktop_entry_file.h"

namespace lumeno {

/// One application that is installed, also one that menus do not show.
struct InstalledEntry {
  QString id;    ///< the file's name without ".desktop", folders joined by "-"
  QString name;  ///< for people, in their language
  DesktopEntryFile file;
};

/// The folders in which the environment says that applications are installed, the most important first.
[[nodiscard]] QStringList applicationDataFolders();

/// Tells of all entries of the "applications" folders in `dataFolders`, with names for `localeName`
/// ("de_DE"). An entry replaces those of the same id in less important folders, also when it only hides them.
/// Reads some hundred files, on any thread.
void forEachInstalledEntry(const QStringList& dataFolders, const QString& localeName,
                           const std::function<void(const InstalledEntry&)>& visit);

}  // namespace lumeno
