#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <variant>
#include <vector>

#include "ai/ai_service.h"
#include "base/job.h"
#include "base/scheduler.h"
#include "core/settings/settings_enums.h"
#include "files/caution/caution.h"
#include "platform/command_shell.h"
#include "records/file_command.h"
#include "records/file_selection.h"

namespace lumeno {

/// A planned command with what to be cautious about.
struct CommandPlan {
  FileCommand command;
  std::vector<Caution> cautions;
  bool operator==(const CommandPlan&) const = default;
};

/// Plans shell commands with a language model and runs the reviewed ones. A value, made from the settings for
/// each session; it may go before its jobs. Main thread; no callback is made before the call returns.
class FileActionService {
 public:
  /// Why no command was planned, as told to the user.
  enum class PlanError { backendUnavailable, emptyResponse };
  [[nodiscard]] static QString message(PlanError error);

  /// The shell and the scheduler must outlive the service and its jobs. `limit` is how long a command may
  /// run.
  FileActionService(AIServiceFactory services, CommandShell& shell, Scheduler& scheduler, AIBackend backend,
                    const QString& ollamaModel, std::chrono::seconds limit = std::chrono::seconds(60));

  /// One command for `instruction` (trimmed), cleaned and screened, or the text of what went wrong. What to
  /// be cautious about is looked up on a worker, since it touches the file system; when that does not answer
  /// in time, the plan comes with the one caution that says so. A blocked command has no cautions.
  [[nodiscard]] Job plan(const QString& instruction, const FileSelection& selection,
                         std::function<void(std::variant<CommandPlan, QString>)> done) const;

  /// Runs the command for at most `limit`. Never fails: every problem is told in the outcome. Dropping the
  /// handle drops the outcome, not the command.
  [[nodiscard]] Job run(const FileCommand& command, std::function<void(FileActionOutcome)> done) const;

 private:
  AIServiceFactory services_;
  CommandShell* shell_;
  Scheduler* scheduler_;
  AIBackend backend_;
  QString ollamaModel_;
  std::chrono::seconds limit_;
};

}  // namespace lumeno
