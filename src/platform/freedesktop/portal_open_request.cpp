#include "platform/freedesktop/portal_open_request.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QUuid>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr auto service = "org.freedesktop.portal.Desktop"_L1;
constexpr int callTimeout = 5000;  // milliseconds
constexpr uint otherFailure = 2;   // of a response; 0 is success, 1 the user's refusal

}  // namespace

void PortalOpenRequest::start(const QUrl& url, std::function<void(bool opened)> done) {
  new PortalOpenRequest(url, std::move(done));
}

PortalOpenRequest::PortalOpenRequest(const QUrl& url, std::function<void(bool opened)> done)
    : QObject(QCoreApplication::instance()), done_(std::move(done)) {
  auto bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) {  // a call would never end
    QMetaObject::invokeMethod(
        this, [this] { finish(false); }, Qt::QueuedConnection);
    return;
  }
  // The portal answers the call at once and responds later, on an object whose path follows from our own
  // token: so it is listened to before it can speak.
  const QString token = u"lumeno"_s + QUuid::createUuid().toString(QUuid::Id128);
  QString sender = bus.baseService().mid(1);
  const QString path =
      u"/org/freedesktop/portal/desktop/request/%1/%2"_s.arg(sender.replace(u'.', u'_'), token);
  bus.connect(service, path, u"org.freedesktop.portal.Request"_s, u"Response"_s, this, SLOT(responded(uint)));

  auto call = QDBusMessage::createMethodCall(service, u"/org/freedesktop/portal/desktop"_s,
                                             u"org.freedesktop.portal.OpenURI"_s, u"OpenURI"_s);
  call << QString() << QString::fromLatin1(url.toEncoded()) << QVariantMap{{u"handle_token"_s, token}};
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, callTimeout), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
    if (watcher->isError()) finish(false);
  });
}

void PortalOpenRequest::responded(uint response) {
  finish(response != otherFailure);
}

void PortalOpenRequest::finish(bool opened) {
  deleteLater();
  if (const auto done = std::exchange(done_, nullptr)) done(opened);
}

}  // namespace lumeno
