#include "capture/output_services.h"

#include <gtest/gtest.h>

#include "capture/accessibility_authorization.h"
#include "support/fake_accessibility.h"
#include "support/fake_feedback_devices.h"
#include "support/fake_keystroke_sender.h"
#include "support/fake_pasteboard.h"
#include "support/manual_scheduler.h"

using namespace Qt::StringLiterals;

namespace lumeno {
namespace {

using Outcome = SelectionReplacer::Outcome;

class SelectionReplacerTest : public testing::Test {
 protected:
  Job replace(const QString& text, const std::optional<SelectionSource>& source) {
    return replacer.replace(text, source, [this](Outcome told) { outcome = told; });
  }

  ManualScheduler scheduler;
  FakePasteboard pasteboard{scheduler};
  FakeKeystrokeSender keystrokes{scheduler};
  SelectionReplacer replacer{pasteboard, keystrokes, scheduler};
  std::optional<Outcome> outcome;
};

TEST_F(SelectionReplacerTest, PastesAfterFiftyMilliseconds) {
  for (const auto& text : {u"better"_s, u""_s}) {
    keystrokes.pastes = 0;
    const Job job = replace(text, SelectionSource{7, 70, false});
    EXPECT_EQ(pasteboard.string(), text);
    scheduler.advance(49);
    EXPECT_EQ(keystrokes.pastes, 0);
    scheduler.advance(1);
    EXPECT_EQ(keystrokes.pastes, 1);
    EXPECT_EQ(outcome, Outcome::pasted);
    EXPECT_EQ(pasteboard.string(), text);
  }
}

TEST_F(SelectionReplacerTest, PastesOnlyIntoTheWindowOfTheSelection) {
  const SelectionSource source{7, 70, false};
  const struct {
    const char* what;
    std::optional<SelectionSource> source;
    std::optional<uint64_t> windowInFront;
    bool refused;
  } cases[] = {
      {"no source", std::nullopt, 70, false},
      {"another window", source, 71, false},
      {"a terminal", SelectionSource{7, 70, true}, 70, false},
      {"refused", source, 70, true},
  };
  for (const auto& c : cases) {
    outcome.reset();
    keystrokes.refuses = c.refused;
    keystrokes.windowInFront = c.windowInFront;
    const Job job = replace(u"better"_s, c.source);
    EXPECT_EQ(outcome, std::nullopt) << c.what;
    scheduler.advance(50);
    EXPECT_EQ(outcome, Outcome::selectionGone) << c.what;
    EXPECT_EQ(keystrokes.pastes, 0) << c.what;
    EXPECT_EQ(pasteboard.string(), u"better"_s) << c.what;
  }
}

TEST_F(SelectionReplacerTest, DroppedHandlePastesNothing) {
  Job job = replace(u"better"_s, SelectionSource{7, 70, false});
  job.cancel();
  scheduler.advance(1000);
  EXPECT_EQ(keystrokes.pastes, 0);
  EXPECT_EQ(outcome, std::nullopt);
}

TEST(FeedbackService, TapsFirstAndPlaysOnlyWhatIsWanted) {
  const struct {
    bool sound;
    bool haptic;
    QStringList cues;
  } cases[] = {
      {true, true, {u"tap"_s, u"Tink"_s}},
      {true, false, {u"Tink"_s}},
      {false, true, {u"tap"_s}},
      {false, false, {}},
  };
  for (const auto& c : cases) {
    FakeFeedbackDevices devices;
    FeedbackService(devices, devices).play(c.sound, c.haptic);
    EXPECT_EQ(devices.cues, c.cues);
  }
}

TEST(AccessibilityAuthorization, FollowsTheSystemWithinASecond) {
  ManualScheduler scheduler;
  FakeAccessibility accessibility(scheduler);
  accessibility.trusted = false;
  AccessibilityAuthorization authorization(accessibility, scheduler);
  std::vector<bool> told;
  const auto subscription =
      authorization.isTrusted().subscribe([&](bool trusted) { told.push_back(trusted); });

  scheduler.advance(5000);
  accessibility.trusted = true;
  scheduler.advance(1000);
  scheduler.advance(5000);
  accessibility.trusted = false;
  scheduler.advance(1000);
  EXPECT_EQ(told, (std::vector{false, true, false}));
}

TEST(AccessibilityAuthorization, TakesTheAnswerOfARequest) {
  ManualScheduler scheduler;
  FakeAccessibility accessibility(scheduler);
  accessibility.trusted = false;
  AccessibilityAuthorization authorization(accessibility, scheduler);
  std::vector<bool> told;
  const auto subscription =
      authorization.isTrusted().subscribe([&](bool trusted) { told.push_back(trusted); });

  authorization.requestAccess();
  accessibility.grantsOnRequest = true;
  authorization.requestAccess();
  authorization.requestAccess();
  EXPECT_EQ(accessibility.trustRequests, 3);
  EXPECT_EQ(told, (std::vector{false, true}));
}

TEST(AccessibilityAuthorization, StopsAskingWhenItGoes) {
  ManualScheduler scheduler;
  FakeAccessibility accessibility(scheduler);
  { const AccessibilityAuthorization authorization(accessibility, scheduler); }
  EXPECT_EQ(scheduler.pendingCount(), 0U);
}

}  // namespace
}  // namespace lumeno
