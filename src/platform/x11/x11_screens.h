#pragma once

#include <QObject>

#include "platform/screen_layout.h"
#include "platform/window_geometry.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_coordinates.h"

namespace lumeno {

/// The monitors as RandR has them, with their work areas and scales. What is known is renewed at the next
/// question after a change. Main thread.
class X11Screens final : public QObject, public ScreenLayout, public WindowGeometry {
  Q_OBJECT
 public:
  explicit X11Screens(X11Connection& connection);

  [[nodiscard]] std::vector<Screen> screens() override;
  [[nodiscard]] Point mouseLocation() override;

  [[nodiscard]] std::optional<Rect> deviceFrame(uint64_t window) override;
  [[nodiscard]] std::function<Rect(const Rect&)> accessibilitySpaceConverter() override;

  /// From window space to device pixels of the whole desktop.
  [[nodiscard]] Rect toDevice(const Rect& windowSpace);

 private:
  void watch();
  const X11Coordinates& coordinates();
  [[nodiscard]] std::vector<X11Strut> struts(const Rect& desktop) const;
  [[nodiscard]] Rect workArea() const;

  X11Connection& connection_;
  X11Coordinates coordinates_;
  std::vector<Screen> screens_;
  bool areMonitorsKnown_ = false;
  bool areScreensKnown_ = false;
  Subscription monitorEvents_;
  Subscription outputEvents_;
  Subscription rootEvents_;
  Subscription propertyEvents_;
};

}  // namespace lumeno
