#pragma once

namespace lumeno {

/// Plain geometry in logical pixels ("points"), double precision. Which corner is the origin, and which way y
/// grows, is said wherever one is passed: accessibility space has its origin at the top-left corner of the
/// primary screen with y downward; window space has its origin at the bottom-left corner with y upward.
struct Point {
  double x = 0;
  double y = 0;
  bool operator==(const Point&) const = default;
};

struct Size {
  double width = 0;
  double height = 0;
  bool operator==(const Size&) const = default;
};

struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  [[nodiscard]] double minX() const { return x; }
  [[nodiscard]] double minY() const { return y; }
  [[nodiscard]] double midX() const { return x + width / 2; }
  [[nodiscard]] double midY() const { return y + height / 2; }
  [[nodiscard]] double maxX() const { return x + width; }
  [[nodiscard]] double maxY() const { return y + height; }
  /// The left and lower edges belong to the rectangle, the right and upper ones to its neighbours.
  [[nodiscard]] bool contains(Point p) const {
    return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY();
  }
  bool operator==(const Rect&) const = default;
};

}  // namespace lumeno
