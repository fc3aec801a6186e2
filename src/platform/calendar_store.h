#pragma once

#include <QDateTime>
#include <QString>
#include <functional>
#include <variant>

#include "base/job.h"

namespace lumeno {

/// An event to be saved. The times carry their zone.
struct CalendarEvent {
  QString title;
  QDateTime start;
  QDateTime end;
  bool operator==(const CalendarEvent&) const = default;
};

/// The user's calendars. Main thread; asynchronous with a deadline each: a store that hangs or dies is a
/// failure with a message. No callback is made before the call returns.
class CalendarStore {
 public:
  virtual ~CalendarStore() = default;

  enum class Access { granted, refused, failed };
  enum class AuthorizationStatus {
    notDetermined,  ///< there is a calendar, and nobody has asked for access yet
    granted,
    denied,      ///< the default calendar cannot be written to
    restricted,  ///< there is nothing on this machine that keeps events
  };
  struct Calendar {
    QString title;
  };
  struct Failure {
    enum class Reason {
      refused,     ///< the default calendar cannot be written to
      noCalendar,  ///< there is no default calendar
      other,
    };
    Reason reason = Reason::other;
    QString message;  ///< for the user; with `other` alone
  };
  struct Saved {
    QString calendarTitle;
    enum class State {
      saved,
      opened,  ///< handed to the calendar application `calendarTitle`, which asks the user once more
    };
    State state = State::saved;
  };

  [[nodiscard]] virtual Job authorizationStatus(std::function<void(AuthorizationStatus)> done) = 0;
  /// Asks for leave to write events, where that has to be asked for. Whether the calendar itself takes events
  /// shows when it is used.
  [[nodiscard]] virtual Job requestWriteAccess(std::function<void(Access)> done) = 0;
  /// The calendar that new events go to.
  [[nodiscard]] virtual Job defaultCalendar(std::function<void(std::variant<Calendar, Failure>)> done) = 0;
  /// Saves the event in the calendar that is the default one by then. Saving the same event again leaves one
  /// event. Dropping the handle drops the answer, not the save.
  [[nodiscard]] virtual Job save(const CalendarEvent& event,
                                 std::function<void(std::variant<Saved, Failure>)> done) = 0;
};

}  // namespace lumeno
