#pragma once

#include <QByteArray>
#include <QUrl>
#include <optional>
#include <vector>

namespace lumeno {

/// The absolute local path that a file URI names, byte for byte and without a slash at its end; absent for
/// other schemes, other machines and what is no URI.
[[nodiscard]] std::optional<QByteArray> localPathOfUri(const QByteArray& uri);

/// The file URLs of a list of URIs, one a line, comments and empty lines left out (the format
/// text/uri-list). Absent when one of them is no local file, or there are none: part of a list is not what
/// was meant.
[[nodiscard]] std::optional<std::vector<QUrl>> fileUrlsInUriList(const QByteArray& list);

/// The same for what file managers put beside it: a first line that says whether the files were copied or
/// cut, then the URIs. Absent also when they were not copied.
[[nodiscard]] std::optional<std::vector<QUrl>> fileUrlsInCopiedFiles(const QByteArray& content);

}  // namespace lumeno
