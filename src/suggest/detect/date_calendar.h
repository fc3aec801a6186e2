#pragma once

#include <QDateTime>
#include <array>

#include "suggest/detect/date_language.h"
#include "suggest/detect/date_values.h"
#include "suggest/detect/surroundings.h"

namespace lumeno::detect {

/// What a date expression means at a given moment in a given zone.
class DateCalendar {
 public:
  explicit DateCalendar(const Surroundings& surroundings);

  [[nodiscard]] QDate today() const { return today_; }
  /// The first such day from today on; invalid when there never is one (30 February).
  [[nodiscard]] QDate nextDayOfYear(int month, int day) const;
  [[nodiscard]] QDate nextDayOfMonth(int day) const;
  /// The first such weekday after today.
  [[nodiscard]] QDate comingWeekday(int weekday) const;
  /// The last such weekday before today.
  [[nodiscard]] QDate lastWeekday(int weekday) const;
  /// The first day of this week.
  [[nodiscard]] QDate monday() const { return today_.addDays(1 - today_.dayOfWeek()); }

  /// The first day of a week, month or year so many of them away; invalid for other units.
  [[nodiscard]] QDate beginOf(DateUnit unit, int steps) const;

  struct Resolved {
    QDateTime start;
    qint64 durationSeconds = 0;
  };
  /// Absent when the expression names no moment that a QDateTime can hold.
  [[nodiscard]] std::optional<Resolved> resolve(const DateExpression& expression);

 private:
  qint64 startOf(const DateExpression& expression);
  qint64 finishOf(const DateExpression& expression, qint64 start);
  qint64 at(QDate date, const ClockTime& clock);
  qint64 at(QDate date, int milliseconds);
  const QTimeZone& zoneNamed(const char* name);
  QDateTime dateTime(qint64 milliseconds);

  QTimeZone zone_;
  qint64 now_;  ///< milliseconds since the epoch
  QDate today_;
  int year_;
  QTime timeOfDay_;

  // Asking the zone is slow beside everything else here, so its answers are kept: the offset for days without
  // a change of clocks near them, and the dates made last.
  struct KnownOffset {
    qint64 day = 0;
    qint64 offset = 0;
    bool known = false;
  };
  std::array<KnownOffset, 64> offsets_;
  std::array<QDateTime, 64> made_;
  QTimeZone named_;
  const char* name_ = nullptr;
};

}  // namespace lumeno::detect
