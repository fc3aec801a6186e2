#include "platform/x11/x11_coordinates.h"

#include <algorithm>
#include <limits>

namespace lumeno {

namespace {

constexpr X11Monitor unscaled;

Point centre(const Rect& rect) {
  return {rect.midX(), rect.midY()};
}

// The square of the way from a point to a rectangle, 0 inside.
double distance(Point p, const Rect& rect) {
  const double dx = std::max({rect.minX() - p.x, 0.0, p.x - rect.maxX()});
  const double dy = std::max({rect.minY() - p.y, 0.0, p.y - rect.maxY()});
  return dx * dx + dy * dy;
}

template <typename FrameOf>
const X11Monitor& monitorAt(const std::vector<X11Monitor>& monitors, Point point, FrameOf frameOf) {
  const X11Monitor* nearest = &unscaled;
  double shortest = std::numeric_limits<double>::infinity();
  for (const X11Monitor& monitor : monitors) {
    const Rect frame = frameOf(monitor);
    if (frame.contains(point)) return monitor;
    if (const double way = distance(point, frame); way < shortest) {
      nearest = &monitor;
      shortest = way;
    }
  }
  return *nearest;
}

Rect intersection(const Rect& a, const Rect& b) {
  const double x = std::max(a.minX(), b.minX());
  const double y = std::max(a.minY(), b.minY());
  return {x, y, std::max(0.0, std::min(a.maxX(), b.maxX()) - x),
          std::max(0.0, std::min(a.maxY(), b.maxY()) - y)};
}

bool isEmpty(const Rect& rect) {
  return rect.width <= 0 || rect.height <= 0;
}

Rect band(const X11Strut& strut, const Rect& desktop) {
  const double length = strut.end - strut.start;
  switch (strut.edge) {
    case X11Strut::Edge::left:
      return {desktop.minX(), strut.start, strut.thickness, length};
    case X11Strut::Edge::right:
      return {desktop.maxX() - strut.thickness, strut.start, strut.thickness, length};
    case X11Strut::Edge::top:
      return {strut.start, desktop.minY(), length, strut.thickness};
    case X11Strut::Edge::bottom:
      break;
  }
  return {strut.start, desktop.maxY() - strut.thickness, length, strut.thickness};
}

// Bands are measured from the edge of the whole desktop, so one for a panel on an inner edge covers every
// monitor between: a monitor that it would leave nothing of is not the one it is meant for.
Rect withoutBand(const Rect& monitor, const X11Strut& strut, const Rect& desktop) {
  const Rect covered = intersection(monitor, band(strut, desktop));
  if (isEmpty(covered)) return monitor;
  Rect rest = monitor;
  switch (strut.edge) {
    case X11Strut::Edge::left:
      rest.x = covered.maxX();
      rest.width -= covered.width;
      break;
    case X11Strut::Edge::right:
      rest.width -= covered.width;
      break;
    case X11Strut::Edge::top:
      rest.y = covered.maxY();
      rest.height -= covered.height;
      break;
    case X11Strut::Edge::bottom:
      rest.height -= covered.height;
      break;
  }
  return isEmpty(rest) ? monitor : rest;
}

}  // namespace

X11Coordinates::X11Coordinates(std::vector<X11Monitor> monitors, std::size_t primary)
    : monitors_(std::move(monitors)) {
  if (primary >= monitors_.size()) return;
  const X11Monitor& monitor = monitors_[primary];
  primaryOrigin_ = {monitor.device.x, monitor.device.y};
  primaryHeight_ = monitor.device.height / monitor.scale;
}

Rect X11Coordinates::logicalFrame(const X11Monitor& monitor) const {
  const Rect& device = monitor.device;
  return {device.x - primaryOrigin_.x, device.y - primaryOrigin_.y, device.width / monitor.scale,
          device.height / monitor.scale};
}

Rect X11Coordinates::deviceToAccessibility(const Rect& device) const {
  const X11Monitor& monitor =
      monitorAt(monitors_, centre(device), [](const X11Monitor& candidate) { return candidate.device; });
  const Rect frame = logicalFrame(monitor);
  return {frame.x + (device.x - monitor.device.x) / monitor.scale,
          frame.y + (device.y - monitor.device.y) / monitor.scale, device.width / monitor.scale,
          device.height / monitor.scale};
}

Rect X11Coordinates::accessibilityToDevice(const Rect& logical) const {
  const X11Monitor& monitor = monitorAt(
      monitors_, centre(logical), [this](const X11Monitor& candidate) { return logicalFrame(candidate); });
  const Rect frame = logicalFrame(monitor);
  return {monitor.device.x + (logical.x - frame.x) * monitor.scale,
          monitor.device.y + (logical.y - frame.y) * monitor.scale, logical.width * monitor.scale,
          logical.height * monitor.scale};
}

Rect X11Coordinates::turnedOver(const Rect& rect) const {
  return {rect.x, primaryHeight_ - rect.maxY(), rect.width, rect.height};
}

Rect X11Coordinates::deviceToWindowSpace(const Rect& device) const {
  return turnedOver(deviceToAccessibility(device));
}

Rect X11Coordinates::windowSpaceToDevice(const Rect& frame) const {
  return accessibilityToDevice(turnedOver(frame));
}

std::vector<Screen> X11Coordinates::screens(const Rect& desktop, const std::vector<X11Strut>& struts,
                                            const Rect& workArea) const {
  std::vector<Screen> screens;
  for (const X11Monitor& monitor : monitors_) {
    Rect free = monitor.device;
    for (const X11Strut& strut : struts) free = withoutBand(free, strut, desktop);
    if (struts.empty() && !isEmpty(intersection(free, workArea))) free = intersection(free, workArea);
    screens.push_back({deviceToWindowSpace(monitor.device), deviceToWindowSpace(free)});
  }
  return screens;
}

}  // namespace lumeno
