#include "settings_ui/application_icon_provider.h"

#include <QFileInfo>
#include <QUrl>

namespace lumeno {

QIcon applicationIcon(const QString& iconName) {
  if (!iconName.startsWith(u'/')) return QIcon::fromTheme(iconName);
  return QFileInfo(iconName).isFile() ? QIcon(iconName) : QIcon();
}

QPixmap ApplicationIconProvider::requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) {
  // The requested size is already in device pixels.
  const QPixmap pixmap = applicationIcon(QUrl::fromPercentEncoding(id.toUtf8())).pixmap(requestedSize, 1);
  if (size) *size = pixmap.size();
  return pixmap;
}

}  // namespace lumeno
