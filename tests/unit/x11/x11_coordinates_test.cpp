#include "platform/x11/x11_coordinates.h"

#include <gtest/gtest.h>

namespace lumeno {

void PrintTo(const Rect& r, std::ostream* out) {
  *out << "(" << r.x << ", " << r.y << ", " << r.width << ", " << r.height << ")";
}

namespace {

using Edge = X11Strut::Edge;

// The primary monitor at the right and lower than its neighbour, which is drawn at twice the size.
X11Coordinates primaryAtTheRight(double leftScale, double rightScale) {
  return X11Coordinates({{{0, 0, 1600, 1200}, leftScale}, {{1600, 300, 1000, 900}, rightScale}}, 1);
}

TEST(X11Coordinates, PrimaryAtTheRightAndOffset) {
  const auto layout = primaryAtTheRight(1, 1);
  EXPECT_EQ(layout.deviceToAccessibility({1700, 350, 20, 10}), (Rect{100, 50, 20, 10}));
  EXPECT_EQ(layout.deviceToWindowSpace({1700, 350, 20, 10}), (Rect{100, 840, 20, 10}));
  EXPECT_EQ(layout.deviceToAccessibility({100, 50, 20, 10}), (Rect{-1500, -250, 20, 10}));
  EXPECT_EQ(layout.windowSpaceToDevice({-1500, 1140, 20, 10}), (Rect{100, 50, 20, 10}));

  const auto screens = layout.screens({0, 0, 2600, 1200}, {}, {});
  ASSERT_EQ(screens.size(), 2u);
  EXPECT_EQ(screens[0].frame, (Rect{-1600, 0, 1600, 1200}));
  EXPECT_EQ(screens[1].frame, (Rect{0, 0, 1000, 900}));
}

TEST(X11Coordinates, EachMonitorHasItsScale) {
  const auto layout = primaryAtTheRight(2, 1.5);
  const auto screens = layout.screens({0, 0, 2600, 1200}, {}, {});
  EXPECT_EQ(screens[0].frame, (Rect{-1600, 300, 800, 600}));  // 600 logical pixels high is the primary
  EXPECT_EQ(screens[1].frame, (Rect{0, 0, 1000 / 1.5, 600}));
  EXPECT_EQ(layout.deviceToAccessibility({1600 + 150, 300 + 75, 30, 15}), (Rect{100, 50, 20, 10}));
  EXPECT_EQ(layout.deviceToAccessibility({200, 100, 40, 20}), (Rect{-1500, -250, 20, 10}));
  // A line across the border is measured by the monitor that holds its middle, also where it sticks out.
  EXPECT_EQ(layout.deviceToAccessibility({1500, 400, 180, 20}).width, 90);
}

TEST(X11Coordinates, ThereAndBack) {
  for (const double left : {1.0, 1.25, 2.0}) {
    for (const double right : {1.0, 1.5, 3.0}) {
      const auto layout = primaryAtTheRight(left, right);
      for (const Rect device : {Rect{10, 20, 30, 40}, Rect{1500, 1100, 80, 80}, Rect{1650, 320, 300, 20},
                                Rect{2500, 1100, 90, 90}, Rect{1700, 310, 0, 0}}) {
        const Rect back = layout.windowSpaceToDevice(layout.deviceToWindowSpace(device));
        EXPECT_NEAR(back.x, device.x, 1e-9);
        EXPECT_NEAR(back.y, device.y, 1e-9);
        EXPECT_NEAR(back.width, device.width, 1e-9);
        EXPECT_NEAR(back.height, device.height, 1e-9);
      }
    }
  }
}

TEST(X11Coordinates, OutsideAllMonitorsTheNearestCounts) {
  const auto layout = primaryAtTheRight(2, 1);
  EXPECT_EQ(layout.deviceToAccessibility({-40, 100, 20, 10}).width, 10);
  EXPECT_EQ(layout.deviceToAccessibility({2700, 100, 20, 10}).width, 20);
  EXPECT_EQ(X11Coordinates().deviceToAccessibility({5, 6, 7, 8}), (Rect{5, 6, 7, 8}));
}

TEST(X11Coordinates, WorkAreas) {
  const Rect desktop{0, 0, 2600, 1200};
  const auto layout = primaryAtTheRight(1, 1);
  struct {
    const char* what;
    std::vector<X11Strut> struts;
    Rect workArea;
    Rect left;
    Rect right;
  } const cases[] = {
      {"a bar on top of the left monitor",
       {{Edge::top, 25, 0, 1600}},
       {},
       {-1600, 0, 1600, 1175},
       {0, 0, 1000, 900}},
      {"a bar on top of the right one, which is lower",
       {{Edge::top, 330, 1600, 2600}},
       {},
       {-1600, 0, 1600, 1200},
       {0, 0, 1000, 870}},
      {"a dock below everything",
       {{Edge::bottom, 40, 0, 2600}},
       {},
       {-1600, 40, 1600, 1160},
       {0, 40, 1000, 860}},
      {"a dock at the inner edge: counted from the desktop's edge it covers the whole left monitor",
       {{Edge::left, 1650, 300, 1200}},
       {},
       {-1600, 0, 1600, 1200},
       {50, 0, 950, 900}},
      {"two bars at one edge: the wider counts",
       {{Edge::right, 30, 300, 1200}, {Edge::right, 60, 300, 1200}},
       {},
       {-1600, 0, 1600, 1200},
       {0, 0, 940, 900}},
      {"no bars that say so, but a work area",
       {},
       {0, 25, 2600, 1175},
       {-1600, 0, 1600, 1175},
       {0, 0, 1000, 900}},
  };
  for (const auto& test : cases) {
    const auto screens = layout.screens(desktop, test.struts, test.workArea);
    EXPECT_EQ(screens[0].visibleFrame, test.left) << test.what;
    EXPECT_EQ(screens[1].visibleFrame, test.right) << test.what;
  }
}

}  // namespace
}  // namespace lumeno
