#include "platform/freedesktop/file_calendar_store.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QUrl>

#include "base/qt_scheduler.h"
#include "platform/icalendar/event_text.h"
#include "support/print_text.h"
#include "support/temporary_desktop.h"
#include "support/wait_until.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

using Failure = CalendarStore::Failure;

/// A desktop whose calendar application keeps the file that it was started with.
struct Fixture {
  void addHandler() {
    desktop.writeProgram(u"planner"_s, "printf '%s' \"$1\" > \"$0.part\" && mv \"$0.part\" \"$0.log\"\n");
    desktop.write(
        u"share/applications/planner.desktop"_s,
        "[Desktop Entry]\nType=Application\nName=Planner\nExec=planner %u\nMimeType=text/calendar\n");
  }
  template <typename Answer>
  Answer wait(const std::function<Job(std::function<void(Answer)>)>& operation) {
    std::optional<Answer> result;
    const Job job = operation([&](const Answer& answer) { result = answer; });
    EXPECT_FALSE(result) << "answered before the call returned";
    waitUntil([&] { return result.has_value(); });
    return result.value_or(Answer());
  }
  std::variant<CalendarStore::Calendar, Failure> calendar() {
    return wait<std::variant<CalendarStore::Calendar, Failure>>(
        [this](auto done) { return store.defaultCalendar(done); });
  }
  std::variant<CalendarStore::Saved, Failure> save() {
    return wait<std::variant<CalendarStore::Saved, Failure>>(
        [this](auto done) { return store.save(event, done); });
  }
  CalendarStore::AuthorizationStatus status() {
    return wait<CalendarStore::AuthorizationStatus>(
        [this](auto done) { return store.authorizationStatus(done); });
  }

  TemporaryDesktop desktop;
  QtScheduler scheduler;
  FileCalendarStore store{scheduler, desktop.path(u"run/lumeno"_s)};
  const CalendarEvent event{u"Käse & Tee"_s, QDateTime(QDate(2026, 11, 16), QTime(15, 0), Qt::UTC),
                            QDateTime(QDate(2026, 11, 16), QTime(16, 0), Qt::UTC)};
};

TEST(FileCalendarStore, HandsAFileToTheCalendarApplication) {
  Fixture f;
  f.addHandler();
  f.desktop.write(u"run/lumeno/old.ics"_s, "old");
  QFile old(f.desktop.path(u"run/lumeno/old.ics"_s));
  ASSERT_TRUE(old.open(QFile::ReadWrite));
  old.setFileTime(QDateTime::currentDateTimeUtc().addDays(-2), QFile::FileModificationTime);
  old.close();

  EXPECT_EQ(f.status(), CalendarStore::AuthorizationStatus::granted);
  EXPECT_EQ(std::get<CalendarStore::Calendar>(f.calendar()).title, u"Planner"_s);
  const auto answer = f.save();
  ASSERT_TRUE(std::holds_alternative<CalendarStore::Saved>(answer));
  EXPECT_EQ(std::get<CalendarStore::Saved>(answer).calendarTitle, u"Planner"_s);
  EXPECT_EQ(std::get<CalendarStore::Saved>(answer).state, CalendarStore::Saved::State::opened);
  ASSERT_TRUE(waitUntil([&] { return f.desktop.exists(u"bin/planner.log"_s); }));
  const QString path = QUrl(QString::fromUtf8(f.desktop.read(u"bin/planner.log"_s))).toLocalFile();
  QFile file(path);
  ASSERT_TRUE(file.open(QFile::ReadOnly)) << path.toStdString();
  const QByteArray content = file.readAll();
  EXPECT_TRUE(content.startsWith("BEGIN:VCALENDAR\r\n") && content.endsWith("END:VCALENDAR\r\n"));
  EXPECT_TRUE(content.contains("SUMMARY:Käse & Tee\r\n"));
  EXPECT_TRUE(content.contains("DTSTART:20261116T150000Z\r\n"));
  f.save();
  EXPECT_EQ(QDir(QFileInfo(path).path()).entryList(QDir::Files), QStringList{QFileInfo(path).fileName()})
      << "the same event is the same file, and old ones go";
}

TEST(FileCalendarStore, FailuresAreTold) {
  Fixture f;
  EXPECT_EQ(f.status(), CalendarStore::AuthorizationStatus::restricted);
  EXPECT_EQ(std::get<Failure>(f.calendar()).reason, Failure::Reason::noCalendar);
  EXPECT_EQ(std::get<Failure>(f.save()).reason, Failure::Reason::noCalendar);
  f.addHandler();
  f.desktop.write(u"run/lumeno"_s, "a file where the folder should be");
  const auto answer = f.save();
  ASSERT_TRUE(std::holds_alternative<Failure>(answer));
  EXPECT_TRUE(std::get<Failure>(answer).message.startsWith(u"The event could not be written"_s));
  EXPECT_FALSE(f.desktop.exists(u"bin/planner.log"_s));
}

}  // namespace
}  // namespace lumeno
