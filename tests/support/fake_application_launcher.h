#pragma once

#include <utility>
#include <vector>

#include "base/scheduler.h"
#include "platform/application_launcher.h"

namespace lumeno {

/// Counts what it is asked to start; tells the outcome at the scheduler's next turn.
class FakeApplicationLauncher final : public ApplicationLauncher {
 public:
  explicit FakeApplicationLauncher(Scheduler& scheduler) : scheduler_(scheduler) {}

  void openTextEditor(std::function<void(bool opened)> done) override {
    ++textEditors;
    answer(std::move(done));
  }
  void openHomeFolder(std::function<void(bool opened)> done) override {
    ++homeFolders;
    answer(std::move(done));
  }

  bool succeeds = true;
  int textEditors = 0;
  int homeFolders = 0;

 private:
  void answer(std::function<void(bool)> done) {
    answers_.push_back(scheduler_.after(std::chrono::milliseconds(0), [this, done = std::move(done)] {
      if (done) done(succeeds);
    }));
  }

  Scheduler& scheduler_;
  std::vector<Job> answers_;
};

}  // namespace lumeno
