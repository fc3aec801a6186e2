#include "platform/eds/eds_calendar_store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <utility>

#include "platform/icalendar/content_lines.h"
#include "platform/icalendar/event_text.h"
#include "platform/icalendar/event_zone.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Failure = CalendarStore::Failure;

// A service that has to be started first takes about a second.
constexpr auto lookUpDeadline = 10s;
constexpr auto saveDeadline = 20s;

/// What the helper knows of the default calendar.
struct Found {
  QString title;
  bool isWritable = false;
};

Failure failureWith(const QString& message) {
  return {Failure::Reason::other, message};
}

std::variant<Found, Failure> found(const EdsHelperCall::Answer& answer) {
  if (const auto* problem = std::get_if<EdsHelperCall::Problem>(&answer)) {
    return failureWith(*problem == EdsHelperCall::Problem::timedOut
                           ? u"The calendar service did not answer in time."_s
                           : u"The calendar service could not be reached."_s);
  }
  const auto& object = std::get<QJsonObject>(answer);
  const QJsonObject calendar = object["calendar"_L1].toObject();
  if (!calendar.isEmpty()) {
    return Found{calendar["title"_L1].toString(), calendar["isWritable"_L1].toBool()};
  }
  const QString reason = object["failure"_L1].toString();
  if (reason == "refused"_L1) return Failure{Failure::Reason::refused, QString()};
  if (reason == "noCalendar"_L1) return Failure{Failure::Reason::noCalendar, QString()};
  const QString message = object["message"_L1].toString();
  return failureWith(message.isEmpty() ? u"The calendar service could not be reached."_s : message);
}

}  // namespace

EdsCalendarStore::EdsCalendarStore(Scheduler& scheduler, QString helper, QString markerPath,
                                   EdsPresence presence)
    : scheduler_(scheduler),
      helper_(std::move(helper)),
      markerPath_(std::move(markerPath)),
      presence_(std::move(presence)) {}

Job EdsCalendarStore::isAvailable(std::function<void(bool)> done) const {
  return presence_.check([this, done = std::move(done)](bool isPresent) {
    done(isPresent && QFileInfo(helper_).isExecutable());
  });
}

Job EdsCalendarStore::authorizationStatus(std::function<void(AuthorizationStatus)> done) {
  if (!wasAsked_ && !QFile::exists(markerPath_)) {
    return scheduler_.after(0ms, [done = std::move(done)] { done(AuthorizationStatus::notDetermined); });
  }
  return EdsHelperCall::ask(
      lookUp(), scheduler_, [done = std::move(done)](const EdsHelperCall::Answer& answer) {
        const auto result = found(answer);
        if (const auto* calendar = std::get_if<Found>(&result)) {
          done(calendar->isWritable ? AuthorizationStatus::granted : AuthorizationStatus::denied);
        } else {
          // Nothing refuses when there is no calendar yet; of one that does not answer nothing is known.
          const bool isReachable = std::get<Failure>(result).reason != Failure::Reason::other;
          done(isReachable ? AuthorizationStatus::granted : AuthorizationStatus::notDetermined);
        }
      });
}

Job EdsCalendarStore::requestWriteAccess(std::function<void(Access)> done) {
  wasAsked_ = true;
  if (!QFile::exists(markerPath_)) {
    QDir().mkpath(QFileInfo(markerPath_).path());
    QFile marker(markerPath_);
    // When it cannot be kept it holds until the program ends.
    if (marker.open(QIODevice::WriteOnly))
      marker.write("Adding events to the calendar was allowed by the user.\n");
  }
  return scheduler_.after(0ms, [done = std::move(done)] { done(Access::granted); });
}

Job EdsCalendarStore::defaultCalendar(std::function<void(std::variant<Calendar, Failure>)> done) {
  return EdsHelperCall::ask(lookUp(), scheduler_,
                            [done = std::move(done)](const EdsHelperCall::Answer& answer) {
                              const auto result = found(answer);
                              if (const auto* failure = std::get_if<Failure>(&result)) {
                                done(*failure);
                                return;
                              }
                              const auto& calendar = std::get<Found>(result);
                              if (calendar.isWritable) {
                                done(Calendar{calendar.title});
                              } else {
                                done(Failure{Failure::Reason::refused, QString()});
                              }
                            });
}

Job EdsCalendarStore::save(const CalendarEvent& event,
                           std::function<void(std::variant<Saved, Failure>)> done) {
  const icalendar::EventZone zone(event.start, event.end);
  const QJsonObject request = {{"request"_L1, "save"_L1},
                               {"uid"_L1, icalendar::eventUid(event)},
                               {"title"_L1, icalendar::withoutControlCharacters(event.title)},
                               {"start"_L1, QString::fromLatin1(zone.dateTime(event.start))},
                               {"end"_L1, QString::fromLatin1(zone.dateTime(event.end))},
                               {"zone"_L1, QString::fromLatin1(zone.name())}};
  const EdsHelperCall::Question question{helper_, request, saveDeadline, EdsHelperCall::WhenDropped::finish};
  return EdsHelperCall::ask(
      question, scheduler_, [done = std::move(done)](const EdsHelperCall::Answer& answer) {
        const auto result = found(answer);
        if (const auto* calendar = std::get_if<Found>(&result)) {
          done(Saved{calendar->title});
        } else if (std::holds_alternative<EdsHelperCall::Problem>(answer)) {
          // The service may have got it before the helper was lost.
          done(failureWith(
              std::get<Failure>(result).message +
              u" The event may have been added all the same; adding it again makes no second one."_s));
        } else {
          done(std::get<Failure>(result));
        }
      });
}

EdsHelperCall::Question EdsCalendarStore::lookUp() const {
  return {helper_, {{"request"_L1, "defaultCalendar"_L1}}, lookUpDeadline, EdsHelperCall::WhenDropped::end};
}

}  // namespace lumeno
