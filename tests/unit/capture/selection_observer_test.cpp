#include "capture/selection_observer.h"

#include <gtest/gtest.h>

#include "support/fake_accessibility.h"
#include "support/fake_keystroke_sender.h"
#include "support/fake_pasteboard.h"
#include "support/fake_selection_buffer.h"
#include "support/fake_workspace.h"
#include "support/manual_scheduler.h"

using namespace Qt::StringLiterals;

namespace lumeno {
namespace {

const RunningApplication notes{u"org.example.Notes"_s, u"Notes"_s, 7, 70, false};
const RunningApplication editor{u"com.microsoft.VSCode"_s, u"Editor"_s, 8, 80, false};
const RunningApplication mail{u"com.apple.mail"_s, u"Mail"_s, 9, 90, false};
const RunningApplication ourselves{u"org.lumeno.Lumeno"_s, u"Lumeno"_s, 1, 10, false};
constexpr Rect place{100, 200, 50, 14};
constexpr Rect elsewhere{100, 600, 50, 14};
constexpr int tick = 500;

class SelectionObserverTest : public testing::Test {
 protected:
  SelectionObserverTest() {
    workspace.frontmost = notes;
    accessibility.focused = element;
    element->setRangeBounds(place);
    subscription = observer.selection().subscribe([this](const std::optional<Selection>& value) {
      if (subscription) published.push_back(value);
    });
  }

  void select(const QString& text, const Rect& bounds = place) {
    accessibility.beginGesture();
    element->text = text;
    element->setRangeBounds(bounds);
  }
  Job capture() {
    return observer.captureSelection([this](std::optional<Selection> selection) {
      ++captures;
      captured = std::move(selection);
    });
  }
  static Selection inNotes(const QString& text, std::optional<Rect> bounds = place) {
    return {text, u"Notes"_s, bounds};
  }

