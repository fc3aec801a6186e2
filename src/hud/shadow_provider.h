#pragma once

#include <QQuickImageProvider>

namespace lumeno {

/// "image://shadow/WIDTH/HEIGHT/RADIUS/MARGIN/SCALE/NEAR/FAR": the shadow of a rounded rectangle of that size
/// (logical pixels) inside a margin, itself cut out, in pixels of SCALE. NEAR is a close, hard layer, FAR a
/// soft one; both are AARRGGBB. Painted once, then stretched as a nine-patch.
class ShadowProvider : public QQuickImageProvider {
 public:
  ShadowProvider();
  QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace lumeno
