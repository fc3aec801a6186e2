#pragma once

#include <QStringList>
#include <QUrl>

#include "ai/ai_service.h"

namespace lumeno {

/// The backend that talks to a local Ollama server over HTTP on the loopback address.
class OllamaService final : public AIService {
 public:
  explicit OllamaService(const QString& model) : model(model) {}

  QString model;
  QUrl endpoint{QStringLiteral("http://127.0.0.1:11434/api/generate")};
  QUrl tagsEndpoint{QStringLiteral("http://127.0.0.1:11434/api/tags")};

  [[nodiscard]] Job isAvailable(std::function<void(bool)> done) override;

  /// The names of the installed models in ascending order; empty on any trouble.
  [[nodiscard]] Job listModels(std::function<void(const QStringList&)> done) const;

  [[nodiscard]] Job complete(const QString& prompt,
                             std::function<void(std::variant<QString, AIFailure>)> done) override;

  [[nodiscard]] Job stream(const QString& prompt, std::function<void(const QString&)> onElement,
                           std::function<void(std::optional<AIFailure>)> onEnd) override;
};

}  // namespace lumeno
