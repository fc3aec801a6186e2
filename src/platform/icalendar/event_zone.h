#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QTimeZone>

#include "platform/icalendar/content_lines.h"

namespace lumeno::icalendar {

/// How the two times of an event are written: on the wall clock of a named time zone, or in UTC.
class EventZone {
 public:
  /// The zone is that of the start. It is given up for UTC where it has no name that other programs know
  /// ("Europe/Berlin"), and where a time falls into the hour that the clock runs through twice, of which some
  /// programs take the first passage and some the second.
  EventZone(const QDateTime& start, const QDateTime& end);

  /// The Olson name; empty for UTC.
  [[nodiscard]] QByteArray name() const { return zone_.isValid() ? zone_.id() : QByteArray(); }

  /// "20261116T150000" on the wall clock of the zone, "20261116T140000Z" in UTC.
  [[nodiscard]] QByteArray dateTime(const QDateTime& moment) const;

  /// "DTSTART;TZID=Europe/Berlin:20261116T150000" for the name "DTSTART".
  [[nodiscard]] QByteArray property(const QByteArray& name, const QDateTime& moment) const;

  /// The definition of the zone as far as the event needs it: the offsets in force at its start and end.
  /// Nothing in UTC.
  void addDefinition(ContentLines& lines) const;

 private:
  void addObservance(ContentLines& lines, const QDateTime& moment) const;

  QDateTime start_;
  QDateTime end_;
  QTimeZone zone_;  ///< not valid: UTC
};

}  // namespace lumeno::icalendar
