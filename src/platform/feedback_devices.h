#pragma once

#include <QString>

namespace lumeno {

/// Short system sounds. Never blocks; silent where there is no sound.
class SystemSound {
 public:
  virtual ~SystemSound() = default;
  /// "Tink" is the cue of a finished result.
  virtual void play(const QString& name) = 0;
  virtual void beep() = 0;
};

/// Haptic feedback. Never blocks; nothing happens where there is no such device.
class Haptics {
 public:
  virtual ~Haptics() = default;
  virtual void performGeneric() = 0;
};

}  // namespace lumeno
