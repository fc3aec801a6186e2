#pragma once

#include <QPoint>
#include <QQuickView>

#include "base/geometry.h"

namespace lumeno {

class HudState;
class ViewKit;

/// The HUD's window: a borderless, transparent Qt Quick window whose card fills it up to a margin that holds
/// the shadow. Whoever shows it gives it the size that its content reports. Main thread.
class HudWindow : public QQuickView {
  Q_OBJECT
 public:
  /// The kit must outlive the window.
  explicit HudWindow(ViewKit& kit);

  /// Fills the window. What it is filled from must stay until `clear`.
  void fill(HudState& state);
  void clear();

  /// The size the content wants at this moment, margins included, in whole logical pixels.
  [[nodiscard]] Size contentSize();
  /// The card with its edge, in the window's logical pixels: all that is to be seen and touched without a
  /// shadow.
  [[nodiscard]] QRectF cardRect() const;
  [[nodiscard]] double cardRadius() const;

  /// Remembers where the pointer rests, so that a window that appears under it does not count as pointed at.
  void notePointer();
  /// Whether the pointer has moved since.
  Q_INVOKABLE bool pointerHasMoved() const;

 Q_SIGNALS:
  /// May come several times for one change.
  void contentSizeChanged();
  void cardShapeChanged();
  /// To the content: whatever waits for the next frame to be laid out is laid out now.
  void settling();

 protected:
  bool event(QEvent* event) override;

 private:
  ViewKit& kit_;
  QPoint restingPointer_;
};

}  // namespace lumeno
