#include "onboarding/onboarding_window_presenter.h"

#include "integration/x11/desktop_fixture.h"
#include "support/fake_accessibility.h"
#include "support/fake_appearance.h"
#include "support/fake_application_launcher.h"
#include "support/fake_login_item.h"
#include "support/fake_preferences.h"
#include "support/fake_url_opener.h"
#include "view_kit/view_kit.h"

namespace lumeno {
namespace {

class OnboardingDesktopTest : public DesktopTest {
 protected:
  void open() {
    presenter.show();
    expectFocus(id());
  }
  [[nodiscard]] xcb_window_t id() const { return static_cast<xcb_window_t>(presenter.window()->winId()); }
  void pressInto(xcb_window_t window) {
    const XcbPtr<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
        stranger.xcb(), xcb_translate_coordinates(stranger.xcb(), window, stranger.root(), 20, 20), nullptr));
    stranger.movePointer(place->dst_x, place->dst_y);
    stranger.click(1);
    stranger.sync();
  }
  /// Asks the window manager for something, as a pager or a task bar does.
  void request(xcb_window_t window, const char* name, uint32_t value) {
    const XcbPtr<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        stranger.xcb(), xcb_intern_atom(stranger.xcb(), 0, static_cast<uint16_t>(qstrlen(name)), name),
        nullptr));
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom->atom;
    message.data.data32[0] = value;
    xcb_send_event(stranger.xcb(), 0, stranger.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    stranger.sync();
  }

  FakeAccessibility accessibility{scheduler};
  FakePreferences preferences;
  FakeLoginItem loginItem;
  FakeUrlOpener urlOpener{scheduler};
  FakeApplicationLauncher launcher{scheduler};
  FakeAppearance appearance;
  SettingsStore settings{preferences, loginItem};
  AccessibilityAuthorization authorization{accessibility, scheduler};
  Theme theme{settings, appearance};
  ViewKit kit{theme};
  OnboardingWindowPresenter presenter{kit,
                                      {.settings = settings,
                                       .accessibility = authorization,
                                       .urlOpener = urlOpener,
                                       .launcher = launcher,
                                       .scheduler = scheduler,
                                       .isTrayShown = {}}};
};

TEST_F(OnboardingDesktopTest, OpensInTheMiddleAndComesBackToTheFront) {
  open();
  const OnboardingWindow* window = presenter.window();
  EXPECT_EQ(window->size(), QSize(1120, 740));
  const QPoint offset = window->frameGeometry().center() - window->screen()->availableGeometry().center();
  EXPECT_LE(std::abs(offset.x()), 20);
  EXPECT_LE(std::abs(offset.y()), 30);

  // The user turns to another application: this one's last input is older then.
  const xcb_window_t other = stranger.window("other\0Other");
  constexpr uint32_t fromPager = 2;
  ASSERT_TRUE(waitFor([&] {
    request(other, "_NET_ACTIVE_WINDOW", fromPager);  // nothing before the window manager knows the window
    return stranger.focus() == other;
  }));
  pressInto(other);
  presenter.show();
  expectFocus(id());
  EXPECT_EQ(presenter.window(), window);
}

TEST_F(OnboardingDesktopTest, AMinimisedWindowRestsAndIsBroughtBack) {
  open();
  ASSERT_TRUE(waitFor([this] { return presenter.window()->isLive(); }));
  constexpr uint32_t iconic = 3;
  request(id(), "WM_CHANGE_STATE", iconic);
  // It is hidden before it is told that it is minimised.
  ASSERT_TRUE(waitFor([this] {
    return !presenter.window()->isLive() && presenter.window()->windowStates().testFlag(Qt::WindowMinimized);
  }));
  presenter.show();
  expectFocus(id());
  EXPECT_TRUE(waitFor([this] { return presenter.window()->isLive(); }));
}

TEST_F(OnboardingDesktopTest, TheCloseButtonOnlyCloses) {
  open();
  request(id(), "_NET_CLOSE_WINDOW", 0);
  ASSERT_TRUE(waitFor([this] { return !presenter.window(); }));
  EXPECT_FALSE(settings.hasCompletedOnboarding.get());
  open();
  presenter.window()->state().setUpLater();
  EXPECT_FALSE(presenter.window());
  EXPECT_TRUE(settings.hasCompletedOnboarding.get());
}

}  // namespace
}  // namespace lumeno
