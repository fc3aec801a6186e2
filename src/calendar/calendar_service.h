#pragma once

#include <QString>
#include <functional>
#include <variant>

#include "base/job.h"
#include "calendar/calendar_draft.h"

namespace lumeno {

/// Why a draft could not be made or saved, as told to the user.
struct CalendarFailure {
  QString message;
};

/// Turns text into an event draft and saves a confirmed draft. Main thread; answers are asynchronous.
class CalendarService {
 public:
  virtual ~CalendarService() = default;
  [[nodiscard]] virtual Job makeDraft(
      const QString& text, std::function<void(std::variant<CalendarDraft, CalendarFailure>)> done) = 0;
  /// Delivers the confirmation text. Dropping the handle drops the answer, not the save.
  [[nodiscard]] virtual Job add(const CalendarDraft& draft,
                                std::function<void(std::variant<QString, CalendarFailure>)> done) = 0;
};

}  // namespace lumeno
