#include "platform/icalendar/event_zone.h"

#include <QRegularExpression>

namespace lumeno::icalendar {

using namespace Qt::StringLiterals;

namespace {

/// "Area/Place", as all programs know it. What the environment may say instead, a rule or a bare offset,
/// means nothing elsewhere.
bool isSharedName(const QByteArray& id) {
  static const QRegularExpression areaAndPlace(u"\\A[A-Za-z]+(/[A-Za-z0-9_+-]+)+\\z"_s);
  return areaAndPlace.match(QString::fromLatin1(id)).hasMatch() && !id.startsWith("Etc/");
}

/// The change of the clock that brought the offset in force at the moment; not valid where there was none.
QTimeZone::OffsetData latestChange(const QTimeZone& zone, const QDateTime& moment) {
  return zone.previousTransition(moment.addSecs(1));
}

int offsetBefore(const QTimeZone& zone, const QDateTime& change) {
  return zone.offsetFromUtc(change.addSecs(-1));
}

/// Whether the clock shows this time twice.
bool isDoubled(const QTimeZone& zone, const QDateTime& moment) {
  const int offset = zone.offsetFromUtc(moment);
  const auto last = latestChange(zone, moment);
  if (last.atUtc.isValid() && last.atUtc.secsTo(moment) < offsetBefore(zone, last.atUtc) - offset)
    return true;
  const auto next = zone.nextTransition(moment);
  return next.atUtc.isValid() && moment.secsTo(next.atUtc) <= offset - next.offsetFromUtc;
}

QByteArray wallClock(const QDateTime& moment, int offset) {
  return moment.toUTC().addSecs(offset).toString(u"yyyyMMdd'T'HHmmss"_s).toLatin1();
}

/// "+0100", with seconds only where there are some.
QByteArray offsetText(int offset) {
  const int seconds = std::abs(offset);
  const auto twoDigits = [](int number) { return QByteArray::number(number).rightJustified(2, '0'); };
  QByteArray text = (offset < 0 ? "-" : "+") + twoDigits(seconds / 3600) + twoDigits(seconds / 60 % 60);
  if (seconds % 60 != 0) text += twoDigits(seconds % 60);
  return text;
}

}  // namespace

EventZone::EventZone(const QDateTime& start, const QDateTime& end)
    : start_(start), end_(end), zone_(start.timeZone()) {
  if (!isSharedName(zone_.id()) || isDoubled(zone_, start) || isDoubled(zone_, end)) zone_ = QTimeZone();
}

QByteArray EventZone::dateTime(const QDateTime& moment) const {
  return zone_.isValid() ? wallClock(moment, zone_.offsetFromUtc(moment)) : wallClock(moment, 0) + 'Z';
}

QByteArray EventZone::property(const QByteArray& name, const QDateTime& moment) const {
  return name + (zone_.isValid() ? ";TZID=" + zone_.id() : QByteArray()) + ':' + dateTime(moment);
}

void EventZone::addDefinition(ContentLines& lines) const {
  if (!zone_.isValid()) return;
  lines.add("BEGIN:VTIMEZONE");
  lines.add("TZID:" + zone_.id());
  addObservance(lines, start_);
  if (latestChange(zone_, end_).atUtc != latestChange(zone_, start_).atUtc) addObservance(lines, end_);
  lines.add("END:VTIMEZONE");
}

void EventZone::addObservance(ContentLines& lines, const QDateTime& moment) const {
  const int offset = zone_.offsetFromUtc(moment);
  const auto change = latestChange(zone_, moment);
  const bool hasChange = change.atUtc.isValid();
  const int before = hasChange ? offsetBefore(zone_, change.atUtc) : offset;
  const QByteArray kind = zone_.isDaylightTime(moment) ? "DAYLIGHT" : "STANDARD";
  lines.add("BEGIN:" + kind);
  // When it began, on the clock before it; without a beginning any time before the event will do.
  lines.add("DTSTART:" + (hasChange ? wallClock(change.atUtc, before) : "16010101T000000"));
  lines.add("TZOFFSETFROM:" + offsetText(before));
  lines.add("TZOFFSETTO:" + offsetText(offset));
  lines.addText("TZNAME", zone_.abbreviation(moment));
  lines.add("END:" + kind);
}

}  // namespace lumeno::icalendar
