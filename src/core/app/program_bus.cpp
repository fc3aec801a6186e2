#include "core/app/program_bus.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include "core/app/program_name.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

void call(const std::function<void()>& callback) {
  if (callback) callback();
}

}  // namespace

ProgramBus::ProgramBus(QObject* parent) : QObject(parent) {
  new DesktopActivation(*this);
}

bool ProgramBus::claim() {
  auto bus = QDBusConnection::sessionBus();
  if (!hasName_) hasName_ = !bus.isConnected() || bus.registerService(busName);
  return hasName_;
}

void ProgramBus::withdraw() {
  auto bus = QDBusConnection::sessionBus();
  bus.unregisterObject(busPath);
  // Not the toolkit's own call, which would wait for the bus.
  auto release = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                                u"org.freedesktop.DBus"_s, u"ReleaseName"_s);
  release << QString(busName);
  bus.send(release);
}

void ProgramBus::publish() {
  QDBusConnection::sessionBus().registerObject(busPath, this,
                                               QDBusConnection::ExportScriptableSlots |
                                                   QDBusConnection::ExportAllProperties |
                                                   QDBusConnection::ExportAdaptors);
}

void ProgramBus::Summon() {
  call(onSummon);
}

void ProgramBus::ShowSettings() {
  call(onShowSettings);
}

void ProgramBus::ShowWelcome() {
  call(onShowWelcome);
}

void ProgramBus::GrantAccess() {
  call(onGrantAccess);
}

void DesktopActivation::Activate(const QVariantMap& /*platformData*/) {
  call(bus_.onActivate);
}

void DesktopActivation::Open(const QStringList& /*uris*/, const QVariantMap& /*platformData*/) {
  call(bus_.onActivate);
}

void DesktopActivation::ActivateAction(const QString& name, const QVariantList& /*parameter*/,
                                       const QVariantMap& /*platformData*/) {
  if (name == "settings"_L1) {
    bus_.ShowSettings();
  } else if (name == "summon"_L1) {
    bus_.Summon();
  }
}

}  // namespace lumeno
