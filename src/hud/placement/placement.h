#pragma once

#include <optional>
#include <vector>

#include "base/geometry.h"
#include "platform/screen_layout.h"

namespace lumeno::placement {

struct Result {
  Rect frame;  ///< window space
  bool isFlippedBelow = false;
};

/// Where the panel goes: `gap` above its anchor (or below, or near the pointer), inside the visible part of
/// the right screen. `mouse` is in window space, `anchor` in accessibility space (top-left origin of the
/// primary screen, y downward). Sizes below 1 count as 1. Absent when there is no screen.
[[nodiscard]] std::optional<Result> place(const std::vector<Screen>& screens, Point mouse,
                                          const std::optional<Rect>& anchor, bool preferBelow, Size content);

}  // namespace lumeno::placement
