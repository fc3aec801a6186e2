#pragma once

#include <QObject>
#include <QSet>

#include "base/observable.h"
#include "platform/x11/x11_connection.h"

namespace lumeno {

/// Which windows are this program's own, and which of them has the keyboard.
///
/// Every window that the toolkit makes is known by its id alone (a client draws its ids from a range of its
/// own), so menus and dialogs count without being announced. The focus is followed on our own connection, in
/// order with the raw input events: a key that closes a window of ours is still a key to our window. Main
/// thread.
class OwnWindows final : public QObject {
  Q_OBJECT
 public:
  /// Make it after the QGuiApplication.
  explicit OwnWindows(X11Connection& connection);

  [[nodiscard]] bool contains(xcb_window_t window) const;
  /// The own window that has the keyboard, 0 when none has it.
  [[nodiscard]] Observable<xcb_window_t>& focused() { return focused_; }
  /// Whether the pointer is over the input region of one of our windows, as the server sees it now.
  [[nodiscard]] bool isPointerInside() const;

  /// Asks the server who has the focus now: after a change of our own making, without waiting for its event.
  void queryFocus();
  /// Follows the focus of a window from before it first gets it.
  void watch(xcb_window_t window);
  /// A window of ours that has grabbed the keyboard has it whatever the focus says; 0 ends that.
  void setKeyboardGrab(xcb_window_t window);

 private:
  void handleFocusEvent(const xcb_generic_event_t& event, bool isIn);
  void setFocus(xcb_window_t window);
  void publish();

  X11Connection& connection_;
  uint32_t idBase_ = 0;
  uint32_t idMask_ = 0;
  QSet<xcb_window_t> watched_;
  xcb_window_t focus_ = 0;
  xcb_window_t grab_ = 0;
  Observable<xcb_window_t> focused_;
  Subscription focusIn_;
  Subscription focusOut_;
};

}  // namespace lumeno
