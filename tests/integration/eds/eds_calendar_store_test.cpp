#include "platform/eds/eds_calendar_store.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimeZone>

#include "base/helper_program.h"
#include "base/qt_scheduler.h"
#include "evolution_service.h"
#include "platform/icalendar/event_text.h"
#include "support/manual_scheduler.h"
#include "support/print_text.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using Access = CalendarStore::Access;
using AuthorizationStatus = CalendarStore::AuthorizationStatus;
using Failure = CalendarStore::Failure;

/// The store over the real service, started by the bus when it is first needed.
class EdsCalendarStoreTest : public testing::Test {
 protected:
  ~EdsCalendarStoreTest() override {
    // Both, also when they are stopped: the next test, and the machine, begin with none.
    EvolutionService::end(EvolutionService::factory);
    EvolutionService::end(EvolutionService::registry);
  }

  /// What an operation delivers; absent when it delivers nothing.
  template <typename Answer>
  static std::optional<Answer> wait(const std::function<Job(std::function<void(Answer)>)>& operation) {
    std::optional<Answer> result;
    const Job job = operation([&](const Answer& answer) { result = answer; });
    EXPECT_FALSE(result) << "answered before the call returned";
    waitUntil([&] { return result.has_value(); }, 40s);
    EXPECT_TRUE(result) << "no answer";
    return result;
  }
  AuthorizationStatus status(EdsCalendarStore& asked) {
    return *wait<AuthorizationStatus>([&](auto done) { return asked.authorizationStatus(done); });
  }
  Access request(EdsCalendarStore& asked) {
    return *wait<Access>([&](auto done) { return asked.requestWriteAccess(done); });
  }
  using Found = std::variant<CalendarStore::Calendar, Failure>;
  static Found calendar(EdsCalendarStore& asked) {
    return *wait<Found>([&](auto done) { return asked.defaultCalendar(done); });
  }
  using Kept = std::variant<CalendarStore::Saved, Failure>;
  static Kept save(EdsCalendarStore& asked, const CalendarEvent& event) {
    return *wait<Kept>([&](auto done) { return asked.save(event, done); });
  }
  static QString titleIn(const Found& found) {
    const auto* calendar = std::get_if<CalendarStore::Calendar>(&found);
    return calendar ? calendar->title : u"failed: "_s + std::get<Failure>(found).message;
  }
  static QString titleIn(const Kept& kept) {
    const auto* saved = std::get_if<CalendarStore::Saved>(&kept);
    return saved ? saved->calendarTitle : u"failed: "_s + std::get<Failure>(kept).message;
  }
  static QStringList eventsLike(const CalendarEvent& event) {
    return EvolutionService::events(icalendar::eventUid(event));
  }
  static CalendarEvent event(const QString& title, const QDateTime& start, int minutes = 90) {
    return {title, start, start.addSecs(minutes * 60)};
  }
  /// A program in place of the helper.
  QString program(const QByteArray& script) {
    const QString path = folder.filePath(u"helper-%1"_s.arg(++programs));
    QFile file(path);
    EXPECT_TRUE(file.open(QFile::WriteOnly));
    file.write("#!/bin/sh\n" + script);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
  }

  QTemporaryDir folder;
  int programs = 0;
  QtScheduler scheduler;
  const QString helper = helperProgram(u"lumeno-calendar"_s);
  const QString marker = folder.filePath(u"state/asked"_s);
  EdsCalendarStore store{scheduler, helper, marker};
  const QDateTime start{QDate(2026, 11, 16), QTime(15, 0), QTimeZone("Europe/Berlin")};
};

