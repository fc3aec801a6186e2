#pragma once

#include <utility>
#include <vector>

#include "base/scheduler.h"
#include "platform/calendar_store.h"

namespace lumeno {

/// Gives the prepared answers `answerTime` later.
class FakeCalendarStore final : public CalendarStore {
 public:
  explicit FakeCalendarStore(Scheduler& scheduler) : scheduler_(scheduler) {}

  Job authorizationStatus(std::function<void(AuthorizationStatus)> done) override {
    return scheduler_.after(answerTime, [this, done = std::move(done)] { done(status); });
  }
  Job requestWriteAccess(std::function<void(Access)> done) override {
    ++requests;
    return scheduler_.after(answerTime, [this, done = std::move(done)] { done(access); });
  }
  Job defaultCalendar(std::function<void(std::variant<Calendar, Failure>)> done) override {
    return scheduler_.after(answerTime, [this, done = std::move(done)] { done(calendar); });
  }
  Job save(const CalendarEvent& event, std::function<void(std::variant<Saved, Failure>)> done) override {
    saved.push_back(event);
    return scheduler_.after(answerTime, [this, done = std::move(done)] { done(saveAnswer); });
  }

  AuthorizationStatus status = AuthorizationStatus::granted;
  Access access = Access::granted;
  std::variant<Calendar, Failure> calendar = Calendar{QStringLiteral("Personal")};
  std::variant<Saved, Failure> saveAnswer = Saved{QStringLiteral("Personal")};
  std::chrono::milliseconds answerTime{0};
  int requests = 0;
  std::vector<CalendarEvent> saved;

 private:
  Scheduler& scheduler_;
};

}  // namespace lumeno
