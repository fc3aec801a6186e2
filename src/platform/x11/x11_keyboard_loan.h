#pragma once

#include <QQuickWindow>
#include <QTimer>

#include "platform/x11/own_windows.h"
#include "platform/x11/x11_connection.h"

namespace lumeno {

/// The keyboard, taken from another window for a window of ours that the window manager does not manage, and
/// given back to it. Main thread.
class X11KeyboardLoan final : public QObject {
  Q_OBJECT
 public:
  X11KeyboardLoan(X11Connection& connection, OwnWindows& ownWindows, QQuickWindow& window);
  ~X11KeyboardLoan() override;

  /// Gives the keyboard to the window, which must be visible, and remembers who had it. Where somebody takes
  /// the focus away again at once, the keyboard is grabbed until it is given back or a button is pressed
  /// elsewhere.
  void take();
  /// Gives it back, unless the user has meanwhile given it to somebody else. To be called before the window
  /// hides.
  void giveBack();
  /// Whether key presses now come to the window.
  [[nodiscard]] bool isHeld() const;

 private:
  [[nodiscard]] xcb_window_t focus() const;
  void grabIfRefused();
  void endGrab();

  X11Connection& connection_;
  OwnWindows& ownWindows_;
  QQuickWindow& window_;
  xcb_connection_t* toolkit_;
  xcb_window_t id_;
  xcb_window_t previousFocus_ = 0;
  xcb_window_t previousActive_ = 0;
  bool isTaken_ = false;
  bool isGrabbed_ = false;
  QTimer secondLook_;
  Subscription pressesElsewhere_;
};

}  // namespace lumeno
