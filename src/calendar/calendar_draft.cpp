#include "calendar/calendar_draft.h"

#include "calendar/date_texts.h"

namespace lumeno {

QString CalendarDraft::dateRangeText() const {
  return DateTexts::current().range(startDate, endDate);
}

}  // namespace lumeno
