#pragma once

#include <utility>
#include <vector>

#include "base/scheduler.h"
#include "platform/command_shell.h"

namespace lumeno {

/// Remembers the commands; each ends as prepared, `answerTime` later.
class FakeCommandShell final : public CommandShell {
 public:
  struct Command {
    QString command;
    QByteArray workingDirectory;
    std::chrono::milliseconds limit;
  };

  explicit FakeCommandShell(Scheduler& scheduler) : scheduler_(scheduler) {}

  Job run(const QString& command, const QByteArray& workingDirectory, std::chrono::milliseconds limit,
          std::function<void(CommandEnd)> done) override {
    commands.push_back({command, workingDirectory, limit});
    return scheduler_.after(answerTime, [this, done = std::move(done)] { done(end); });
  }

  CommandEnd end;
  std::chrono::milliseconds answerTime{0};
  std::vector<Command> commands;

 private:
  Scheduler& scheduler_;
};

}  // namespace lumeno
