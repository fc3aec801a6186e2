#pragma once

#include <QString>
#include <functional>
#include <variant>

#include "ai/ai_service.h"
#include "base/job.h"
#include "records/action_suggestion.h"
#include "records/selected_context.h"
#include "suggest/local_templates.h"

namespace lumeno {

/// Runs one text suggestion: asks the configured backend, streams its growing answer, and stands in with the
/// local template when there is no answer. Made afresh for each run from the current settings.
class AIRunner {
 public:
  struct Partial {
    QString text;  ///< the whole answer so far
    bool operator==(const Partial&) const = default;
  };
  struct Finished {
    QString body;
    bool usedAI = false;  ///< false when the body is a local template
    bool operator==(const Finished&) const = default;
  };
  using Update = std::variant<Partial, Finished>;

  AIRunner(const AIServiceFactory& factory, AIBackend backend, const QString& ollamaModel);

  /// Delivers zero or more `Partial` and then exactly one `Finished`, on the main thread, never before the
  /// call returns; nothing any more once the handle is gone. The runner itself may go before.
  [[nodiscard]] Job run(const ActionSuggestion& suggestion, const SelectedContext& context,
                        std::function<void(const Update&)> onUpdate) const;

 private:
  AIServiceFactory factory_;
  AIBackend backend_;
  QString ollamaModel_;
  ActionRunner templates_;
};

}  // namespace lumeno
