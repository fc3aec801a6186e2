#include <xcb/shape.h>

#include <QWindow>

#include "desktop_fixture.h"
#include "platform/x11/x11_input.h"
#include "platform/x11/x11_property.h"
#include "records/hotkey_config.h"
#include "support/manual_scheduler.h"

namespace lumeno {
namespace {

// X key codes.
constexpr xcb_keycode_t keyA = 38, space = 65, leftArrow = 113, control = 37, shift = 50, alt = 64,
                        super = 133, altGr = 108;

class InputTest : public DesktopTest {
 protected:
  InputTest() {
    keys_ = input.monitorKeyDown([this](KeyPress key) { pressed.push_back(key); });
    clicks_ = input.monitorMouseDown([this] { ++clicks; });
    ends_ = input.onGestureEnd([this] { ++ends; });
    stranger.movePointer(700, 700);
    runFor(50);
  }
  void chord(std::initializer_list<xcb_keycode_t> keycodes) {
    for (const auto keycode : keycodes) stranger.key(keycode, true);
    for (auto keycode = std::rbegin(keycodes); keycode != std::rend(keycodes); ++keycode)
      stranger.key(*keycode, false);
  }

  X11Input input{*connection, ownWindows, scheduler};
  std::vector<KeyPress> pressed;
  int clicks = 0;
  int ends = 0;

