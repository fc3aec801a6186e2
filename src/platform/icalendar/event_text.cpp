#include "platform/icalendar/event_text.h"

#include <QCryptographicHash>

#include "platform/icalendar/content_lines.h"
#include "platform/icalendar/event_zone.h"

namespace lumeno::icalendar {

namespace {

void addEvent(ContentLines& lines, const CalendarEvent& event, const EventZone& zone, const QDateTime& now) {
  lines.add("BEGIN:VEVENT");
  lines.addText("UID", eventUid(event));
  lines.add("DTSTAMP:" + now.toUTC().toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'")).toLatin1());
  lines.add(zone.property("DTSTART", event.start));
  lines.add(zone.property("DTEND", event.end));
  lines.addText("SUMMARY", event.title);
  lines.add("END:VEVENT");
}

}  // namespace

QString eventUid(const CalendarEvent& event) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  hash.addData(QByteArray::number(event.start.toSecsSinceEpoch()) + ' ' +
               QByteArray::number(event.end.toSecsSinceEpoch()) + ' ' + event.title.toUtf8());
  return QStringLiteral("lumeno-") + QString::fromLatin1(hash.result().first(16).toHex());
}

QByteArray calendarFile(const CalendarEvent& event, const QDateTime& now) {
  const EventZone zone(event.start, event.end);
  ContentLines lines;
  lines.add("BEGIN:VCALENDAR");
  lines.add("VERSION:2.0");
  lines.add("PRODID:-//Lumeno//Lumeno//EN");
  zone.addDefinition(lines);
  addEvent(lines, event, zone, now);
  lines.add("END:VCALENDAR");
  return lines.content();
}

}  // namespace lumeno::icalendar
