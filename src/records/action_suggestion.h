#pragma once

#include <QString>
#include <QUrl>
#include <optional>

#include "records/intent_kind.h"

namespace lumeno {

/// One chip offered for a selection. It has no identity: a list of suggestions is addressed by index.
struct ActionSuggestion {
  IntentKind kind = IntentKind::unknown;
  QString title;        ///< short chip label
  QString actionTitle;  ///< the action's own short title
  QString summary;      ///< one line under the title
  QString rationale;    ///< why it was offered
  double confidence = 0;
  QString preview;  ///< the instruction for the model, the detected value, or the cleaned file name
  std::optional<QUrl> directURL;  ///< when present, running the chip opens it

  bool operator==(const ActionSuggestion&) const = default;
};

[[nodiscard]] inline QString symbolName(const ActionSuggestion& suggestion) {
  return symbolName(suggestion.kind);
}

}  // namespace lumeno
