#pragma once

#include <utility>
#include <vector>

#include "base/scheduler.h"
#include "calendar/calendar_service.h"

namespace lumeno {

/// Gives the prepared answers `answerTime` later.
class FakeCalendarService final : public CalendarService {
 public:
  explicit FakeCalendarService(Scheduler& scheduler) : scheduler_(scheduler) {}

  Job makeDraft(const QString& text,
                std::function<void(std::variant<CalendarDraft, CalendarFailure>)> done) override {
    draftedTexts.push_back(text);
    return scheduler_.after(answerTime, [this, done = std::move(done)] { done(draftAnswer); });
  }
  Job add(const CalendarDraft& draft,
          std::function<void(std::variant<QString, CalendarFailure>)> done) override {
    added.push_back(draft);
    return scheduler_.after(answerTime, [this, done = std::move(done)] { done(addAnswer); });
  }

  std::chrono::milliseconds answerTime{0};
  std::variant<CalendarDraft, CalendarFailure> draftAnswer;
  std::variant<QString, CalendarFailure> addAnswer;
  std::vector<QString> draftedTexts;
  std::vector<CalendarDraft> added;

 private:
  Scheduler& scheduler_;
};

}  // namespace lumeno
