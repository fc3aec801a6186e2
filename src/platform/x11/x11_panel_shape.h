#pragma once

#include <QQuickWindow>
#include <functional>
#include <vector>

#include "platform/panel_window.h"
#include "platform/x11/x11_connection.h"

namespace lumeno {

/// Cuts a window to its card, for what the user sees, touches and sees through it: the input region always;
/// the outline where there is no compositor (the transparent margin would be black); the region to blur where
/// there is one. Main thread.
class X11PanelShape {
 public:
  X11PanelShape(X11Connection& connection, QQuickWindow& window, std::function<PanelShape()> shape);

  /// Brings the server up to date; sends nothing when nothing changed.
  void apply(bool hasCompositor);

 private:
  X11Connection& connection_;
  QQuickWindow& window_;
  std::function<PanelShape()> shape_;
  xcb_connection_t* toolkit_;
  std::vector<uint32_t> applied_;
  bool appliedCompositor_ = false;
};

}  // namespace lumeno
