#pragma once

#include <QObject>
#include <QString>

#include "base/job.h"
#include "base/observable.h"
#include "capture/accessibility_authorization.h"
#include "platform/calendar_store.h"
#include "platform/file_manager.h"
#include "platform/url_opener.h"

namespace lumeno {

enum class CalendarPermissionState { notDetermined, granted, denied, restricted };

/// One permission as it stands, with the control that changes it.
struct PermissionRow {
  Q_GADGET
  Q_PROPERTY(bool present MEMBER present)
  Q_PROPERTY(QString title MEMBER title)
  Q_PROPERTY(QString detail MEMBER detail)
  Q_PROPERTY(QString note MEMBER note)
  Q_PROPERTY(QString icon MEMBER icon)
  Q_PROPERTY(QString tint MEMBER tint)
  Q_PROPERTY(QString button MEMBER button)
  Q_PROPERTY(QString buttonSymbol MEMBER buttonSymbol)
  Q_PROPERTY(bool buttonEnabled MEMBER buttonEnabled)

 public:
  bool present = true;
  QString title{};
  QString detail{};
  QString note{};  ///< what to do where the desktop could not be brought to do it
  QString icon{};
  QString tint{};
  QString button{};  ///< empty: there is none
  QString buttonSymbol{};
  bool buttonEnabled = true;

  bool operator==(const PermissionRow&) const = default;
};

/// The permission scene: what Lumeno may do, and how to ask for more. Main thread.
class PermissionState : public QObject {
  Q_OBJECT
  Q_PROPERTY(lumeno::PermissionRow accessibility READ accessibilityRow NOTIFY changed)
  Q_PROPERTY(lumeno::PermissionRow finder READ finderRow NOTIFY changed)
  Q_PROPERTY(lumeno::PermissionRow calendar READ calendarRow NOTIFY changed)

 public:
  /// All must outlive the state. Without a file manager or a calendar store there is no such row.
  PermissionState(AccessibilityAuthorization& accessibility, UrlOpener& urlOpener, FileManager* fileManager,
                  CalendarStore* calendarStore);

  [[nodiscard]] PermissionRow accessibilityRow() const;
  [[nodiscard]] PermissionRow finderRow() const;
  [[nodiscard]] PermissionRow calendarRow() const;

  /// The scene appears: looks at what may have changed meanwhile.
  void appear();

  Q_INVOKABLE void grantAccessibility();
  /// Reads the selected files once, so that whoever has to ask the user asks now.
  Q_INVOKABLE void primeFinder();
  /// What the calendar row's button does in its present state.
  Q_INVOKABLE void useCalendar();

 Q_SIGNALS:
  void changed();

 private:
  void setCalendarState(CalendarStore::AuthorizationStatus status);
  void openCalendarSettings();

  AccessibilityAuthorization& accessibility_;
  UrlOpener& urlOpener_;
  FileManager* fileManager_;
  CalendarStore* calendarStore_;

  bool hasNoAccessibilityPage_ = false;
  bool finderAutomationPrimed_ = false;
  CalendarPermissionState calendarState_ = CalendarPermissionState::notDetermined;
  bool isRequestingCalendar_ = false;
  bool hasNoCalendarPage_ = false;
  Job finderRead_;
  Job calendarRequest_;
  Job calendarRead_;
  Subscription trust_;
};

}  // namespace lumeno
