#pragma once

#include "base/observable.h"
#include "platform/x11/x11_connection.h"

namespace lumeno {

/// Whether a compositing manager runs, so that windows can be see-through. Main thread.
class X11Compositor {
 public:
  explicit X11Compositor(X11Connection& connection);
  X11Compositor(const X11Compositor&) = delete;
  X11Compositor& operator=(const X11Compositor&) = delete;

  [[nodiscard]] Observable<bool>& isPresent() { return isPresent_; }

 private:
  Observable<bool> isPresent_;
  Subscription ownerChanges_;
};

}  // namespace lumeno
