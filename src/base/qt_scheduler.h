#pragma once

#include "base/scheduler.h"

namespace lumeno {

/// The scheduler over the event loop of the thread that uses it.
class QtScheduler final : public Scheduler {
 public:
  [[nodiscard]] Job after(std::chrono::milliseconds delay, std::function<void()> action) override;
  [[nodiscard]] Job every(std::chrono::milliseconds interval, std::function<void()> action) override;
};

}  // namespace lumeno
