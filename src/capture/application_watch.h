#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/accessibility.h"

namespace lumeno {

/// Listens to one process at a time: to its focus changes, and to selection changes of its focused element.
/// Main thread. The callback may attach and detach.
class ApplicationWatch {
 public:
  /// `accessibility` must outlive the watch.
  ApplicationWatch(Accessibility& accessibility, std::function<void(AccessibilityNotification)> callback);

  /// Nothing when that process is listened to already. Where the system refuses, the watch stays detached and
  /// the next call tries again.
  void attachObserver(ProcessId process);
  void detachObserver();

  /// Moves the selection registration to `focused` (null: nothing has the focus). An element that refuses it
  /// is remembered and not asked again until the focus has moved.
  void updateFocusedObservation(const ElementPtr& focused);

 private:
  void stopFocusedObservation();

  Accessibility& accessibility_;
  std::function<void(AccessibilityNotification)> callback_;
  std::unique_ptr<AccessibilityObserver> axObserver_;
  std::optional<ProcessId> observedPID_;
  ElementPtr observedFocusedElement_;
  bool isObservingFocusedSelection_ = false;
};

}  // namespace lumeno
