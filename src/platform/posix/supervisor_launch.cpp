#include "platform/posix/supervisor_launch.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <system_error>

namespace lumeno {
namespace {

using namespace supervision;

QString reason(int error) {
  return QString::fromStdString(std::generic_category().message(error));
}

/// Above the numbers that the supervisor's descriptors get, so that giving them these overwrites none.
bool moveUp(int number, FileDescriptor& into) {
  const FileDescriptor low(number);
  into = FileDescriptor(fcntl(low.number(), F_DUPFD_CLOEXEC, errorDescriptor + 1));
  return into.isOpen();
}

bool openPipe(FileDescriptor& reading, FileDescriptor& writing) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return false;
  const bool isFirstMoved = moveUp(ends[0], reading);
  return moveUp(ends[1], writing) && isFirstMoved;
}

bool openSocket(FileDescriptor& ours, FileDescriptor& theirs) {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) return false;
  const bool isFirstMoved = moveUp(ends[0], ours);
  return moveUp(ends[1], theirs) && isFirstMoved;
}

/// Returns an error number, 0 for success.
int spawn(const CommandRequest& request, const std::pair<int, int> (&descriptors)[5]) {
  QByteArray path = request.supervisor;
  QByteArray limit = QByteArray::number(
      static_cast<qint64>(std::chrono::nanoseconds(request.limit.time_since_epoch()).count()));
  QByteArray folder = request.folder, shell = request.shell, command = request.command;
  char* const arguments[] = {path.data(), limit.data(), folder.data(), shell.data(), command.data(), nullptr};
  posix_spawn_file_actions_t actions;
  if (const int error = posix_spawn_file_actions_init(&actions)) return error;
  int error = 0;
  for (const auto& [ours, theirs] : descriptors) {
    if (error == 0) error = posix_spawn_file_actions_adddup2(&actions, ours, theirs);
  }
  pid_t child = -1;
  if (error == 0) error = posix_spawn(&child, path.constData(), &actions, nullptr, arguments, environ);
  posix_spawn_file_actions_destroy(&actions);
  // It detaches itself at once, and its first process ends.
  while (error == 0 && waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
  return error;
}

}  // namespace

QString cannotRun(const QByteArray& path, int error) {
  return QStringLiteral("“%1” cannot be run: %2").arg(QFile::decodeName(path), reason(error));
}

QString cannotStartProcess(int error) {
  return QStringLiteral("No process can be started: %1").arg(reason(error));
}

QString cannotEnter(const QByteArray& folder, int error) {
  return QStringLiteral("The folder “%1” cannot be entered: %2")
      .arg(QFile::decodeName(folder), reason(error));
}

SupervisedCommand launchSupervised(const CommandRequest& request) {
  SupervisedCommand command;
  FileDescriptor control, outputEnd, errorEnd;
  if (!openSocket(command.control, control) || !openPipe(command.output, outputEnd) ||
      !openPipe(command.errors, errorEnd)) {
    command.problem = cannotStartProcess(errno);
    return command;
  }
  for (const FileDescriptor* pipe : {&command.output, &command.errors}) {
    fcntl(pipe->number(), F_SETFL, O_NONBLOCK);
  }
  const int error = spawn(request, {{outputEnd.number(), STDOUT_FILENO},
                                    {errorEnd.number(), STDERR_FILENO},
                                    {control.number(), controlDescriptor},
                                    {command.output.number(), outputDescriptor},
                                    {command.errors.number(), errorDescriptor}});
  if (error != 0) command.problem = cannotRun(request.supervisor, error);
  return command;
}

}  // namespace lumeno
