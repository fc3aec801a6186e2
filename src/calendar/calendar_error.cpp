#include "calendar/calendar_error.h"

namespace lumeno {

using namespace Qt::StringLiterals;

QString localizedDescription(CalendarError error) {
  switch (error) {
    case CalendarError::accessDenied:
      return u"Lumeno needs Calendar access. Grant it in System Settings › Privacy & Security › Calendars."_s;
    case CalendarError::noDate:
      return u"Couldn't find a date or time in the selection."_s;
    case CalendarError::noCalendar:
      return u"No default calendar is set up to add events to."_s;
  }
  return {};
}

}  // namespace lumeno
