#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace lumeno {

/// The folder that a file manager shows.
struct ShownFolder {
  QByteArray path;  ///< empty when it is no local one (the trash, a remote place, a search)
  bool operator==(const ShownFolder&) const = default;
};

/// By the text of a location entry: a path or a URI; absent for anything else, such as words searched for.
[[nodiscard]] std::optional<ShownFolder> folderOfLocation(const QString& text);

/// By the parts of a path, from the root ("/", or nothing where it is shown as an icon) on. Absent when the
/// path does not begin at the root.
[[nodiscard]] std::optional<ShownFolder> folderOfParts(const QStringList& parts);

/// Whether a window's title can be that of a folder: it begins with the folder's name. The home folder and
/// the root go by other names, which depend on the language.
[[nodiscard]] bool isTitleOf(const QString& title, const QByteArray& path, const QByteArray& home);

}  // namespace lumeno
