#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>

namespace lumeno {

/// What a desktop entry says about an application.
struct DesktopEntry {
  QString id;  ///< the file's name without ".desktop", folders joined by "-"
  QString name;
  bool isTerminal = false;
};

/// Installed applications, found by what their windows call themselves. A value: loaded once, on any thread.
class X11DesktopEntries {
 public:
  X11DesktopEntries() = default;
  /// Reads all entries of the "applications" folders in `dataFolders` (the most important first), with names
  /// for `localeName` ("de_DE").
  [[nodiscard]] static X11DesktopEntries load(const QStringList& dataFolders, const QString& localeName);
  /// The folders that the environment names.
  [[nodiscard]] static QStringList dataFolders();

  /// The entry that belongs to a window's class: by StartupWMClass, by id (also its last part: "TextEditor"
  /// of "org.gnome.TextEditor"), by the program that it starts. Case counts for nothing.
  [[nodiscard]] std::optional<DesktopEntry> find(const QString& instanceName, const QString& className) const;

 private:
  using Index = QHash<QString, DesktopEntry>;
  Index byWindowClass_;
  Index byId_;
  Index byIdTail_;
  Index byProgram_;
};

}  // namespace lumeno
