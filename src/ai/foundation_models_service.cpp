#include "ai/foundation_models_service.h"

#include "base/qt_scheduler.h"
#include "base/text.h"

namespace lumeno {

namespace {

constexpr LanguageModel::Options generationOptions{.maximumResponseTokens = 1500};

/// Runs `action` after the caller has its job.
Job later(std::function<void()> action) {
  return QtScheduler().after(std::chrono::milliseconds(0), std::move(action));
}

}  // namespace

Job FoundationModelsService::isAvailable(std::function<void(bool)> done) {
  return later([done = std::move(done), available = hasModel()] { done(available); });
}

Job FoundationModelsService::complete(const QString& prompt,
                                      std::function<void(std::variant<QString, AIFailure>)> done) {
  const auto latest = std::make_shared<QString>();
  return stream(
      prompt, [latest](const QString& element) { *latest = element; },
      [latest, done = std::move(done)](const std::optional<AIFailure>& failure) {
        const QString answer = text::trimmed(*latest).toString();
        if (failure) {
          done(*failure);
        } else if (answer.isEmpty()) {
          done(AIFailure::of(AIServiceError::empty));
        } else {
          done(answer);
        }
      });
}

Job FoundationModelsService::stream(const QString& prompt, std::function<void(const QString&)> onElement,
                                    std::function<void(std::optional<AIFailure>)> onEnd) {
  if (!hasModel()) {
    return later([onEnd = std::move(onEnd)] { onEnd(AIFailure::of(AIServiceError::unavailable)); });
  }
  return model_->streamResponse(
      prompt, generationOptions, std::move(onElement),
      [onEnd = std::move(onEnd)](const std::optional<QString>& error) {
        onEnd(error ? std::optional(AIFailure{std::nullopt, *error}) : std::nullopt);
      });
}

}  // namespace lumeno
