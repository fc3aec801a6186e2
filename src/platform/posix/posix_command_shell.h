#pragma once

#include <QObject>
#include <map>
#include <memory>
#include <optional>
#include <thread>

#include "platform/command_shell.h"
#include "platform/posix/available_memory.h"
#include "platform/posix/command_run.h"
#include "platform/posix/file_descriptor.h"

namespace lumeno {

/// What tests replace.
struct CommandShellOptions {
  QByteArray shell = "/bin/zsh";
  MemoryGauge availableMemory = [] { return lumeno::availableMemory(); };
};

/// Runs commands in zsh, each under a supervisor process of its own (`lumeno-supervisor`), which stops it and
/// everything it has started at the limit, however it hides and whatever becomes of this program; what a
/// command leaves running when it ends by itself goes on. The answer is gathered on a thread per command.
/// Environment and standard input are this program's.
class PosixCommandShell final : public CommandShell {
 public:
  /// `supervisor`: the path of `lumeno-supervisor`; absolute.
  explicit PosixCommandShell(const QString& supervisor, CommandShellOptions options = {});
  /// Gives up all answers; the commands go on. Waits for no command.
  ~PosixCommandShell() override;

  [[nodiscard]] Job run(const QString& command, const QByteArray& workingDirectory,
                        std::chrono::milliseconds limit, std::function<void(CommandEnd)> done) override;

 private:
  struct Running {
    std::thread worker;
    FileDescriptor leave;  ///< an eventfd: readable once the answer is not wanted any more
    std::function<void(CommandEnd)> done;
  };
  using Id = uint64_t;

  /// Why it cannot run; empty when it was started.
  QString start(Running& running, CommandRequest request, Id id);
  void post(Id id, std::optional<CommandEnd> end);
  void finish(Id id, std::optional<CommandEnd> end);
  void drop(Id id);

  const QByteArray supervisor_;
  const CommandShellOptions options_;
  std::map<Id, Running> running_;
  Id lastId_ = 0;
  /// Answers reach the main thread through it; handles hold it weakly.
  std::shared_ptr<QObject> context_ = std::make_shared<QObject>();
};

}  // namespace lumeno
