#include "platform/freedesktop/portal_appearance.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QGuiApplication>
#include <QMap>
#include <QPalette>
#include <cmath>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr auto service = "org.freedesktop.portal.Desktop"_L1;
constexpr auto path = "/org/freedesktop/portal/desktop"_L1;
constexpr auto interface = "org.freedesktop.portal.Settings"_L1;

constexpr auto colorScheme =
    "org.freedesktop.appearance color-scheme"_L1;                    // 0 no preference, 1 dark, 2 light
constexpr auto contrast = "org.freedesktop.appearance contrast"_L1;  // 1 high
constexpr auto accentColor = "org.freedesktop.appearance accent-color"_L1;
constexpr auto enableAnimations = "org.gnome.desktop.interface enable-animations"_L1;

QString settingName(const QString& group, const QString& key) {
  return group + u' ' + key;
}

bool isPaletteDark() {
  return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) &&
         QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
}

/// Red, green and blue from 0 to 1; anything outside means that there is no accent.
std::optional<QRgb> readColor(const QVariant& value) {
  if (!value.canConvert<QDBusArgument>()) return std::nullopt;
  const auto argument = value.value<QDBusArgument>();
  if (argument.currentSignature() != "(ddd)"_L1) return std::nullopt;
  double parts[3] = {};
  argument.beginStructure();
  argument >> parts[0] >> parts[1] >> parts[2];
  argument.endStructure();
  int bytes[3] = {};
  for (int i = 0; i < 3; ++i) {
    if (!(parts[i] >= 0 && parts[i] <= 1)) return std::nullopt;
    bytes[i] = static_cast<int>(std::lround(parts[i] * 255));
  }
  return qRgb(bytes[0], bytes[1], bytes[2]);
}

}  // namespace

PortalAppearance::PortalAppearance() {
  publish();
  auto bus = QDBusConnection::sessionBus();
  bus.connect(service, path, interface, u"SettingChanged"_s, this, SLOT(settingChanged(QDBusMessage)));
  auto request = QDBusMessage::createMethodCall(service, path, interface, u"ReadAll"_s);
  request << QStringList{u"org.freedesktop.appearance"_s, u"org.gnome.desktop.interface"_s};
  auto* call = new QDBusPendingCallWatcher(bus.asyncCall(request), this);
  connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
    call->deleteLater();
    const QDBusMessage reply = call->reply();
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != "a{sa{sv}}"_L1) return;
    const auto groups = qdbus_cast<QMap<QString, QVariantMap>>(reply.arguments().constFirst());
    for (auto group = groups.cbegin(); group != groups.cend(); ++group) {
      for (auto entry = group->cbegin(); entry != group->cend(); ++entry) {
        settings_.insert(settingName(group.key(), entry.key()), entry.value());
      }
    }
    publish();
  });
}

void PortalAppearance::settingChanged(const QDBusMessage& signal) {
  if (signal.signature() != "ssv"_L1) return;
  const QVariantList arguments = signal.arguments();
  settings_.insert(settingName(arguments[0].toString(), arguments[1].toString()),
                   arguments[2].value<QDBusVariant>().variant());
  publish();
}

void PortalAppearance::publish() {
  const uint scheme = settings_.value(colorScheme).toUInt();
  const AppearancePreferences preferences{
      .dark = scheme == 0 ? isPaletteDark() : scheme == 1,
      .reduceMotion = !settings_.value(enableAnimations, true).toBool(),
      .highContrast = settings_.value(contrast).toUInt() == 1,
      .accent = readColor(settings_.value(accentColor)),
  };
  if (preferences != preferences_.get()) preferences_.set(preferences);
}

}  // namespace lumeno
