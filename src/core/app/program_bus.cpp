#include "core/app/program_bus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr auto busName = "org.lumeno.Lumeno"_L1;
constexpr auto objectPath = "/org/lumeno/Lumeno"_L1;

}  // namespace

ProgramBus::ProgramBus(QObject* parent) : QObject(parent) {
  auto bus = QDBusConnection::sessionBus();
  if (bus.isConnected() && !bus.registerService(busName)) isAlreadyRunning_ = true;
}

void ProgramBus::publish() {
  QDBusConnection::sessionBus().registerObject(
      objectPath, this, QDBusConnection::ExportScriptableSlots | QDBusConnection::ExportAllProperties);
}

void ProgramBus::Summon() {
  if (onSummon) onSummon();
}

void ProgramBus::GrantAccess() {
  if (onGrantAccess) onGrantAccess();
}

}  // namespace lumeno
