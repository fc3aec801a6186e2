#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

namespace lumeno {

/// What a folder holds, as far as shown names can be told from it.
struct FolderListing {
  std::vector<QByteArray> names;  ///< of all entries but "." and ".."
  /// What entries of the desktop call themselves: file managers show that in place of their file names.
  std::vector<QString> titles;
};

/// Reads a folder. Absent when it cannot be read. Blocks on the disk; any thread.
[[nodiscard]] std::optional<FolderListing> listFolder(const QByteArray& path);

/// The names on disk of items by the names that a file manager shows, in the same order. Absent as soon as
/// one of them is not there, might be more than one, or comes twice.
[[nodiscard]] std::optional<std::vector<QByteArray>> matchNames(const std::vector<QString>& shown,
                                                                const FolderListing& folder);

/// A name as toolkits show it: each byte that is not part of valid UTF-8 becomes U+FFFD.
[[nodiscard]] QString shownName(const QByteArray& name);

}  // namespace lumeno
