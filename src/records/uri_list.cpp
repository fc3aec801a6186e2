#include "records/uri_list.h"

#include <QByteArrayList>
#include <QSysInfo>

#include "records/file_selection.h"

namespace lumeno {

namespace {

constexpr auto scheme = "file:";

/// What follows the machine's name; absent when that is another machine.
std::optional<QByteArray> withoutHost(const QByteArray& rest) {
  if (!rest.startsWith("//")) return rest;
  const qsizetype slash = rest.indexOf('/', 2);
  if (slash < 0) return std::nullopt;
  const QByteArray host = rest.mid(2, slash - 2).toLower();
  const bool isHere =
      host.isEmpty() || host == "localhost" || host == QSysInfo::machineHostName().toUtf8().toLower();
  return isHere ? std::optional(rest.mid(slash)) : std::nullopt;
}

}  // namespace

std::optional<QByteArray> localPathOfUri(const QByteArray& uri) {
  const qsizetype length = qsizetype(qstrlen(scheme));
  if (uri.left(length).toLower() != scheme) return std::nullopt;
  const auto encoded = withoutHost(uri.mid(length));
  if (!encoded) return std::nullopt;
  QByteArray path = QByteArray::fromPercentEncoding(*encoded);
  if (!path.startsWith('/') || path.contains('\0')) return std::nullopt;
  while (path.size() > 1 && path.endsWith('/')) path.chop(1);
  return path;
}

std::optional<std::vector<QUrl>> fileUrlsInUriList(const QByteArray& list) {
  std::vector<QUrl> urls;
  for (QByteArray line : list.split('\n')) {
    if (line.endsWith('\r')) line.chop(1);
    if (line.endsWith('\0')) line.chop(1);  // some owners count the end of their string in
    if (line.isEmpty() || line.startsWith('#')) continue;
    const auto path = localPathOfUri(line);
    if (!path) return std::nullopt;
    urls.push_back(fileUrl(*path));
  }
  if (urls.empty()) return std::nullopt;
  return urls;
}

std::optional<std::vector<QUrl>> fileUrlsInCopiedFiles(const QByteArray& content) {
  const QByteArray copied = "copy\n";
  if (!content.startsWith(copied)) return std::nullopt;
  return fileUrlsInUriList(content.mid(copied.size()));
}

}  // namespace lumeno
