#include "onboarding/demo_timeline.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

namespace {

constexpr int demoFileCount = 3;
constexpr milliseconds resultTime{2400};
constexpr milliseconds eventTime{3000};  // there is more to read
constexpr milliseconds stillTime{6000};
constexpr milliseconds pauseTime{600};

int wordCount(const QString& text) {
  return static_cast<int>(text.count(u' ')) + 1;
}

DemoScenario after(DemoScenario scenario) {
  switch (scenario) {
    case DemoScenario::textReply:
      return DemoScenario::fileAction;
    case DemoScenario::fileAction:
      return DemoScenario::calendar;
    case DemoScenario::calendar:
      return DemoScenario::textReply;
  }
  Q_UNREACHABLE();
}

}  // namespace

QString demoScenarioName(DemoScenario scenario) {
  switch (scenario) {
    case DemoScenario::textReply:
      return u"textReply"_s;
    case DemoScenario::fileAction:
      return u"fileAction"_s;
    case DemoScenario::calendar:
      return u"calendar"_s;
  }
  Q_UNREACHABLE();
}

QString demoPhaseName(DemoPhase phase) {
  switch (phase) {
    case DemoPhase::idle:
      return u"idle"_s;
    case DemoPhase::selecting:
      return u"selecting"_s;
    case DemoPhase::suggesting:
      return u"suggesting"_s;
    case DemoPhase::typing:
      return u"typing"_s;
    case DemoPhase::planning:
      return u"planning"_s;
    case DemoPhase::streaming:
      return u"streaming"_s;
    case DemoPhase::preview:
      return u"preview"_s;
    case DemoPhase::running:
      return u"running"_s;
    case DemoPhase::result:
      return u"result"_s;
  }
  Q_UNREACHABLE();
}

DemoTimeline::DemoTimeline(Scheduler& scheduler)
    : message(
          u"hey thanks for getting back to me — i think we can def make the friday deadline if we sync "
          "monday morning"_s),
      answer(
          u"Thank you for getting back to me. I'm confident we can meet Friday's deadline if we sync on "
          "Monday morning."_s),
      request(u"Convert these to PNG"_s),
      invitation(u"lunch with Mira next Thursday at 1pm"_s),
      scheduler_(scheduler) {
  begin(DemoScenario::textReply);
}

void DemoTimeline::setRunning(bool running) {
  if (running == isRunning_) return;
  isRunning_ = running;
  wait();
}

void DemoTimeline::setReduceMotion(bool reduceMotion) {
  if (reduceMotion == reduceMotion_) return;
  reduceMotion_ = reduceMotion;
  begin(scenario_);
}

std::vector<DemoTimeline::Beat> DemoTimeline::beats() const {
  if (reduceMotion_) return {{DemoPhase::result, stillTime}};
  const auto pause = [] { return Beat{.phase = DemoPhase::result, .each = pauseTime, .isPause = true}; };
  const auto counting = [](DemoPhase phase, milliseconds each, int count) {
    return Beat{.phase = phase, .each = each, .from = 1, .to = count};
  };
  switch (scenario_) {
    case DemoScenario::textReply: {
      const int words = wordCount(message);
      return {{DemoPhase::idle, milliseconds(800)},
              counting(DemoPhase::selecting, milliseconds(900 / words), words),
              {DemoPhase::suggesting, milliseconds(1200)},
              counting(DemoPhase::suggesting, milliseconds(500), 1),
              counting(DemoPhase::streaming, milliseconds(28), static_cast<int>(answer.size())),
              {DemoPhase::result, resultTime},
              pause()};
    }
    case DemoScenario::fileAction:
      return {{DemoPhase::idle, milliseconds(600)},
              counting(DemoPhase::selecting, milliseconds(600 / demoFileCount), demoFileCount),
              counting(DemoPhase::typing, milliseconds(45), static_cast<int>(request.size())),
              {DemoPhase::planning, milliseconds(1000)},
              {DemoPhase::preview, milliseconds(1600)},
              {DemoPhase::running, milliseconds(900)},
              {DemoPhase::result, resultTime},
              pause()};
    case DemoScenario::calendar: {
      const int words = wordCount(invitation);
      return {{DemoPhase::idle, milliseconds(800)},
              counting(DemoPhase::selecting, milliseconds(800 / words), words),
              {DemoPhase::suggesting, milliseconds(1100)},
              {DemoPhase::result, eventTime},
              pause()};
    }
  }
  Q_UNREACHABLE();
}

void DemoTimeline::begin(DemoScenario scenario) {
  scenario_ = scenario;
  beats_ = beats();
  beat_ = 0;
  progress_ = current().from;
  wait();
  Q_EMIT changed();
}

void DemoTimeline::advance() {
  if (progress_ < current().to) {
    ++progress_;
  } else if (beat_ + 1 < beats_.size()) {
    progress_ = beats_[++beat_].from;
  } else {
    return begin(after(scenario_));
  }
  wait();
  Q_EMIT changed();
}

void DemoTimeline::wait() {
  next_ = isRunning_ ? scheduler_.after(current().each, [this] { advance(); }) : Job();
}

}  // namespace lumeno
