#pragma once

#include "platform/feedback_devices.h"

namespace lumeno {

/// Haptics through the feedback daemon of mobile desktops, where there is one.
class FeedbackdHaptics final : public Haptics {
 public:
  void performGeneric() override;
};

}  // namespace lumeno
