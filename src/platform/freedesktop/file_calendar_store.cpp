#include "platform/freedesktop/file_calendar_store.h"

#include <QDateTime>
#include <QDir>
#include <QLocale>
#include <QUrl>
#include <memory>
#include <utility>

#include "base/aside.h"
#include "platform/freedesktop/detached_process.h"
#include "platform/freedesktop/mime_handlers.h"
#include "platform/freedesktop/write_file.h"
#include "platform/icalendar/event_text.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

using Failure = CalendarStore::Failure;
using Saved = CalendarStore::Saved;

// A handler reads its file when it starts, or when the user gets to it.
constexpr qint64 fileLife = 24 * 3600;  // seconds

const Failure noHandler{Failure::Reason::noCalendar, QString()};

std::optional<DesktopEntryFile> calendarHandler() {
  return defaultHandler(u"text/calendar"_s);
}

QString nameOf(const DesktopEntryFile& handler) {
  return handler.localizedValue(u"Name"_s, QLocale::system().name());
}

void removeOldFiles(const QString& folder) {
  const QDateTime now = QDateTime::currentDateTimeUtc();
  for (const QFileInfo& file : QDir(folder).entryInfoList({u"*.ics"_s}, QDir::Files)) {
    if (file.lastModified().secsTo(now) > fileLife) QFile::remove(file.filePath());
  }
}

std::variant<Saved, Failure> openInHandler(const CalendarEvent& event, const QString& folder) {
  const auto handler = calendarHandler();
  if (!handler) return noHandler;
  removeOldFiles(folder);
  // The same event again is the same file, and the same event to the handler.
  const QString path = folder + u'/' + icalendar::eventUid(event) + u".ics"_s;
  const QString name = nameOf(*handler);
  if (!writeFileAtomically(path, icalendar::calendarFile(event, QDateTime::currentDateTimeUtc())))
    return Failure{Failure::Reason::other, u"The event could not be written to "_s + path + u'.'};
  if (!startDetached(handler->commandFor(QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded()))))
    return Failure{Failure::Reason::other, name + u" could not be started."_s};
  return Saved{name, Saved::State::opened};
}

}  // namespace

FileCalendarStore::FileCalendarStore(Scheduler& scheduler, QString folder)
    : scheduler_(scheduler), folder_(std::move(folder)) {}

Job FileCalendarStore::authorizationStatus(std::function<void(AuthorizationStatus)> done) {
  return runAside(
      *QThreadPool::globalInstance(),
      [] { return calendarHandler() ? AuthorizationStatus::granted : AuthorizationStatus::restricted; },
      std::move(done));
}

Job FileCalendarStore::requestWriteAccess(std::function<void(Access)> done) {
  return scheduler_.after(std::chrono::milliseconds(0), [done = std::move(done)] { done(Access::granted); });
}

Job FileCalendarStore::defaultCalendar(std::function<void(std::variant<Calendar, Failure>)> done) {
  return runAside(
      *QThreadPool::globalInstance(),
      []() -> std::variant<Calendar, Failure> {
        const auto handler = calendarHandler();
        if (!handler) return noHandler;
        return Calendar{nameOf(*handler)};
      },
      std::move(done));
}

Job FileCalendarStore::save(const CalendarEvent& event,
                            std::function<void(std::variant<Saved, Failure>)> done) {
  // Not an ordinary job: a save is carried out also when nobody wants its answer.
  const auto wanted = std::make_shared<std::function<void(std::variant<Saved, Failure>)>>(std::move(done));
  finishAside(
      *QThreadPool::globalInstance(), [event, folder = folder_] { return openInHandler(event, folder); },
      [wanted](std::variant<Saved, Failure> answer) {
        if (const auto callback = std::exchange(*wanted, nullptr)) callback(std::move(answer));
      });
  return Job([wanted] { *wanted = nullptr; });
}

}  // namespace lumeno
