#include "platform/posix/posix_command_shell.h"

#include <sys/eventfd.h>

#include <QFile>
#include <QMetaObject>
#include <cerrno>
#include <system_error>

namespace lumeno {
namespace {

void signalLeave(const FileDescriptor& leave) {
  if (leave.isOpen()) eventfd_write(leave.number(), 1);
}

}  // namespace

PosixCommandShell::PosixCommandShell(const QString& supervisor, CommandShellOptions options)
    : supervisor_(QFile::encodeName(supervisor)), options_(std::move(options)) {}

PosixCommandShell::~PosixCommandShell() {
  for (auto& [id, running] : running_) signalLeave(running.leave);
  for (auto& [id, running] : running_) {
    if (running.worker.joinable()) running.worker.join();
  }
}

Job PosixCommandShell::run(const QString& command, const QByteArray& workingDirectory,
                           std::chrono::milliseconds limit, std::function<void(CommandEnd)> done) {
  const Id id = ++lastId_;
  Running& running = running_[id];
  running.done = std::move(done);
  const CommandRequest request{.supervisor = supervisor_,
                               .shell = options_.shell,
                               .folder = workingDirectory,
                               .command = command.toUtf8(),
                               .limit = supervision::Clock::now() + limit};
  // What was reviewed is what runs: neither the part before a NUL nor a text with characters replaced.
  const bool isWhole =
      command.isValidUtf16() && !command.contains(QChar(0)) && !workingDirectory.contains('\0');
  const QString problem = isWhole
                              ? start(running, request, id)
                              : QStringLiteral("The command contains characters that cannot be passed on");
  if (!problem.isEmpty()) {
    post(id, commandNotStarted(problem));
  }
  return Job([this, id, context = std::weak_ptr(context_)] {
    if (!context.expired()) drop(id);
  });
}

QString PosixCommandShell::start(Running& running, CommandRequest request, Id id) {
  running.leave = FileDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
  if (!running.leave.isOpen()) return cannotStartProcess(errno);
  try {
    running.worker = std::thread([this, request = std::move(request), leave = running.leave.number(), id] {
      post(id, runCommand(request, leave, options_.availableMemory));
    });
  } catch (const std::system_error& error) {
    return cannotStartProcess(error.code().value());
  }
  return {};
}

void PosixCommandShell::post(Id id, std::optional<CommandEnd> end) {
  QMetaObject::invokeMethod(
      context_.get(), [this, id, end = std::move(end)]() mutable { finish(id, std::move(end)); },
      Qt::QueuedConnection);
}

void PosixCommandShell::finish(Id id, std::optional<CommandEnd> end) {
  const auto node = running_.extract(id);
  Running& running = node.mapped();
  if (running.worker.joinable()) running.worker.join();  // it ends right after posting
  if (running.done && end) running.done(std::move(*end));
}

void PosixCommandShell::drop(Id id) {
  const auto found = running_.find(id);
  if (found == running_.end()) return;
  found->second.done = nullptr;
  signalLeave(found->second.leave);
}

}  // namespace lumeno
