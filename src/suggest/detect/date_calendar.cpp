#include "suggest/detect/date_calendar.h"

namespace lumeno::detect {

namespace {

constexpr qint64 dayMilliseconds = 86'400'000;
constexpr int noonMilliseconds = 12 * 3'600'000;

// A local time as if it were universal time.
qint64 localMilliseconds(QDate date, int milliseconds) {
  constexpr qint64 epochJulianDay = 2'440'588;
  return (date.toJulianDay() - epochJulianDay) * dayMilliseconds + milliseconds;
}

qint64 offsetAt(const QTimeZone& zone, qint64 universal) {
  return zone.offsetFromUtc(QDateTime::fromMSecsSinceEpoch(universal, Qt::UTC)) * qint64{1000};
}

// The real instant of a local time. Where clocks are put back and it comes twice, the first; where they are
// put forward and it never comes, as long after the change as it claims to be.
qint64 instantOf(const QTimeZone& zone, qint64 local) {
  const qint64 before = offsetAt(zone, local - dayMilliseconds);
  const qint64 after = offsetAt(zone, local + dayMilliseconds);
  if (before == after || offsetAt(zone, local - before) == before) return local - before;
  return offsetAt(zone, local - after) == after ? local - after : local - before;
}

}  // namespace

DateCalendar::DateCalendar(const Surroundings& surroundings)
    : zone_(surroundings.timeZone.isValid() ? surroundings.timeZone : QTimeZone::utc()),
      now_(surroundings.now.toMSecsSinceEpoch()) {
  const QDateTime local = QDateTime::fromMSecsSinceEpoch(now_, zone_);
  today_ = local.date();
  year_ = today_.year();
  timeOfDay_ = local.time();
}

QDate DateCalendar::nextDayOfYear(int month, int day) const {
  // Leap days are at most eight years apart.
  for (int year = year_; year <= year_ + 8; ++year) {
    const QDate date(year, month, day);
    if (date.isValid() && date >= today_) return date;
  }
  return {};
}

QDate DateCalendar::nextDayOfMonth(int day) const {
  for (int months = 0; months <= 2; ++months) {
    const QDate month = QDate(today_.year(), today_.month(), 1).addMonths(months);
    const QDate date(month.year(), month.month(), day);
    if (date.isValid() && date >= today_) return date;
  }
  return {};
}

QDate DateCalendar::comingWeekday(int weekday) const {
  return today_.addDays((weekday - today_.dayOfWeek() + 6) % 7 + 1);
}

QDate DateCalendar::lastWeekday(int weekday) const {
  return today_.addDays(-((today_.dayOfWeek() - weekday + 6) % 7 + 1));
}

QDate DateCalendar::beginOf(DateUnit unit, int steps) const {
  switch (unit) {
    case DateUnit::week:
      return monday().addDays(7 * steps);
    case DateUnit::month:
      return QDate(year_, today_.month(), 1).addMonths(steps);
    case DateUnit::year:
      return QDate(year_ + steps, 1, 1);
    default:
      return {};
  }
}

std::optional<DateCalendar::Resolved> DateCalendar::resolve(const DateExpression& expression) {
  if (expression.day && !expression.day->date.isValid() && !expression.day->offsetSeconds)
    return std::nullopt;
  const qint64 start = startOf(expression);
  const qint64 finish = finishOf(expression, start);
  Resolved resolved{dateTime(start), (finish - start) / 1000};
  if (!resolved.start.isValid() || resolved.durationSeconds < 0) return std::nullopt;
  return resolved;
}

qint64 DateCalendar::startOf(const DateExpression& expression) {
  if (!expression.day) {
    const ClockTime& clock = expression.clock->start;
    const qint64 start = at(today_.addDays(clock.midnight ? 1 : 0), clock);
    return start < now_ ? at(today_.addDays(1), clock) : start;
  }
  const NamedDay& day = *expression.day;
  if (day.offsetSeconds) return now_ + *day.offsetSeconds * 1000;
  if (expression.clock) {
    const ClockTime& clock = expression.clock->start;
    if (day.weekdayAlone) {
      const qint64 today = at(today_, clock);
      if (today_.dayOfWeek() == day.date.dayOfWeek() && today > now_) return today;
    }
    // Midnight today is the one ahead.
    return at(day.date.addDays(clock.midnight && day.today ? 1 : 0), clock);
  }
  if (day.partHour) {
    const int milliseconds = *day.partHour * 3'600'000;
    if (day.weekdayAlone && today_.dayOfWeek() == day.date.dayOfWeek()) {
      const qint64 today = at(today_, milliseconds);
      if (today > now_) return today;
    }
    return at(day.date, milliseconds);
  }
  return at(day.date, day.keepsTimeOfDay ? timeOfDay_.msecsSinceStartOfDay() : noonMilliseconds);
}

qint64 DateCalendar::finishOf(const DateExpression& expression, qint64 start) {
  if (expression.spanSeconds) return start + *expression.spanSeconds * 1000;
  if (expression.finishDay) {
    const QDate date = expression.finishDay->date;
    return expression.finishClock ? at(date, *expression.finishClock) : at(date, noonMilliseconds);
  }
  const std::optional<QDate> lastDay = expression.day ? expression.day->last : std::nullopt;
  if (!expression.clock) return lastDay ? at(*lastDay, noonMilliseconds) : start;
  const ClockSpan& clock = *expression.clock;
  if (lastDay) return at(*lastDay, clock.finish ? *clock.finish : clock.start);
  if (!clock.finish) return start;
  // The day on which it starts, in the zone in which it was written.
  QDate date = dateTime(start).date().addDays(-1);
  while (at(date, clock.start) < start) date = date.addDays(1);
  const qint64 finish = at(date, *clock.finish);
  return finish > start ? finish : at(date.addDays(1), *clock.finish);
}

qint64 DateCalendar::at(QDate date, const ClockTime& clock) {
  if (clock.zoneOffset)
    return localMilliseconds(date, clock.milliseconds()) - *clock.zoneOffset * qint64{1000};
  if (clock.zoneName)
    return instantOf(zoneNamed(clock.zoneName), localMilliseconds(date, clock.milliseconds()));
  return at(date, clock.milliseconds());
}

const QTimeZone& DateCalendar::zoneNamed(const char* name) {
  if (name != name_) named_ = QTimeZone(QByteArray(name));
  name_ = name;
  return named_.isValid() ? named_ : zone_;
}

qint64 DateCalendar::at(QDate date, int milliseconds) {
  const qint64 local = localMilliseconds(date, milliseconds);
  const qint64 day = local / dayMilliseconds;
  KnownOffset& known = offsets_[static_cast<std::uint64_t>(day) % offsets_.size()];
  if (known.known && known.day == day) return local - known.offset;
  const qint64 instant = instantOf(zone_, local);
  const bool steady =
      offsetAt(zone_, local - 2 * dayMilliseconds) == offsetAt(zone_, local + 2 * dayMilliseconds);
  if (steady) known = {day, local - instant, true};
  return instant;
}

QDateTime DateCalendar::dateTime(qint64 milliseconds) {
  const auto slot = static_cast<std::uint64_t>(milliseconds / 60'000 + milliseconds / dayMilliseconds);
  QDateTime& made = made_[slot % made_.size()];
  if (!made.isValid() || made.toMSecsSinceEpoch() != milliseconds) {
    made = QDateTime::fromMSecsSinceEpoch(milliseconds, zone_);
  }
  return made;
}

}  // namespace lumeno::detect
