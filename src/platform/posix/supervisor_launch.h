#pragma once

#include <QByteArray>
#include <QString>

#include "platform/posix/file_descriptor.h"
#include "platform/posix/supervisor_protocol.h"

namespace lumeno {

struct CommandRequest {
  QByteArray supervisor;  ///< path of the executable
  QByteArray shell;       ///< path of the executable
  QByteArray folder;
  QByteArray command;
  supervision::Clock::time_point limit;
};

/// Our side of a command that a supervisor looks after.
struct SupervisedCommand {
  FileDescriptor control;
  FileDescriptor output;  ///< not blocking
  FileDescriptor errors;  ///< not blocking
  QString problem;        ///< why the supervisor could not be started; empty when it was
};

/// Starts a supervisor, which goes on by itself whatever becomes of this process. Any thread; takes about a
/// millisecond.
[[nodiscard]] SupervisedCommand launchSupervised(const CommandRequest& request);

/// "“/bin/zsh” cannot be run: Permission denied"
[[nodiscard]] QString cannotRun(const QByteArray& path, int error);
/// "No process can be started: Cannot allocate memory"
[[nodiscard]] QString cannotStartProcess(int error);
/// "The folder “/gone” cannot be entered: No such file or directory"
[[nodiscard]] QString cannotEnter(const QByteArray& folder, int error);

}  // namespace lumeno
