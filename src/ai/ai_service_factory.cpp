#include "ai/ai_service_factory.h"

#include "ai/foundation_models_service.h"
#include "ai/ollama_service.h"

namespace lumeno {

AIServiceFactory aiServiceFactory(LanguageModel* onDeviceModel) {
  return [onDeviceModel](AIBackend backend, const QString& ollamaModel) -> std::unique_ptr<AIService> {
    switch (backend) {
      case AIBackend::appleIntelligence:
        return std::make_unique<FoundationModelsService>(onDeviceModel);
      case AIBackend::ollama:
        return std::make_unique<OllamaService>(ollamaModel);
    }
    Q_UNREACHABLE();
  };
}

}  // namespace lumeno
