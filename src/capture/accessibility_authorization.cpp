#include "capture/accessibility_authorization.h"

namespace lumeno {

using namespace std::chrono_literals;

AccessibilityAuthorization::AccessibilityAuthorization(Accessibility& accessibility, Scheduler& scheduler)
    : accessibility_(accessibility),
      isTrusted_(accessibility.isTrusted()),
      timer_(scheduler.every(1s, [this] { update(accessibility_.isTrusted()); })) {}

void AccessibilityAuthorization::requestAccess() {
  update(accessibility_.requestTrust());
}

void AccessibilityAuthorization::update(bool trusted) {
  if (trusted != isTrusted_.get()) isTrusted_.set(trusted);
}

}  // namespace lumeno
