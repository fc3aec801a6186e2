#pragma once

#include <QString>

#include "base/scheduler.h"
#include "platform/calendar_store.h"

namespace lumeno {

/// Hands an event as a calendar file to the desktop's handler of such files, which asks the user to confirm
/// it: for desktops without a calendar service. The handler is looked for at each use, on a worker thread.
class FileCalendarStore final : public CalendarStore {
 public:
  /// Files are written to `folder`, which is made when there is none; those of earlier events are removed
  /// with time. The scheduler must outlive the store.
  FileCalendarStore(Scheduler& scheduler, QString folder);

  /// Granted where there is a handler: it asks for itself.
  [[nodiscard]] Job authorizationStatus(std::function<void(AuthorizationStatus)> done) override;
  [[nodiscard]] Job requestWriteAccess(std::function<void(Access)> done) override;
  [[nodiscard]] Job defaultCalendar(std::function<void(std::variant<Calendar, Failure>)> done) override;
  [[nodiscard]] Job save(const CalendarEvent& event,
                         std::function<void(std::variant<Saved, Failure>)> done) override;

 private:
  Scheduler& scheduler_;
  const QString folder_;
};

}  // namespace lumeno
