#pragma once

#include <optional>
#include <utility>

#include "base/scheduler.h"
#include "platform/keystroke_sender.h"

namespace lumeno {

/// Counts the commands instead of pressing keys; its answers come `delay` later.
class FakeKeystrokeSender final : public KeystrokeSender {
 public:
  explicit FakeKeystrokeSender(Scheduler& scheduler) : scheduler_(scheduler) {}

  Job sendCopy(uint64_t window, std::function<void(Outcome)> done) override {
    return send(window, copies, onCopy, std::move(done));
  }
  Job sendCopyFiles(uint64_t window, std::function<void(Outcome)> done) override {
    return send(window, fileCopies, onCopy, std::move(done));
  }
  Job sendPaste(uint64_t window, std::function<void(Outcome)> done) override {
    return send(window, pastes, onPaste, std::move(done));
  }

  std::chrono::milliseconds delay{0};  ///< what held keys are waited for
  bool refuses = false;
  std::optional<uint64_t> windowInFront;  ///< keystrokes for another one are refused
  /// What the application does at the keystroke.
  std::function<void()> onCopy;
  std::function<void()> onPaste;
  int copies = 0;  ///< keystrokes that were sent
  int fileCopies = 0;
  int pastes = 0;

 private:
  Job send(uint64_t window, int& counter, const std::function<void()>& effect,
           std::function<void(Outcome)> done) {
    return scheduler_.after(delay, [this, window, &counter, &effect, done = std::move(done)] {
      if (refuses || (windowInFront && *windowInFront != window)) {
        done(Outcome::refused);
        return;
      }
      ++counter;
      if (effect) effect();
      done(Outcome::sent);
    });
  }

  Scheduler& scheduler_;
};

}  // namespace lumeno
