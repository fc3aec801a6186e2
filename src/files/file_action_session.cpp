#include "files/file_action_session.h"

#include <utility>

#include "base/text.h"

// In each operation setting the stage comes last: an observer of it may call the next operation, or drop the
// session.

namespace lumeno {

FileActionSession::FileActionSession(FileSelection fileSelection, FileActionService service)
    : selection(std::move(fileSelection)), service_(std::move(service)) {}

void FileActionSession::submit() {
  const QString request = text::trimmed(instruction.get()).toString();
  if (request.isEmpty()) return;
  cautions_.clear();
  task_ = service_.plan(request, selection, [this](std::variant<CommandPlan, QString> answer) {
    if (auto* plan = std::get_if<CommandPlan>(&answer)) {
      cautions_ = std::move(plan->cautions);
      stage.set(Stage::Preview{std::move(plan->command)});
    } else {
      stage.set(Stage::Error{std::get<QString>(answer)});
    }
  });
  stage.set(Stage::Planning());
}

void FileActionSession::confirm() {
  const auto* preview = std::get_if<Stage::Preview>(&stage.get());
  if (!preview || preview->command.blockedReason) return;
  const FileCommand command = preview->command;
  task_ = service_.run(command, [this](FileActionOutcome outcome) {
    cautions_.clear();
    stage.set(Stage::Result{std::move(outcome)});
  });
  stage.set(Stage::Running{command});
}

void FileActionSession::reset() {
  task_.cancel();
  instruction.set({});
  cautions_.clear();
  stage.set(Stage::Input());
}

void FileActionSession::edit() {
  task_.cancel();
  cautions_.clear();
  stage.set(Stage::Input());
}

void FileActionSession::abandon() {
  task_.cancel();
}

}  // namespace lumeno
