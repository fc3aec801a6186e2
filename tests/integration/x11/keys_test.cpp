#include <QWindow>

#include "desktop_fixture.h"
#include "platform/x11/x11_input.h"
#include "platform/x11/x11_keystroke_sender.h"
#include "platform/x11/x11_workspace.h"
#include "support/manual_scheduler.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using Outcome = KeystrokeSender::Outcome;

constexpr xcb_keycode_t control = 37, insert = 118, keyA = 38, alt = 64, super = 133;

class KeysTest : public DesktopTest {
 protected:
  KeysTest() { layout(u"us"_s); }
  ~KeysTest() override { layout(u"us"_s); }

  void layout(const QString& name) {
    QProcess::execute(u"setxkbmap"_s, {name});
    runFor(50);
  }
  xcb_window_t focusedWindow(const QByteArray& windowClass = QByteArrayLiteral("plain\0Plain\0")) {
    const auto window = stranger.window(windowClass);
    EXPECT_TRUE(waitFor([&] {
      const auto front = workspace.frontmostApplication();
      return front && front->window == window && stranger.focus() == window;
    }));
    stranger.takeKeys();
    return window;
  }
  uint64_t front() {
    const auto application = workspace.frontmostApplication();
    return application ? application->window : 0;
  }
  std::optional<Outcome> copy() {
    std::optional<Outcome> outcome;
    const Job job = sender.sendCopy(front(), [&](Outcome o) { outcome = o; });
    (void)waitFor([&] { return outcome.has_value(); });
    return outcome;
  }
  std::optional<Outcome> copyFiles() {
    std::optional<Outcome> outcome;
    const Job job = sender.sendCopyFiles(front(), [&](Outcome o) { outcome = o; });
    (void)waitFor([&] { return outcome.has_value(); });
    return outcome;
  }
  std::optional<Outcome> paste() {
    std::optional<Outcome> outcome;
    const Job job = sender.sendPaste(front(), [&](Outcome o) { outcome = o; });
    (void)waitFor([&] { return outcome.has_value(); });
    return outcome;
  }
  // What the target got, as "+37 +118/4 -118/4 -37/4": press or release, key code, modifiers.
  std::string received(std::size_t atLeast = 0) {
    std::vector<Stranger::KeyEvent> keys;
    (void)waitFor([&] {
      for (const auto& key : stranger.takeKeys()) keys.push_back(key);
      return keys.size() >= atLeast;
    });
    std::string text;
    for (const auto& key : keys) {
      if (!text.empty()) text += ' ';
      text += (key.isPress ? '+' : '-') + std::to_string(key.keycode);
      if (key.state) text += '/' + std::to_string(key.state);
    }
    return text;
  }

  X11Input input{*connection, ownWindows, scheduler};
  X11Workspace workspace{*connection, ownWindows, scheduler};
  X11KeystrokeSender sender{*connection, workspace, input, scheduler};
};

TEST_F(KeysTest, CopyIsControlInsertAndPasteIsControlV) {
  focusedWindow();
  std::vector<KeyPress> seen;
  const auto monitor = input.monitorKeyDown([&](KeyPress key) { seen.push_back(key); });
  const auto activity = input.activitySerial();
  EXPECT_EQ(copy(), Outcome::sent);
  EXPECT_EQ(received(4), "+37 +118/4 -118/4 -37/4");
  EXPECT_EQ(paste(), Outcome::sent);
  EXPECT_EQ(received(4), "+37 +55/4 -55/4 -37/4");
  runFor(50);
  EXPECT_TRUE(seen.empty()) << "our own keys are not the user's";
  EXPECT_EQ(input.activitySerial(), activity);
  stranger.tap(control);
  stranger.tap(insert);
  EXPECT_TRUE(waitFor([&] { return seen.size() == 1; })) << "but the user's are";
}

