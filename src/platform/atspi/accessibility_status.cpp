#include "platform/atspi/accessibility_status.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace lumeno::atspi {

using namespace Qt::StringLiterals;

namespace {

constexpr auto service = "org.a11y.Bus"_L1;
constexpr auto path = "/org/a11y/bus"_L1;
constexpr auto statusInterface = "org.a11y.Status"_L1;
constexpr auto propertiesInterface = "org.freedesktop.DBus.Properties"_L1;
constexpr auto enabledProperty = "IsEnabled"_L1;

}  // namespace

AccessibilityStatus::AccessibilityStatus(QString markerPath, QObject* parent)
    : QObject(parent),
      markerPath_(std::move(markerPath)),
      watcher_(service, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForOwnerChange),
      isGranted_(QFile::exists(markerPath_)) {
  QDBusConnection::sessionBus().connect(
      service, path, propertiesInterface, u"PropertiesChanged"_s, this,
      SLOT(propertiesChanged(const QString&, const QVariantMap&, const QStringList&)));
  connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
          [this](const QString&, const QString&, const QString& newOwner) {
            if (newOwner.isEmpty()) {
              isEnabled_ = false;
              // The service starts again when it is asked for.
              if (isGranted_) switchOn();
            } else {
              askForState();
            }
          });
  // A granted access holds for later starts: accessibility is then switched on again.
  if (isGranted_) {
    switchOn();
  } else {
    askForState();
  }
}

void AccessibilityStatus::grant() {
  QDir().mkpath(QFileInfo(markerPath_).path());
  QFile marker(markerPath_);
  // When it cannot be kept the grant holds until the program ends.
  if (marker.open(QIODevice::WriteOnly))
    marker.write("Access to other applications was granted by the user.\n");
  isGranted_ = true;
  switchOn();
}

void AccessibilityStatus::switchOn() {
  auto request = QDBusMessage::createMethodCall(service, path, propertiesInterface, u"Set"_s);
  request << QString(statusInterface) << QString(enabledProperty) << QVariant::fromValue(QDBusVariant(true));
  auto* call = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(request), this);
  connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
    call->deleteLater();
    askForState();
  });
}

void AccessibilityStatus::askForState() {
  auto request = QDBusMessage::createMethodCall(service, path, propertiesInterface, u"Get"_s);
  request << QString(statusInterface) << QString(enabledProperty);
  auto* call = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(request), this);
  connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
    call->deleteLater();
    const QDBusPendingReply<QDBusVariant> reply = *call;
    // No answer leaves the last known state.
    if (reply.isValid()) {
      isEnabled_ = reply.value().variant().toBool();
      trust_.emit(isTrusted());
    }
  });
}

void AccessibilityStatus::propertiesChanged(const QString& interface, const QVariantMap& changed,
                                            const QStringList& invalidated) {
  if (interface != statusInterface) return;
  if (changed.contains(enabledProperty)) {
    setEnabled(changed.value(enabledProperty).toBool());
  } else if (invalidated.contains(enabledProperty)) {
    askForState();
  }
}

void AccessibilityStatus::setEnabled(bool enabled) {
  if (isEnabled_ && !enabled && isGranted_) {
    // The user has switched accessibility off: that takes the grant back.
    isGranted_ = false;
    QFile::remove(markerPath_);
  }
  isEnabled_ = enabled;
  trust_.emit(isTrusted());
}

}  // namespace lumeno::atspi
