#pragma once

#include <gtest/gtest.h>

#include "onboarding/onboarding_state.h"
#include "support/fake_accessibility.h"
#include "support/fake_application_launcher.h"
#include "support/fake_calendar_store.h"
#include "support/fake_file_manager.h"
#include "support/fake_login_item.h"
#include "support/fake_preferences.h"
#include "support/fake_url_opener.h"
#include "support/manual_scheduler.h"
#include "support/print_text.h"

namespace lumeno {

/// What onboarding uses, as fakes, except the settings and the trust.
class OnboardingFixture : public testing::Test {
 protected:
  ManualScheduler scheduler;
  FakeAccessibility accessibility{scheduler};
  FakePreferences preferences;
  FakeLoginItem loginItem;
  FakeUrlOpener urlOpener{scheduler};
  FakeApplicationLauncher launcher{scheduler};
  FakeFileManager fileManager{scheduler};
  FakeCalendarStore calendars{scheduler};
  SettingsStore settings{preferences, loginItem};
  AccessibilityAuthorization authorization{untrusted(), scheduler};
  bool isTrayShown = true;
  OnboardingServices services{.settings = settings,
                              .accessibility = authorization,
                              .urlOpener = urlOpener,
                              .launcher = launcher,
                              .scheduler = scheduler,
                              .fileManager = &fileManager,
                              .calendarStore = &calendars,
                              .isTrayShown = [this] { return isTrayShown; }};

 private:
  FakeAccessibility& untrusted() {
    accessibility.trusted = false;
    return accessibility;
  }
};

}  // namespace lumeno
