#pragma once

#include "ai/ai_service.h"
#include "platform/language_model.h"

namespace lumeno {

/// The backend that asks the operating system's own language model. Each request has a session of its own.
class FoundationModelsService final : public AIService {
 public:
  /// `model` is null where the system has none; otherwise it must outlive the service and its jobs.
  explicit FoundationModelsService(LanguageModel* model) : model_(model) {}

  [[nodiscard]] Job isAvailable(std::function<void(bool)> done) override;

  [[nodiscard]] Job complete(const QString& prompt,
                             std::function<void(std::variant<QString, AIFailure>)> done) override;

  /// Elements are delivered as the model gives them, not trimmed.
  [[nodiscard]] Job stream(const QString& prompt, std::function<void(const QString&)> onElement,
                           std::function<void(std::optional<AIFailure>)> onEnd) override;

 private:
  [[nodiscard]] bool hasModel() const { return model_ && model_->isAvailable(); }

  LanguageModel* model_;
};

}  // namespace lumeno
