#include "platform/file_managers/folder_names.h"

#include <algorithm>

#include "platform/file_managers/name_matching.h"
#include "records/uri_list.h"

namespace lumeno {

namespace {

/// Whether the text begins as URIs do ("smb:").
bool hasScheme(const QString& text) {
  const qsizetype colon = text.indexOf(u':');
  if (colon < 2 || text.contains(u' ')) return false;
  return std::all_of(text.cbegin(), text.cbegin() + colon, [](QChar c) {
    return (c.isLetterOrNumber() && c.unicode() < 0x80) || c == u'-' || c == u'+' || c == u'.';
  });
}

QByteArray withoutSlashAtEnd(QByteArray path) {
  while (path.size() > 1 && path.endsWith('/')) path.chop(1);
  return path;
}

}  // namespace

std::optional<ShownFolder> folderOfLocation(const QString& text) {
  if (text.startsWith(u'/')) return ShownFolder{withoutSlashAtEnd(text.toUtf8())};
  if (!hasScheme(text)) return std::nullopt;
  return ShownFolder{localPathOfUri(text.toUtf8()).value_or(QByteArray())};
}

std::optional<ShownFolder> folderOfParts(const QStringList& parts) {
  if (parts.isEmpty() || !(parts.first().isEmpty() || parts.first() == u"/")) return std::nullopt;
  QByteArray path;
  for (const QString& part : parts.mid(1)) {
    if (part.isEmpty() || part.contains(u'/')) return std::nullopt;
    path += '/' + part.toUtf8();
  }
  return ShownFolder{path.isEmpty() ? QByteArray("/") : path};
}

bool isTitleOf(const QString& title, const QByteArray& path, const QByteArray& home) {
  if (path == home || path == "/") return true;
  return title.startsWith(shownName(path.mid(path.lastIndexOf('/') + 1)));
}

}  // namespace lumeno
