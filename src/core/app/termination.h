#pragma once

#include <functional>
#include <memory>

class QSocketNotifier;

namespace lumeno {

/// Turns SIGTERM, SIGINT and SIGHUP into an orderly end. One instance, on the main thread.
class Termination {
 public:
  /// `onSignal` is called from the event loop.
  explicit Termination(std::function<void()> onSignal);
  ~Termination();
  Termination(const Termination&) = delete;
  Termination& operator=(const Termination&) = delete;

 private:
  int signalFile_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace lumeno
