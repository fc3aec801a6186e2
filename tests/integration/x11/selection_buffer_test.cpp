#include "platform/x11/x11_selection_buffer.h"

#include <unistd.h>

#include <csignal>

#include "platform/x11/x11_selection_owner.h"
#include "platform/x11/x11_server_clock.h"
#include "selection_test_support.h"
#include "support/fake_workspace.h"

namespace lumeno {
namespace {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

class FakeInputActivity final : public InputActivity {
 public:
  uint64_t activitySerial() const override { return 0; }
  uint64_t gestureSerial() const override { return 0; }
  bool isGestureInProgress() const override { return false; }
  uint32_t gestureStartTime() const override { return start; }
  Subscription onGestureEnd(std::function<void()>) override { return {}; }

  uint32_t start = 0;
};

class SelectionBufferTest : public SelectionTest {
 protected:
  /// A program with a selection, its window in front.
  std::unique_ptr<ScriptedOwner> offer(const QStringList& options) {
    auto owner = std::make_unique<ScriptedOwner>(QStringList{"--selection", "PRIMARY", "--window"} + options);
    bringToFront(*owner);
    gestureBegins();  // also sees to it that all earlier changes have been reported
    offerAgain(*owner);
    return owner;
  }
  void offerAgain(ScriptedOwner& owner) {
    const uint64_t before = buffer_.serial();
    owner.command("own");
    EXPECT_TRUE(waitUntil([&] { return buffer_.serial() > before; }));
  }
  void bringToFront(ScriptedOwner& owner) { workspace_.activate(applicationOf(owner)); }
  RunningApplication applicationOf(ScriptedOwner& owner) {
    RunningApplication application;
    application.window = owner.window();
    application.processIdentifier = static_cast<ProcessId>(owner.process().processId());
    return application;
  }
  void gestureBegins() {
    Awaited<uint32_t> time;
    const Job job = clock_.now(time.receiver());
    input_.start = time.get();
  }
  std::optional<QString> freshText() {
    Awaited<std::optional<QString>> answer;
    const Job job = buffer_.freshText(answer.receiver());
    EXPECT_EQ(answer.calls(), 0) << "never inside the call";
    return answer.get();
  }

