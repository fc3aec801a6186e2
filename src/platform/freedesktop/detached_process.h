#pragma once

#include <QStringList>

namespace lumeno {

/// Starts a program of the user's that outlives us, in the home folder and with the environment that we were
/// started with: what we set for ourselves is none of its business. False when it cannot be started; an empty
/// command cannot. Any thread.
[[nodiscard]] bool startDetached(const QStringList& command);

}  // namespace lumeno
