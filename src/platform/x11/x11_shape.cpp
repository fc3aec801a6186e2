#include "platform/x11/x11_shape.h"

#include <algorithm>
#include <cmath>

namespace lumeno {

std::vector<xcb_rectangle_t> roundedRectangles(const Rect& rect, double radius) {
  std::vector<xcb_rectangle_t> rectangles;
  radius = std::clamp(radius, 0.0, std::min(rect.width, rect.height) / 2);
  const int top = static_cast<int>(std::lround(rect.minY()));
  const int bottom = static_cast<int>(std::lround(rect.maxY()));
  for (int y = top; y < bottom; ++y) {
    const double centre = y + 0.5;
    // How far this row lies within the round part, from its straight end towards the tip.
    const double depth = std::max({0.0, rect.minY() + radius - centre, centre - (rect.maxY() - radius)});
    const double inset = radius - std::sqrt(std::max(0.0, radius * radius - depth * depth));
    const int left = static_cast<int>(std::lround(rect.minX() + inset));
    const int right = static_cast<int>(std::lround(rect.maxX() - inset));
    if (right <= left) continue;
    const auto x = static_cast<int16_t>(left);
    const auto width = static_cast<uint16_t>(right - left);
    if (!rectangles.empty() && rectangles.back().x == x && rectangles.back().width == width) {
      ++rectangles.back().height;
    } else {
      rectangles.push_back({x, static_cast<int16_t>(y), width, 1});
    }
  }
  return rectangles;
}

}  // namespace lumeno
