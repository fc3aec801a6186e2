#pragma once

#include <QString>

#include "records/action_suggestion.h"
#include "records/selected_context.h"

namespace lumeno {

/// The prompt that runs `suggestion` on the selection of `context`. Pure.
[[nodiscard]] QString buildPrompt(const ActionSuggestion& suggestion, const SelectedContext& context);

}  // namespace lumeno
