#pragma once

#include <QString>

#include "base/scheduler.h"
#include "platform/calendar_store.h"
#include "platform/eds/eds_helper_call.h"
#include "platform/eds/eds_presence.h"

namespace lumeno {

/// The default calendar of Evolution Data Server, through a helper program of one run per use: the service's
/// client library would cost the resident process some fifty others.
///
/// The service asks nobody for leave. So access is given when it has been asked for once, which a file
/// remembers; a default calendar that cannot be written to is a refusal.
class EdsCalendarStore final : public CalendarStore {
 public:
  /// `helper`: the path of `lumeno-calendar`. The scheduler must outlive the event loop.
  EdsCalendarStore(Scheduler& scheduler, QString helper, QString markerPath,
                   EdsPresence presence = EdsPresence());

  /// Whether this store can be used: the service and the helper are there.
  [[nodiscard]] Job isAvailable(std::function<void(bool)> done) const;

  [[nodiscard]] Job authorizationStatus(std::function<void(AuthorizationStatus)> done) override;
  [[nodiscard]] Job requestWriteAccess(std::function<void(Access)> done) override;
  [[nodiscard]] Job defaultCalendar(std::function<void(std::variant<Calendar, Failure>)> done) override;
  [[nodiscard]] Job save(const CalendarEvent& event,
                         std::function<void(std::variant<Saved, Failure>)> done) override;

 private:
  [[nodiscard]] EdsHelperCall::Question lookUp() const;

  Scheduler& scheduler_;
  const QString helper_;
  const QString markerPath_;
  const EdsPresence presence_;
  bool wasAsked_ = false;
};

}  // namespace lumeno
