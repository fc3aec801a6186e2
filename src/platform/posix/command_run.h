#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "platform/command_shell.h"
#include "platform/posix/supervisor_launch.h"

namespace lumeno {

/// Bytes that can still be used; nothing when it is not known.
using MemoryGauge = std::function<std::optional<uint64_t>()>;

[[nodiscard]] CommandEnd commandNotStarted(const QString& problem);

/// Runs a command and gathers what it writes; blocks until there is an answer, so this belongs on a thread of
/// its own. Gives up the answer (nothing is returned) as soon as `leave` becomes readable; the command itself
/// then goes on under its supervisor.
[[nodiscard]] std::optional<CommandEnd> runCommand(const CommandRequest& request, int leave,
                                                   const MemoryGauge& availableMemory);

}  // namespace lumeno
