#pragma once

#include <utility>

#include "base/scheduler.h"
#include "platform/keystroke_sender.h"

namespace lumeno {

/// Counts the commands instead of pressing keys; its answers come at the scheduler's next turn.
class FakeKeystrokeSender final : public KeystrokeSender {
 public:
  explicit FakeKeystrokeSender(Scheduler& scheduler) : scheduler_(scheduler) {}

  Job sendCopy(std::function<void(Outcome)> done) override { return send(copies, onCopy, std::move(done)); }
  Job sendPaste(std::function<void(Outcome)> done) override { return send(pastes, onPaste, std::move(done)); }

  bool refuses = false;
  /// What the application does at the keystroke.
  std::function<void()> onCopy;
  std::function<void()> onPaste;
  int copies = 0;  ///< keystrokes that were sent
  int pastes = 0;

 private:
  Job send(int& counter, const std::function<void()>& effect, std::function<void(Outcome)> done) {
    return scheduler_.after(std::chrono::milliseconds(0), [this, &counter, &effect, done = std::move(done)] {
      if (refuses) {
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