TEST_F(KeysTest, OnlyFileManagersGetTheirCopyKey) {
  focusedWindow();
  EXPECT_EQ(copyFiles(), Outcome::refused) << "it may be an interrupt there";
  EXPECT_EQ(received(), "");
  focusedWindow(QByteArrayLiteral("thunar\0Thunar\0"));
  EXPECT_EQ(workspace.frontmostApplication()->applicationId, u"thunar"_s);
  EXPECT_EQ(copyFiles(), Outcome::sent);
  EXPECT_EQ(received(4), "+37 +54/4 -54/4 -37/4");
}

TEST_F(KeysTest, PasteFollowsTheLayout) {
  focusedWindow();
  layout(u"us(dvorak)"_s);
  EXPECT_EQ(paste(), Outcome::sent);
  EXPECT_EQ(received(4), "+37 +60/4 -60/4 -37/4");
  layout(u"ru"_s);
  EXPECT_EQ(paste(), Outcome::sent);
  EXPECT_EQ(received(4), "+37 +55/4 -55/4 -37/4");
}

TEST_F(KeysTest, WaitsForHeldKeysToComeUp) {
  ManualScheduler clock;
  X11KeystrokeSender slowSender{*connection, workspace, input, clock};
  focusedWindow();
  stranger.key(alt, true);
  stranger.key(keyA, true);
  std::optional<Outcome> outcome;
  const Job job = slowSender.sendCopy(front(), [&](Outcome o) { outcome = o; });
  clock.advance(120);
  EXPECT_EQ(outcome, std::nullopt);
  stranger.key(keyA, false);
  stranger.key(alt, false);
  clock.advance(20);
  EXPECT_EQ(outcome, Outcome::sent);
  EXPECT_EQ(received(8), "+64 +38/8 -38/8 -64/8 +37 +118/4 -118/4 -37/4");
}

TEST_F(KeysTest, LiftsKeysThatStayDown) {
  focusedWindow();
  for (const auto keycode : {alt, super, keyA}) stranger.key(keycode, true);
  received();
  QElapsedTimer clock;
  clock.start();
  EXPECT_EQ(copy(), Outcome::sent);
  EXPECT_GE(clock.elapsed(), 290);
  const std::string keys = received(7);
  EXPECT_TRUE(keys.ends_with("+37 +118/4 -118/4 -37/4")) << keys;
  EXPECT_TRUE(input.keyboard().keysDown().empty());
  for (const auto keycode : {keyA, super, alt})
    stranger.key(keycode, false);  // the user's own releases change nothing
  EXPECT_TRUE(input.keyboard().keysDown().empty());
}

TEST_F(KeysTest, NothingIsTypedIntoTerminalsOrOwnWindows) {
  focusedWindow(QByteArrayLiteral("xterm\0XTerm\0"));
  EXPECT_EQ(copy(), Outcome::refused);
  EXPECT_EQ(paste(), Outcome::refused);
  EXPECT_EQ(received(), "");
  QWindow own;
  own.show();
  own.requestActivate();
  ASSERT_TRUE(waitFor([&] { return ownWindows.focused().get() != 0; }));
  EXPECT_EQ(copy(), Outcome::refused);
}

TEST_F(KeysTest, OnlyTheWindowItWasMeantForGetsIt) {
  ManualScheduler clock;
  X11KeystrokeSender slowSender{*connection, workspace, input, clock};
  focusedWindow();
  stranger.key(keyA, true);
  std::optional<Outcome> outcome;
  const Job job = slowSender.sendPaste(front(), [&](Outcome o) { outcome = o; });
  clock.advance(50);
  focusedWindow();
  stranger.key(keyA, false);
  clock.advance(1000);
  EXPECT_EQ(outcome, Outcome::refused);
}

TEST_F(KeysTest, CancelledMeansNotSent) {
  focusedWindow();
  (void)sender.sendCopy(front(), [](Outcome) { ADD_FAILURE() << "called"; });
  runFor(100);
  EXPECT_EQ(received(), "");
}

}  // namespace
}  // namespace lumeno
