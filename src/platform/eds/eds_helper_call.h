#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QProcess>
#include <functional>
#include <variant>

#include "base/job.h"
#include "base/scheduler.h"

namespace lumeno {

/// One run of the helper program: a JSON object to its input, one from its output. Main thread, which is
/// never made to wait. The run outlives its asker where it must, also the program itself.
class EdsHelperCall final : public QObject {
  Q_OBJECT
 public:
  enum class Problem {
    unusable,  ///< it could not be started, died, or answered nothing that makes sense
    timedOut,  ///< it was ended at its deadline
  };
  enum class WhenDropped {
    end,
    finish,  ///< it runs to its end, or its deadline, and nobody hears of it
  };
  using Answer = std::variant<QJsonObject, Problem>;

  struct Question {
    QString program;
    QJsonObject request;
    std::chrono::milliseconds deadline;
    WhenDropped whenDropped = WhenDropped::end;
  };

  /// The scheduler must outlive the event loop. `done` is not called before this returns.
  [[nodiscard]] static Job ask(const Question& question, Scheduler& scheduler,
                               std::function<void(const Answer&)> done);

 private:
  EdsHelperCall(const Question& question, Scheduler& scheduler, std::function<void(const Answer&)> done);
  void read();
  void ended(int exitCode, QProcess::ExitStatus status);
  void drop();
  void report(const Answer& answer);

  const WhenDropped whenDropped_;
  std::function<void(const Answer&)> done_;
  QProcess process_;
  QByteArray output_;
  Job deadline_;
};

}  // namespace lumeno