  X11ServerClock clock_{*connection_};
  FakeInputActivity input_;
  FakeWorkspace workspace_;
  X11SelectionBuffer buffer_{*connection_, scheduler_, input_, workspace_};
};

TEST_F(SelectionBufferTest, asksOnceForEachOffer) {
  const auto owner = offer({"UTF8_STRING=picked"});
  EXPECT_TRUE(buffer_.isFresh());
  Awaited<std::optional<QString>> answers[3];
  const Job first = buffer_.freshText(answers[0].receiver());
  Job cancelled = buffer_.freshText(answers[1].receiver());
  const Job third = buffer_.freshText(answers[2].receiver());
  cancelled.cancel();
  EXPECT_EQ(answers[0].get(), u"picked"_s);
  EXPECT_EQ(answers[2].get(), u"picked"_s);
  EXPECT_EQ(answers[1].calls(), 0);
  EXPECT_EQ(freshText(), u"picked"_s);
  EXPECT_EQ(owner->lines("request UTF8_STRING"), 1);

  int changes = 0;
  const auto subscription = buffer_.onChange([&] { ++changes; });
  owner->command("own");
  ASSERT_TRUE(waitUntil([&] { return changes == 1; }));
  EXPECT_EQ(freshText(), u"picked"_s);
  EXPECT_EQ(owner->lines("request UTF8_STRING"), 2);

  owner->command("release");
  ASSERT_TRUE(waitUntil([&] { return changes == 2; }));
  EXPECT_FALSE(buffer_.isFresh());
  EXPECT_EQ(freshText(), std::nullopt);
}

TEST_F(SelectionBufferTest, endsWithTheNextGestureAndWithTheFocus) {
  const auto owner = offer({"UTF8_STRING=picked"});
  ASSERT_EQ(freshText(), u"picked"_s);
  const uint32_t start = input_.start;

  runFor(5ms);
  gestureBegins();
  EXPECT_EQ(freshText(), std::nullopt) << "a later plain click";
  input_.start = start;

  // The server's time wraps: a gesture just before the wrap is older than a selection just after it.
  input_.start = start - 0x7ffffff0U;
  EXPECT_TRUE(buffer_.isFresh());
  input_.start = start;

  RunningApplication ourselves;
  ourselves.processIdentifier = getpid();
  workspace_.activate(ourselves);
  EXPECT_FALSE(buffer_.isFresh());
  workspace_.activate(std::nullopt);
  EXPECT_FALSE(buffer_.isFresh());
  bringToFront(*owner);
  EXPECT_EQ(freshText(), u"picked"_s) << "our own panel had the keyboard for a moment";

  RunningApplication otherWindow = applicationOf(*owner);
  ++otherWindow.window;
  workspace_.activate(otherWindow);
  EXPECT_FALSE(buffer_.isFresh());
  bringToFront(*owner);
  EXPECT_FALSE(buffer_.isFresh()) << "the focus has been elsewhere";
  EXPECT_EQ(freshText(), std::nullopt);
}

TEST_F(SelectionBufferTest, onlyTheApplicationInFrontCounts) {
  const auto owner = offer({"UTF8_STRING=picked"});
  const RunningApplication application = applicationOf(*owner);
  const auto isFreshWith = [&](uint64_t window, ProcessId process) {
    RunningApplication front = application;
    front.window = window;
    front.processIdentifier = process;
    workspace_.activate(front);
    offerAgain(*owner);
    return buffer_.isFresh();
  };
  EXPECT_TRUE(isFreshWith(application.window, application.processIdentifier));
  EXPECT_TRUE(isFreshWith(application.window + 1, 1)) << "another window of the same client";
  EXPECT_TRUE(isFreshWith(connection_->root(), application.processIdentifier)) << "the same process";
  EXPECT_TRUE(isFreshWith(0, application.processIdentifier));
  EXPECT_FALSE(isFreshWith(connection_->root(), 1));
  EXPECT_EQ(freshText(), std::nullopt);
  EXPECT_FALSE(isFreshWith(0, 0));
  EXPECT_EQ(owner->lines("request "), 0) << "others are not even asked";
}

TEST_F(SelectionBufferTest, whatWasThereBeforeIsStale) {
  const auto owner = offer({"UTF8_STRING=old"});
  X11SelectionBuffer late(*connection_, scheduler_, input_, workspace_);
  EXPECT_FALSE(late.isFresh());
}

// The toolkit's text areas have a connection of their own.
TEST_F(SelectionBufferTest, ourOwnTextAreasChangeNothing) {
  const auto toolkit = X11Connection::open();
  X11SelectionOwner textArea(*toolkit, scheduler_, XCB_ATOM_PRIMARY);
  const xcb_atom_t utf8 = toolkit->atom("UTF8_STRING");
  const auto select = [&] { return textArea.own({{utf8, {utf8, 8, "our own"}}}, XCB_CURRENT_TIME); };

  const auto owner = offer({"--keep", "UTF8_STRING=picked"});
  ASSERT_EQ(freshText(), u"picked"_s);
  const uint64_t serial = buffer_.serial();
  ASSERT_TRUE(select());
  owner->waitForLines("lost", 1);
  runFor(20ms);
  EXPECT_EQ(buffer_.serial(), serial);
  EXPECT_EQ(freshText(), u"picked"_s);
  textArea.clear(XCB_CURRENT_TIME);
  runFor(20ms);
  EXPECT_EQ(buffer_.serial(), serial);
  EXPECT_EQ(freshText(), u"picked"_s);

  // Not read before it was gone: there is nothing to answer, and ours is never the answer.
  offerAgain(*owner);
  ASSERT_TRUE(select());
  owner->waitForLines("lost", 2);
  runFor(20ms);
  EXPECT_EQ(freshText(), std::nullopt);
}

TEST_F(SelectionBufferTest, refusesSecretsAndBadOwners) {
  const QStringList cases[] = {
      {"--secret", "UTF8_STRING=hunter2"},
      {"--hang", "UTF8_STRING=x"},
      {"--stall", "UTF8_STRING=x"},
      {"--size", "17000000", "--piece", "2000000"},
      {"image/png=x"},
  };
  for (const QStringList& options : cases) {
    SCOPED_TRACE(options.join(' ').toStdString());
    expectBelow(200, [&] {
      const auto owner = offer(options);
      Heartbeat heartbeat;
      for (int i = 0; i < 3; ++i) EXPECT_EQ(freshText(), std::nullopt);
      const qint64 gap = heartbeat.longestGap();
      EXPECT_EQ(owner->lines("request TARGETS"), 2) << "not at every look";
      return gap;
    });
  }
}

TEST_F(SelectionBufferTest, aClickDuringTheReadMakesItStale) {
  const auto owner = offer({"UTF8_STRING=picked"});
  const auto pid = static_cast<pid_t>(owner->process().processId());
  kill(pid, SIGSTOP);  // until the click has been made
  Awaited<std::optional<QString>> answer;
  const Job job = buffer_.freshText(answer.receiver());
  runFor(5ms);  // not in the millisecond of the offer
  gestureBegins();
  kill(pid, SIGCONT);
  EXPECT_EQ(answer.get(), std::nullopt);
}

TEST_F(SelectionBufferTest, largeSelectionsComeWhole) {
  const auto owner = offer({"--size", "5000000"});
  std::optional<QString> text;
  // An offer is not read for ever; a busy machine may need several.
  ASSERT_TRUE(waitUntil([&] {
    offerAgain(*owner);
    text = freshText();
    return text.has_value();
  }));
  EXPECT_EQ(text->size(), 5'000'000);
  EXPECT_TRUE(text->startsWith(u"line 0\nline 1\n"));
}

}  // namespace
}  // namespace lumeno
