#pragma once

#include <cstdint>
#include <utility>

#include "base/job.h"

namespace lumeno {

/// Holds the one step under way in a chain of asynchronous steps. A step may begin the next one from its own
/// answer, even when that answer comes before the call that asked for it has returned. Main thread.
class CurrentStep {
 public:
  /// `ask` begins the work and returns its handle; the step before is over.
  template <typename Ask>
  void begin(Ask ask) {
    const uint64_t serial = ++serial_;
    Job job = ask();
    if (serial == serial_) job_ = std::move(job);
  }
  void end() {
    ++serial_;
    job_.cancel();
  }

 private:
  Job job_;
  uint64_t serial_ = 0;
};

}  // namespace lumeno
