#pragma once

#include <vector>

#include "records/action_suggestion.h"
#include "suggest/selection_cues.h"

namespace lumeno {

/// One suggestion of each of the twelve built kinds, in their fixed order, with the builders' own
/// confidences. The parts that cost a copy of the selection are left out; `completeSuggestion` adds them.
[[nodiscard]] std::vector<ActionSuggestion> buildSuggestions(const ContextAnalysis& analysis);

/// Fills in the cleaned name of a file-name suggestion and the map link of an address suggestion. It is
/// called only for suggestions that are going to be shown.
void completeSuggestion(ActionSuggestion& suggestion, const ContextAnalysis& analysis);

}  // namespace lumeno
