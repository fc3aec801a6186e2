#pragma once

#include <QByteArray>
#include <QString>
#include <variant>

/// The user's default calendar in Evolution Data Server. Every call may block for as long as the service
/// does.
namespace lumeno::evolution {

struct Calendar {
  QString title;
  bool isWritable = false;
};

struct Failure {
  enum class Reason { refused, noCalendar, other };
  Reason reason = Reason::other;
  QString message;  ///< with `other` alone, in the user's language
};

[[nodiscard]] std::variant<Calendar, Failure> defaultCalendar();

struct Event {
  QString uid;
  QString title;
  qint64 start = 0;  ///< seconds since 1970
  qint64 end = 0;
  /// The Olson name of the zone whose wall clock the event is to keep. One that is not known counts as UTC.
  QByteArray zone;
};

/// Saves an event in the default calendar. One whose UID is there already is taken as saved.
[[nodiscard]] std::variant<Calendar, Failure> save(const Event& event);

}  // namespace lumeno::evolution
