#pragma once

#include <QObject>
#include <QString>
#include <chrono>
#include <vector>

#include "base/job.h"
#include "base/scheduler.h"

namespace lumeno {

enum class DemoScenario { textReply, fileAction, calendar };
enum class DemoPhase { idle, selecting, suggesting, typing, planning, streaming, preview, running, result };

[[nodiscard]] QString demoScenarioName(DemoScenario scenario);
[[nodiscard]] QString demoPhaseName(DemoPhase phase);

/// The clock of the live demo: one scenario after the other, each through its phases, for ever. Under reduced
/// motion only the results follow one another. It waits for nothing while it is not running. Main thread.
class DemoTimeline : public QObject {
  Q_OBJECT
  Q_PROPERTY(QString scenario READ scenarioName NOTIFY changed)
  Q_PROPERTY(QString phase READ phaseName NOTIFY changed)
  Q_PROPERTY(int progress READ progress NOTIFY changed)
  Q_PROPERTY(bool pausing READ isPausing NOTIFY changed)
  Q_PROPERTY(QString message MEMBER message CONSTANT)
  Q_PROPERTY(QString answer MEMBER answer CONSTANT)
  Q_PROPERTY(QString request MEMBER request CONSTANT)
  Q_PROPERTY(QString invitation MEMBER invitation CONSTANT)

 public:
  /// The scheduler must outlive the timeline. It starts at rest, at the beginning of the first scenario.
  explicit DemoTimeline(Scheduler& scheduler);

  /// Runs on from where it stood, or stands still.
  void setRunning(bool running);
  /// A change begins the scenario anew.
  void setReduceMotion(bool reduceMotion);

  [[nodiscard]] DemoScenario scenario() const { return scenario_; }
  [[nodiscard]] DemoPhase phase() const { return current().phase; }
  [[nodiscard]] QString scenarioName() const { return demoScenarioName(scenario()); }
  [[nodiscard]] QString phaseName() const { return demoPhaseName(phase()); }
  /// How far the phase has come: words (text, calendar) or files selected, characters typed or streamed,
  /// 1 as soon as the first suggestion is lit.
  [[nodiscard]] int progress() const { return progress_; }
  /// The moment between a result and the next scenario.
  [[nodiscard]] bool isPausing() const { return current().isPause; }

  const QString message;     ///< what is selected in the text scenario
  const QString answer;      ///< what is streamed there
  const QString request;     ///< what is typed in the file scenario
  const QString invitation;  ///< what is selected in the calendar scenario

 Q_SIGNALS:
  void changed();

 private:
  /// A phase, or a part of one, whose progress counts from `from` to `to`, each step lasting `each`.
  struct Beat {
    DemoPhase phase;
    std::chrono::milliseconds each;
    int from = 0;
    int to = 0;
    bool isPause = false;
  };

  [[nodiscard]] std::vector<Beat> beats() const;
  [[nodiscard]] const Beat& current() const { return beats_[beat_]; }
  void begin(DemoScenario scenario);
  void advance();
  void wait();

  Scheduler& scheduler_;
  bool isRunning_ = false;
  bool reduceMotion_ = false;
  DemoScenario scenario_ = DemoScenario::textReply;
  std::vector<Beat> beats_;
  size_t beat_ = 0;
  int progress_ = 0;
  Job next_;
};

}  // namespace lumeno
