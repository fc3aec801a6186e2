#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <variant>
#include <vector>

#include "base/job.h"
#include "base/scheduler.h"
#include "calendar/calendar_draft.h"
#include "platform/calendar_store.h"
#include "suggest/detect/surroundings.h"

namespace lumeno {

/// Why a draft could not be made or saved, as told to the user.
struct CalendarFailure {
  QString message;
};

/// What has become of a draft that was added.
struct CalendarAddition {
  QString message;      ///< as told to the user
  bool isSaved = true;  ///< false: it was handed to another program, in which the user confirms it
};

/// Turns text into an event draft and saves a confirmed draft. Main thread; no answer is given before the
/// call returns.
class CalendarService {
 public:
  /// `surroundings` is asked for the moment, the time zone and the locale of each draft. The store and the
  /// scheduler must outlive the service.
  CalendarService(CalendarStore& store, Scheduler& scheduler,
                  std::function<detect::Surroundings()> surroundings = &detect::Surroundings::current);
  ~CalendarService();
  CalendarService(const CalendarService&) = delete;
  CalendarService& operator=(const CalendarService&) = delete;

  /// An event at the first date in the text. Without one the calendar is not asked for access. Detection runs
  /// within the call, in a time linear in the text.
  [[nodiscard]] Job makeDraft(const QString& text,
                              std::function<void(std::variant<CalendarDraft, CalendarFailure>)> done);

  /// Dropping the handle drops the answer, not the save.
  [[nodiscard]] Job add(const CalendarDraft& draft,
                        std::function<void(std::variant<CalendarAddition, CalendarFailure>)> done);

 private:
  struct Save;
  void save(const std::shared_ptr<Save>& save);
  void finish(const std::shared_ptr<Save>& save, std::variant<CalendarAddition, CalendarFailure> answer);

  CalendarStore& store_;
  Scheduler& scheduler_;
  const std::function<detect::Surroundings()> surroundings_;
  std::vector<std::shared_ptr<Save>> saves_;  ///< under way, wanted or not
};

}  // namespace lumeno
