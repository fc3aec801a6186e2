#pragma once

#include <QString>

#include "records/intent_kind.h"
#include "records/selected_context.h"

namespace lumeno {

/// The fixed local text of each kind, for when no language model can answer. Pure; never fails.
class ActionRunner {
 public:
  /// `text` is used as given; of the context, the application and the window title.
  [[nodiscard]] QString localText(IntentKind kind, const QString& text, const SelectedContext& context) const;
};

}  // namespace lumeno
