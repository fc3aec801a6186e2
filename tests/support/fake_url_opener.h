#pragma once

#include <utility>
#include <vector>

#include "base/scheduler.h"
#include "platform/url_opener.h"

namespace lumeno {

/// Remembers the links; tells the outcome `answerTime` later.
class FakeUrlOpener final : public UrlOpener {
 public:
  explicit FakeUrlOpener(Scheduler& scheduler) : scheduler_(scheduler) {}

  void open(const QUrl& url, std::function<void(bool)> done) override {
    opened.push_back(url);
    answers_.push_back(scheduler_.after(answerTime, [this, done = std::move(done)] {
      if (done) done(succeeds);
    }));
  }

  bool succeeds = true;
  std::chrono::milliseconds answerTime{0};
  std::vector<QUrl> opened;

 private:
  Scheduler& scheduler_;
  std::vector<Job> answers_;
};

}  // namespace lumeno
