#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/calendar_store.h"

namespace lumeno {

/// One store where it is available, and another where it is not; decided anew at each use.
class PreferredCalendarStore final : public CalendarStore {
 public:
  using Availability = std::function<Job(std::function<void(bool)> done)>;

  /// Both stores must outlive this one.
  PreferredCalendarStore(CalendarStore& preferred, Availability isPreferredAvailable, CalendarStore& other);
  ~PreferredCalendarStore() override;

  [[nodiscard]] Job authorizationStatus(std::function<void(AuthorizationStatus)> done) override;
  [[nodiscard]] Job requestWriteAccess(std::function<void(Access)> done) override;
  [[nodiscard]] Job defaultCalendar(std::function<void(std::variant<Calendar, Failure>)> done) override;
  [[nodiscard]] Job save(const CalendarEvent& event,
                         std::function<void(std::variant<Saved, Failure>)> done) override;

 private:
  struct Use;
  [[nodiscard]] std::shared_ptr<Use> useStore(std::function<Job(CalendarStore&)> ask);

  CalendarStore& preferred_;
  const Availability isPreferredAvailable_;
  CalendarStore& other_;
  std::vector<std::shared_ptr<Use>> saves_;  ///< under way, wanted or not
};

}  // namespace lumeno
