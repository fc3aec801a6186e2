#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>

namespace lumeno {

/// The main group of a desktop entry file. A value: read once, on any thread.
class DesktopEntryFile {
 public:
  /// Absent when the file cannot be read or has no such group.
  [[nodiscard]] static std::optional<DesktopEntryFile> read(const QString& path);

  /// The value of a key with escapes resolved; empty when absent.
  [[nodiscard]] QString value(const QString& key) const;
  /// The value for a locale ("de_DE"), else for its language alone, else without either.
  [[nodiscard]] QString localizedValue(const QString& key, const QString& localeName) const;
  [[nodiscard]] QStringList list(const QString& key) const;
  [[nodiscard]] bool isTrue(const QString& key) const { return value(key) == QLatin1StringView("true"); }
  /// Not hidden, and its program (TryExec) is there.
  [[nodiscard]] bool isInstalled() const;
  [[nodiscard]] bool isForThisDesktop() const;

  /// The program and its arguments, with the field codes filled in for one URL (none when it is empty). Empty
  /// when the command cannot be parsed.
  [[nodiscard]] QStringList commandFor(const QString& url) const;

 private:
  QString path_;
  QHash<QString, QString> values_;
};

/// What the running desktop calls itself, most specific first.
[[nodiscard]] QStringList currentDesktops();

/// `argument` as an Exec key wants it.
[[nodiscard]] QString quotedForExec(const QString& argument);

}  // namespace lumeno
