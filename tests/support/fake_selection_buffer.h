#pragma once

#include <utility>

#include "base/scheduler.h"
#include "platform/selection_buffer.h"

namespace lumeno {

/// A selection buffer in memory; its answers come at the scheduler's next turn.
class FakeSelectionBuffer final : public SelectionBuffer {
 public:
  explicit FakeSelectionBuffer(Scheduler& scheduler) : scheduler_(scheduler) {}

  Job freshText(std::function<void(std::optional<QString>)> done) override {
    return scheduler_.after(std::chrono::milliseconds(0), [this, done = std::move(done)] { done(text); });
  }
  bool isFresh() override { return text.has_value(); }
  uint64_t serial() const override { return serial_; }
  Subscription onChange(std::function<void()> handler) override {
    return changed_.connect(std::move(handler));
  }

  void offer(std::optional<QString> offered) {
    text = std::move(offered);
    ++serial_;
    changed_.emit();
  }

  std::optional<QString> text;

 private:
  Scheduler& scheduler_;
  uint64_t serial_ = 0;
  Signal<> changed_;
};

}  // namespace lumeno
