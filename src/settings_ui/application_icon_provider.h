#pragma once

#include <QIcon>
#include <QQuickImageProvider>

namespace lumeno {

/// The icon of that name in the desktop's theme, or in a file when it is an absolute path; null when there is
/// none. Main thread.
[[nodiscard]] QIcon applicationIcon(const QString& iconName);

/// "image://application/NAME": an application's icon for QML, drawn when it is shown. NAME is
/// percent-encoded.
class ApplicationIconProvider : public QQuickImageProvider {
 public:
  ApplicationIconProvider() : QQuickImageProvider(QQuickImageProvider::Pixmap) {}
  QPixmap requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace lumeno
