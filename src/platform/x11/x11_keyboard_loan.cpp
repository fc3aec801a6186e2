#include "platform/x11/x11_keyboard_loan.h"

#include <xcb/xinput.h>

#include "platform/x11/x11_property.h"
#include "platform/x11/x11_toolkit.h"

namespace lumeno {

using namespace std::chrono_literals;

namespace {

// How long a window manager may take to undo our taking the focus.
constexpr auto secondLookDelay = 100ms;

}  // namespace

X11KeyboardLoan::X11KeyboardLoan(X11Connection& connection, OwnWindows& ownWindows, QQuickWindow& window)
    : connection_(connection),
      ownWindows_(ownWindows),
      window_(window),
      toolkit_(toolkitConnection()),
      id_(static_cast<xcb_window_t>(window.winId())) {
  (void)focus();  // the server has made the window by the answer: now it can be watched from our connection
  ownWindows_.watch(id_);
  secondLook_.setSingleShot(true);
  secondLook_.setInterval(secondLookDelay);
  connect(&secondLook_, &QTimer::timeout, this, &X11KeyboardLoan::grabIfRefused);
}

X11KeyboardLoan::~X11KeyboardLoan() {
  giveBack();
}

xcb_window_t X11KeyboardLoan::focus() const {
  const XcbPtr<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(toolkit_, xcb_get_input_focus(toolkit_), nullptr));
  return reply ? reply->focus : XCB_NONE;
}

bool X11KeyboardLoan::isHeld() const {
  return isTaken_ && (isGrabbed_ || focus() == id_);
}

void X11KeyboardLoan::take() {
  if (isHeld()) return;
  previousFocus_ = focus();
  previousActive_ = firstCardinal(connection_, connection_.root(), connection_.atom("_NET_ACTIVE_WINDOW"));
  isTaken_ = true;
  window_.setFlag(Qt::WindowDoesNotAcceptFocus, false);
  // Not by the toolkit's own request: that carries the time of its latest event, which is older than the
  // focus where the summons came as a raw key; the server would ignore it.
  xcb_set_input_focus(toolkit_, XCB_INPUT_FOCUS_PARENT, id_, XCB_CURRENT_TIME);
  grabIfRefused();
  ownWindows_.queryFocus();
  if (!isGrabbed_) secondLook_.start();
}

void X11KeyboardLoan::grabIfRefused() {
  if (!isTaken_ || isGrabbed_ || focus() == id_) return;
  const auto cookie =
      xcb_grab_keyboard(toolkit_, 1, id_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  const XcbPtr<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(toolkit_, cookie, nullptr));
  if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS) return;
  isGrabbed_ = true;
  ownWindows_.setKeyboardGrab(id_);
  const auto* input = xcb_get_extension_data(connection_.xcb(), &xcb_input_id);
  pressesElsewhere_ = connection_.onGenericEvent(input->major_opcode, [this](const auto& event) {
    const auto& raw = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
    if (raw.event_type == XCB_INPUT_RAW_BUTTON_PRESS && !ownWindows_.isPointerInside()) endGrab();
  });
}

void X11KeyboardLoan::endGrab() {
  if (!std::exchange(isGrabbed_, false)) return;
  pressesElsewhere_.reset();
  xcb_ungrab_keyboard(toolkit_, XCB_CURRENT_TIME);
  xcb_flush(toolkit_);
  ownWindows_.setKeyboardGrab(0);
}

void X11KeyboardLoan::giveBack() {
  if (!std::exchange(isTaken_, false)) return;
  secondLook_.stop();
  window_.setFlag(Qt::WindowDoesNotAcceptFocus, true);
  endGrab();
  if (focus() != id_) return;
  // Both at once: the focus is back before the next key, and the window manager's idea of it too. The errors
  // for windows that have gone in the meantime are of no interest.
  xcb_connection_t* xcb = connection_.xcb();
  if (previousFocus_ != id_) {
    xcb_set_input_focus(xcb, XCB_INPUT_FOCUS_POINTER_ROOT, previousFocus_, XCB_CURRENT_TIME);
  }
  if (previousActive_ != 0) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = previousActive_;
    message.type = connection_.atom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = 1;  // asked for by an application
    message.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(xcb, 0, connection_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
  }
  // By the answer the server has done it. Own windows learn of it in the order of events: the key that made
  // us give the keyboard back may still be on its way to us.
  const XcbPtr<xcb_get_input_focus_reply_t> done(
      xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
}

}  // namespace lumeno
