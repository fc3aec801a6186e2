#include "platform/x11/x11_shape.h"

#include <gtest/gtest.h>

#include <cmath>

namespace lumeno {
namespace {

bool contains(const std::vector<xcb_rectangle_t>& rectangles, int x, int y) {
  int count = 0;
  for (const auto& r : rectangles) {
    if (x >= r.x && x < r.x + r.width && y >= r.y && y < r.y + r.height) ++count;
  }
  EXPECT_LE(count, 1) << "rectangles overlap at " << x << ", " << y;
  return count > 0;
}

// The corner's circle, pixel by pixel: what is clearly inside must be in, what is clearly outside must be
// out.
void expectRounded(const Rect& rect, double radius) {
  const auto rectangles = roundedRectangles(rect, radius);
  for (int y = static_cast<int>(rect.y) - 2; y < rect.maxY() + 2; ++y) {
    for (int x = static_cast<int>(rect.x) - 2; x < rect.maxX() + 2; ++x) {
      const double px = x + 0.5, py = y + 0.5;
      const double dx = std::max({rect.minX() + radius - px, 0.0, px - (rect.maxX() - radius)});
      const double dy = std::max({rect.minY() + radius - py, 0.0, py - (rect.maxY() - radius)});
      const double out = std::hypot(dx, dy) - radius;
      if (std::abs(out) < 0.75) continue;
      EXPECT_EQ(contains(rectangles, x, y), out < 0) << x << ", " << y;
    }
  }
}

TEST(RoundedRectangles, FollowTheOutline) {
  expectRounded({10, 10, 80, 50}, 12);
  expectRounded({3, 4, 61, 61}, 30.5);  // a disc
  expectRounded({15, 15, 120, 75}, 36);
}

TEST(RoundedRectangles, PlainOnesAreOneRectangle) {
  const auto plain = roundedRectangles({5, 6, 70, 80}, 0);
  ASSERT_EQ(plain.size(), 1u);
  EXPECT_EQ(plain[0].height, 80);
  EXPECT_LE(roundedRectangles({0, 0, 360, 2000}, 24).size(), 2 * 24 + 1u) << "the middle is one piece";
  EXPECT_TRUE(roundedRectangles({0, 0, 0, 0}, 5).empty());
}

}  // namespace
}  // namespace lumeno
