#include "platform/eds/preferred_calendar_store.h"

#include <utility>

namespace lumeno {

/// The question which store it is, and then the question to that store.
struct PreferredCalendarStore::Use {
  Job step;
};

PreferredCalendarStore::PreferredCalendarStore(CalendarStore& preferred, Availability isPreferredAvailable,
                                               CalendarStore& other)
    : preferred_(preferred), isPreferredAvailable_(std::move(isPreferredAvailable)), other_(other) {}

PreferredCalendarStore::~PreferredCalendarStore() = default;

std::shared_ptr<PreferredCalendarStore::Use> PreferredCalendarStore::useStore(
    std::function<Job(CalendarStore&)> ask) {
  auto use = std::make_shared<Use>();
  use->step =
      isPreferredAvailable_([this, weak = std::weak_ptr(use), ask = std::move(ask)](bool isAvailable) {
        if (const auto use = weak.lock()) use->step = ask(isAvailable ? preferred_ : other_);
      });
  return use;
}

Job PreferredCalendarStore::authorizationStatus(std::function<void(AuthorizationStatus)> done) {
  return Job([use = useStore([done = std::move(done)](CalendarStore& store) {
                return store.authorizationStatus(done);
              })] { use->step.cancel(); });
}

Job PreferredCalendarStore::requestWriteAccess(std::function<void(Access)> done) {
  return Job([use = useStore([done = std::move(done)](CalendarStore& store) {
                return store.requestWriteAccess(done);
              })] { use->step.cancel(); });
}

Job PreferredCalendarStore::defaultCalendar(std::function<void(std::variant<Calendar, Failure>)> done) {
  return Job([use = useStore([done = std::move(done)](CalendarStore& store) {
                return store.defaultCalendar(done);
              })] { use->step.cancel(); });
}

Job PreferredCalendarStore::save(const CalendarEvent& event,
                                 std::function<void(std::variant<Saved, Failure>)> done) {
  const auto wanted = std::make_shared<std::function<void(std::variant<Saved, Failure>)>>(std::move(done));
  const auto own = std::make_shared<std::weak_ptr<Use>>();
  auto use = useStore([this, event, wanted, own](CalendarStore& store) {
    return store.save(event, [this, wanted, own](const std::variant<Saved, Failure>& answer) {
      std::erase(saves_, own->lock());
      if (const auto callback = std::exchange(*wanted, nullptr)) callback(answer);
    });
  });
  *own = use;
  saves_.push_back(std::move(use));
  return Job([wanted] { *wanted = nullptr; });
}

}  // namespace lumeno
