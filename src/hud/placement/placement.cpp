#include "hud/placement/placement.h"

#include <algorithm>

namespace lumeno::placement {

namespace {

constexpr double anchorGap = 10;
constexpr double pointerGap = 18;
constexpr double margin = 8;

const Screen& primaryScreen(const std::vector<Screen>& screens) {
  const auto primary = std::ranges::find_if(
      screens, [](const Screen& screen) { return screen.frame.x == 0 && screen.frame.y == 0; });
  return primary == screens.end() ? screens.front() : *primary;
}

const Screen* screenAt(const std::vector<Screen>& screens, Point point) {
  const auto found =
      std::ranges::find_if(screens, [&](const Screen& screen) { return screen.frame.contains(point); });
  return found == screens.end() ? nullptr : &*found;
}

const Screen& targetScreen(const std::vector<Screen>& screens, Point mouse, const std::optional<Rect>& anchor,
                           double primaryHeight) {
  const Screen* screen = nullptr;
  if (anchor) screen = screenAt(screens, {anchor->midX(), primaryHeight - anchor->midY()});
  if (!screen) screen = screenAt(screens, mouse);
  return screen ? *screen : primaryScreen(screens);
}

/// Next to the anchor on the preferred side, on the other one when there is no room. Whether the other side
/// has room is left to the clamping.
Result besideAnchor(const Rect& anchor, bool preferBelow, Size size, const Rect& visible,
                    double primaryHeight) {
  const double above = primaryHeight - anchor.minY() + anchorGap;
  const double below = primaryHeight - anchor.maxY() - anchorGap - size.height;
  const bool isBelow =
      preferBelow ? below >= visible.minY() + margin : above + size.height > visible.maxY() - margin;
  return {{anchor.midX() - size.width * 0.5, isBelow ? below : above, size.width, size.height}, isBelow};
}

/// The right and upper bounds are applied last: they win when the panel is larger than the screen.
void keepInside(Rect& frame, const Rect& visible) {
  frame.x = std::max(frame.x, visible.minX() + margin);
  frame.x = std::min(frame.x, visible.maxX() - frame.width - margin);
  frame.y = std::max(frame.y, visible.minY() + margin);
  frame.y = std::min(frame.y, visible.maxY() - frame.height - margin);
}

}  // namespace

std::optional<Result> place(const std::vector<Screen>& screens, Point mouse,
                            const std::optional<Rect>& anchor, bool preferBelow, Size content) {
  if (screens.empty()) return std::nullopt;
  const Size size{std::max(content.width, 1.0), std::max(content.height, 1.0)};
  const double primaryHeight = primaryScreen(screens).frame.height;
  const Rect visible = targetScreen(screens, mouse, anchor, primaryHeight).visibleFrame;

  Result result;
  if (anchor) {
    result = besideAnchor(*anchor, preferBelow, size, visible, primaryHeight);
  } else {
    result.frame = {mouse.x - size.width * 0.5, mouse.y + pointerGap, size.width, size.height};
  }
  keepInside(result.frame, visible);
  return result;
}

}  // namespace lumeno::placement
