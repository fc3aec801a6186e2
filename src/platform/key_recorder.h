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
  /// Modifier keys alone are not told. A key without a known position is told as `unknownKeyCode`. An empty
  /// subscription means that the system refused.
  [[nodiscard]] virtual Subscription recordKeys(std::function<void(KeyPress)> handler) = 0;

  static constexpr uint16_t unknownKeyCode = 0xFFFF;
};

}  // namespace lumeno
