#include "core/app/launch.h"

namespace lumeno {

using namespace Qt::StringLiterals;

std::optional<LaunchRequest> launchRequest(const QStringList& arguments) {
  if (arguments.isEmpty()) return LaunchRequest::start;
  if (arguments.size() > 1) return std::nullopt;
  const QString& argument = arguments.front();
  if (argument == "--settings"_L1) return LaunchRequest::settings;
  if (argument == "--summon"_L1) return LaunchRequest::summon;
  if (argument == "--service"_L1) return LaunchRequest::service;
  return std::nullopt;
}

const char* usage() {
  return "Usage: lumeno [--settings | --summon | --service]\n"
         "  --settings  open the Settings window\n"
         "  --summon    act on the current selection, as the shortcut does\n"
         "  --service   start for a caller on the session bus, which says what for\n"
         "A Lumeno that is already running does it; otherwise one is started.\n";
}

}  // namespace lumeno
