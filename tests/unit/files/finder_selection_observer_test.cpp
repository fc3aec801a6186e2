#include "files/finder_selection_observer.h"

#include <gtest/gtest.h>

#include "support/fake_accessibility.h"
#include "support/fake_file_manager.h"
#include "support/fake_keystroke_sender.h"
#include "support/fake_pasteboard.h"
#include "support/fake_selection_buffer.h"
#include "support/fake_workspace.h"
#include "support/manual_scheduler.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

const RunningApplication finder{u"com.apple.finder"_s, u"Files"_s, 5, 50, false, {}};
const RunningApplication secondFinder{u"com.apple.finder"_s, u"Files"_s, 5, 51, false, {}};
const RunningApplication notes{u"org.example.Notes"_s, u"Notes"_s, 7, 70, false, {}};
const RunningApplication ourselves{u"org.lumeno.Lumeno"_s, u"Lumeno"_s, 1, 10, false, {}};
const std::vector<QUrl> items{fileUrl("/d/ a"), fileUrl("/d/\xFF"), fileUrl("/d/c\n")};
const std::vector<QUrl> others{fileUrl("/d/x")};
constexpr int tick = 600;

class FinderSelectionObserverTest : public testing::Test {
 protected:
  FinderSelectionObserverTest() {
    workspace.frontmost = finder;
    fileManager.selected = items;
    fileManager.frame = Rect{10, 20, 300, 200};
    keystrokes.windowInFront = finder.window;
  }

  void startLogging() {
    log = observer.selection().subscribe([this](const auto& value) { published.push_back(value); });
    published.clear();
    observer.start();
  }

  /// What `currentSelection` answers within a second.
  std::optional<FileSelection> current() {
    std::optional<std::optional<FileSelection>> answer;
    const Job job = observer.currentSelection([&](auto given) { answer = std::move(given); });
    EXPECT_FALSE(answer);
    scheduler.advance(1000);
    EXPECT_TRUE(answer);
    return answer.value_or(std::nullopt);
  }

  ManualScheduler scheduler;
  FakeWorkspace workspace;
  FakeAccessibility accessibility{scheduler};
  AccessibilityAuthorization authorization{accessibility, scheduler};
  FakePasteboard pasteboard{scheduler};
  FakeKeystrokeSender keystrokes{scheduler};
  FakeSelectionBuffer buffer{scheduler};
  ClipboardSelectionCapture capture{pasteboard, keystrokes, buffer, scheduler};
  FakeFileManager fileManager{scheduler};
  FinderSelectionObserver observer{fileManager, workspace, authorization, accessibility, capture, scheduler};
  std::vector<std::optional<FileSelection>> published;
  Subscription log;
};

TEST_F(FinderSelectionObserverTest, PublishesEachSelectionOnce) {
  startLogging();
  observer.start();
  scheduler.advance(tick - 1);
  EXPECT_TRUE(fileManager.reads.empty());
  scheduler.advance(1);
  ASSERT_EQ(published.size(), 1u);
  ASSERT_TRUE(published[0]);
  EXPECT_EQ(published[0]->urls, items);
  EXPECT_EQ(published[0]->sourceApp, u"Finder"_s);
  EXPECT_EQ(published[0]->anchor, (Rect{10, 219, 300, 1}));
  EXPECT_EQ(fileManager.reads, std::vector{FileManager::Read::quick});

  fileManager.frame = Rect{0, 0, 1, 1};
  scheduler.advance(3 * tick);
  EXPECT_EQ(published.size(), 1u);
  EXPECT_EQ(fileManager.reads.size(), 4u);

  fileManager.selected = others;
  scheduler.advance(tick);
  // What cannot be told exactly counts as nothing; so does nothing, and neither is published twice.
  for (const auto& absent : {std::optional<std::vector<QUrl>>(), std::optional(std::vector<QUrl>())}) {
    fileManager.selected = absent;
    scheduler.advance(2 * tick);
  }
  fileManager.selected = others;
  scheduler.advance(tick);
  ASSERT_EQ(published.size(), 4u);
  EXPECT_EQ(published[1]->urls, others);
  EXPECT_EQ(published[2], std::nullopt);
  EXPECT_EQ(published[3]->urls, others);

  observer.stop();
  fileManager.selected = items;
  scheduler.advance(5 * tick);
  EXPECT_EQ(published.size(), 4u);
  EXPECT_TRUE(observer.selection().get());
  observer.clear();
  EXPECT_EQ(published.back(), std::nullopt);
}

TEST_F(FinderSelectionObserverTest, FollowsWhatIsInFront) {
  startLogging();
  scheduler.advance(tick);
  workspace.activate(ourselves);
  fileManager.selected = others;
  scheduler.advance(5 * tick);
  EXPECT_EQ(published.size(), 1u);  // it stays while the user is in our own window
  workspace.activate(notes);
  scheduler.advance(tick);
  ASSERT_EQ(published.size(), 2u);
  EXPECT_EQ(published[1], std::nullopt);

  // Nothing runs while another application is in front.
  const auto idle = scheduler.pendingCount();
  workspace.activate(std::nullopt);
  EXPECT_EQ(scheduler.pendingCount(), idle);
  workspace.activate(finder);
  EXPECT_EQ(scheduler.pendingCount(), idle + 1);
  fileManager.selected = items;
  scheduler.advance(tick);
  ASSERT_EQ(published.size(), 3u);
  EXPECT_EQ(published[2]->urls, items);

  // A short visit elsewhere goes unnoticed.
  workspace.activate(notes);
  workspace.activate(finder);
  scheduler.advance(tick);
  EXPECT_EQ(published.size(), 3u);
  workspace.frontmost = std::nullopt;
  scheduler.advance(tick);
  EXPECT_EQ(published.size(), 4u);
}

