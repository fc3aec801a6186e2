#pragma once

#include <cstdint>
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
    refused,  ///< not sent: another window or a terminal is in front, or no event could be made
  };

  /// The platform's copy command, for `window` (`RunningApplication::window`) alone: it is waited for as long
  /// as for held modifiers, since it may be about to get the keyboard back.
  [[nodiscard]] virtual Job sendCopy(uint64_t window, std::function<void(Outcome)> done) = 0;
  /// The copy command of file managers, likewise; refused where another kind of application is in front,
  /// since the same key may interrupt or end something there.
  [[nodiscard]] virtual Job sendCopyFiles(uint64_t window, std::function<void(Outcome)> done) = 0;
  /// The platform's paste command, likewise.
  [[nodiscard]] virtual Job sendPaste(uint64_t window, std::function<void(Outcome)> done) = 0;
};

}  // namespace lumeno
