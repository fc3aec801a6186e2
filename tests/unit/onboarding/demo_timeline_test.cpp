#include "onboarding/demo_timeline.h"

#include <gtest/gtest.h>

#include <QHash>

#include "support/manual_scheduler.h"
#include "support/print_text.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

/// What the timeline shows from now on, each scenario and phase with the milliseconds it lasts.
QStringList record(DemoTimeline& timeline, ManualScheduler& scheduler, int entries) {
  QStringList result;
  const auto name = [&] {
    return timeline.scenarioName() + u'/' + (timeline.isPausing() ? u"pause"_s : timeline.phaseName());
  };
  QString current = name();
  int lasted = 0;
  while (result.size() < entries) {
    scheduler.advance(1);
    ++lasted;
    if (name() == current) continue;
    result << u"%1 %2"_s.arg(current).arg(lasted);
    current = name();
    lasted = 0;
  }
  return result;
}

TEST(DemoTimeline, GoesThroughEveryScenarioAndBeginsAgain) {
  ManualScheduler scheduler;
  DemoTimeline timeline(scheduler);
  scheduler.advance(5000);
  EXPECT_EQ(timeline.phase(), DemoPhase::idle) << "at rest until it is told to run";
  timeline.setRunning(true);
  const int streaming = 28 * static_cast<int>(timeline.answer.size());
  const int typing = 45 * static_cast<int>(timeline.request.size());
  EXPECT_EQ(record(timeline, scheduler, 20), (QStringList{u"textReply/idle 800"_s,
                                                          u"textReply/selecting 880"_s,
                                                          u"textReply/suggesting 1700"_s,
                                                          u"textReply/streaming %1"_s.arg(streaming),
                                                          u"textReply/result 2400"_s,
                                                          u"textReply/pause 600"_s,
                                                          u"fileAction/idle 600"_s,
                                                          u"fileAction/selecting 600"_s,
                                                          u"fileAction/typing %1"_s.arg(typing),
                                                          u"fileAction/planning 1000"_s,
                                                          u"fileAction/preview 1600"_s,
                                                          u"fileAction/running 900"_s,
                                                          u"fileAction/result 2400"_s,
                                                          u"fileAction/pause 600"_s,
                                                          u"calendar/idle 800"_s,
                                                          u"calendar/selecting 798"_s,
                                                          u"calendar/suggesting 1100"_s,
                                                          u"calendar/result 3000"_s,
                                                          u"calendar/pause 600"_s,
                                                          u"textReply/idle 800"_s}));
}

TEST(DemoTimeline, ProgressReachesTheWholeOfEachText) {
  ManualScheduler scheduler;
  DemoTimeline timeline(scheduler);
  QHash<QString, int> most;
  QObject::connect(&timeline, &DemoTimeline::changed, [&] {
    int& value = most[timeline.scenarioName() + u'/' + timeline.phaseName()];
    value = std::max(value, timeline.progress());
  });
  timeline.setRunning(true);
  scheduler.advance(30'000);
  EXPECT_EQ(most[u"textReply/selecting"_s], timeline.message.split(u' ').size());
  EXPECT_EQ(most[u"textReply/suggesting"_s], 1);
  EXPECT_EQ(most[u"textReply/streaming"_s], timeline.answer.size());
  EXPECT_EQ(most[u"fileAction/selecting"_s], 3);
  EXPECT_EQ(most[u"fileAction/typing"_s], timeline.request.size());
  EXPECT_EQ(most[u"calendar/selecting"_s], timeline.invitation.split(u' ').size());
}

TEST(DemoTimeline, StandsStillWhileNobodySeesIt) {
  ManualScheduler scheduler;
  DemoTimeline timeline(scheduler);
  timeline.setRunning(true);
  scheduler.advance(1000);
  EXPECT_EQ(timeline.phase(), DemoPhase::selecting);
  timeline.setRunning(false);
  EXPECT_EQ(scheduler.pendingCount(), 0u);
  scheduler.advance(60'000);
  EXPECT_EQ(timeline.phase(), DemoPhase::selecting);
  timeline.setRunning(true);
  scheduler.advance(900);
  EXPECT_EQ(timeline.phase(), DemoPhase::suggesting);
}

TEST(DemoTimeline, UnderReducedMotionOnlyTheResultsFollowOneAnother) {
  ManualScheduler scheduler;
  DemoTimeline timeline(scheduler);
  timeline.setRunning(true);
  scheduler.advance(1000);
  timeline.setReduceMotion(true);
  EXPECT_EQ(record(timeline, scheduler, 4),
            (QStringList{u"textReply/result 6000"_s, u"fileAction/result 6000"_s, u"calendar/result 6000"_s,
                         u"textReply/result 6000"_s}));
  timeline.setReduceMotion(false);
  EXPECT_EQ(timeline.phase(), DemoPhase::idle);
}

}  // namespace
}  // namespace lumeno
