#pragma once

#include <sys/types.h>

#include <optional>

#include "platform/posix/file_descriptor.h"
#include "platform/posix/supervisor_protocol.h"

namespace lumeno::supervision {

/// Watches over one running command: stops it and everything below it at the limit, reads its pipes when
/// nobody else does, and reports its end. This process must be the reaper of its orphaned descendants.
class Supervisor {
 public:
  /// `signals` delivers SIGCHLD and SIGTERM (a signalfd, not blocking).
  Supervisor(pid_t shell, Clock::time_point limit, FileDescriptor control, FileDescriptor output,
             FileDescriptor errors, FileDescriptor signals);
  /// Returns when there is nothing left to watch. The shell's children may go on when it ended by itself.
  void run();

 private:
  enum class Phase {
    running,     ///< the shell runs, and there is time left
    shellEnded,  ///< by itself: only the pipes are looked after
    asked,       ///< everything was asked to end
    killed,      ///< everything is being killed
    over,
  };

  void wait();
  void readControl();
  void readSignals();
  void reap();
  void advance();
  void stop(Reason reason);
  void endStop();
  void report(Reason reason);
  [[nodiscard]] std::optional<Clock::time_point> nextMoment() const;

  pid_t shell_;
  Clock::time_point limit_;
  FileDescriptor control_;
  FileDescriptor output_;
  FileDescriptor errors_;
  FileDescriptor signals_;
  Phase phase_ = Phase::running;
  Reason reason_ = Reason::itself;
  Clock::time_point stopped_;
  std::optional<int> status_;  ///< of the shell, once it has ended
  bool hasChildren_ = true;
  bool isStopReported_ = false;
};

}  // namespace lumeno::supervision
