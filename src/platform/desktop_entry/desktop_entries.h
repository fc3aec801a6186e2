#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>

#include "platform/desktop_entry/installed_entries.h"

namespace lumeno {

/// What a desktop entry says about an application.
struct DesktopEntry {
  QString id;  ///< the file's name without ".desktop", folders joined by "-"
  QString name;
  bool isTerminal = false;
};

/// What an entry says about the windows of the application that it starts.
struct Launch {
  QString id;           ///< the entry's own
  QString windowClass;  ///< may be empty
  QString program;      ///< base name, in lower case
};
[[nodiscard]] Launch launchOf(const InstalledEntry& installed);

/// Installed applications, found by what their windows call themselves. A value: loaded once, on any thread.
class DesktopEntries {
 public:
  DesktopEntries() = default;
  /// Reads all entries, with names for `localeName` ("de_DE"). See `forEachInstalledEntry`.
  [[nodiscard]] static DesktopEntries load(const QStringList& dataFolders, const QString& localeName);

  /// Adds one; what came before it has precedence.
  void add(const InstalledEntry& installed);

  /// The entry that belongs to a window's class: by StartupWMClass, by id (also its last part: "TextEditor"
  /// of "org.gnome.TextEditor"), by the program that it starts. Case counts for nothing.
  [[nodiscard]] std::optional<DesktopEntry> find(const QString& instanceName, const QString& className) const;

  /// The entry that the windows of an application are expected to be found by, from what its own entry says:
  /// not always itself, for several entries can start one program.
  [[nodiscard]] std::optional<DesktopEntry> findLaunched(const Launch& launch) const;

 private:
  using Index = QHash<QString, DesktopEntry>;
  Index byWindowClass_;
  Index byId_;
  Index byIdTail_;
  Index byProgram_;
};

}  // namespace lumeno
