#include "calendar/calendar_service.h"

#include <utility>

#include "calendar/calendar_error.h"
#include "calendar/date_texts.h"
#include "calendar/draft_title.h"
#include "suggest/detect/detect.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

using DraftAnswer = std::variant<CalendarDraft, CalendarFailure>;

constexpr qint64 usualDuration = 3600;  // seconds

CalendarFailure failureOf(CalendarError error) {
  return {localizedDescription(error)};
}

CalendarFailure failureOf(const CalendarStore::Failure& failure) {
  switch (failure.reason) {
    case CalendarStore::Failure::Reason::refused:
      return failureOf(CalendarError::accessDenied);
    case CalendarStore::Failure::Reason::noCalendar:
      return failureOf(CalendarError::noCalendar);
    case CalendarStore::Failure::Reason::other:
      break;
  }
  return {failure.message};
}

/// All but the calendar; absent when the text names no date.
std::optional<CalendarDraft> draftFrom(const QString& text, const detect::Surroundings& surroundings) {
  const auto match = detect::firstDate(text, surroundings);
  if (!match || !match->date.isValid()) return std::nullopt;
  const qint64 duration = match->durationSeconds > 0 ? match->durationSeconds : usualDuration;
  return CalendarDraft{draftTitle(text), match->date, match->date.addSecs(duration), QString()};
}

CalendarAddition addition(const CalendarDraft& draft, const CalendarStore::Saved& saved) {
  if (saved.state == CalendarStore::Saved::State::opened)
    return {u"Opened in "_s + saved.calendarTitle + u". Confirm it there."_s, false};
  return {u"Added “"_s + draft.title + u"” to "_s + saved.calendarTitle + u" on "_s +
          DateTexts::current().moment(draft.startDate) + u'.'};
}

/// The steps of one draft; they end with its handle.
struct DraftTask {
  CalendarDraft draft;
  std::function<void(DraftAnswer)> done;
  Job step;

  void finish(DraftAnswer answer) {
    if (const auto callback = std::exchange(done, nullptr)) callback(std::move(answer));
  }
};

}  // namespace

/// The steps of one save; they end by themselves.
struct CalendarService::Save {
  CalendarDraft draft;
  std::function<void(std::variant<CalendarAddition, CalendarFailure>)>
      done;  ///< empty when nobody wants the answer
  Job step;
};

CalendarService::CalendarService(CalendarStore& store, Scheduler& scheduler,
                                 std::function<detect::Surroundings()> surroundings)
    : store_(store), scheduler_(scheduler), surroundings_(std::move(surroundings)) {}

CalendarService::~CalendarService() = default;

Job CalendarService::makeDraft(const QString& text, std::function<void(DraftAnswer)> done) {
  auto draft = draftFrom(text, surroundings_());
  if (!draft) {
    return scheduler_.after(std::chrono::milliseconds(0),
                            [done = std::move(done)] { done(failureOf(CalendarError::noDate)); });
  }
  auto task = std::make_shared<DraftTask>(DraftTask{std::move(*draft), std::move(done), Job()});
  const auto found = [weak = std::weak_ptr(task)](auto answer) {
    const auto task = weak.lock();
    if (!task) return;
    if (const auto* failure = std::get_if<CalendarStore::Failure>(&answer)) {
      task->finish(failureOf(*failure));
      return;
    }
    task->draft.calendarTitle = std::get<CalendarStore::Calendar>(answer).title;
    task->finish(task->draft);
  };
  task->step = store_.requestWriteAccess([this, weak = std::weak_ptr(task), found](auto access) {
    const auto task = weak.lock();
    if (!task) return;
    if (access == CalendarStore::Access::granted) {
      task->step = store_.defaultCalendar(found);
    } else {
      task->finish(failureOf(CalendarError::accessDenied));
    }
  });
  return Job([task = std::move(task)] {
    task->done = nullptr;
    task->step.cancel();
  });
}

Job CalendarService::add(const CalendarDraft& draft,
                         std::function<void(std::variant<CalendarAddition, CalendarFailure>)> done) {
  auto save = std::make_shared<Save>(Save{draft, std::move(done), Job()});
  saves_.push_back(save);
  save->step = store_.requestWriteAccess([this, weak = std::weak_ptr(save)](CalendarStore::Access access) {
    const auto save = weak.lock();
    if (!save) return;
    if (access == CalendarStore::Access::granted) {
      this->save(save);
    } else {
      finish(save, failureOf(CalendarError::accessDenied));
    }
  });
  return Job([weak = std::weak_ptr(save)] {
    if (const auto save = weak.lock()) save->done = nullptr;
  });
}

void CalendarService::save(const std::shared_ptr<Save>& save) {
  const CalendarEvent event{save->draft.title, save->draft.startDate, save->draft.endDate};
  save->step = store_.save(event, [this, weak = std::weak_ptr(save)](auto answer) {
    const auto save = weak.lock();
    if (!save) return;
    if (const auto* failure = std::get_if<CalendarStore::Failure>(&answer)) {
      finish(save, failureOf(*failure));
    } else {
      finish(save, addition(save->draft, std::get<CalendarStore::Saved>(answer)));
    }
  });
}

void CalendarService::finish(const std::shared_ptr<Save>& save,
                             std::variant<CalendarAddition, CalendarFailure> answer) {
  std::erase(saves_, save);
  if (const auto done = std::exchange(save->done, nullptr)) done(std::move(answer));
}

}  // namespace lumeno
