#include "files/file_action_service.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <csignal>
#include <memory>
#include <utility>

#include "base/aside.h"
#include "base/text.h"
#include "files/planning/planning.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// How long the preview waits for the cautions.
constexpr auto cautionDeadline = 500ms;

/// Threads for what may hang in the file system. Never taken down: a thread that hangs there cannot be ended,
/// and the program must be able to quit all the same. Few, since each may be lost for long.
QThreadPool& fileSystemThreads() {
  static QThreadPool* const pool = [] {
    auto* const threads = new QThreadPool;
    threads->setMaxThreadCount(2);
    return threads;
  }();
  return *pool;
}

bool isThere(const QString& path) {
  struct stat status;
  return lstat(QFile::encodeName(path).constData(), &status) == 0;
}

/// One plan, from the availability check to its end. It lives in its job; callbacks hold it only weakly, and
/// for the time of a call, so that the job may be dropped from inside `done`.
class Plan : public std::enable_shared_from_this<Plan> {
 public:
  using Answer = std::variant<CommandPlan, QString>;

  Plan(std::unique_ptr<AIService> service, Scheduler& scheduler, QString instruction, FileSelection selection,
       std::function<void(Answer)> done)
      : service_(std::move(service)),
        scheduler_(scheduler),
        instruction_(std::move(instruction)),
        selection_(std::move(selection)),
        done_(std::move(done)) {}

 private:
  /// A callback that reaches this plan only while its job is held. (Stands first: its type is deduced.)
  template <typename Step>
  auto whileWanted(Step step) {
    return [weak = weak_from_this(), step](auto... answer) {
      const auto plan = weak.lock();
      if (plan && !plan->isStopped_) step(*plan, std::move(answer)...);
    };
  }

 public:
  void start() {
    request_ = service_->isAvailable(whileWanted([](Plan& plan, bool available) {
      if (available) {
        plan.ask();
      } else {
        plan.finish(FileActionService::message(FileActionService::PlanError::backendUnavailable));
      }
    }));
  }

  void stop() {
    isStopped_ = true;
    request_.cancel();
    deadline_.cancel();
  }

 private:
  void ask() {
    request_ = service_->complete(planPrompt(instruction_, selection_),
                                  whileWanted([](Plan& plan, const std::variant<QString, AIFailure>& answer) {
                                    if (const auto* failure = std::get_if<AIFailure>(&answer)) {
                                      plan.finish(failure->message);
                                    } else {
                                      plan.screen(std::get<QString>(answer));
                                    }
                                  }));
  }

  /// Aside, since an answer can be long.
  void screen(const QString& answer) {
    FileCommand command{instruction_, {}, selection_.parentDirectory(), {}};
    request_ = runAside(
        *QThreadPool::globalInstance(),
        [answer, command]() mutable {
          command.command = sanitizeCommand(answer);
          command.blockedReason = screenCommand(command.command);
          return command;
        },
        whileWanted([](Plan& plan, const FileCommand& screened) {
          if (screened.command.isEmpty()) {
            plan.finish(FileActionService::message(FileActionService::PlanError::emptyResponse));
          } else if (screened.blockedReason) {
            plan.finish(CommandPlan{screened, {}});
          } else {
            plan.judge(screened);
          }
        }));
  }

  void judge(const FileCommand& command) {
    // The rules work on text: of a folder whose name is none they would ask for another one.
    const auto folder = text::decodedUtf8(localPath(command.workingDirectory));
    if (!folder) {
      return finish(CommandPlan{command, {{u"What this command touches could not be checked."_s}}});
    }
    const CommandPlan unchecked{command, {{u"What this command touches could not be checked in time."_s}}};
    deadline_ =
        scheduler_.after(cautionDeadline, whileWanted([unchecked](Plan& plan) { plan.finish(unchecked); }));
    request_ = runAside(
        fileSystemThreads(),
        [text = command.command, folder = *folder] {
          return cautions(text, {folder, QDir::homePath(), isThere});
        },
        whileWanted([command](Plan& plan, std::vector<Caution> found) {
          plan.finish(CommandPlan{command, std::move(found)});
        }));
  }

  void finish(Answer answer) {
    stop();
    done_(std::move(answer));
  }

  const std::unique_ptr<AIService> service_;
  Scheduler& scheduler_;
  const QString instruction_;
  const FileSelection selection_;
  const std::function<void(Answer)> done_;
  bool isStopped_ = false;
  Job request_;
  Job deadline_;
};

/// Large outputs take a while to decode: not for the main thread.
FileActionOutcome outcomeOf(const QString& command, const CommandEnd& end, std::chrono::seconds limit) {
  FileActionOutcome outcome{
      command, text::decodedUtf8(end.standardOutput).value_or(QString()), {}, end.exitCode};
  switch (end.kind) {
    case CommandEnd::Kind::exited:
      outcome.stderrText = text::decodedUtf8(end.standardError).value_or(QString());
      return outcome;
    case CommandEnd::Kind::notStarted:
      outcome.stderrText = u"Couldn’t start the command: "_s + end.problem;
      outcome.exitCode = -1;
      return outcome;
    case CommandEnd::Kind::timedOut:
      outcome.stderrText = u"Command timed out after %1s and was stopped."_s.arg(limit.count());
      break;
    case CommandEnd::Kind::stopped:
      outcome.stderrText = end.problem;
      break;
    case CommandEnd::Kind::tookTooMuch:
      outcome.stderrText = u"Command was stopped: it wrote more output than memory can hold."_s;
      break;
  }
  outcome.wasStopped = true;
  // It may have left with success when it was told to stop, but it did not do what it was asked for.
  if (outcome.exitCode == 0) outcome.exitCode = 128 + SIGTERM;
  return outcome;
}

/// What a run is doing: the command, and then the decoding of what it wrote.
struct RunSteps {
  Job command;
  Job decoding;
};

}  // namespace

QString FileActionService::message(PlanError error) {
  switch (error) {
    case PlanError::backendUnavailable:
      return u"The AI backend isn't available. Start Ollama or enable Apple Intelligence in the menu."_s;
    case PlanError::emptyResponse:
      return u"The model didn't return a command. Try rephrasing the request."_s;
  }
  return {};
}

FileActionService::FileActionService(AIServiceFactory services, CommandShell& shell, Scheduler& scheduler,
                                     AIBackend backend, const QString& ollamaModel,
                                     std::chrono::seconds limit)
    : services_(std::move(services)),
      shell_(&shell),
      scheduler_(&scheduler),
      backend_(backend),
      ollamaModel_(ollamaModel),
      limit_(limit) {}

Job FileActionService::plan(const QString& instruction, const FileSelection& selection,
                            std::function<void(std::variant<CommandPlan, QString>)> done) const {
  const auto plan = std::make_shared<Plan>(services_(backend_, ollamaModel_), *scheduler_, instruction,
                                           selection, std::move(done));
  plan->start();
  return Job([plan] { plan->stop(); });
}

Job FileActionService::run(const FileCommand& command, std::function<void(FileActionOutcome)> done) const {
  const auto steps = std::make_shared<RunSteps>();
  steps->command =
      shell_->run(command.command, localPath(command.workingDirectory), limit_,
                  [weak = std::weak_ptr(steps), text = command.command, limit = limit_,
                   done = std::move(done)](CommandEnd end) {
                    const auto current = weak.lock();
                    if (!current) return;
                    current->decoding = runAside(
                        *QThreadPool::globalInstance(),
                        [text, limit, end = std::move(end)] { return outcomeOf(text, end, limit); }, done);
                  });
  return Job([steps] { *steps = {}; });
}

}  // namespace lumeno
