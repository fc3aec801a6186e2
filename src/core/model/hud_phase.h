#pragma once

#include <QString>
#include <variant>

#include "calendar/calendar_draft.h"
#include "records/action_result.h"
#include "records/action_suggestion.h"

namespace lumeno {

/// What the HUD card shows.
namespace phase {
struct Generating {
  ActionSuggestion suggestion;
  QString partial;  ///< the text so far, empty at first
  bool operator==(const Generating&) const = default;
};
struct CalendarConfirm {
  CalendarDraft draft;
  bool operator==(const CalendarConfirm&) const = default;
};
struct Result {
  ActionResult result;
  bool operator==(const Result&) const = default;
};
struct Notice {
  QString message;
  bool operator==(const Notice&) const = default;
};
struct Suggestions {
  bool operator==(const Suggestions&) const = default;
};
}  // namespace phase

using HUDPhase =
    std::variant<phase::Suggestions, phase::Generating, phase::CalendarConfirm, phase::Result, phase::Notice>;

/// "suggestions", "generating", "calendarConfirm", "result" or "notice".
[[nodiscard]] QString phaseName(const HUDPhase& phase);

}  // namespace lumeno
