#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "base/job.h"

namespace lumeno {

/// A language model that the operating system itself offers on this machine. Main thread; asynchronous.
class LanguageModel {
 public:
  virtual ~LanguageModel() = default;

  struct Options {
    int maximumResponseTokens = 0;
  };

  [[nodiscard]] virtual bool isAvailable() = 0;

  /// One request in a session of its own. `onSnapshot` receives the whole answer so far each time it grows,
  /// then `onEnd` is called once, with an error message when it failed.
  [[nodiscard]] virtual Job streamResponse(const QString& prompt, Options options,
                                           std::function<void(const QString&)> onSnapshot,
                                           std::function<void(std::optional<QString> error)> onEnd) = 0;
};

}  // namespace lumeno
