#pragma once

#include <sys/types.h>

#include "platform/posix/supervisor_protocol.h"

namespace lumeno::supervision {

struct ShellStart {
  pid_t shell = -1;  ///< -1 when it was not started; then:
  Step step = Step::process;
  int error = 0;
};

/// Starts `shell -lc command` in `folder`, in a session and group of its own, with nothing of ours but the
/// descriptors 0, 1 and 2, every signal as the system has it. Returns when the shell runs or cannot. The
/// shell ends when this process does.
[[nodiscard]] ShellStart startShell(const char* shell, const char* folder, const char* command);

}  // namespace lumeno::supervision
