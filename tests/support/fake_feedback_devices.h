#pragma once

#include <QStringList>

#include "platform/feedback_devices.h"

namespace lumeno {

/// Sound and haptics that write down what they are asked, in one list, so that the order shows.
class FakeFeedbackDevices final : public SystemSound, public Haptics {
 public:
  void play(const QString& name) override { cues.append(name); }
  void beep() override { cues.append(QStringLiteral("beep")); }
  void performGeneric() override { cues.append(QStringLiteral("tap")); }

  QStringList cues;
};

}  // namespace lumeno
