#pragma once

#include <QQuickImageProvider>

namespace lumeno {

/// "image://symbol/NAME/WEIGHT/COLOR": a line symbol for QML, drawn at the pixels it is shown at. WEIGHT
/// is "regular", "semibold" or "bold".
class SymbolProvider : public QQuickImageProvider {
 public:
  SymbolProvider();
  QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace lumeno
