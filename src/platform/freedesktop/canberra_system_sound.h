#pragma once

#include <memory>
#include <vector>

#include "platform/feedback_devices.h"

namespace lumeno {

/// Sounds of the freedesktop sound theme. The sound system is first reached with the first sound, and always
/// from a thread of its own; without one nothing is heard.
class CanberraSystemSound final : public SystemSound {
 public:
  CanberraSystemSound();
  /// Waits at most 0.3 s for a sound that is being started.
  ~CanberraSystemSound() override;
  void play(const QString& name) override;
  void beep() override;

 private:
  class Player;
  void playFirstOf(std::vector<const char*> events);

  std::shared_ptr<Player> player_;
};

}  // namespace lumeno
