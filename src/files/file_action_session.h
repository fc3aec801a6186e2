#pragma once

#include <QString>
#include <variant>
#include <vector>

#include "base/job.h"
#include "base/observable.h"
#include "files/file_action_service.h"
#include "records/file_command.h"
#include "records/file_selection.h"

namespace lumeno {

/// One file command bar: the items it acts on, the request being typed, and how far it has come. At most one
/// plan or run is under way, and only the latest can change the stage. Main thread.
class FileActionSession {
 public:
  struct Stage {
    struct Preview {
      FileCommand command;
      bool operator==(const Preview&) const = default;
    };
    struct Running {
      FileCommand command;
      bool operator==(const Running&) const = default;
    };
    struct Result {
      FileActionOutcome outcome;
      bool operator==(const Result&) const = default;
    };
    struct Error {
      QString message;
      bool operator==(const Error&) const = default;
    };
    struct Input {
      bool operator==(const Input&) const = default;
    };
    struct Planning {
      bool operator==(const Planning&) const = default;
    };
  };
  using StageValue = std::variant<Stage::Preview, Stage::Running, Stage::Result, Stage::Error, Stage::Input,
                                  Stage::Planning>;

  FileActionSession(FileSelection selection, FileActionService service);
  FileActionSession(const FileActionSession&) = delete;
  FileActionSession& operator=(const FileActionSession&) = delete;

  const FileSelection selection;
  /// The request; the view writes it as the user types. Writing it does not change the stage.
  Observable<QString> instruction;
  Observable<StageValue> stage{StageValue{Stage::Input{}}};

  /// What to be cautious about in the command under review or running; empty in other stages.
  [[nodiscard]] const std::vector<Caution>& cautions() const { return cautions_; }

  /// Plans a command from `instruction`; nothing when that is blank.
  void submit();
  /// Runs the command under review; nothing in other stages or when it is blocked.
  void confirm();
  /// Back to an empty request.
  void reset();
  /// Back to the request as it was typed; what is under way is dropped.
  void edit();
  /// Drops what is under way and changes nothing: the bar is about to go.
  void abandon();

 private:
  FileActionService service_;
  std::vector<Caution> cautions_;
  Job task_;
};

}  // namespace lumeno
