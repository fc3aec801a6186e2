#pragma once

#include <QMap>
#include <QString>

#include "records/intent_kind.h"
#include "records/selected_context.h"
#include "suggest/detect/surroundings.h"

namespace lumeno {

class TextAnalysis;

/// The verdict for one intent.
struct IntentClassification {
  double score = 0;
  QString rationale;
  bool operator==(const IntentClassification&) const = default;
};

/// Scores twelve intents of a selection independently of one another. A pure function: any thread, no state.
class IntentClassifier {
 public:
  /// Exactly the twelve scored kinds, or nothing for blank text.
  [[nodiscard]] QMap<IntentKind, IntentClassification> classify(
      const SelectedContext& context,
      const detect::Surroundings& surroundings = detect::Surroundings::current()) const;

  /// The same over an analysis that is shared with others, so that nothing is measured twice.
  [[nodiscard]] QMap<IntentKind, IntentClassification> classify(TextAnalysis& analysis) const;
};

}  // namespace lumeno
