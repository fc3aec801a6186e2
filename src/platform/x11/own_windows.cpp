#include "platform/x11/own_windows.h"

#include <QGuiApplication>
#include <QWindow>

#include "platform/x11/x11_toolkit.h"

namespace lumeno {

OwnWindows::OwnWindows(X11Connection& connection) : connection_(connection) {
  auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
  if (!application) return;
  if (xcb_connection_t* toolkit = toolkitConnection()) {
    idBase_ = xcb_get_setup(toolkit)->resource_id_base;
    idMask_ = xcb_get_setup(toolkit)->resource_id_mask;
  }
  focusIn_ = connection_.onEvent(XCB_FOCUS_IN, [this](const auto& event) { handleFocusEvent(event, true); });
  focusOut_ =
      connection_.onEvent(XCB_FOCUS_OUT, [this](const auto& event) { handleFocusEvent(event, false); });
  connect(application, &QGuiApplication::focusWindowChanged, this, [this](QWindow* window) {
    if (window) watch(static_cast<xcb_window_t>(window->winId()));
    queryFocus();
  });
  queryFocus();
}

bool OwnWindows::contains(xcb_window_t window) const {
  return window != 0 && idMask_ != 0 && (window & ~idMask_) == idBase_;
}

bool OwnWindows::isPointerInside() const {
  // From the root down to the innermost window: window managers put managed windows into frames of theirs.
  xcb_window_t window = connection_.root();
  for (int depth = 0; depth < 8 && window != 0; ++depth) {
    const auto cookie = xcb_query_pointer(connection_.xcb(), window);
    const XcbPtr<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(connection_.xcb(), cookie, nullptr));
    if (!reply) return false;
    if (contains(reply->child)) return true;
    window = reply->child;
  }
  return false;
}

void OwnWindows::watch(xcb_window_t window) {
  if (watched_.contains(window)) return;
  watched_.insert(window);
  connection_.addWindowEventMask(window, XCB_EVENT_MASK_FOCUS_CHANGE);
}

void OwnWindows::setKeyboardGrab(xcb_window_t window) {
  grab_ = window;
  publish();
}

void OwnWindows::handleFocusEvent(const xcb_generic_event_t& event, bool isIn) {
  const auto& focus = reinterpret_cast<const xcb_focus_in_event_t&>(event);
  if (!contains(focus.event)) return;
  // A grab moves the keyboard for a moment, not the focus; the two other kinds are about pointers and
  // children.
  if (focus.mode == XCB_NOTIFY_MODE_GRAB || focus.mode == XCB_NOTIFY_MODE_UNGRAB) return;
  if (focus.detail == XCB_NOTIFY_DETAIL_POINTER || focus.detail == XCB_NOTIFY_DETAIL_INFERIOR) return;
  if (isIn) {
    setFocus(focus.event);
  } else if (focus_ == focus.event) {
    setFocus(0);
  }
}

void OwnWindows::queryFocus() {
  const auto cookie = xcb_get_input_focus(connection_.xcb());
  const XcbPtr<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(connection_.xcb(), cookie, nullptr));
  if (!reply) return;
  setFocus(contains(reply->focus) ? reply->focus : 0);
}

void OwnWindows::setFocus(xcb_window_t window) {
  focus_ = window;
  publish();
}

void OwnWindows::publish() {
  const xcb_window_t window = grab_ ? grab_ : focus_;
  if (window != focused_.get()) focused_.set(window);
}

}  // namespace lumeno
