#include "platform/freedesktop/write_file.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace lumeno {

bool writeFileAtomically(const QString& path, const QByteArray& content) {
  const QDir folder = QFileInfo(path).dir();
  if (!folder.exists() && !folder.mkpath(QStringLiteral("."))) return false;
  QSaveFile file(path);
  // The flush is ours to check: a commit whose own flush meets a full disk reports success.
  return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush() &&
         file.commit();
}

}  // namespace lumeno
