#pragma once

#include <functional>

namespace lumeno {

/// Runs `work` on a worker thread and then `done` with its result on the main thread. `done` is never called
/// before the call returns.
void runAside(std::function<bool()> work, std::function<void(bool)> done);

}  // namespace lumeno
