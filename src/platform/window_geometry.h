#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "base/geometry.h"

namespace lumeno {

/// Where windows are, and the one conversion from device pixels. Main thread; asks only the window system.
class WindowGeometry {
 public:
  virtual ~WindowGeometry() = default;
  /// The client area of a window (`RunningApplication::window`) in device pixels of the whole desktop (origin
  /// at its top-left corner, y downward).
  [[nodiscard]] virtual std::optional<Rect> deviceFrame(uint64_t window) = 0;
  /// Turns device pixels of the whole desktop into accessibility space: origin at the primary monitor's
  /// corner, logical pixels by the screen that holds the rectangle's centre. It holds a copy of the present
  /// layout and may be called on any thread.
  [[nodiscard]] virtual std::function<Rect(const Rect&)> accessibilitySpaceConverter() = 0;
};

}  // namespace lumeno
