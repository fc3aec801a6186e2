#pragma once

#include <chrono>
#include <functional>

#include "base/job.h"

namespace lumeno {

/// Time and delays. Everything that waits takes one of these, so that tests can turn the clock by hand.
/// Main thread only; actions run on the main thread, from the event loop, never inside `after` or `every`.
class Scheduler {
 public:
  virtual ~Scheduler() = default;

  /// Runs `action` once, `delay` from now on the monotonic clock, unless the handle goes first.
  [[nodiscard]] virtual Job after(std::chrono::milliseconds delay, std::function<void()> action) = 0;

  /// Runs `action` every `interval` until the handle goes.
  [[nodiscard]] virtual Job every(std::chrono::milliseconds interval, std::function<void()> action) = 0;
};

}  // namespace lumeno
