#pragma once

#include <deque>
#include <set>
#include <vector>

#include "base/scheduler.h"
#include "platform/event_monitor.h"
#include "platform/input_activity.h"
#include "platform/key_recorder.h"
#include "platform/x11/own_windows.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_gesture.h"
#include "platform/x11/x11_keyboard.h"

namespace lumeno {

/// Keys, buttons and wheel as they go to other applications, and for a recorder of shortcuts also the keys to
/// our own windows: raw events on the root window. They arrive whoever holds a grab and take nothing from
/// anybody. Nothing of what is typed is kept: a key is compared, counted and forgotten; only those that are
/// down in a running gesture are known until they come up. Main thread.
class X11Input final : public EventMonitor, public InputActivity, public KeyRecorder {
 public:
  X11Input(X11Connection& connection, OwnWindows& ownWindows, Scheduler& scheduler);

  [[nodiscard]] Subscription monitorKeyDown(std::function<void(KeyPress)> handler) override;
  [[nodiscard]] Subscription monitorMouseDown(std::function<void()> handler) override;

  [[nodiscard]] uint64_t activitySerial() const override { return activity_; }
  [[nodiscard]] uint64_t gestureSerial() const override { return gesture_.serial(); }
  [[nodiscard]] bool isGestureInProgress() const override { return gesture_.isInProgress(); }
  [[nodiscard]] uint32_t gestureStartTime() const override { return gesture_.startTime(); }
  [[nodiscard]] Subscription onGestureEnd(std::function<void()> handler) override;

  /// Keys that were pressed before are not told, also when their events have not been handled yet: the key
  /// that starts a recording is not part of it.
  [[nodiscard]] Subscription recordKeys(std::function<void(KeyPress)> handler) override;

  [[nodiscard]] Observable<uint32_t>& windowWithKeyboard() override { return ownWindows_.focused(); }

  [[nodiscard]] X11Keyboard& keyboard() { return keyboard_; }

  /// One key event that this program itself is about to send: it is not taken for the user's.
  struct SyntheticKey {
    xcb_keycode_t keycode = 0;
    bool isPress = false;
  };
  void expectSynthetic(const std::vector<SyntheticKey>& keys);

 private:
  struct RawKey {
    xcb_keycode_t keycode = 0;
    bool isPress = false;
    bool isRepeat = false;
    uint32_t time = 0;
    uint32_t sequence = 0;  ///< of the last request that the server had seen before
  };

  void handleEvent(const xcb_generic_event_t& event);
  void handleKey(const RawKey& key);
  void tellRecorders(xcb_keycode_t keycode, uint32_t sequence);
  void handleButton(uint32_t button, bool isPress, uint32_t time);
  [[nodiscard]] bool isSynthetic(xcb_keycode_t keycode, bool isPress);
  void release(uint16_t input);
  void watchHeld();
  void checkHeld();
  [[nodiscard]] bool isAnyButtonDown() const;

  X11Connection& connection_;
  OwnWindows& ownWindows_;
  Scheduler& scheduler_;
  X11Keyboard keyboard_;
  bool isAvailable_ = false;
  xcb_window_t root_;
  uint16_t pointerDevice_ = 0;
  uint64_t activity_ = 0;
  GestureTracker gesture_;
  std::deque<SyntheticKey> expected_;
  std::set<uint16_t> suspects_;  ///< held for us, but no longer for the server
  Job watchdog_;
  Signal<KeyPress> keyDown_;
  Signal<> mouseDown_;
  Signal<> gestureEnd_;
  Signal<KeyPress, uint32_t> recordedKey_;  ///< with the number of the request that it followed
  Subscription events_;
};

}  // namespace lumeno
