#pragma once

#include <signal.h>

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDateTime>
#include <QFile>
#include <QString>
#include <QStringList>
#include <optional>

#include "support/wait_until.h"

namespace lumeno {

/// The real service as another program sees it: what its default calendar holds, and its processes.
class EvolutionService {
 public:
  static constexpr QLatin1StringView registry{"org.gnome.evolution.dataserver.Sources5"};
  static constexpr QLatin1StringView factory{"org.gnome.evolution.dataserver.Calendar8"};

  /// Has the bus start the service, where it is not running, and waits for as long as that takes on a busy
  /// machine. False when the calendar cannot be opened.
  [[nodiscard]] static bool start(const QString& calendar = QStringLiteral("system-calendar")) {
    return open(calendar).has_value();
  }

  /// The texts of the events with this UID, of those that the query finds.
  [[nodiscard]] static QStringList events(const QString& uid, const QString& query = QStringLiteral("#t")) {
    const auto opened = open(QStringLiteral("system-calendar"));
    if (!opened) return {};
    const auto listed =
        call(opened->service, opened->path, calendarInterface, QStringLiteral("GetObjectList"), {query});
    QStringList found;
    for (const QString& event : listed.arguments().value(0).toStringList()) {
      if (event.contains(QStringLiteral("UID:") + uid)) found << event;
    }
    return found;
  }

  /// Whether the service takes such an event to go on at a moment, for a second at least.
  [[nodiscard]] static bool isGoingOn(const QString& uid, const QDateTime& moment) {
    const auto time = [](const QDateTime& t) { return t.toUTC().toString(u"yyyyMMdd'T'HHmmss'Z'"); };
    const QString query = QStringLiteral("(occur-in-time-range? (make-time \"%1\") (make-time \"%2\"))");
    return !events(uid, query.arg(time(moment), time(moment.addSecs(1)))).isEmpty();
  }

  /// 0 when nothing owns the name.
  [[nodiscard]] static pid_t processOf(const QString& name) {
    const auto reply = QDBusConnection::sessionBus().interface()->servicePid(name);
    return reply.isValid() ? static_cast<pid_t>(reply.value()) : 0;
  }
  static void send(int signal, const QString& name) {
    if (const pid_t process = processOf(name)) ::kill(process, signal);
  }
  /// Ends the service and waits until it has left the bus.
  static void end(const QString& name) {
    send(SIGKILL, name);
    waitUntil([&] { return processOf(name) == 0; });
  }

 private:
  static constexpr QLatin1StringView calendarInterface{"org.gnome.evolution.dataserver.Calendar"};
  static constexpr int patience = 120'000;  // milliseconds

  struct Calendar {
    QString service;
    QString path;
  };
  [[nodiscard]] static std::optional<Calendar> open(const QString& name) {
    const auto found = call(factory, QStringLiteral("/org/gnome/evolution/dataserver/CalendarFactory"),
                            QStringLiteral("org.gnome.evolution.dataserver.CalendarFactory"),
                            QStringLiteral("OpenCalendar"), {name});
    if (found.arguments().size() < 2) return std::nullopt;
    const Calendar calendar{found.arguments()[1].toString(), found.arguments()[0].toString()};
    const auto opened = call(calendar.service, calendar.path, calendarInterface, QStringLiteral("Open"), {});
    if (opened.type() != QDBusMessage::ReplyMessage) return std::nullopt;
    return calendar;
  }
  static QDBusMessage call(const QString& service, const QString& path, const QString& interface,
                           const QString& method, const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message, QDBus::Block, patience);
  }
};

}  // namespace lumeno
