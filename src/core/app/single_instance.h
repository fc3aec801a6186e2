#pragma once

#include <QLockFile>

#include "core/app/launch.h"
#include "core/app/program_bus.h"

namespace lumeno {

/// What has become of a start.
enum class LaunchOutcome {
  first,       ///< this process is the one that runs
  forwarded,   ///< the one that runs has been told
  unanswered,  ///< another one runs, or is about to end, and does not answer
};

/// Holds the user's one place for a running Lumeno, also where there is no session bus: two of them would
/// overwrite each other's settings. The place is the name on the bus and, for who has that, a lock.
class SingleInstance {
 public:
  SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  /// Takes the place, or asks the running instance for what this start was meant for. Waits some seconds for
  /// one that is starting or ending. A lock whose process has ended does not count.
  [[nodiscard]] LaunchOutcome launch(ProgramBus& bus, LaunchRequest request);

 private:
  [[nodiscard]] bool lock();

  QLockFile lock_;
};

}  // namespace lumeno
