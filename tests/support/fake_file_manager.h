#pragma once

#include <utility>
#include <vector>

#include "base/scheduler.h"
#include "platform/file_manager.h"

namespace lumeno {

/// Tells the prepared selection `answerTime` later.
class FakeFileManager final : public FileManager {
 public:
  explicit FakeFileManager(Scheduler& scheduler) : scheduler_(scheduler) {}

  Job readSelection(Read read, std::function<void(std::optional<std::vector<QUrl>>)> done) override {
    reads.push_back(read);
    return scheduler_.after(answerTime, [this, done = std::move(done)] { done(selected); });
  }
  std::optional<Rect> frontWindowFrame() override { return frame; }

  std::optional<std::vector<QUrl>> selected = std::vector<QUrl>();
  std::optional<Rect> frame;
  std::chrono::milliseconds answerTime{0};
  std::vector<Read> reads;

 private:
  Scheduler& scheduler_;
};

}  // namespace lumeno
