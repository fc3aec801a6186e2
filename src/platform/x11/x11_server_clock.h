#pragma once

#include <xcb/xcb.h>

#include <deque>
#include <functional>
#include <memory>

#include "base/job.h"
#include "platform/x11/x11_connection.h"

namespace lumeno {

/// The X server's own time, needed for what the server orders by time. Main thread.
class X11ServerClock {
 public:
  explicit X11ServerClock(X11Connection& connection);

  /// Asks the server; `done` is called from the event loop, in the order of asking, after everything that the
  /// server has reported before.
  [[nodiscard]] Job now(std::function<void(xcb_timestamp_t)> done);

  /// Whether `a` is earlier than `b`; server times wrap after 49.7 days.
  [[nodiscard]] static bool isBefore(xcb_timestamp_t a, xcb_timestamp_t b) {
    return static_cast<int32_t>(a - b) < 0;
  }

 private:
  using Question = std::function<void(xcb_timestamp_t)>;

  X11Connection& connection_;
  xcb_atom_t property_;
  std::deque<std::shared_ptr<Question>> questions_;
  Subscription propertyNotify_;
};

}  // namespace lumeno
