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
};

}  // namespace lumeno
