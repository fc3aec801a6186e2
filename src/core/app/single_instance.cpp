#include "core/app/single_instance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QStandardPaths>
#include <QVariantMap>

#include "core/app/program_name.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr int answerTimeout = 3000;  // milliseconds

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

}  // namespace

SingleInstance::SingleInstance() : lock_(lockPath()) {
  lock_.setStaleLockTime(0);  // it is a process that holds it, however long
  // A folder that cannot be written to must not keep the program from running.
  isOurs_ = lock_.tryLock(0) || lock_.error() != QLockFile::LockFailedError;
}

bool forwardToRunningInstance(LaunchRequest request) {
  const QDBusMessage answer =
      QDBusConnection::sessionBus().call(messageFor(request), QDBus::Block, answerTimeout);
  return answer.type() == QDBusMessage::ReplyMessage;
}

}  // namespace lumeno
