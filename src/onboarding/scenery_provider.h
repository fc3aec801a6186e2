#pragma once

#include <QQuickImageProvider>

namespace lumeno {

/// "image://scenery/NAME": the pictures of the onboarding window, drawn at the pixels they are shown at.
///
/// - "sky-light", "sky-dark": what is behind the demo, with rounded corners;
/// - "blob-AARRGGBB": an ellipse of light that fills the picture and fades out towards its edges;
/// - "photo-0" to "photo-2": thumbnails, and "folder", a folder of the same size;
/// - "shadow": what a window of the demo casts, as a `BorderImage` whose borders are half the picture, 208 ×
/// 208.
class SceneryProvider : public QQuickImageProvider {
 public:
  SceneryProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}
  QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace lumeno