TEST_F(FinderSelectionObserverTest, UnknownOnBothSidesIsUs) {
  startLogging();
  scheduler.advance(tick);
  workspace.own = std::nullopt;
  workspace.frontmost = std::nullopt;
  scheduler.advance(2 * tick);
  EXPECT_EQ(published.size(), 1u);
}

TEST_F(FinderSelectionObserverTest, SlowAnswersAreAwaitedAndLateOnesDropped) {
  fileManager.answerTime = std::chrono::milliseconds(4 * tick);
  startLogging();
  scheduler.advance(4 * tick);
  EXPECT_EQ(fileManager.reads.size(), 1u);
  for (const auto& inFront : {notes, ourselves, secondFinder}) {
    workspace.frontmost = inFront;
    scheduler.advance(tick);
    EXPECT_TRUE(published.empty()) << inFront.window;
    workspace.activate(finder);
    scheduler.advance(4 * tick);
  }
  scheduler.advance(5 * tick);
  EXPECT_EQ(published.size(), 1u);
}

TEST_F(FinderSelectionObserverTest, HasAnAnchorOnlyWhereItIsKnown) {
  EXPECT_EQ(current()->anchor, (Rect{10, 219, 300, 1}));
  for (const Rect& flat : {Rect{1, 2, 0, 5}, Rect{1, 2, 5, 0}}) {
    fileManager.frame = flat;
    EXPECT_EQ(current()->anchor, std::nullopt);
  }
  fileManager.frame = std::nullopt;
  EXPECT_EQ(current()->anchor, std::nullopt);
  fileManager.frame = Rect{10, 20, 300, 200};
  accessibility.trusted = false;
  scheduler.advance(1000);
  const auto untrusted = current();
  EXPECT_EQ(untrusted->urls, items);
  EXPECT_EQ(untrusted->anchor, std::nullopt);
}

TEST_F(FinderSelectionObserverTest, CurrentSelectionIsNotAnnounced) {
  startLogging();
  workspace.activate(notes);
  EXPECT_EQ(current(), std::nullopt);
  EXPECT_TRUE(fileManager.reads.empty());
  workspace.activate(finder);
  EXPECT_EQ(current()->urls, items);
  EXPECT_EQ(fileManager.reads[0], FileManager::Read::thorough);
  scheduler.advance(3 * tick);
  EXPECT_TRUE(published.empty());
  fileManager.selected = others;
  scheduler.advance(tick);
  EXPECT_EQ(published.size(), 1u);
  fileManager.selected = std::vector<QUrl>();
  EXPECT_EQ(current(), std::nullopt);
}

TEST_F(FinderSelectionObserverTest, CurrentSelectionIsCopiedWhereItCannotBeTold) {
  fileManager.selected = std::nullopt;
  pasteboard.setString(u"mine"_s);
  keystrokes.onCopy = [this] { pasteboard.put({{"text/uri-list", "file:///d/%20a\r\nfile:///d/%FF\r\n"}}); };
  const auto copied = current();
  ASSERT_TRUE(copied);
  EXPECT_EQ(copied->urls, (std::vector{items[0], items[1]}));
  EXPECT_EQ(keystrokes.fileCopies, 1);
  EXPECT_EQ(pasteboard.string(), u"mine"_s);

  keystrokes.onCopy = nullptr;
  EXPECT_EQ(current(), std::nullopt);
  accessibility.trusted = false;
  scheduler.advance(1000);
  const int copies = keystrokes.fileCopies;
  EXPECT_EQ(current(), std::nullopt);
  EXPECT_EQ(keystrokes.fileCopies, copies);
}

TEST_F(FinderSelectionObserverTest, NoCopyKeyIsPressedIntoATerminalOrAPassword) {
  fileManager.selected = std::nullopt;
  keystrokes.onCopy = [this] { pasteboard.put({{"text/uri-list", "file:///d/x"}}); };
  const auto focused = std::make_shared<FakeElement>();
  accessibility.focused = focused;
  for (const auto role : {ElementRole::terminal, ElementRole::password}) {
    focused->elementRole = role;
    EXPECT_EQ(current(), std::nullopt);
  }
  EXPECT_EQ(keystrokes.fileCopies, 0);
  focused->elementRole = ElementRole::other;
  EXPECT_TRUE(current());

  // Meanwhile another window may have come to the front.
  accessibility.readTime = std::chrono::milliseconds(100);
  std::optional<FileSelection> answer = FileSelection();
  const Job job = observer.currentSelection([&](auto given) { answer = std::move(given); });
  scheduler.advance(50);
  workspace.frontmost = secondFinder;
  scheduler.advance(1000);
  EXPECT_EQ(answer, std::nullopt);
  EXPECT_EQ(keystrokes.fileCopies, 1);
}

TEST_F(FinderSelectionObserverTest, CurrentSelectionOfAWindowThatHasGoneIsNone) {
  fileManager.answerTime = std::chrono::milliseconds(100);
  for (const bool isTellable : {true, false}) {
    fileManager.selected = isTellable ? std::optional(items) : std::nullopt;
    workspace.frontmost = finder;
    std::optional<FileSelection> answer = FileSelection();
    Job job = observer.currentSelection([&](auto given) { answer = std::move(given); });
    workspace.frontmost = secondFinder;
    scheduler.advance(1000);
    EXPECT_EQ(answer, std::nullopt);
    EXPECT_EQ(keystrokes.fileCopies, 0);
  }
  workspace.frontmost = finder;
  bool isAnswered = false;
  Job job = observer.currentSelection([&](const auto&) { isAnswered = true; });
  job.cancel();
  scheduler.advance(1000);
  EXPECT_FALSE(isAnswered);
}

}  // namespace
}  // namespace lumeno
