#pragma once

#include <cstdint>
#include <functional>

#include "base/observable.h"

namespace lumeno {

/// A key press as seen from outside: a virtual key code (a hardware position, see `HotkeyConfig`) and the
/// modifier bits held with it.
struct KeyPress {
  uint16_t keyCode = 0;
  uint64_t modifiers = 0;
};

/// The key code of Escape.
inline constexpr uint16_t escapeKeyCode = 53;

/// Observes input that goes to other applications, never input to this program's own windows, and consumes
/// nothing. Main thread. A monitor is removed when its subscription goes; an empty subscription means that
/// the system refused.
class EventMonitor {
 public:
  virtual ~EventMonitor() = default;
  [[nodiscard]] virtual Subscription monitorKeyDown(std::function<void(KeyPress)> handler) = 0;
  /// Left and right button presses.
  [[nodiscard]] virtual Subscription monitorMouseDown(std::function<void()> handler) = 0;
};

}  // namespace lumeno
