#pragma once

#include <vector>

#include "base/geometry.h"

namespace lumeno {

/// One screen in window space (bottom-left origin of the primary screen, y upward, logical pixels).
struct Screen {
  Rect frame;
  Rect visibleFrame;  ///< the frame less panels and docks
};

/// The screens and the pointer, in window space. Main thread; answers from what is known.
class ScreenLayout {
 public:
  virtual ~ScreenLayout() = default;
  /// In the system's order. The primary screen is the one whose frame starts at 0,0.
  [[nodiscard]] virtual std::vector<Screen> screens() = 0;
  [[nodiscard]] virtual Point mouseLocation() = 0;
};

}  // namespace lumeno
