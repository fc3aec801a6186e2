#pragma once

#include <QQuickWindow>
#include <QVariantAnimation>

#include "platform/panel_window.h"
#include "platform/x11/own_windows.h"
#include "platform/x11/x11_compositor.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_keyboard_loan.h"
#include "platform/x11/x11_panel_shape.h"
#include "platform/x11/x11_screens.h"

namespace lumeno {

/// The floating panel as a window that the window manager leaves alone: it keeps its exact place, is on every
/// desktop, and takes the keyboard only when asked to. Main thread; needs the toolkit on X11.
class X11PanelWindow final : public QObject, public PanelWindow {
  Q_OBJECT
 public:
  /// `window` has the flags of such a window (tool, frameless, bypassing the window manager, staying on top,
  /// not accepting the focus) and outlives this object, as all the others do. `shape` tells where its card is
  /// now.
  X11PanelWindow(X11Connection& connection, QQuickWindow& window, X11Screens& screens, OwnWindows& ownWindows,
                 std::function<PanelShape()> shape);

  void setKeyEligible(bool eligible) override;
  [[nodiscard]] bool isVisible() const override;
  void orderFrontRegardless() override;
  void orderOut() override;
  void activateAndMakeKey() override;
  void setFrame(const Rect& frame, std::chrono::milliseconds duration) override;
  void setAlpha(double alpha) override;
  /// Gives the keyboard back at once. Without a compositor nothing can be faded: it ends at once.
  void fadeOut(std::chrono::milliseconds duration, std::function<void()> done) override;
  void invalidateShape() override;

  /// What shows through the window. Where that is nothing the card must be opaque: its margin is cut off.
  [[nodiscard]] Observable<SeeThrough>& seeThrough() { return compositor_.seeThrough(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void raise();
  void renewShape();
  void applyGeometry(const QRect& geometry);
  void applyAlpha(double alpha);
  [[nodiscard]] QRect toolkitGeometry(const Rect& frame);

  X11Connection& connection_;
  QQuickWindow& window_;
  X11Screens& screens_;
  X11Compositor compositor_;
  X11PanelShape shape_;
  X11KeyboardLoan keyboard_;
  bool isKeyEligible_ = false;
  bool isShapeDirty_ = false;
  QRect geometry_;  ///< asked for last, in the toolkit's coordinates
  QRect moveStart_;
  QRect moveEnd_;
  double alpha_ = 1;
  double fadeStart_ = 1;
  QVariantAnimation move_;  ///< both run from 0 to 1
  QVariantAnimation fade_;
  std::function<void()> onFaded_;
  Subscription compositorChanges_;
  Subscription stackingChanges_;
};

}  // namespace lumeno
