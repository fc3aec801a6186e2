#include "core/app/program_bus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>

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
  auto bus = QDBusConnection::sessionBus();
  if (bus.isConnected() && !bus.registerService(busName)) isAlreadyRunning_ = true;
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
