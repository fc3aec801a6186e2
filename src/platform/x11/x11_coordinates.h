#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/geometry.h"
#include "platform/screen_layout.h"

namespace lumeno {

/// One monitor: its place in device pixels of the whole desktop (origin at the desktop's top-left corner, y
/// downward) and how many device pixels make a logical one.
struct X11Monitor {
  Rect device;
  double scale = 1;
  bool operator==(const X11Monitor&) const = default;
};

/// What a panel or dock keeps free of windows: a band along one edge of the whole desktop, in device pixels,
/// as
/// `_NET_WM_STRUT_PARTIAL` gives it.
struct X11Strut {
  enum class Edge { left, right, top, bottom };
  Edge edge = Edge::top;
  double thickness = 0;
  double start = 0;  ///< along the edge
  double end = 0;    ///< the first pixel after it
};

/// The conversions between the three spaces that the program deals with:
///
/// - device pixels of the whole desktop: what the X server speaks;
/// - accessibility space: logical pixels, origin at the top-left corner of the primary monitor, y downward;
/// - window space: the same turned over, origin at the bottom-left corner of the primary monitor, y upward.
///
/// A monitor keeps its device position relative to the primary one in the logical spaces and only its content
/// is scaled, as the toolkit does it too: so monitors of different scales never overlap. A rectangle is
/// converted as a whole, by the monitor that holds its centre, else by the nearest one.
class X11Coordinates {
 public:
  X11Coordinates() = default;
  /// `primary` is an index into `monitors`.
  X11Coordinates(std::vector<X11Monitor> monitors, std::size_t primary);

  [[nodiscard]] Rect deviceToAccessibility(const Rect& device) const;
  [[nodiscard]] Rect accessibilityToDevice(const Rect& logical) const;
  [[nodiscard]] Rect deviceToWindowSpace(const Rect& device) const;
  [[nodiscard]] Rect windowSpaceToDevice(const Rect& frame) const;

  /// All monitors in window space, with what `struts` and (where there are none) `workArea` leave of them.
  /// `desktop` is the whole desktop and `workArea` the part of it that windows may use, both in device
  /// pixels; an empty work area stands for none.
  [[nodiscard]] std::vector<Screen> screens(const Rect& desktop, const std::vector<X11Strut>& struts,
                                            const Rect& workArea) const;

  [[nodiscard]] const std::vector<X11Monitor>& monitors() const { return monitors_; }

 private:
  [[nodiscard]] Rect logicalFrame(const X11Monitor& monitor) const;
  [[nodiscard]] Rect turnedOver(const Rect& rect) const;

  std::vector<X11Monitor> monitors_;
  Point primaryOrigin_;       ///< in device pixels
  double primaryHeight_ = 0;  ///< in logical pixels
};

}  // namespace lumeno
