#pragma once

#include <QSet>
#include <QUrl>
#include <vector>

#include "records/action_suggestion.h"
#include "records/selected_context.h"
#include "suggest/detect/surroundings.h"
#include "suggest/intent_classifier.h"

namespace lumeno {

/// Turns a selection into the ranked list of chips. A pure function of its arguments: any thread, no state.
class SuggestionEngine {
 public:
  /// Never fails. Empty means that there is nothing to show; the list is not capped.
  [[nodiscard]] std::vector<ActionSuggestion> suggestions(
      const SelectedContext& context, const QSet<IntentKind>& disabledKinds,
      const detect::Surroundings& surroundings = detect::Surroundings::current()) const;

 private:
  IntentClassifier classifier_;
};

/// The kinds under which the settings screen groups its switches.
[[nodiscard]] const std::vector<IntentKind>& transformKinds();
[[nodiscard]] const std::vector<IntentKind>& quickActionKinds();

/// The short form of a link: host and path, without scheme, query and fragment.
[[nodiscard]] QString linkDisplay(const QUrl& url);

}  // namespace lumeno
