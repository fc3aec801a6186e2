#pragma once

#include <QDateTime>
#include <QString>

namespace lumeno {

/// An event about to be added to the user's default calendar.
struct CalendarDraft {
  QString title;
  QDateTime startDate;
  QDateTime endDate;
  QString calendarTitle;
  bool operator==(const CalendarDraft&) const = default;

  /// The start's day and both times, in the user's locale and time zone:
  /// "Monday, November 16, 2026 · 3:00 PM – 4:00 PM".
  [[nodiscard]] QString dateRangeText() const;
};

}  // namespace lumeno