TEST_F(EdsCalendarStoreTest, AccessIsGivenOnceItWasAskedFor) {
  EXPECT_EQ(status(store), AuthorizationStatus::notDetermined);
  EXPECT_EQ(EvolutionService::processOf(EvolutionService::registry), 0) << "nothing is started for that";
  EXPECT_EQ(request(store), Access::granted);
  ASSERT_TRUE(EvolutionService::start());
  EXPECT_EQ(status(store), AuthorizationStatus::granted);
  EdsCalendarStore next(scheduler, helper, marker);
  EXPECT_EQ(status(next), AuthorizationStatus::granted) << "it is remembered";
  EdsCalendarStore unwritable(scheduler, helper, u"/proc/nowhere/asked"_s);
  EXPECT_EQ(request(unwritable), Access::granted);
  EXPECT_EQ(status(unwritable), AuthorizationStatus::granted) << "it holds until the program ends";
}

TEST_F(EdsCalendarStoreTest, EventsAreSavedAsTheyAre) {
  ASSERT_TRUE(EvolutionService::start());
  EXPECT_EQ(titleIn(calendar(store)), u"Personal"_s);
  const struct {
    CalendarEvent event;
    QString start;
    QString end;
  } cases[] = {
      {event(u"Käsefrühstück mit Zoë; 50 % \\ 2, 😀"_s, start),
       u"DTSTART;TZID=/freeassociation.sourceforge.net/Europe/Berlin:20261116T150000"_s,
       u"DTEND;TZID=/freeassociation.sourceforge.net/Europe/Berlin:20261116T163000"_s},
      {event(u"utc"_s, start.toUTC()), u"DTSTART:20261116T140000Z"_s, u"DTEND:20261116T153000Z"_s},
      {event(u"summer"_s, QDateTime(QDate(1965, 7, 1), QTime(23, 0), QTimeZone("America/New_York"))),
       u"DTSTART;TZID=/freeassociation.sourceforge.net/America/New_York:19650701T230000"_s,
       u"DTEND;TZID=/freeassociation.sourceforge.net/America/New_York:19650702T003000"_s},
      {event(u"the first 2:30"_s,
             QDateTime(QDate(2026, 10, 25), QTime(0, 30), Qt::UTC).toTimeZone(start.timeZone()), 20),
       u"DTSTART:20261025T003000Z"_s, u"DTEND:20261025T005000Z"_s},
      {event(u"the second 2:30"_s,
             QDateTime(QDate(2026, 10, 25), QTime(1, 30), Qt::UTC).toTimeZone(start.timeZone())),
       u"DTSTART:20261025T013000Z"_s, u"DTEND:20261025T030000Z"_s},
      {event(u"a bell\a"_s, QDateTime(QDate(2026, 7, 1), QTime(12, 0), QTimeZone(20700))),
       u"DTSTART:20260701T061500Z"_s, u"DTEND:20260701T074500Z"_s},
      {event(u"far ahead"_s, QDateTime(QDate(2400, 2, 29), QTime(0, 0), Qt::UTC)),
       u"DTSTART:24000229T000000Z"_s, u"DTEND:24000229T013000Z"_s},
  };
  for (const auto& test : cases) {
    EXPECT_EQ(titleIn(save(store, test.event)), u"Personal"_s);
    EXPECT_EQ(titleIn(save(store, test.event)), u"Personal"_s) << "again";
    const QStringList events = eventsLike(test.event);
    ASSERT_EQ(events.size(), 1);
    QString text = events.first();
    text.remove(u"\r\n "_s);
    const QStringList lines = text.split(u"\r\n"_s);
    EXPECT_TRUE(lines.contains(test.start)) << text.toStdString();
    EXPECT_TRUE(lines.contains(test.end)) << text.toStdString();
    // The service knows which moments these are.
    const QString uid = icalendar::eventUid(test.event);
    EXPECT_FALSE(EvolutionService::isGoingOn(uid, test.event.start.addSecs(-2))) << test.start.toStdString();
    EXPECT_TRUE(EvolutionService::isGoingOn(uid, test.event.start)) << test.start.toStdString();
    EXPECT_TRUE(EvolutionService::isGoingOn(uid, test.event.end.addSecs(-2))) << test.start.toStdString();
    EXPECT_FALSE(EvolutionService::isGoingOn(uid, test.event.end.addSecs(1))) << test.start.toStdString();
  }
  QString first = eventsLike(cases[0].event).value(0);
  EXPECT_TRUE(first.remove(u"\r\n "_s).contains(u"SUMMARY:Käsefrühstück mit Zoë\\; 50 % \\\\ 2\\, 😀\r\n"_s))
      << first.toStdString();

  // The service's own tables of past years are an hour off here; what was written must be right all the same.
  const auto winter =
      event(u"winter"_s, QDateTime(QDate(1965, 1, 15), QTime(12, 0), QTimeZone("Europe/London")));
  EXPECT_EQ(titleIn(save(store, winter)), u"Personal"_s);
  const QString written = eventsLike(winter).value(0).remove(u"\r\n "_s);
  EXPECT_TRUE(written.contains(u"Europe/London:19650115T120000\r\n"_s)) << written.toStdString();
  EXPECT_TRUE(written.contains(u"Europe/London:19650115T133000\r\n"_s)) << written.toStdString();
}

