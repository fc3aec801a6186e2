#include "records/file_selection.h"

#include <QDir>
#include <algorithm>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

/// Without a trailing slash, "." and "..": what is lexically the same folder reads the same.
QByteArray standardised(const QByteArray& path) {
  QByteArrayList parts;
  for (const QByteArray& part : path.split('/')) {
    if (part.isEmpty() || part == ".") continue;
    if (part != "..") {
      parts.append(part);
    } else if (!parts.isEmpty()) {
      parts.removeLast();
    }
  }
  return '/' + parts.join('/');
}

QByteArray folderOf(const QUrl& url) {
  const QByteArray path = standardised(localPath(url));
  return standardised(path.left(path.lastIndexOf('/')));
}

}  // namespace

QByteArray localPath(const QUrl& url) {
  return QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
}

QUrl fileUrl(const QByteArray& path) {
  return QUrl::fromEncoded("file://" + path.toPercentEncoding("/"), QUrl::StrictMode);
}

QByteArray itemName(const QUrl& url) {
  const QByteArray path = standardised(localPath(url));
  return path.mid(path.lastIndexOf('/') + 1);
}

bool areInOneFolder(const std::vector<QUrl>& urls) {
  if (urls.empty()) return true;
  const QByteArray folder = folderOf(urls.front());
  return std::ranges::all_of(urls, [&folder](const QUrl& url) { return folderOf(url) == folder; });
}

bool FileSelection::operator==(const FileSelection& other) const {
  // The same path can be spelt in several URLs, but hardly ever is.
  return urls == other.urls || std::ranges::equal(urls, other.urls, {}, localPath, localPath);
}

QUrl FileSelection::parentDirectory() const {
  if (urls.empty()) return fileUrl(QDir::homePath().toUtf8());
  return fileUrl(folderOf(urls.front()));
}

QStringList FileSelection::itemNames() const {
  QStringList names;
  for (const QUrl& url : urls) names.append(QString::fromUtf8(itemName(url)));
  return names;
}

QString FileSelection::displayLabel() const {
  return urls.size() == 1 ? QString::fromUtf8(itemName(urls.front())) : u"%1 items"_s.arg(urls.size());
}

}  // namespace lumeno
