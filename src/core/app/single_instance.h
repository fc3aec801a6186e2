#pragma once

#include <QLockFile>

#include "core/app/launch.h"

namespace lumeno {

/// Holds the user's one place for a running Lumeno, also where there is no session bus: two of them would
/// overwrite each other's settings.
class SingleInstance {
 public:
  SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  /// Whether this process is the one. A lock whose process has ended does not count.
  [[nodiscard]] bool isOurs() const { return isOurs_; }

 private:
  QLockFile lock_;
  bool isOurs_ = false;
};

/// Asks the running instance for what this start was meant for; false when it does not answer within a few
/// seconds.
[[nodiscard]] bool forwardToRunningInstance(LaunchRequest request);

}  // namespace lumeno
