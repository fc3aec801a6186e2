#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include "base/scheduler.h"

namespace lumeno {

/// A clock turned by hand. Nothing runs except inside `advance`, in the order of the due times (first come,
/// first served among equals), with `now` standing at each action's own due time.
class ManualScheduler final : public Scheduler {
 public:
  [[nodiscard]] Job after(std::chrono::milliseconds delay, std::function<void()> action) override {
    return add(delay, std::chrono::milliseconds(0), std::move(action));
  }
  [[nodiscard]] Job every(std::chrono::milliseconds interval, std::function<void()> action) override {
    return add(interval, std::max(interval, std::chrono::milliseconds(1)), std::move(action));
  }

  /// Turns the clock and runs everything that falls due, also what those actions schedule within the span.
  void advance(std::chrono::milliseconds span) {
    const auto end = now_ + span;
    while (const auto next = firstDue(end)) {
      now_ = std::max(now_, next->due);
      if (next->interval.count() > 0) {
        next->due += next->interval;
        next->order = ++order_;
      } else {
        drop(next.get());
      }
      const auto action = next->action;  // a copy: the action may destroy its own handle
      action();
    }
    now_ = end;
  }
  void advance(int milliseconds) { advance(std::chrono::milliseconds(milliseconds)); }

  /// Time since the scheduler was made.
  [[nodiscard]] std::chrono::milliseconds now() const { return now_; }
  /// How many delays and repetitions are waiting.
  [[nodiscard]] std::size_t pendingCount() const { return entries_->size(); }

 private:
  struct Entry {
    std::chrono::milliseconds due;
    std::chrono::milliseconds interval;  ///< zero for a delay
    std::uint64_t order = 0;
    std::function<void()> action;
  };
  using Entries = std::vector<std::shared_ptr<Entry>>;

  Job add(std::chrono::milliseconds delay, std::chrono::milliseconds interval, std::function<void()> action) {
    auto entry = std::make_shared<Entry>(
        Entry{now_ + std::max(delay, std::chrono::milliseconds(0)), interval, ++order_, std::move(action)});
    entries_->push_back(entry);
    return Job([entries = std::weak_ptr(entries_), entry = std::weak_ptr(entry)] {
      const auto list = entries.lock();
      const auto gone = entry.lock();
      if (list && gone) std::erase(*list, gone);
    });
  }

  void drop(const Entry* entry) {
    std::erase_if(*entries_, [entry](const auto& candidate) { return candidate.get() == entry; });
  }

  std::shared_ptr<Entry> firstDue(std::chrono::milliseconds end) const {
    std::shared_ptr<Entry> first;
    for (const auto& entry : *entries_) {
      if (entry->due > end) continue;
      if (!first || entry->due < first->due || (entry->due == first->due && entry->order < first->order)) {
        first = entry;
      }
    }
    return first;
  }

  std::chrono::milliseconds now_{0};
  std::uint64_t order_ = 0;
  std::shared_ptr<Entries> entries_ = std::make_shared<Entries>();
};

}  // namespace lumeno
