#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include "platform/calendar_store.h"

/// Events as calendars exchange them (RFC 5545). Pure functions.
namespace lumeno::icalendar {

/// The identity of an event, derived from its title, start and end: the same event saved again has the same
/// one.
[[nodiscard]] QString eventUid(const CalendarEvent& event);

/// A whole calendar file with the event and what it needs of its time zone. The times are those of the
/// start's zone where that has a name, so that the event keeps its wall clock time; otherwise they are UTC.
/// `now` is when it was written down.
[[nodiscard]] QByteArray calendarFile(const CalendarEvent& event, const QDateTime& now);

}  // namespace lumeno::icalendar