TEST_F(EdsCalendarStoreTest, SavingTwiceAtOnceLeavesOneEvent) {
  ASSERT_TRUE(EvolutionService::start());
  // Two programs that ask while the service makes the calendar for the very first time now and then find it
  // read-only for as long as both are there. That is the service's own race; here the calendar exists.
  EXPECT_EQ(titleIn(calendar(store)), u"Personal"_s);
  const CalendarEvent twice = event(u"twice"_s, start);
  QStringList answers;
  const auto take = [&](const Kept& kept) { answers << titleIn(kept); };
  const Job jobs[] = {store.save(twice, take), store.save(twice, take)};
  EXPECT_TRUE(waitUntil([&] { return answers.size() == 2; }));
  EXPECT_EQ(answers, (QStringList{u"Personal"_s, u"Personal"_s}));
  EXPECT_EQ(eventsLike(twice).size(), 1);
}

TEST_F(EdsCalendarStoreTest, AHelperThatDiesAfterTheSaveLeavesOneEvent) {
  ASSERT_TRUE(EvolutionService::start());
  const CalendarEvent unheard = event(u"unheard"_s, start);
  EdsCalendarStore dying(scheduler, program(helper.toUtf8() + " >/dev/null; kill -KILL $$"), marker);
  EXPECT_TRUE(titleIn(save(dying, unheard)).endsWith(u"adding it again makes no second one."_s));
  EXPECT_EQ(eventsLike(unheard).size(), 1);
  EXPECT_EQ(titleIn(save(store, unheard)), u"Personal"_s);
  EXPECT_EQ(eventsLike(unheard).size(), 1);
}

TEST_F(EdsCalendarStoreTest, ADroppedSaveIsStillSaved) {
  ASSERT_TRUE(EvolutionService::start());
  const CalendarEvent dropped = event(u"dropped"_s, start);
  {
    EdsCalendarStore gone(scheduler, helper, marker);
    gone.save(dropped, [](const Kept&) { ADD_FAILURE() << "the answer is dropped"; }).cancel();
  }
  EXPECT_TRUE(waitUntil([&] { return eventsLike(dropped).size() == 1; }));
}

TEST_F(EdsCalendarStoreTest, AServiceThatDiedIsStartedAgain) {
  for (const auto& name : {EvolutionService::registry, EvolutionService::factory}) {
    ASSERT_TRUE(EvolutionService::start());
    EXPECT_EQ(titleIn(calendar(store)), u"Personal"_s);
    EvolutionService::end(name);
    EXPECT_EQ(titleIn(calendar(store)), u"Personal"_s) << "before reading";
    EvolutionService::end(name);
    const CalendarEvent after = event(u"after the end of "_s + name, start);
    EXPECT_EQ(titleIn(save(store, after)), u"Personal"_s) << "before saving";
    EvolutionService::end(name);
    EXPECT_EQ(titleIn(save(store, after)), u"Personal"_s) << "after saving";
    EXPECT_EQ(eventsLike(after).size(), 1);
  }
}

