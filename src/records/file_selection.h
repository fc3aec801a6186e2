#pragma once

#include <QByteArray>
#include <QStringList>
#include <QUrl>
#include <optional>
#include <vector>

#include "base/geometry.h"

namespace lumeno {

/// Files and folders selected in a file manager. Names are bytes to the file system, and not all of them are
/// text: a URL keeps every byte, `localPath` and `fileUrl` turn one into the other.
struct FileSelection {
  std::vector<QUrl> urls;  ///< in the file manager's order
  QString sourceApp;
  std::optional<Rect> anchor;  ///< accessibility space; absent when unknown

  /// Whether the same paths are selected in the same order.
  bool operator==(const FileSelection& other) const;

  /// The standardised folder that holds the first item; the user's home folder when there is none.
  [[nodiscard]] QUrl parentDirectory() const;
  /// The last path component of each item, in order. Bytes that are not valid UTF-8 read as U+FFFD.
  [[nodiscard]] QStringList itemNames() const;
  /// The only item's name, or how many there are ("3 items").
  [[nodiscard]] QString displayLabel() const;
};

/// The path of a file URL, byte for byte.
[[nodiscard]] QByteArray localPath(const QUrl& url);
/// The file URL of an absolute path, byte for byte.
[[nodiscard]] QUrl fileUrl(const QByteArray& path);
/// The last component of a file URL's path, byte for byte.
[[nodiscard]] QByteArray itemName(const QUrl& url);
/// Whether one folder holds all of the items, as a search, or a tree with folders that are open, need not:
/// only then do their names alone say which files are meant. So of none.
[[nodiscard]] bool areInOneFolder(const std::vector<QUrl>& urls);

}  // namespace lumeno
