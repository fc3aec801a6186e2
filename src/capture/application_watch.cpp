#include "capture/application_watch.h"

#include <utility>

namespace lumeno {

ApplicationWatch::ApplicationWatch(Accessibility& accessibility,
                                   std::function<void(AccessibilityNotification)> callback)
    : accessibility_(accessibility), callback_(std::move(callback)) {}

void ApplicationWatch::attachObserver(ProcessId process) {
  if (observedPID_ == process) return;
  detachObserver();
  axObserver_ = accessibility_.observe(process, callback_);
  if (!axObserver_) return;
  axObserver_->addFocusNotification();
  observedPID_ = process;
}

void ApplicationWatch::detachObserver() {
  stopFocusedObservation();
  axObserver_.reset();
  observedPID_.reset();
}

void ApplicationWatch::updateFocusedObservation(const ElementPtr& focused) {
  if (!axObserver_ || !focused) {
    stopFocusedObservation();
    return;
  }
  if (observedFocusedElement_ && observedFocusedElement_->isSame(*focused)) return;
  stopFocusedObservation();
  observedFocusedElement_ = focused;
  isObservingFocusedSelection_ = axObserver_->addSelectionNotification(focused);
}

void ApplicationWatch::stopFocusedObservation() {
  if (isObservingFocusedSelection_) axObserver_->removeSelectionNotification(observedFocusedElement_);
  observedFocusedElement_.reset();
  isObservingFocusedSelection_ = false;
}

}  // namespace lumeno
