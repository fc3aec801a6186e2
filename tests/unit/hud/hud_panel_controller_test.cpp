#include "hud/hud_panel_controller.h"

#include <gtest/gtest.h>

#include "support/fake_appearance.h"
#include "support/fake_event_monitor.h"
#include "support/fake_panel_window.h"
#include "support/fake_screen_layout.h"

namespace lumeno {
namespace {

using std::chrono::milliseconds;

constexpr Rect anchor{600, 400, 200, 20};  // its top edge is at 500 in window space
constexpr Size card{360, 150};

class HUDPanelControllerTest : public testing::Test {
 protected:
  HUDPanelControllerTest() {
    panel.onOutsideDismiss = [this] { ++dismissals; };
  }
  void showUnfocused(const std::optional<Rect>& at = anchor) { panel.show(at, false, false, false); }
  void showPlaced() {
    showUnfocused();
    panel.layout(card);
  }

  FakePanelWindow window;
  FakeScreenLayout screens;
  FakeEventMonitor events;
  FakeAppearance appearance;
  HUDPanelController panel{window, screens, events, appearance};
  int dismissals = 0;
};

TEST_F(HUDPanelControllerTest, PlacesTheFirstReportAtOnceAndMovesLaterOnes) {
  showPlaced();
  EXPECT_TRUE(window.visible);
  EXPECT_EQ(window.frame, (Rect{520, 510, 360, 150}));
  EXPECT_EQ(window.moveDuration, milliseconds(0));
  EXPECT_EQ(window.shapes, 1);

  panel.layout({360, 200});
  EXPECT_EQ(window.frame, (Rect{520, 510, 360, 200}));
  EXPECT_EQ(window.moveDuration, milliseconds(180));
  EXPECT_EQ(window.shapes, 2);

  panel.hide();
  window.finishFade();
  showUnfocused();
  EXPECT_EQ(window.moveDuration, milliseconds(0)) << "a panel that was hidden does not slide in";

  appearance.set({.reduceMotion = true, .accent = {}});
  panel.layout(card);
  EXPECT_EQ(window.moveDuration, milliseconds(0));
}

TEST_F(HUDPanelControllerTest, FollowsANewAnchorWithContentOfTheSameSize) {
  showPlaced();
  showUnfocused(Rect{600, 30, 200, 20});
  EXPECT_EQ(window.frame, (Rect{520, 690, 360, 150}));
  EXPECT_EQ(window.moveDuration, milliseconds(180));
  EXPECT_TRUE(panel.isFlippedBelow());

  panel.hide();
  window.finishFade();
  showUnfocused();
  EXPECT_EQ(window.frame, (Rect{520, 510, 360, 150}));
  EXPECT_EQ(window.moveDuration, milliseconds(0));
}

TEST_F(HUDPanelControllerTest, TakesTheKeyboardWhenAskedOnlyWhereItMay) {
  panel.takeKeyboard();
  EXPECT_FALSE(window.isKey) << "hidden";
  showPlaced();
  panel.takeKeyboard();
  EXPECT_FALSE(window.isKey);
  panel.show(anchor, true, true, false);
  EXPECT_FALSE(window.isKey);
  EXPECT_FALSE(panel.takesFocus());
  panel.takeKeyboard();
  EXPECT_TRUE(window.isKey);
  panel.show(anchor, true, true, true);
  EXPECT_TRUE(panel.takesFocus());
}

TEST_F(HUDPanelControllerTest, LaysOutOnceWhenTheContentReportsWhileShowing) {
  showPlaced();
  panel.onWillShow = [this] { panel.layout({380, 90}); };
  const int before = window.frames;
  showUnfocused();
  EXPECT_EQ(window.frames, before + 1);
  EXPECT_EQ(window.frame.height, 90);
}

TEST_F(HUDPanelControllerTest, TakesTheFocusOrWatchesTheOutside) {
  struct Case {
    bool keyEligible, takeFocus, watches;
  };
  for (const Case c : {Case{false, false, true}, Case{true, true, false}, Case{true, false, false}}) {
    panel.show(anchor, false, c.keyEligible, c.takeFocus);
    EXPECT_EQ(window.keyEligible, c.keyEligible);
    EXPECT_EQ(window.isKey, c.takeFocus);
    EXPECT_EQ(events.watchesMouse(), c.watches);
    EXPECT_EQ(events.watchesKeys(), c.watches);
    panel.hide();
    EXPECT_FALSE(events.watchesMouse() || events.watchesKeys());
    window.finishFade();
  }

  showUnfocused();
  panel.show(anchor, false, true, true);
  EXPECT_FALSE(events.watchesMouse()) << "a focused show removes the monitors of an unfocused one";
}

TEST_F(HUDPanelControllerTest, IsDismissedByAClickOrEscapeElsewhere) {
  panel.onOutsideDismiss = [this] {
    ++dismissals;
    panel.hide();  // the monitors go while one of them is calling
  };
  showUnfocused();
  events.pressKey(49);
  EXPECT_EQ(dismissals, 0);
  events.pressKey(53);
  EXPECT_EQ(dismissals, 1);
  window.finishFade();

  showUnfocused();
  showUnfocused();  // does not watch twice
  events.pressMouse();
  EXPECT_EQ(dismissals, 2);
  events.pressMouse();
  EXPECT_EQ(dismissals, 2);

  window.finishFade();
  events.refuses = true;
  showUnfocused();
  EXPECT_TRUE(window.visible);
}

TEST_F(HUDPanelControllerTest, FadesOutThenIsReadyToBeShownAgain) {
  showPlaced();
  panel.hide();
  EXPECT_EQ(window.fadeDuration, milliseconds(160));
  EXPECT_TRUE(window.visible);
  window.finishFade();
  EXPECT_FALSE(window.visible);
  EXPECT_EQ(window.alpha, 1);

  window.fadeDuration = milliseconds(-1);
  panel.hide();
  EXPECT_EQ(window.fadeDuration, milliseconds(-1)) << "a hidden panel does not fade";
  EXPECT_EQ(window.orderOuts, 2);

  appearance.set({.reduceMotion = true, .accent = {}});
  showUnfocused();
  panel.hide();
  EXPECT_FALSE(window.visible);
  EXPECT_EQ(window.fadeDuration, milliseconds(-1));
}

TEST_F(HUDPanelControllerTest, ShowingAgainStopsTheFade) {
  showPlaced();
  panel.hide();
  showUnfocused();
  EXPECT_FALSE(window.fadeDone);
  EXPECT_EQ(window.alpha, 1);
  EXPECT_TRUE(window.visible);
}

TEST_F(HUDPanelControllerTest, LaysTinyContentOutAsOnePixelAndDoesWithoutScreens) {
  showUnfocused();
  panel.layout({0.2, 0});
  EXPECT_EQ(window.frame.width, 1);
  EXPECT_EQ(window.frame.height, 1);
  screens.all.clear();
  const int before = window.frames;
  panel.layout(card);
  EXPECT_EQ(window.frames, before);
}

}  // namespace
}  // namespace lumeno