  ManualScheduler scheduler;
  FakeAccessibility accessibility{scheduler};
  FakeWorkspace workspace;
  FakePasteboard pasteboard{scheduler};
  FakeKeystrokeSender keystrokes{scheduler};
  FakeSelectionBuffer buffer{scheduler};
  ClipboardSelectionCapture clipboardCapture{pasteboard, keystrokes, buffer, scheduler};
  SelectionObserver observer{accessibility, workspace, scheduler, clipboardCapture};
  std::shared_ptr<FakeElement> element = std::make_shared<FakeElement>();
  std::vector<std::optional<Selection>> published;
  Subscription subscription;
  int captures = 0;
  std::optional<Selection> captured;
};

TEST_F(SelectionObserverTest, PublishesRealChangesOnce) {
  observer.start();
  scheduler.advance(tick);
  EXPECT_TRUE(published.empty());

  select(u"word"_s);
  scheduler.advance(tick);
  accessibility.stir();
  scheduler.advance(3 * tick);
  ASSERT_EQ(published.size(), 1U);
  EXPECT_EQ(published.back(), inNotes(u"word"_s));

  select(u"word"_s, elsewhere);
  scheduler.advance(tick);
  ASSERT_EQ(published.size(), 2U);
  EXPECT_EQ(published.back(), inNotes(u"word"_s, elsewhere));

  select(u"  \n"_s);
  scheduler.advance(tick);
  accessibility.stir();
  scheduler.advance(tick);
  ASSERT_EQ(published.size(), 3U);
  EXPECT_EQ(published.back(), std::nullopt);
}

TEST_F(SelectionObserverTest, SameTextElsewhereIsPublishedOnlyAfterAGesture) {
  observer.start();
  select(u"word"_s);
  scheduler.advance(tick);
  element->setRangeBounds(elsewhere);
  accessibility.stir();
  scheduler.advance(tick);
  EXPECT_EQ(published.size(), 1U);
  accessibility.beginGesture();
  scheduler.advance(tick);
  EXPECT_EQ(published.size(), 2U);
}

TEST_F(SelectionObserverTest, TheSameSelectionMadeAnewIsPublishedAgain) {
  observer.start();
  select(u"word"_s);
  scheduler.advance(tick);
  accessibility.beginGesture();  // a click that left the selection alone
  scheduler.advance(tick);
  EXPECT_EQ(published.size(), 1U);
  accessibility.beginGesture();
  ++accessibility.reselection;
  scheduler.advance(2 * tick);
  EXPECT_EQ(published.size(), 2U);
}

TEST_F(SelectionObserverTest, BusyApplicationHasNotSaidThatNothingIsSelected) {
  observer.start();
  select(u"word"_s);
  scheduler.advance(tick);
  ASSERT_EQ(published.size(), 1U);
  accessibility.isAnswering = false;
  accessibility.focused = nullptr;
  accessibility.stir();
  scheduler.advance(2 * tick);
  EXPECT_EQ(published.size(), 1U);
  accessibility.isAnswering = true;
  scheduler.advance(tick);
  ASSERT_EQ(published.size(), 2U);
  EXPECT_EQ(published.back(), std::nullopt);
}

TEST_F(SelectionObserverTest, NothingIsReadWhileNothingHappens) {
  observer.start();
  scheduler.advance(tick);
  EXPECT_EQ(accessibility.reads, 1);
  scheduler.advance(20 * tick);
  EXPECT_EQ(accessibility.reads, 1);
  accessibility.stir();
  scheduler.advance(20 * tick);
  EXPECT_EQ(accessibility.reads, 2);
}

TEST_F(SelectionObserverTest, WhatHappensDuringAReadIsReadAgain) {
  accessibility.readTime = std::chrono::milliseconds(100);
  observer.start();
  scheduler.advance(50);
  select(u"word"_s);  // after the worker has looked
  scheduler.advance(50);
  EXPECT_TRUE(published.empty());
  scheduler.advance(tick);
  ASSERT_EQ(published.size(), 1U);
  EXPECT_EQ(published.back(), inNotes(u"word"_s));
}

TEST_F(SelectionObserverTest, NotificationsAreAnsweredByOneReadAtATime) {
  accessibility.readTime = std::chrono::milliseconds(100);
  observer.start();
  scheduler.advance(100);
  ASSERT_EQ(accessibility.reads, 1);
  for (int i = 0; i < 10; ++i) {
    accessibility.notify(7, AccessibilityNotification::selectedTextChanged);
    accessibility.notify(7, AccessibilityNotification::focusedElementChanged);
    scheduler.advance(9);
  }
  EXPECT_EQ(accessibility.reads, 2);
  scheduler.advance(10);
  EXPECT_EQ(accessibility.reads, 3) << "one more for all that came meanwhile";
  scheduler.advance(200);
  EXPECT_EQ(accessibility.reads, 3);
  EXPECT_EQ(accessibility.mostInFlight, 1);
}

TEST_F(SelectionObserverTest, HalfMadeSelectionsAreNotRead) {
  observer.start();
  scheduler.advance(0);
  accessibility.gestureInProgress = true;
  select(u"wo"_s);
  accessibility.notify(7, AccessibilityNotification::selectedTextChanged);
  scheduler.advance(2 * tick);
  EXPECT_EQ(accessibility.reads, 1);

  element->text = u"word"_s;
  accessibility.gestureInProgress = false;
  accessibility.notify(7, AccessibilityNotification::selectedTextChanged);
  scheduler.advance(0);
  ASSERT_EQ(published.size(), 1U);
  EXPECT_EQ(published.back(), inNotes(u"word"_s));
}

TEST_F(SelectionObserverTest, TickCatchesUpWhenTheEndOfAGestureIsNotTold) {
  observer.start();
  scheduler.advance(0);
  accessibility.gestureInProgress = true;
  select(u"word"_s);
  scheduler.advance(tick);
  accessibility.gestureInProgress = false;
  scheduler.advance(tick);
  EXPECT_EQ(published.size(), 1U);
}

TEST_F(SelectionObserverTest, GestureBegunDuringAReadSpoilsItsAnswer) {
  accessibility.readTime = std::chrono::milliseconds(100);
  select(u"wo"_s);
  observer.start();
  scheduler.advance(50);
  accessibility.gestureInProgress = true;
  accessibility.beginGesture();
  scheduler.advance(50);
  EXPECT_TRUE(published.empty());
}

TEST_F(SelectionObserverTest, AnswersForAnApplicationNoLongerInFrontAreDropped) {
  const RunningApplication otherWindow{notes.bundleIdentifier, notes.localizedName, 7, 71, false};
  for (const auto& next : {editor, otherWindow}) {
    SCOPED_TRACE(next.window);
    workspace.frontmost = notes;
    accessibility.readTime = std::chrono::milliseconds(100);
    element->text = u"old"_s;
    accessibility.stir();
    observer.start();
    scheduler.advance(50);
    element->text = u"new"_s;
    workspace.activate(next);
    scheduler.advance(200);
    ASSERT_EQ(published.size(), 1U);
    EXPECT_EQ(published.back(), (Selection{u"new"_s, *next.localizedName, place}));
    EXPECT_EQ(observer.lastSource(), (SelectionSource{next.processIdentifier, next.window, false}));
    observer.stop();
    published.clear();
  }
}

TEST_F(SelectionObserverTest, StopDropsALateAnswerAndWithdrawsOnce) {
  select(u"word"_s);
  observer.start();
  scheduler.advance(0);
  ASSERT_EQ(published.size(), 1U);

  accessibility.readTime = std::chrono::milliseconds(100);
  select(u"late"_s);
  accessibility.notify(7, AccessibilityNotification::selectedTextChanged);
  scheduler.advance(50);
  observer.stop();
  observer.stop();
  ASSERT_EQ(published.size(), 2U);
  EXPECT_EQ(published.back(), std::nullopt);

  workspace.activate(editor);
  scheduler.advance(10 * tick);
  EXPECT_EQ(published.size(), 2U);
  EXPECT_EQ(scheduler.pendingCount(), 0U);
  EXPECT_FALSE(workspace.hasListeners());
  EXPECT_TRUE(accessibility.observedProcesses().empty());
}

TEST_F(SelectionObserverTest, StartTwiceListensOnceAndStartAfterStopReadsAgain) {
  select(u"word"_s);
  observer.start();
  observer.start();
  scheduler.advance(0);
  EXPECT_EQ(scheduler.pendingCount(), 1U);
  EXPECT_EQ(accessibility.observedProcesses(), std::vector{ProcessId(7)});
  observer.stop();
  observer.start();
  scheduler.advance(0);
  EXPECT_EQ(published.size(), 3U);
}

TEST_F(SelectionObserverTest, OurOwnWindowChangesNothing) {
  select(u"word"_s);
  observer.start();
  scheduler.advance(0);
  workspace.activate(ourselves);
  select(u""_s);
  scheduler.advance(4 * tick);
  EXPECT_EQ(accessibility.reads, 1);
  EXPECT_EQ(accessibility.observedProcesses(), std::vector{ProcessId(7)});
  EXPECT_EQ(observer.selection().get(), inNotes(u"word"_s));

  const Job job = capture();
  scheduler.advance(tick);
  EXPECT_EQ(captures, 1);
  EXPECT_EQ(captured, std::nullopt);
  EXPECT_EQ(accessibility.reads, 1);
}

TEST_F(SelectionObserverTest, NothingIsReadWithoutTrust) {
  accessibility.trusted = false;
  select(u"word"_s);
  observer.start();
  const Job job = capture();
  EXPECT_EQ(captures, 0) << "not before the call returns";
  scheduler.advance(4 * tick);
  EXPECT_EQ(captures, 1);
  EXPECT_EQ(captured, std::nullopt);
  EXPECT_EQ(accessibility.reads, 0);
  EXPECT_EQ(accessibility.observeCalls, 0);
}

TEST_F(SelectionObserverTest, MissingApplicationIsReadUnderAGeneralName) {
  workspace.frontmost.reset();
  select(u"word"_s);
  observer.start();
  scheduler.advance(0);
  ASSERT_EQ(published.size(), 1U);
  EXPECT_EQ(published.back()->sourceApp, u"the active app"_s);

  // Without an identifier of our own it cannot be told from us on demand.
  workspace.own.reset();
  SelectionObserver nameless(accessibility, workspace, scheduler, clipboardCapture);
  bool told = false;
  const Job job = nameless.captureSelection([&](const std::optional<Selection>& selection) {
    told = true;
    EXPECT_EQ(selection, std::nullopt);
  });
  scheduler.advance(0);
  EXPECT_TRUE(told);
}

TEST_F(SelectionObserverTest, ListensToTheFocusedElementOfTheProcessInFront) {
  observer.start();
  scheduler.advance(0);
  EXPECT_EQ(accessibility.watchedElements(), std::vector<ElementPtr>{element});

  const auto second = FakeElement::withText(u"two"_s);
  accessibility.focused = second;
  accessibility.notify(7, AccessibilityNotification::focusedElementChanged);
  scheduler.advance(0);
  EXPECT_EQ(accessibility.watchedElements(), std::vector<ElementPtr>{second});
  EXPECT_EQ(published.back()->text, u"two"_s);

  accessibility.focused = nullptr;
  accessibility.stir();
  scheduler.advance(tick);
  EXPECT_TRUE(accessibility.watchedElements().empty());
  EXPECT_EQ(published.back(), std::nullopt);

  accessibility.focused = element;
  workspace.activate(editor);
  scheduler.advance(0);
  EXPECT_EQ(accessibility.observedProcesses(), std::vector{ProcessId(8)});
  EXPECT_EQ(accessibility.watchedElements(), std::vector<ElementPtr>{element});
}

TEST_F(SelectionObserverTest, RefusedElementIsNotAskedAgainUntilTheFocusMoves) {
  accessibility.refusesElements = true;
  observer.start();
  scheduler.advance(0);
  for (int i = 0; i < 3; ++i) {
    accessibility.stir();
    scheduler.advance(tick);
  }
  EXPECT_EQ(accessibility.elementRegistrations, 1);
  accessibility.focused = std::make_shared<FakeElement>();
  accessibility.stir();
  scheduler.advance(tick);
  EXPECT_EQ(accessibility.elementRegistrations, 2);
}

TEST_F(SelectionObserverTest, RefusedProcessIsPolledAndTriedAgain) {
  accessibility.refusesToObserve = true;
  select(u"word"_s);
  observer.start();
  scheduler.advance(tick);
  EXPECT_EQ(published.size(), 1U);
  accessibility.refusesToObserve = false;
  scheduler.advance(tick);
  EXPECT_EQ(accessibility.observedProcesses(), std::vector{ProcessId(7)});
}

TEST_F(SelectionObserverTest, MailIsSearchedFromTheFocusThenFromTheApplication) {
  const auto root = std::make_shared<FakeElement>();
  root->childElements = {FakeElement::withText(u"in window"_s)};
  const auto inFocus = FakeElement::withText(u"in focus"_s);
  const struct {
    RunningApplication application;
    std::vector<ElementPtr> children;
    std::optional<QString> expected;
  } cases[] = {
      {notes, {inFocus}, std::nullopt},
      {mail, {inFocus}, u"in focus"_s},
      {mail, {}, u"in window"_s},
  };
  for (const auto& c : cases) {
    workspace.frontmost = c.application;
    accessibility.applications = {{c.application.processIdentifier, root}};
    element->childElements = c.children;
    const auto textOf = [](const std::optional<Selection>& selection) {
      return selection ? std::optional(selection->text) : std::nullopt;
    };
    observer.start();
    scheduler.advance(0);
    EXPECT_EQ(textOf(observer.selection().get()), c.expected);
    observer.stop();

    const Job job = capture();
    scheduler.advance(1000);
    EXPECT_EQ(textOf(captured), c.expected);
  }
}

TEST_F(SelectionObserverTest, CaptureReadsTheFocusedElementWithoutPublishing) {
  select(u"word"_s);
  const Job job = capture();
  EXPECT_EQ(captures, 0) << "not before the call returns";
  scheduler.advance(0);
  EXPECT_EQ(captured, inNotes(u"word"_s));
  EXPECT_EQ(observer.lastSource(), (SelectionSource{7, 70, false}));

  observer.start();
  scheduler.advance(2 * tick);
  EXPECT_TRUE(published.empty());
  EXPECT_EQ(keystrokes.copies, 0);
}

TEST_F(SelectionObserverTest, CaptureOfAClipboardFirstApplicationNeverAsksForItsText) {
  workspace.frontmost = editor;
  element->text = u"hidden"_s;
  element->setFrame({0, 0, 800, 600});
  buffer.text = u"offered"_s;
  const Job job = capture();
  scheduler.advance(0);
  EXPECT_EQ(captured, (Selection{u"offered"_s, u"Editor"_s, Rect{0, 0, 800, 600}}));
  EXPECT_EQ(element->textReads, 0);

  observer.start();
  scheduler.advance(0);
  EXPECT_GT(element->textReads, 0) << "polls do ask";
}

TEST_F(SelectionObserverTest, CaptureFallsBackToACopy) {
  select(u" \n"_s);
  keystrokes.onCopy = [this] { pasteboard.put({{"text/plain", "copied"}}); };
  const Job job = capture();
  scheduler.advance(15);
  EXPECT_EQ(captured, inNotes(u"copied"_s, std::nullopt));

  accessibility.focused = nullptr;
  const Job again = capture();
  scheduler.advance(15);
  EXPECT_EQ(captures, 2);
  EXPECT_EQ(captured, inNotes(u"copied"_s, std::nullopt));
}

TEST_F(SelectionObserverTest, CopyKeyIsNotSentIntoTerminalsPasswordsAndFileManagers) {
  RunningApplication terminal = notes;
  terminal.isTerminal = true;
  RunningApplication files = notes;
  files.bundleIdentifier = u"com.apple.finder"_s;
  const struct {
    RunningApplication application;
    ElementRole role;
    bool takesOffered;
  } cases[] = {
      {terminal, ElementRole::other, true},  {notes, ElementRole::terminal, true},
      {notes, ElementRole::password, false}, {files, ElementRole::other, true},
      {files, ElementRole::terminal, true},
  };
  for (const auto& c : cases) {
    workspace.frontmost = c.application;
    element->elementRole = c.role;
    for (const bool offered : {false, true}) {
      buffer.text = offered ? std::optional(u"offered"_s) : std::nullopt;
      const Job job = capture();
      scheduler.advance(1000);
      EXPECT_EQ(captured.has_value(), offered && c.takesOffered);
    }
    if (c.takesOffered) {
      const bool isTerminal = c.application.isTerminal || c.role == ElementRole::terminal;
      EXPECT_EQ(observer.lastSource()->isTerminal, isTerminal);
    }
  }
  EXPECT_EQ(keystrokes.copies, 0);
}

TEST_F(SelectionObserverTest, PollAfterACaptureDoesNotPublishTheSameSelectionSeenOtherwise) {
  observer.start();
  scheduler.advance(0);
  accessibility.beginGesture();
  buffer.text = u"two\u00A0paragraphs\n\nhere"_s;
  const Job job = capture();
  scheduler.advance(0);
  ASSERT_TRUE(captured);
  ASSERT_EQ(captured->screenBounds, std::nullopt);

  element->text = u"two paragraphs\nhere\uFFFC"_s;
  accessibility.stir();
  scheduler.advance(2 * tick);
  EXPECT_TRUE(published.empty());

  for (const auto& other : {u"two paragraphs"_s, u"two paragraphs here now"_s, u"other"_s}) {
    element->text = other;
    accessibility.stir();
    scheduler.advance(tick);
    EXPECT_EQ(observer.selection().get()->text, other);
  }
}

TEST_F(SelectionObserverTest, PollsWaitForACaptureAndCatchUp) {
  select(u"old"_s);
  observer.start();
  scheduler.advance(0);
  select(u""_s);
  keystrokes.onCopy = [this] { pasteboard.put({{"text/plain", "copied"}}); };
  Job job = capture();
  scheduler.advance(10);
  const int readsBefore = accessibility.reads;
  element->text = u"new"_s;
  accessibility.notify(7, AccessibilityNotification::selectedTextChanged);
  scheduler.advance(4);
  EXPECT_EQ(accessibility.reads, readsBefore);
  scheduler.advance(1);
  EXPECT_EQ(captured->text, u"copied"_s);
  EXPECT_EQ(observer.selection().get(), inNotes(u"new"_s));

  // The same when the capture is given up.
  job = capture();
  select(u"newest"_s);
  accessibility.notify(7, AccessibilityNotification::selectedTextChanged);
  job.cancel();
  scheduler.advance(0);
  EXPECT_EQ(captures, 1);
  EXPECT_EQ(observer.selection().get(), inNotes(u"newest"_s));
}

TEST_F(SelectionObserverTest, CaptureTakesThePlaceOfAReadUnderWay) {
  accessibility.readTime = std::chrono::milliseconds(100);
  select(u"word"_s);
  observer.start();
  scheduler.advance(50);
  const Job job = capture();
  scheduler.advance(100);
  EXPECT_EQ(captured, inNotes(u"word"_s));
  scheduler.advance(tick);
  EXPECT_TRUE(published.empty());
}

TEST_F(SelectionObserverTest, CaptureEndsWhenAnotherWindowComesToTheFront) {
  accessibility.readTime = std::chrono::milliseconds(100);
  select(u"word"_s);
  const Job job = capture();
  scheduler.advance(50);
  workspace.frontmost = editor;
  buffer.text = u"offered by the editor"_s;
  scheduler.advance(1000);
  EXPECT_EQ(captures, 1);
  EXPECT_EQ(captured, std::nullopt);
  EXPECT_EQ(keystrokes.copies, 0);
}

TEST_F(SelectionObserverTest, DroppedCaptureTellsNothingAndLeavesThePasteboardAsItWas) {
  pasteboard.setString(u"kept"_s);
  keystrokes.onCopy = [this] { pasteboard.put({{"text/plain", "copied"}}); };
  Job job = capture();
  scheduler.advance(5);
  ASSERT_EQ(keystrokes.copies, 1);
  job.cancel();
  scheduler.advance(1000);
  EXPECT_EQ(captures, 0);
  EXPECT_EQ(pasteboard.string(), u"kept"_s);
}

TEST_F(SelectionObserverTest, HandleMayOutliveTheObserver) {
  Job job;
  {
    SelectionObserver brief(accessibility, workspace, scheduler, clipboardCapture);
    job = brief.captureSelection([this](const std::optional<Selection>&) { ++captures; });
    brief.start();
  }
  scheduler.advance(1000);
  job.cancel();
  EXPECT_EQ(captures, 0);
}

}  // namespace
}  // namespace lumeno
