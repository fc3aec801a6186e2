#include "core/app/single_instance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QDir>
#include <QStandardPaths>
#include <QThread>
#include <QVariantMap>
#include <algorithm>

#include "core/app/program_name.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

// Milliseconds.
constexpr int patience = 5000;  // longer than an instance takes to end
constexpr int answerTimeout = 3000;
constexpr int pause = 50;

QString lockPath() {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  QDir().mkpath(folder);
  return folder + u"/lumeno.lock"_s;
}

QDBusMessage messageFor(LaunchRequest request) {
  const auto own = [](const QString& method) {
    return QDBusMessage::createMethodCall(busName, busPath, busName, method);
  };
  switch (request) {
    case LaunchRequest::summon:
      return own(u"Summon"_s);
    case LaunchRequest::settings:
      return own(u"ShowSettings"_s);
    case LaunchRequest::start:
    case LaunchRequest::service:
      break;
  }
  auto activate =
      QDBusMessage::createMethodCall(busName, busPath, u"org.freedesktop.Application"_s, u"Activate"_s);
  activate << QVariantMap();
  return activate;
}

bool forward(LaunchRequest request, int timeout) {
  QDBusMessage message = messageFor(request);
  message.setAutoStartService(false);  // where there is none any more, we are the next
  return QDBusConnection::sessionBus().call(message, QDBus::Block, timeout).type() ==
         QDBusMessage::ReplyMessage;
}

}  // namespace

SingleInstance::SingleInstance() : lock_(lockPath()) {
  lock_.setStaleLockTime(0);  // it is a process that holds it, however long
}

bool SingleInstance::lock() {
  // A folder that cannot be written to must not keep the program from running.
  return lock_.tryLock(0) || lock_.error() != QLockFile::LockFailedError;
}

LaunchOutcome SingleInstance::launch(ProgramBus& bus, LaunchRequest request) {
  const QDeadlineTimer deadline(patience);
  for (;;) {
    if (bus.claim()) {
      if (lock()) return LaunchOutcome::first;
    } else if (forward(request,
                       std::clamp<int>(static_cast<int>(deadline.remainingTime()), 1, answerTimeout))) {
      return LaunchOutcome::forwarded;
    }
    if (deadline.hasExpired()) return LaunchOutcome::unanswered;
    QThread::msleep(pause);
  }
}

}  // namespace lumeno