 private:
  Subscription keys_, clicks_, ends_;
};

TEST_F(InputTest, KeysWithTheirModifiersThatTheFocusedWindowGetsToo) {
  QProcess::execute(QStringLiteral("setxkbmap"),
                    {QStringLiteral("de")});  // it has AltGr, which is no modifier
  const auto window = stranger.window(QByteArrayLiteral("plain\0Plain\0"));
  expectFocus(window);
  stranger.takeKeys();
  // The whole chord is over before the program sees any of it.
  chord({alt, super, space});
  chord({altGr, keyA});
  stranger.tap(keyA);
  ASSERT_TRUE(waitFor([&] { return pressed.size() >= 3; }));
  runFor(30);
  ASSERT_EQ(pressed.size(), 3u);
  EXPECT_EQ(pressed[0].keyCode, 49);
  EXPECT_EQ(pressed[0].modifiers, modifier::option | modifier::command);
  EXPECT_EQ(pressed[1].keyCode, 0);
  EXPECT_EQ(pressed[1].modifiers, 0u);
  EXPECT_EQ(pressed[2].modifiers, 0u);
  EXPECT_EQ(stranger.takeKeys().size(), 12u);  // nothing was taken away
}

TEST_F(InputTest, SeesKeysDuringAnotherClientsGrab) {
  const auto cookie = xcb_grab_keyboard(stranger.xcb(), 0, stranger.root(), XCB_CURRENT_TIME,
                                        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  const XcbPtr<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(stranger.xcb(), cookie, nullptr));
  ASSERT_EQ(reply->status, XCB_GRAB_STATUS_SUCCESS);
  chord({control, shift, keyA});
  EXPECT_TRUE(waitFor([&] { return pressed.size() == 1; }));
  EXPECT_EQ(pressed.at(0).modifiers, modifier::control | modifier::shift);
  xcb_ungrab_keyboard(stranger.xcb(), XCB_CURRENT_TIME);
  stranger.sync();
}

TEST_F(InputTest, GesturesOfButtonsWheelAndKeys) {
  const auto serial = input.gestureSerial();
  stranger.button(1, true);
  ASSERT_TRUE(waitFor([&] { return input.isGestureInProgress(); }));
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(ends, 0);
  EXPECT_GT(input.gestureStartTime(), 0u);
  stranger.button(1, false);
  ASSERT_TRUE(waitFor([&] { return ends == 1; }));
  EXPECT_EQ(input.gestureSerial(), serial + 1);

  const auto activity = input.activitySerial();
  stranger.click(5);  // the wheel
  ASSERT_TRUE(waitFor([&] { return input.gestureSerial() == serial + 2; }));
  EXPECT_FALSE(input.isGestureInProgress());
  EXPECT_GT(input.activitySerial(), activity);
  EXPECT_EQ(clicks, 1);

  stranger.click(2);
  ASSERT_TRUE(waitFor([&] { return ends == 2; }));
  EXPECT_EQ(clicks, 1) << "the middle button is none of the two";

  stranger.key(shift, true);
  stranger.key(leftArrow, true);
  ASSERT_TRUE(waitFor([&] { return input.isGestureInProgress(); }));
  stranger.key(leftArrow, false);
  ASSERT_TRUE(waitFor([&] { return ends == 3; })) << "with Shift still down";
  stranger.key(shift, false);

  const auto before = input.gestureSerial();
  chord({alt, super, space});
  chord({control, 54});  // Ctrl+C
  runFor(100);
  EXPECT_EQ(input.gestureSerial(), before) << "a shortcut does not touch the selection";
  chord({control, keyA});
  EXPECT_TRUE(waitFor([&] { return ends == 4; }));
}

TEST_F(InputTest, ReleasesThatComeTwiceEndOnce) {
  stranger.key(leftArrow, true);
  stranger.key(leftArrow, false);
  stranger.key(leftArrow, false);
  ASSERT_TRUE(waitFor([&] { return ends > 0; }));
  runFor(50);
  EXPECT_EQ(ends, 1);
}

TEST_F(InputTest, AGestureWhoseEndIsNeverSeenIsLetGo) {
  ManualScheduler clock;
  X11Input watched{*connection, ownWindows, clock};
  int watchedEnds = 0;
  const auto subscription = watched.onGestureEnd([&] { ++watchedEnds; });
  stranger.key(leftArrow, true);
  ASSERT_TRUE(waitFor([&] { return watched.isGestureInProgress(); }));
  clock.advance(10'000);
  EXPECT_TRUE(watched.isGestureInProgress()) << "it is still down";
  watched.expectSynthetic({{leftArrow, false}});  // so the release goes unseen
  stranger.key(leftArrow, false);
  ASSERT_TRUE(waitFor([&] { return ends == 1; }));
  EXPECT_EQ(watchedEnds, 0);
  clock.advance(2'200);
  EXPECT_EQ(watchedEnds, 1);
  EXPECT_EQ(clock.pendingCount(), 0u) << "nothing runs while nothing is held";
}

TEST_F(InputTest, OwnKeystrokesAreNotTheUsers) {
  input.expectSynthetic({{keyA, true}, {keyA, false}});
  const auto activity = input.activitySerial();
  stranger.tap(keyA);
  stranger.tap(leftArrow);
  ASSERT_TRUE(waitFor([&] { return !pressed.empty(); }));
  EXPECT_EQ(pressed.size(), 1u);
  EXPECT_EQ(pressed[0].keyCode, 123);
  ASSERT_TRUE(waitFor([&] { return ends == 1; }));
  EXPECT_EQ(input.activitySerial(), activity + 2);
}

TEST_F(InputTest, KeysAndClicksInOwnWindowsDoNotCount) {
  QWindow window;
  window.setFlags(Qt::Tool | Qt::FramelessWindowHint);
  window.setGeometry(100, 100, 200, 150);
  window.show();
  window.requestActivate();
  ASSERT_TRUE(waitFor([&] { return ownWindows.focused().get() == window.winId(); }));
  const auto activity = input.activitySerial();
  stranger.tap(keyA);
  stranger.movePointer(150, 150);
  stranger.click(1);
  stranger.click(4);
  runFor(100);
  EXPECT_TRUE(pressed.empty());
  EXPECT_EQ(clicks, 0);
  EXPECT_EQ(input.activitySerial(), activity);
  // What the input region leaves out belongs to what is behind.
  const xcb_rectangle_t region{0, 0, 20, 20};
  xcb_shape_rectangles(stranger.xcb(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                       static_cast<xcb_window_t>(window.winId()), 0, 0, 1, &region);
  stranger.click(1);
  EXPECT_TRUE(waitFor([&] { return clicks == 1; }));
}

TEST_F(InputTest, AKeyThatClosesAnOwnWindowIsStillItsKey) {
  const auto other = stranger.window(QByteArrayLiteral("plain\0Plain\0"));
  expectFocus(other);
  QWindow window;
  window.show();
  window.requestActivate();
  ASSERT_TRUE(waitFor([&] { return ownWindows.focused().get() == window.winId(); }));
  // The window manager has done with the new window.
  ASSERT_TRUE(waitFor([&] {
    return firstCardinal(*connection, stranger.root(), connection->atom("_NET_ACTIVE_WINDOW")) ==
           window.winId();
  }));
  runFor(50);
  stranger.tap(9);
  ASSERT_TRUE(waitFor([&] {
    xcb_set_input_focus(stranger.xcb(), XCB_INPUT_FOCUS_PARENT, other, XCB_CURRENT_TIME);
    stranger.sync();
    return ownWindows.focused().get() == 0;
  }));
  runFor(50);
  EXPECT_TRUE(pressed.empty());
  stranger.tap(9);
  EXPECT_TRUE(waitFor([&] { return pressed.size() == 1; }));
}

}  // namespace
}  // namespace lumeno
