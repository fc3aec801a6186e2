#pragma once

#include "base/observable.h"
#include "base/scheduler.h"
#include "platform/accessibility.h"

namespace lumeno {

/// Whether this program may read other applications, kept current by asking every second. Main thread.
class AccessibilityAuthorization {
 public:
  /// Both must outlive this object.
  AccessibilityAuthorization(Accessibility& accessibility, Scheduler& scheduler);

  /// Subscribers are told of real changes only.
  [[nodiscard]] Observable<bool>& isTrusted() { return isTrusted_; }

  /// Asks for trust and takes the answer as the new state.
  void requestAccess();

 private:
  void update(bool trusted);

  Accessibility& accessibility_;
  Observable<bool> isTrusted_;
  Job timer_;
};

}  // namespace lumeno
