#include <QKeyEvent>
#include <QWindow>

#include "desktop_fixture.h"
#include "platform/x11/x11_input.h"
#include "records/hotkey_config.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

// X key codes.
constexpr xcb_keycode_t keyA = 38, space = 65, tab = 23, escape = 9, control = 37, shift = 50, alt = 64,
                        super = 133, altGr = 108, capsLock = 66, numLock = 77, volumeUp = 123;

class KeyRecorderTest : public DesktopTest {
 protected:
  KeyRecorderTest() {
    // A layout with AltGr.
    QProcess::execute(u"setxkbmap"_s, {u"de"_s});
    runFor(50);
  }
  ~KeyRecorderTest() override { QProcess::execute(u"setxkbmap"_s, {u"us"_s, u"-option"_s}); }

  void chord(std::initializer_list<xcb_keycode_t> keycodes) {
    for (const auto keycode : keycodes) stranger.key(keycode, true);
    for (auto keycode = std::rbegin(keycodes); keycode != std::rend(keycodes); ++keycode)
      stranger.key(*keycode, false);
  }
  void record() {
    recording = input.recordKeys([this](KeyPress key) { recorded.push_back(key); });
    ASSERT_TRUE(recording);
  }

  X11Input input{*connection, ownWindows, scheduler};
  std::vector<KeyPress> recorded;
  Subscription recording;
};

TEST_F(KeyRecorderTest, SeesTheKeysOfOurOwnWindow) {
  QWindow own;
  own.show();
  own.requestActivate();
  ASSERT_TRUE(waitFor([&] { return own.isActive() && ownWindows.focused().get() != 0; }));
  std::vector<KeyPress> elsewhere;
  const auto monitor = input.monitorKeyDown([&](KeyPress key) { elsewhere.push_back(key); });
  stranger.tap(space);  // still on its way when the recording begins
  record();
  chord({control, alt, keyA});
  stranger.tap(tab);
  chord({altGr, keyA});
  stranger.tap(volumeUp);
  chord({super, escape});
  ASSERT_TRUE(waitFor([&] { return recorded.size() >= 5; }));
  runFor(30);
  ASSERT_EQ(recorded.size(), 5u);
  EXPECT_EQ(recorded[0].keyCode, 0);
  EXPECT_EQ(recorded[0].modifiers, modifier::control | modifier::option);
  EXPECT_EQ(recorded[1].keyCode, 48);
  EXPECT_EQ(recorded[2].modifiers, 0u) << "AltGr is no modifier";
  EXPECT_EQ(recorded[3].keyCode, KeyRecorder::unknownKeyCode);
  EXPECT_EQ(recorded[4].keyCode, 53);
  EXPECT_EQ(recorded[4].modifiers, modifier::command);
  EXPECT_TRUE(elsewhere.empty());
  recording.reset();
  stranger.tap(keyA);
  runFor(50);
  EXPECT_EQ(recorded.size(), 5u);
}

TEST_F(KeyRecorderTest, SeesKeysThatAnotherClientKeepsForItself) {
  // As a window manager does with the shortcuts of the desktop.
  xcb_grab_key(stranger.xcb(), 0, stranger.root(), XCB_MOD_MASK_4, space, XCB_GRAB_MODE_ASYNC,
               XCB_GRAB_MODE_ASYNC);
  stranger.sync();
  record();
  chord({super, space});
  EXPECT_TRUE(waitFor([&] { return recorded.size() == 1; }));
  xcb_ungrab_key(stranger.xcb(), space, stranger.root(), XCB_MOD_MASK_4);

  const auto cookie = xcb_grab_keyboard(stranger.xcb(), 0, stranger.root(), XCB_CURRENT_TIME,
                                        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  const XcbPtr<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(stranger.xcb(), cookie, nullptr));
  ASSERT_EQ(reply->status, XCB_GRAB_STATUS_SUCCESS);
  chord({shift, super, keyA});
  EXPECT_TRUE(waitFor([&] { return recorded.size() == 2; }));
  xcb_ungrab_keyboard(stranger.xcb(), XCB_CURRENT_TIME);
  stranger.sync();
  ASSERT_EQ(recorded.size(), 2u);
  EXPECT_EQ(recorded[0].keyCode, 49);
  EXPECT_EQ(recorded[1].modifiers, modifier::shift | modifier::command);
}

TEST_F(KeyRecorderTest, AKeyThatIsGrabbedTakesTheKeyboardFromNobody) {
  QWindow own;
  own.show();
  own.requestActivate();
  const auto hasKeyboard = [&] { return input.windowWithKeyboard().get() == own.winId(); };
  ASSERT_TRUE(waitFor([&] { return own.isActive() && hasKeyboard(); }));
  bool isLost = false;
  const auto loss = input.windowWithKeyboard().subscribe([&](uint32_t window) { isLost |= window == 0; });
  // As a window manager does that opens its menu with the Super key alone.
  xcb_grab_key(stranger.xcb(), 0, stranger.root(), XCB_MOD_MASK_ANY, super, XCB_GRAB_MODE_ASYNC,
               XCB_GRAB_MODE_ASYNC);
  stranger.sync();
  record();
  stranger.key(super, true);
  EXPECT_TRUE(waitFor([&] { return !own.isActive(); })) << "the toolkit takes it for a loss";
  stranger.tap(space);
  stranger.key(super, false);
  xcb_ungrab_key(stranger.xcb(), super, stranger.root(), XCB_MOD_MASK_ANY);
  stranger.sync();
  ASSERT_TRUE(waitFor([&] { return recorded.size() == 1; }));
  EXPECT_EQ(recorded[0].keyCode, 49);
  EXPECT_EQ(recorded[0].modifiers, modifier::command);
  EXPECT_FALSE(isLost);
  stranger.window(QByteArrayLiteral("other\0Other\0"));
  EXPECT_TRUE(waitFor([&] { return isLost; }));
}

TEST_F(KeyRecorderTest, AnEscapeOfTheLayoutIsOneWhereverItIs) {
  QProcess::execute(u"setxkbmap"_s, {u"-option"_s, u"caps:escape"_s});
  runFor(50);
  record();
  stranger.tap(capsLock);
  ASSERT_TRUE(waitFor([&] { return recorded.size() == 1; }));
  EXPECT_EQ(recorded[0].keyCode, escapeKeyCode);
}

TEST_F(KeyRecorderTest, ModifiersLocksAndRepeatsAreNoKeys) {
  record();
  for (const auto keycode : {control, shift, alt, super, altGr, capsLock, capsLock, numLock, numLock})
    stranger.tap(keycode);
  stranger.key(keyA, true);
  ASSERT_TRUE(waitFor([&] { return !recorded.empty(); }));
  runFor(900);  // longer than it takes a key to repeat
  stranger.key(keyA, false);
  runFor(30);
  ASSERT_EQ(recorded.size(), 1u);
  EXPECT_EQ(recorded[0].modifiers, 0u);
}

}  // namespace
}  // namespace lumeno
