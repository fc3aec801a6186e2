#pragma once

#include <cstdint>
#include <functional>

#include "base/observable.h"
#include "platform/event_monitor.h"

namespace lumeno {

/// Calls back when the summon shortcut is pressed in another application. Observes only: the application in
/// front receives the key too. Main thread.
class HotkeyMonitor {
 public:
  /// `events` must outlive the monitor. `requiredFlags` are already masked to `modifier::shortcutMask`.
  HotkeyMonitor(EventMonitor& events, uint16_t keyCode, uint64_t requiredFlags);
  HotkeyMonitor(const HotkeyMonitor&) = delete;
  HotkeyMonitor& operator=(const HotkeyMonitor&) = delete;

  void start();  ///< nothing when already installed
  void stop();

  std::function<void()> onSummon;
  /// Both take effect at the next key press.
  uint16_t keyCode;
  uint64_t requiredFlags;

 private:
  EventMonitor& events_;
  Subscription monitor_;
};

}  // namespace lumeno
