#pragma once

#include <cstdint>
#include <functional>

#include "base/observable.h"

namespace lumeno {

/// What the user is doing with keyboard and pointer in other applications, as far as it can change a
/// selection. Main thread. Input to this program's own windows does not count.
class InputActivity {
 public:
  virtual ~InputActivity() = default;

  /// Grows with every key, button and wheel event.
  [[nodiscard]] virtual uint64_t activitySerial() const = 0;
  /// Grows at the start of each gesture (a button press, a key press that can change what is selected) and
  /// with each turn of the wheel.
  [[nodiscard]] virtual uint64_t gestureSerial() const = 0;
  /// A button, or a key that can change what is selected, is down.
  [[nodiscard]] virtual bool isGestureInProgress() const = 0;
  /// When the latest gesture began, in the window system's own milliseconds (they wrap); 0 before the first.
  [[nodiscard]] virtual uint32_t gestureStartTime() const = 0;

  /// Called when a gesture ends (the release).
  [[nodiscard]] virtual Subscription onGestureEnd(std::function<void()> handler) = 0;
};

}  // namespace lumeno
