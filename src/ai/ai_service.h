#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <variant>

#include "base/job.h"
#include "core/settings/settings_enums.h"

namespace lumeno {

enum class AIServiceError {
  unavailable,  ///< the backend refused the request or is not there
  empty,        ///< the model answered with nothing
};
[[nodiscard]] QString message(AIServiceError error);

/// Why a request failed: one of the service's own errors, or the transport's, with the text to show.
struct AIFailure {
  std::optional<AIServiceError> serviceError;
  QString message;

  [[nodiscard]] static AIFailure of(AIServiceError error) { return {error, lumeno::message(error)}; }
};

/// A backend that answers prompts. Main thread; everything is asynchronous: no callback is made before the
/// call returns. A returned job keeps what it needs alive; the service itself may go. Destroying the job
/// stops delivery and the work behind it.
class AIService {
 public:
  virtual ~AIService() = default;

  /// Whether the backend can take a request now. Any trouble is false.
  [[nodiscard]] virtual Job isAvailable(std::function<void(bool)> done) = 0;

  /// The model's whole answer, trimmed and not empty, or why there is none.
  [[nodiscard]] virtual Job complete(const QString& prompt,
                                     std::function<void(std::variant<QString, AIFailure>)> done) = 0;

  /// `onElement` receives the complete answer so far each time it grows; then `onEnd` is called exactly once,
  /// with a failure when the stream broke.
  [[nodiscard]] virtual Job stream(const QString& prompt, std::function<void(const QString&)> onElement,
                                   std::function<void(std::optional<AIFailure>)> onEnd) = 0;
};

/// Makes the service for a backend and a model name, afresh for each use.
using AIServiceFactory =
    std::function<std::unique_ptr<AIService>(AIBackend backend, const QString& ollamaModel)>;

}  // namespace lumeno
