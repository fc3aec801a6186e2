#pragma once

#include <vector>

#include "records/action_suggestion.h"
#include "suggest/text_analysis.h"

namespace lumeno {

/// Ready-to-open suggestions: for the first link, e-mail address and phone number, in the order of the text.
[[nodiscard]] std::vector<ActionSuggestion> directActions(TextAnalysis& analysis);

}  // namespace lumeno