TEST_F(EdsCalendarStoreTest, AServiceThatDiesInBetweenIsAMessageAtWorst) {
  for (const auto& name : {EvolutionService::registry, EvolutionService::factory}) {
    ASSERT_TRUE(EvolutionService::start());
    const CalendarEvent during = event(u"during the end of "_s + name, start);
    EvolutionService::send(SIGSTOP, name);
    std::optional<Kept> kept;
    const Job job = store.save(during, [&](const Kept& answer) { kept = answer; });
    runFor(300ms);
    EXPECT_FALSE(kept);
    EvolutionService::end(name);
    ASSERT_TRUE(waitUntil([&] { return kept.has_value(); }, 40s));
    if (const auto* failure = std::get_if<Failure>(&*kept)) {
      EXPECT_EQ(failure->reason, Failure::Reason::other);
      EXPECT_FALSE(failure->message.isEmpty());
    }
    ASSERT_TRUE(EvolutionService::start());
    EXPECT_EQ(titleIn(save(store, during)), u"Personal"_s);
    EXPECT_EQ(eventsLike(during).size(), 1);
  }
}

TEST_F(EdsCalendarStoreTest, AServiceThatHangsIsEndedByTheDeadline) {
  const CalendarEvent late = event(u"late"_s, start);
  for (const auto& name : {EvolutionService::registry, EvolutionService::factory}) {
    ASSERT_TRUE(EvolutionService::start());
    EvolutionService::send(SIGSTOP, name);
    ManualScheduler clock;
    EdsCalendarStore hurried(clock, helper, marker);
    QStringList answers;
    const Job jobs[] = {hurried.defaultCalendar([&](const Found& found) { answers << titleIn(found); }),
                        hurried.save(late, [&](const Kept& kept) { answers << titleIn(kept); })};
    runFor(500ms);
    clock.advance(9s);
    EXPECT_EQ(answers, QStringList()) << "too early";
    clock.advance(1s);
    EXPECT_EQ(answers, QStringList{u"failed: The calendar service did not answer in time."_s});
    clock.advance(10s);
    EXPECT_EQ(
        answers.value(1),
        u"failed: The calendar service did not answer in time. The event may have been added all the same; "
        "adding it again makes no second one."_s);
    EvolutionService::send(SIGCONT, name);
    EXPECT_EQ(titleIn(save(store, late)), u"Personal"_s);
    EXPECT_EQ(eventsLike(late).size(), 1);
  }
}

TEST_F(EdsCalendarStoreTest, TheProgramGoesOnWhileTheServiceHangs) {
  ASSERT_TRUE(EvolutionService::start());
  EvolutionService::send(SIGSTOP, EvolutionService::registry);
  int ticks = 0;
  const Job clock = scheduler.every(100ms, [&] { ++ticks; });
  EXPECT_EQ(titleIn(calendar(store)), u"failed: The calendar service did not answer in time."_s);
  EXPECT_GT(ticks, 50) << "in ten seconds";
  EvolutionService::send(SIGCONT, EvolutionService::registry);
}

TEST_F(EdsCalendarStoreTest, ACalendarThatCannotBeWrittenToIsARefusal) {
  const QString settings = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                           u"/glib-2.0/settings/keyfile"_s;
  QDir().mkpath(QFileInfo(settings).path());
  QFile file(settings);
  ASSERT_TRUE(file.open(QFile::WriteOnly));
  file.write("[org/gnome/evolution]\ndefault-calendar='birthdays'\n");
  file.close();
  ASSERT_TRUE(EvolutionService::start(u"birthdays"_s));
  request(store);
  EXPECT_EQ(status(store), AuthorizationStatus::denied);
  const auto found = calendar(store);
  ASSERT_TRUE(std::holds_alternative<Failure>(found)) << titleIn(found).toStdString();
  EXPECT_EQ(std::get<Failure>(found).reason, Failure::Reason::refused);
  const auto kept = save(store, event(u"refused"_s, start));
  ASSERT_TRUE(std::holds_alternative<Failure>(kept));
  EXPECT_EQ(std::get<Failure>(kept).reason, Failure::Reason::refused);
  file.remove();
  EvolutionService::end(u"org.gnome.evolution.dataserver.AddressBook10"_s);
}

