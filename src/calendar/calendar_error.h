#pragma once

#include <QString>

namespace lumeno {

/// What keeps an event from being drafted or saved, apart from failures of the calendar itself.
enum class CalendarError {
  accessDenied,  ///< refused, restricted, or the request failed
  noDate,        ///< the text names no date or time
  noCalendar,    ///< there is no default calendar
};

/// The error as told to the user.
[[nodiscard]] QString localizedDescription(CalendarError error);

}  // namespace lumeno
