#pragma once

#include <functional>

#include "base/observable.h"
#include "platform/event_monitor.h"

namespace lumeno {

/// Sees every key press, also those in this program's own windows and those that a window manager keeps for
/// itself, as long as the subscription lives: for recording a shortcut, and for nothing else. Main thread.
class KeyRecorder {
 public:
  virtual ~KeyRecorder() = default;
  /// Modifier keys alone are not told. A key without a known position is told as `unknownKeyCode`, one that
  /// the layout makes an Escape as `escapeKeyCode` wherever it is. An empty subscription means that the
  /// system refused.
  [[nodiscard]] virtual Subscription recordKeys(std::function<void(KeyPress)> handler) = 0;

  /// The window of this program that has the keyboard, by the window system's id; 0 when none has it. Another
  /// program that grabs the keyboard for a moment takes it from nobody.
  [[nodiscard]] virtual Observable<uint32_t>& windowWithKeyboard() = 0;

  static constexpr uint16_t unknownKeyCode = 0xFFFF;
};

}  // namespace lumeno
