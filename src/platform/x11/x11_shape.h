#pragma once

#include <xcb/xcb.h>

#include <vector>

#include "base/geometry.h"

namespace lumeno {

/// A rectangle with round corners as rectangles of whole pixels that do not overlap, from top to bottom.
/// `rect` and `radius` are in pixels; a pixel belongs to it when its centre does.
[[nodiscard]] std::vector<xcb_rectangle_t> roundedRectangles(const Rect& rect, double radius);

}  // namespace lumeno
