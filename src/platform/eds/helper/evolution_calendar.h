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
  QByteArray uid;
  QByteArray title;
  QByteArray start;  ///< as iCalendar writes it: "20261116T150000", or "20261116T140000Z" in UTC
  QByteArray end;
  QByteArray zone;  ///< the Olson name of the zone whose wall clock the event is to keep; empty in UTC
};

/// Saves an event in the default calendar. One whose UID is there already is taken as saved.
[[nodiscard]] std::variant<Calendar, Failure> save(const Event& event);

}  // namespace lumeno::evolution
