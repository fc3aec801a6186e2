#include "platform/icalendar/event_text.h"

#include <gtest/gtest.h>

#include <QTimeZone>

namespace lumeno::icalendar {
namespace {

using namespace Qt::StringLiterals;

const QTimeZone berlin("Europe/Berlin");
const QDateTime now(QDate(2026, 11, 13), QTime(8, 30), Qt::UTC);

CalendarEvent event(const QDateTime& start, int minutes = 60, const QString& title = u"Tea"_s) {
  return {title, start, start.addSecs(minutes * 60)};
}
CalendarEvent atUtc(const QTimeZone& zone, int month, int day, int hour, int minutes = 60) {
  return event(QDateTime(QDate(2026, month, day), QTime(hour, 30), Qt::UTC).toTimeZone(zone), minutes);
}

/// The lines of a file, unfolded, that begin like this.
QByteArrayList lines(QByteArray file, const QByteArray& start) {
  file.replace("\r\n ", "");
  QByteArrayList found;
  for (const auto& line : file.split('\n')) {
    if (line.startsWith(start)) found << line.trimmed();
  }
  return found;
}

TEST(EventText, IsAWholeCalendarFile) {
  const CalendarEvent tea = event(QDateTime(QDate(2026, 7, 1), QTime(15, 0), berlin));
  EXPECT_EQ(calendarFile(tea, now).toStdString(),
            "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Lumeno//Lumeno//EN\r\n"
            "BEGIN:VTIMEZONE\r\nTZID:Europe/Berlin\r\n"
            "BEGIN:DAYLIGHT\r\nDTSTART:20260329T020000\r\nTZOFFSETFROM:+0100\r\nTZOFFSETTO:+0200\r\n"
            "TZNAME:CEST\r\nEND:DAYLIGHT\r\nEND:VTIMEZONE\r\n"
            "BEGIN:VEVENT\r\nUID:" +
                eventUid(tea).toStdString() +
                "\r\nDTSTAMP:20261113T083000Z\r\n"
                "DTSTART;TZID=Europe/Berlin:20260701T150000\r\nDTEND;TZID=Europe/Berlin:20260701T160000\r\n"
                "SUMMARY:Tea\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
}

TEST(EventText, TimesKeepTheirZoneWhereItsNameMeansTheSameEverywhere) {
  const struct {
    const char* what;
    CalendarEvent event;
    QByteArray start;
    QByteArray end;
    int observances;
  } cases[] = {
      {"over the gap", atUtc(berlin, 3, 29, 0), ";TZID=Europe/Berlin:20260329T013000",
       ";TZID=Europe/Berlin:20260329T033000", 2},
      {"just before two equal times", event(QDateTime(QDate(2026, 10, 25), QTime(1, 0), berlin), 59),
       ";TZID=Europe/Berlin:20261025T010000", ";TZID=Europe/Berlin:20261025T015900", 1},
      {"just after two equal times", event(QDateTime(QDate(2026, 10, 25), QTime(3, 0), berlin)),
       ";TZID=Europe/Berlin:20261025T030000", ";TZID=Europe/Berlin:20261025T040000", 1},
      {"the first of two equal times",
       event(QDateTime(QDate(2026, 10, 25), QTime(0, 0), Qt::UTC).toTimeZone(berlin), 20),
       ":20261025T000000Z", ":20261025T002000Z", 0},
      {"the second of two equal times", atUtc(berlin, 10, 25, 1), ":20261025T013000Z", ":20261025T023000Z",
       0},
      {"an end at the second of two equal times", atUtc(berlin, 10, 25, 0), ":20261025T003000Z",
       ":20261025T013000Z", 0},
      {"UTC", atUtc(QTimeZone::utc(), 5, 1, 0), ":20260501T003000Z", ":20260501T013000Z", 0},
      {"UTC by another name", atUtc(QTimeZone("Etc/UTC"), 5, 1, 0), ":20260501T003000Z", ":20260501T013000Z",
       0},
      {"a bare offset", atUtc(QTimeZone(20700), 5, 1, 0), ":20260501T003000Z", ":20260501T013000Z", 0},
      {"a rule", atUtc(QTimeZone("CET-1CEST,M3.5.0/2,M10.5.0/3"), 5, 1, 0), ":20260501T003000Z",
       ":20260501T013000Z", 0},
      {"a zone without changes", atUtc(QTimeZone("Asia/Kolkata"), 5, 1, 0),
       ";TZID=Asia/Kolkata:20260501T060000", ";TZID=Asia/Kolkata:20260501T070000", 1},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.what);
    const QByteArray file = calendarFile(test.event, now);
    EXPECT_EQ(lines(file, "DTSTART").last(), "DTSTART" + test.start);
    EXPECT_EQ(lines(file, "DTEND").last(), "DTEND" + test.end);
    EXPECT_EQ(lines(file, "TZOFFSETTO").size(), test.observances);
  }
}

TEST(EventText, TitlesAreEscapedAndFoldedBetweenCharacters) {
  const QDateTime start(QDate(2026, 5, 1), QTime(12, 0), Qt::UTC);
  const std::pair<QString, QByteArray> titles[] = {
      {u"a, b; c\\d: \"e\""_s, R"(a\, b\; c\\d: "e")"},
      {u"one\ntwo\r\nthree\rfour"_s, R"(one\ntwo\nthree\nfour)"},
      {u"END:VEVENT\r\nBEGIN:VALARM"_s, R"(END:VEVENT\nBEGIN:VALARM)"},
      {u"tab\tbell\a\u007Fnull\0!"_s, "tab\tbellnull!"},
      {u"Käse 😀"_s, "Käse 😀"},
  };
  for (const auto& [title, text] : titles) {
    EXPECT_EQ(lines(calendarFile(event(start, 60, title), now), "SUMMARY"),
              QByteArrayList{"SUMMARY:" + text});
  }
  for (const QString& character : {u"x"_s, u"ü"_s, u"あ"_s, u"😀"_s}) {
    for (int length = 60; length < 90; ++length) {
      const QString title = character.repeated(length);
      const QByteArray component = calendarFile(event(start, 60, title), now);
      EXPECT_EQ(lines(component, "SUMMARY"), QByteArrayList{"SUMMARY:" + title.toUtf8()});
      for (const auto& line : component.split('\n')) {
        EXPECT_LE(line.size(), 75 + 1) << "with the CR";
        EXPECT_EQ(QString::fromUtf8(line).toUtf8(), line) << "cut within a character";
      }
    }
  }
}

TEST(EventText, IdentityComesFromTitleStartAndEnd) {
  const QDateTime start(QDate(2026, 7, 1), QTime(15, 0), berlin);
  const QString uid = eventUid(event(start));
  EXPECT_EQ(uid, eventUid(event(start.toUTC())));
  EXPECT_NE(uid, eventUid(event(start, 60, u"Coffee"_s)));
  EXPECT_NE(uid, eventUid(event(start, 30)));
  EXPECT_NE(uid, eventUid(event(start.addSecs(60))));
}

}  // namespace
}  // namespace lumeno::icalendar
