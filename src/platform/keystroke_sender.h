#pragma once

#include <functional>

#include "base/job.h"

namespace lumeno {

/// Posts keystrokes to the frontmost application. Main thread. Every press is paired with its release, and
/// modifiers that the user holds are waited for (about 0.3 s) or lifted first, so that nothing leaks into the
/// combination and no key stays down.
class KeystrokeSender {
 public:
  virtual ~KeystrokeSender() = default;

  enum class Outcome {
    sent,
    refused,  ///< not sent: the frontmost window is a terminal, or no event could be made
  };

  /// The platform's copy command.
  [[nodiscard]] virtual Job sendCopy(std::function<void(Outcome)> done) = 0;
  /// The platform's paste command.
  [[nodiscard]] virtual Job sendPaste(std::function<void(Outcome)> done) = 0;
};

}  // namespace lumeno
