#pragma once

#include <gtest/gtest.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <functional>
#include <memory>
#include <vector>

#include "base/qt_scheduler.h"
#include "platform/x11/own_windows.h"
#include "platform/x11/x11_connection.h"

namespace lumeno {

/// Another X client in this process: it sends input as a user's devices would, and has windows that are not
/// ours.
class Stranger {
 public:
  Stranger() : connection_(xcb_connect(nullptr, nullptr)) {
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  }
  ~Stranger() { xcb_disconnect(connection_); }
  Stranger(const Stranger&) = delete;
  Stranger& operator=(const Stranger&) = delete;

  [[nodiscard]] xcb_connection_t* xcb() const { return connection_; }
  [[nodiscard]] xcb_window_t root() const { return root_; }

  void key(xcb_keycode_t keycode, bool press) { fake(press ? XCB_KEY_PRESS : XCB_KEY_RELEASE, keycode); }
  void tap(xcb_keycode_t keycode) {
    key(keycode, true);
    key(keycode, false);
  }
  void button(uint8_t number, bool press) { fake(press ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, number); }
  void click(uint8_t number) {
    button(number, true);
    button(number, false);
  }
  void movePointer(int16_t x, int16_t y) {
    xcb_warp_pointer(connection_, XCB_NONE, root_, 0, 0, 0, 0, x, y);
    sync();
  }

  /// A mapped window that the window manager manages; without a class when that is empty.
  xcb_window_t window(const QByteArray& windowClass, int16_t x = 50, int16_t y = 60) {
    const xcb_window_t id = xcb_generate_id(connection_);
    const uint32_t values[] = {XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                               XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_FOCUS_CHANGE};
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, id, root_, x, y, 300, 200, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, values);
    if (!windowClass.isEmpty()) {
      xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, id, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                          static_cast<uint32_t>(windowClass.size()), windowClass.constData());
    }
    xcb_map_window(connection_, id);
    sync();
    return id;
  }
  void destroy(xcb_window_t id) {
    xcb_destroy_window(connection_, id);
    sync();
  }
  [[nodiscard]] xcb_window_t focus() const {
    const XcbPtr<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    return reply ? reply->focus : 0;
  }
  /// Waits until the server has done everything sent so far.
  void sync() const { (void)focus(); }

  struct KeyEvent {
    xcb_keycode_t keycode;
    bool isPress;
    uint16_t state;
  };
  /// The key events that reached this client's windows since the last call; everything else is dropped.
  std::vector<KeyEvent> takeKeys() {
    sync();
    std::vector<KeyEvent> keys;
    while (const XcbPtr<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
      const uint8_t type = event->response_type & 0x7f;
      if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE) continue;
      const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(*event);
      keys.push_back({key.detail, type == XCB_KEY_PRESS, key.state});
    }
    return keys;
  }

 private:
  void fake(uint8_t type, uint8_t detail) {
    xcb_test_fake_input(connection_, type, detail, XCB_CURRENT_TIME, root_, 0, 0, 0);
    sync();
  }

  xcb_connection_t* connection_;
  xcb_window_t root_;
};

/// Runs the event loop until something holds; false when it does not within the time.
inline bool waitFor(const std::function<bool()>& condition, int milliseconds = 20'000) {
  QElapsedTimer clock;
  clock.start();
  while (!condition()) {
    if (clock.elapsed() > milliseconds) return false;
    // Not with a time limit: that takes the waiting away, before which queued events of the server are looked
    // at.
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }
  return true;
}

/// Runs the event loop for a time: for what must not happen.
inline void runFor(int milliseconds) {
  (void)waitFor([] { return false; }, milliseconds);
}

/// A test on the virtual desktop that the tests run in.
class DesktopTest : public testing::Test {
 protected:
  DesktopTest() {
    // The loop must wake up by itself for waitFor to look at the clock.
    tick_ = scheduler.every(std::chrono::milliseconds(5), [] {});
  }
  /// Waits for the focus: what is typed then reaches that window.
  void expectFocus(xcb_window_t window) {
    ASSERT_TRUE(waitFor([&] { return stranger.focus() == window; })) << "no focus";
  }

  QtScheduler scheduler;
  Stranger stranger;
  std::unique_ptr<X11Connection> connection = X11Connection::open();
  OwnWindows ownWindows{*connection};

 private:
  Job tick_;
};

}  // namespace lumeno
