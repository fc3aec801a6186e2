#pragma once

#include <QQuickImageProvider>

namespace lumeno {

/// "image://surface/WIDTH/HEIGHT/RADIUS/MARGIN/SCALE/FILL/INNER/INNERWIDTH/TOP/OUTER/NEAR/FAR": a `Surface`
/// for QML, painted once and stretched as a nine-patch. Lengths are logical pixels, colours RRGGBB or
/// AARRGGBB.
class SurfaceProvider : public QQuickImageProvider {
 public:
  SurfaceProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}
  QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace lumeno
