#include "platform/x11/x11_screens.h"

#include "desktop_fixture.h"

namespace lumeno {

void PrintTo(const Rect& r, std::ostream* out) {
  *out << "(" << r.x << ", " << r.y << ", " << r.width << ", " << r.height << ")";
}

namespace {

using namespace Qt::StringLiterals;

class ScreensTest : public DesktopTest {
 protected:
  ~ScreensTest() override {
    xrandr({u"--delmonitor"_s, u"RIGHT"_s});
    xrandr({u"--delmonitor"_s, u"LEFT"_s});
  }
  static void xrandr(const QStringList& arguments) { QProcess::execute(u"xrandr"_s, arguments); }
  static void splitWithPrimaryAtTheRight() {
    xrandr({u"--setmonitor"_s, u"LEFT"_s, u"800/210x900/240+0+0"_s, u"screen"_s});
    xrandr({u"--setmonitor"_s, u"*RIGHT"_s, u"480/120x700/200+800+200"_s, u"none"_s});
  }
  X11Screens screens{*connection};
};

TEST_F(ScreensTest, FollowsTheMonitors) {
  ASSERT_EQ(screens.screens().size(), 1u);
  EXPECT_EQ(screens.screens()[0].frame, (Rect{0, 0, 1280, 900}));
  splitWithPrimaryAtTheRight();
  ASSERT_TRUE(waitFor([&] { return screens.screens().size() == 2; }));
  std::vector<Rect> frames;
  for (const auto& screen : screens.screens()) frames.push_back(screen.frame);
  const std::vector<Rect> expected{{0, 0, 480, 700}, {-800, 0, 800, 900}};
  EXPECT_TRUE(std::is_permutation(frames.begin(), frames.end(), expected.begin(), expected.end()))
      << testing::PrintToString(frames);

  stranger.movePointer(900, 250);
  EXPECT_EQ(screens.mouseLocation(), (Point{100, 650}));
  stranger.movePointer(10, 20);
  EXPECT_EQ(screens.mouseLocation(), (Point{-790, 880}));
  EXPECT_EQ(screens.accessibilitySpaceConverter()({900, 250, 10, 20}), (Rect{100, 50, 10, 20}));
  EXPECT_EQ(screens.toDevice({100, 630, 10, 20}), (Rect{900, 250, 10, 20}));
}

TEST_F(ScreensTest, APanelTakesItsBandAway) {
  // The window manager may not have followed the end of the test before yet.
  ASSERT_TRUE(waitFor([&] { return screens.screens()[0].visibleFrame == Rect{0, 0, 1280, 900}; }));
  const auto panel = stranger.window(QByteArrayLiteral("bar\0Bar\0"), 0, 0);
  const uint32_t strut[12] = {0, 0, 30, 0, 0, 0, 0, 0, 0, 1279, 0, 0};
  xcb_change_property(stranger.xcb(), XCB_PROP_MODE_REPLACE, panel, connection->atom("_NET_WM_STRUT_PARTIAL"),
                      XCB_ATOM_CARDINAL, 32, 12, strut);
  stranger.sync();
  EXPECT_TRUE(waitFor([&] { return screens.screens()[0].visibleFrame == Rect{0, 0, 1280, 870}; }));
  stranger.destroy(panel);
  EXPECT_TRUE(waitFor([&] { return screens.screens()[0].visibleFrame == Rect{0, 0, 1280, 900}; }));
}

TEST_F(ScreensTest, FramesOfWindows) {
  const auto window = stranger.window(QByteArrayLiteral("one\0One\0"), 120, 130);
  expectFocus(window);
  const auto frame = screens.deviceFrame(window);
  ASSERT_TRUE(frame);
  EXPECT_EQ(frame->width, 300);
  EXPECT_GT(frame->y, 100) << "of the desktop, not of the window manager's frame";
  EXPECT_FALSE(screens.deviceFrame(0x7fffff));
}

}  // namespace
}  // namespace lumeno
