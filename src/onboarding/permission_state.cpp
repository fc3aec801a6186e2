#include "onboarding/permission_state.h"

#include <QPointer>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

CalendarPermissionState permissionState(CalendarStore::AuthorizationStatus status) {
  switch (status) {
    case CalendarStore::AuthorizationStatus::notDetermined:
      return CalendarPermissionState::notDetermined;
    case CalendarStore::AuthorizationStatus::granted:
      return CalendarPermissionState::granted;
    case CalendarStore::AuthorizationStatus::denied:
      return CalendarPermissionState::denied;
    case CalendarStore::AuthorizationStatus::restricted:
      return CalendarPermissionState::restricted;
  }
  return CalendarPermissionState::notDetermined;
}

}  // namespace

PermissionState::PermissionState(AccessibilityAuthorization& accessibility, UrlOpener& urlOpener,
                                 FileManager* fileManager, CalendarStore* calendarStore)
    : accessibility_(accessibility),
      urlOpener_(urlOpener),
      fileManager_(fileManager),
      calendarStore_(calendarStore) {
  trust_ = accessibility.isTrusted().subscribe([this](bool) { Q_EMIT changed(); });
}

PermissionRow PermissionState::accessibilityRow() const {
  PermissionRow row{.title = u"Accessibility access"_s};
  if (accessibility_.isTrusted().get()) {
    row.detail = u"Granted. Selections, HUD placement, and Replace are ready."_s;
    row.icon = u"checkmark.circle.fill"_s;
    row.tint = u"green"_s;
    if (hasNoAccessibilityPage_) {
      row.note = u"Lumeno has switched accessibility on. Applications started before may need a restart."_s;
    }
    return row;
  }
  row.detail = u"Required for reading selected text, positioning the HUD, and replacing text."_s;
  row.icon = u"accessibility"_s;
  row.tint = u"blue"_s;
  row.button = u"Grant Accessibility Access"_s;
  row.buttonSymbol = u"arrow.up.forward.app"_s;
  if (hasNoAccessibilityPage_) {
    row.note = u"Accessibility could not be switched on, and this desktop has no settings page for it."_s;
  }
  return row;
}

PermissionRow PermissionState::finderRow() const {
  const bool primed = finderAutomationPrimed_;
  return {.present = fileManager_ != nullptr,
          .title = u"Finder Automation"_s,
          .detail = primed ? u"Primed. If macOS needed confirmation, it has already asked."_s
                           : u"Needed only for Finder file selections. macOS may ask the first time Lumeno "
                             "reads selected files."_s,
          .icon = u"folder.fill.badge.gearshape"_s,
          .tint = u"orange"_s,
          .button = primed ? u"Primed"_s : u"Prime"_s,
          .buttonSymbol = primed ? u"checkmark"_s : u"arrow.up.forward.app"_s};
}

PermissionRow PermissionState::calendarRow() const {
  PermissionRow row{.present = calendarStore_ != nullptr, .title = u"Calendar write access"_s};
  const auto needsSettings = [&](const QString& detail) {
    row.detail = detail;
    row.icon = u"exclamationmark.triangle.fill"_s;
    row.tint = u"orange"_s;
    row.button = u"Open Settings"_s;
    row.buttonSymbol = u"arrow.up.forward.app"_s;
    if (hasNoCalendarPage_) {
      row.note =
          u"This desktop has no such settings page. Look in the settings of your calendar application."_s;
    }
  };
  switch (calendarState_) {
    case CalendarPermissionState::notDetermined:
      row.detail = u"Optional. Grant now so date selections can add real events without another detour."_s;
      row.icon = u"calendar.badge.plus"_s;
      row.tint = u"indigo"_s;
      row.button = u"Allow"_s;
      row.buttonSymbol = u"calendar.badge.plus"_s;
      row.buttonEnabled = !isRequestingCalendar_;
      break;
    case CalendarPermissionState::granted:
      row.detail = u"Granted. Date selections can become calendar events."_s;
      row.icon = u"checkmark.circle.fill"_s;
      row.tint = u"green"_s;
      row.button = u"Allowed"_s;
      row.buttonSymbol = u"checkmark"_s;
      break;
    case CalendarPermissionState::denied:
      needsSettings(
          u"Denied. Date suggestions still appear, but adding events needs access in System Settings."_s);
      break;
    case CalendarPermissionState::restricted:
      needsSettings(u"Restricted by this Mac. Date suggestions still work, but events cannot be saved."_s);
      break;
  }
  return row;
}

void PermissionState::appear() {
  hasNoAccessibilityPage_ = false;
  hasNoCalendarPage_ = false;
  if (calendarStore_ && !isRequestingCalendar_) {
    calendarRead_ = calendarStore_->authorizationStatus(
        [this](CalendarStore::AuthorizationStatus status) { setCalendarState(status); });
  }
  Q_EMIT changed();
}

void PermissionState::grantAccessibility() {
  accessibility_.requestAccess();
  const QUrl page(u"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"_s);
  urlOpener_.open(page, [self = QPointer(this)](bool opened) {
    if (!self) return;
    self->hasNoAccessibilityPage_ = !opened;
    Q_EMIT self->changed();
  });
}

void PermissionState::primeFinder() {
  if (!fileManager_) return;
  finderRead_ = fileManager_->readSelection(FileManager::Read::priming, [](const auto&) {});
  finderAutomationPrimed_ = true;
  Q_EMIT changed();
}

void PermissionState::useCalendar() {
  if (!calendarStore_ || isRequestingCalendar_) return;
  switch (calendarState_) {
    case CalendarPermissionState::notDetermined:
      isRequestingCalendar_ = true;
      // However it ends, what counts is what the system says afterwards.
      calendarRequest_ = calendarStore_->requestWriteAccess([this](CalendarStore::Access) {
        calendarRead_ =
            calendarStore_->authorizationStatus([this](CalendarStore::AuthorizationStatus status) {
              isRequestingCalendar_ = false;
              setCalendarState(status);
            });
      });
      Q_EMIT changed();
      break;
    case CalendarPermissionState::granted:
      break;
    case CalendarPermissionState::denied:
    case CalendarPermissionState::restricted:
      openCalendarSettings();
      break;
  }
}

void PermissionState::setCalendarState(CalendarStore::AuthorizationStatus status) {
  calendarState_ = permissionState(status);
  Q_EMIT changed();
}

void PermissionState::openCalendarSettings() {
  const QUrl page(u"x-apple.systempreferences:com.apple.preference.security?Privacy_Calendars"_s);
  urlOpener_.open(page, [self = QPointer(this)](bool opened) {
    if (!self) return;
    self->hasNoCalendarPage_ = !opened;
    Q_EMIT self->changed();
  });
}

}  // namespace lumeno
