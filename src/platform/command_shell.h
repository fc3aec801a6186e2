#pragma once

#include <QByteArray>
#include <QString>
#include <chrono>
#include <cstdint>
#include <functional>

#include "base/job.h"

namespace lumeno {

/// How a shell command ended.
struct CommandEnd {
  enum class Kind {
    exited,       ///< by itself; `exitCode` is its status, or 128 plus the signal's number
    notStarted,   ///< `problem` says why, in the system's words
    timedOut,     ///< stopped at the time limit
    stopped,      ///< by somebody else; `problem` says how
    tookTooMuch,  ///< stopped because its output would not have fitted into memory
  };
  Kind kind = Kind::exited;
  QByteArray standardOutput;  ///< whole, or what was written until the end
  QByteArray standardError;
  int32_t exitCode = 0;  ///< -1 when it was not started
  QString problem;
};

/// Runs commands in the user's shell. Main thread; asynchronous.
class CommandShell {
 public:
  virtual ~CommandShell() = default;

  /// Runs `command` as one string in a login shell, in `workingDirectory` (an absolute path), and stops it
  /// and all it has started after `limit`. What it leaves running when it ends by itself before that is not
  /// stopped. `done` is called once, on the main thread, at most 3 s after the limit whatever the command
  /// does. Dropping the handle drops the answer, not the command: that runs to its end, and its limit holds
  /// also when this program has quit.
  [[nodiscard]] virtual Job run(const QString& command, const QByteArray& workingDirectory,
                                std::chrono::milliseconds limit, std::function<void(CommandEnd)> done) = 0;
};

}  // namespace lumeno
