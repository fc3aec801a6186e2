#include "onboarding/permission_state.h"

#include "unit/onboarding/onboarding_fixture.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using Status = CalendarStore::AuthorizationStatus;

const QString settingsUrl = u"x-apple.systempreferences:com.apple.preference.security?"_s;

class PermissionStateTest : public OnboardingFixture {
 protected:
  void appearWith(Status status) {
    calendars.status = status;
    permissions.appear();
    scheduler.advance(calendars.answerTime);
  }

  PermissionState permissions{authorization, urlOpener, &fileManager, &calendars};
};

TEST_F(PermissionStateTest, AccessibilityIsFollowedLive) {
  EXPECT_EQ(permissions.accessibilityRow().detail,
            u"Required for reading selected text, positioning the HUD, and replacing text."_s);
  EXPECT_EQ(permissions.accessibilityRow().icon, u"accessibility"_s);
  EXPECT_EQ(permissions.accessibilityRow().button, u"Grant Accessibility Access"_s);
  EXPECT_EQ(permissions.accessibilityRow().buttonSymbol, u"arrow.up.forward.app"_s);

  int changes = 0;
  QObject::connect(&permissions, &PermissionState::changed, [&] { ++changes; });
  accessibility.trusted = true;
  scheduler.advance(1000);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(permissions.accessibilityRow().detail,
            u"Granted. Selections, HUD placement, and Replace are ready."_s);
  EXPECT_EQ(permissions.accessibilityRow().icon, u"checkmark.circle.fill"_s);
  EXPECT_EQ(permissions.accessibilityRow().button, QString());
}

TEST_F(PermissionStateTest, GrantingAsksAndOpensTheDesktopsPage) {
  permissions.grantAccessibility();
  scheduler.advance(0);
  EXPECT_EQ(accessibility.trustRequests, 1);
  EXPECT_EQ(urlOpener.opened, std::vector{QUrl(settingsUrl + u"Privacy_Accessibility"_s)});
  EXPECT_EQ(permissions.accessibilityRow().note, QString());

  urlOpener.succeeds = false;
  permissions.grantAccessibility();
  scheduler.advance(0);
  EXPECT_TRUE(permissions.accessibilityRow().note.contains(u"could not be switched on"_s));

  accessibility.grantsOnRequest = true;
  permissions.grantAccessibility();
  scheduler.advance(0);
  EXPECT_TRUE(permissions.accessibilityRow().note.contains(u"may need a restart"_s));
  permissions.appear();
  EXPECT_EQ(permissions.accessibilityRow().note, QString());
}

TEST_F(PermissionStateTest, PrimingReadsTheSelectedFilesOnceAndIgnoresTheAnswer) {
  fileManager.selected = std::nullopt;
  EXPECT_EQ(permissions.finderRow().button, u"Prime"_s);
  permissions.primeFinder();
  EXPECT_EQ(fileManager.reads, std::vector{FileManager::Read::priming});
  EXPECT_EQ(permissions.finderRow().button, u"Primed"_s);
  EXPECT_EQ(permissions.finderRow().buttonSymbol, u"checkmark"_s);
  EXPECT_EQ(permissions.finderRow().detail, u"Primed. If macOS needed confirmation, it has already asked."_s);
  scheduler.advance(10);
  EXPECT_EQ(permissions.finderRow().button, u"Primed"_s);
}

TEST_F(PermissionStateTest, TheCalendarRowOfEachState) {
  const struct {
    Status status;
    QString detail, icon, button, symbol;
  } states[] = {
      {Status::notDetermined,
       u"Optional. Grant now so date selections can add real events without another detour."_s,
       u"calendar.badge.plus"_s, u"Allow"_s, u"calendar.badge.plus"_s},
      {Status::granted, u"Granted. Date selections can become calendar events."_s, u"checkmark.circle.fill"_s,
       u"Allowed"_s, u"checkmark"_s},
      {Status::denied,
       u"Denied. Date suggestions still appear, but adding events needs access in System Settings."_s,
       u"exclamationmark.triangle.fill"_s, u"Open Settings"_s, u"arrow.up.forward.app"_s},
      {Status::restricted,
       u"Restricted by this Mac. Date suggestions still work, but events cannot be saved."_s,
       u"exclamationmark.triangle.fill"_s, u"Open Settings"_s, u"arrow.up.forward.app"_s},
  };
  for (const auto& each : states) {
    appearWith(each.status);
    const PermissionRow row = permissions.calendarRow();
    EXPECT_EQ(row.detail, each.detail);
    EXPECT_EQ(row.icon, each.icon);
    EXPECT_EQ(row.button, each.button);
    EXPECT_EQ(row.buttonSymbol, each.symbol);
    EXPECT_TRUE(row.buttonEnabled);
  }
}

TEST_F(PermissionStateTest, ARequestEndsInWhateverTheSystemSaysThen) {
  using Access = CalendarStore::Access;
  const struct {
    Access access;
    Status after;
    QString button;
  } ends[] = {{Access::granted, Status::granted, u"Allowed"_s},
              {Access::refused, Status::denied, u"Open Settings"_s},
              {Access::failed, Status::notDetermined, u"Allow"_s}};
  calendars.answerTime = std::chrono::milliseconds(50);
  for (const auto& each : ends) {
    appearWith(Status::notDetermined);
    calendars.requests = 0;
    calendars.access = each.access;
    permissions.useCalendar();
    EXPECT_FALSE(permissions.calendarRow().buttonEnabled);
    permissions.useCalendar();
    EXPECT_EQ(calendars.requests, 1) << "one request at a time";
    permissions.appear();
    scheduler.advance(60);
    EXPECT_FALSE(permissions.calendarRow().buttonEnabled) << "a scene that appears again ends no request";
    calendars.status = each.after;
    scheduler.advance(50);
    EXPECT_EQ(permissions.calendarRow().button, each.button);
    EXPECT_TRUE(permissions.calendarRow().buttonEnabled);
  }
}

TEST_F(PermissionStateTest, TheCalendarButtonDoesWhatItsStateAllows) {
  appearWith(Status::granted);
  permissions.useCalendar();
  scheduler.advance(10);
  EXPECT_EQ(calendars.requests, 0);
  EXPECT_TRUE(urlOpener.opened.empty());

  appearWith(Status::denied);
  permissions.useCalendar();
  scheduler.advance(0);
  EXPECT_EQ(urlOpener.opened, std::vector{QUrl(settingsUrl + u"Privacy_Calendars"_s)});
  EXPECT_EQ(permissions.calendarRow().note, QString());
  urlOpener.succeeds = false;
  permissions.useCalendar();
  scheduler.advance(0);
  EXPECT_TRUE(permissions.calendarRow().note.contains(u"no such settings page"_s));
}

TEST_F(PermissionStateTest, WhatIsNotThereHasNoRow) {
  PermissionState without(authorization, urlOpener, nullptr, nullptr);
  without.appear();
  without.primeFinder();
  without.useCalendar();
  EXPECT_FALSE(without.finderRow().present);
  EXPECT_FALSE(without.calendarRow().present);
  EXPECT_TRUE(without.accessibilityRow().present);
}

}  // namespace
}  // namespace lumeno
