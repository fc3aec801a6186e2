#pragma once

#include "base/observable.h"
#include "platform/x11/x11_connection.h"

namespace lumeno {

/// Of a window: what of it is to be blurred behind. Of the root window: that this is done.
inline constexpr auto blurRegionProperty = "_KDE_NET_WM_BLUR_BEHIND_REGION";

/// What the desktop shows through a window that is see-through in part.
enum class SeeThrough {
  nothing,  ///< no compositing manager runs: black
  sharp,    ///< what is behind
  blurred,  ///< what is behind, blurred where a window asks for it
};

/// Whether a compositing manager runs, so that windows can be see-through, and whether it blurs. Main thread.
class X11Compositor {
 public:
  explicit X11Compositor(X11Connection& connection);
  X11Compositor(const X11Compositor&) = delete;
  X11Compositor& operator=(const X11Compositor&) = delete;

  [[nodiscard]] Observable<SeeThrough>& seeThrough() { return seeThrough_; }
  [[nodiscard]] bool isPresent() const { return isPresent_; }

 private:
  void update();

  X11Connection& connection_;
  bool isPresent_ = false;
  Observable<SeeThrough> seeThrough_;
  Subscription ownerChanges_;
  Subscription announcements_;
};

}  // namespace lumeno
