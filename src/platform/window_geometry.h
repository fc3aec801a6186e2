#pragma once

#include <cstdint>
#include <optional>

#include "base/geometry.h"

namespace lumeno {

/// Where windows are, and the one conversion from device pixels. Main thread; asks only the window system.
class WindowGeometry {
 public:
  virtual ~WindowGeometry() = default;
  /// The client area of a window (`RunningApplication::window`) in device pixels of the whole desktop (origin at its
  /// top-left corner, y downward).
  [[nodiscard]] virtual std::optional<Rect> deviceFrame(uint64_t window) = 0;
  /// From device pixels of the whole desktop to accessibility space: origin at the primary monitor's corner, logical
  /// pixels by the screen that holds the rectangle's centre.
  [[nodiscard]] virtual Rect toAccessibilitySpace(const Rect& devicePixels) = 0;
};

}  // namespace lumeno