TEST_F(EdsCalendarStoreTest, AHelperThatFailsIsAMessage) {
  const QString unreachable = u"failed: The calendar service could not be reached."_s;
  const std::pair<QString, QString> helpers[] = {
      {folder.filePath(u"nowhere"_s), unreachable},
      {program("exit 0"), unreachable},
      {program("echo '{\"calendar\": {\"title\": \"A\", \"isWritable\": true}}'; exit 1"), unreachable},
      {program("echo '{\"calendar\": {\"title\": \"A\", \"isWritable\": true}}'; kill -SEGV $$"),
       unreachable},
      {program("echo '{\"calendar\": \"A\"}'"), unreachable},
      {program("echo '[1]'"), unreachable},
      {program("echo '{\"calendar\": {\"title\"'"), unreachable},
      {program("exec cat /dev/urandom"), unreachable},
      {program("exec yes"), unreachable},
      {program("echo '{\"failure\": \"other\", \"message\": \"No room.\"}'"), u"failed: No room."_s},
      {program("cat >/dev/null; echo '{\"calendar\": {\"title\": \"A\", \"isWritable\": true}}'"), u"A"_s},
  };
  for (const auto& [path, expected] : helpers) {
    EdsCalendarStore broken(scheduler, path, marker);
    EXPECT_EQ(titleIn(calendar(broken)), expected);
    EXPECT_TRUE(titleIn(save(broken, event(u"lost"_s, start))).startsWith(expected));
  }
  EdsCalendarStore none(scheduler, program("echo '{\"failure\": \"noCalendar\"}'"), marker);
  EXPECT_EQ(std::get<Failure>(calendar(none)).reason, Failure::Reason::noCalendar);
}

TEST_F(EdsCalendarStoreTest, IsAvailableWhereServiceAndHelperAre) {
  const auto isAvailable = [](const EdsCalendarStore& asked) {
    return wait<bool>([&](auto done) { return asked.isAvailable(done); }) == true;
  };
  EXPECT_TRUE(isAvailable(store));
  EXPECT_EQ(EvolutionService::processOf(EvolutionService::registry), 0) << "nothing is started for that";
  EXPECT_FALSE(isAvailable({scheduler, folder.filePath(u"nowhere"_s), marker}));

  // A bus that can start nothing.
  QFile configuration(folder.filePath(u"bus.conf"_s));
  ASSERT_TRUE(configuration.open(QFile::WriteOnly));
  configuration.write("<busconfig><type>session</type><listen>unix:dir=" + folder.path().toUtf8() +
                      "</listen><policy context='default'><allow send_destination='*' "
                      "eavesdrop='true'/><allow eavesdrop='true'/><allow own='*'/>"
                      "</policy></busconfig>");
  configuration.close();
  QProcess daemon;
  daemon.start(u"dbus-daemon"_s,
               {u"--nofork"_s, u"--print-address"_s, u"--config-file"_s, configuration.fileName()});
  ASSERT_TRUE(waitUntil([&] { return daemon.canReadLine(); }));
  const QString address = QString::fromUtf8(daemon.readLine()).trimmed();
  EXPECT_FALSE(isAvailable(
      {scheduler, helper, marker, EdsPresence(QDBusConnection::connectToBus(address, u"empty"_s))}));
  QDBusConnection::disconnectFromBus(u"empty"_s);
  daemon.kill();
  daemon.waitForFinished();
  EXPECT_FALSE(isAvailable({scheduler, helper, marker, EdsPresence(QDBusConnection(u"none"_s))})) << "no bus";
}

}  // namespace
}  // namespace lumeno
