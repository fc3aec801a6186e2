#pragma once

#include <QStringList>
#include <optional>

namespace lumeno {

/// What a start of the program is meant for.
enum class LaunchRequest {
  start,
  service,  ///< started by the session bus, which then says what for
  settings,
  summon,
};

/// Reads the command line without the program's own name; absent when it is not understood.
[[nodiscard]] std::optional<LaunchRequest> launchRequest(const QStringList& arguments);

/// How to call the program, for the terminal.
[[nodiscard]] const char* usage();

}  // namespace lumeno
