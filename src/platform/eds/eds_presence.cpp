#include "platform/eds/eds_presence.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>
#include <memory>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

// Its client library needs this one, and without it makes objects that do not work, with no error.
constexpr auto registryService = "org.gnome.evolution.dataserver.Sources5"_L1;
constexpr int callTimeout = 3000;  // milliseconds

/// Looks for the service in a list of names that the bus gives.
void findIn(const QDBusConnection& bus, const QString& listMethod, std::function<void(bool)> done) {
  const auto call = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                                   u"org.freedesktop.DBus"_s, listMethod);
  if (!bus.isConnected()) {
    // A call to no bus would never be answered.
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [done = std::move(done)] { done(false); }, Qt::QueuedConnection);
    return;
  }
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, callTimeout));
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, done = std::move(done)] {
    const QDBusPendingReply<QStringList> reply = *watcher;
    watcher->deleteLater();
    done(!reply.isError() && reply.value().contains(registryService));
  });
}

}  // namespace

Job EdsPresence::check(std::function<void(bool isPresent)> done) const {
  const auto isWanted = std::make_shared<bool>(true);
  const auto answer = [isWanted, done = std::move(done)](bool isPresent) {
    if (*isWanted) done(isPresent);
  };
  findIn(bus_, u"ListActivatableNames"_s, [bus = bus_, isWanted, answer](bool isActivatable) {
    if (isActivatable) {
      answer(true);
    } else if (*isWanted) {
      findIn(bus, u"ListNames"_s, answer);
    }
  });
  return Job([isWanted] { *isWanted = false; });
}

}  // namespace lumeno
