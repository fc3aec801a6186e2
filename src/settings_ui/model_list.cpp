#include "settings_ui/model_list.h"

#include <utility>

#include "ai/ollama_service.h"

namespace lumeno {

ModelLister ollamaModelLister() {
  return [](const QString& model, std::function<void(const QStringList&)> done) {
    return OllamaService(model).listModels(std::move(done));
  };
}

ModelList::ModelList(SettingsStore& settings, ModelLister lister)
    : settings_(settings), lister_(std::move(lister)) {}

void ModelList::load() {
  isLoading_ = true;
  loadFailed_ = false;
  Q_EMIT changed();
  job_.cancel();
  job_ = lister_(settings_.ollamaModel.get(), [this](const QStringList& names) { finish(names); });
}

void ModelList::clear() {
  job_.cancel();
  models_.clear();
  isLoading_ = loadFailed_ = false;
  Q_EMIT changed();
}

void ModelList::finish(const QStringList& names) {
  models_ = names;
  loadFailed_ = names.isEmpty();
  isLoading_ = false;
  if (!names.isEmpty() && !names.contains(settings_.ollamaModel.get())) {
    settings_.ollamaModel.set(names.first());
  }
  Q_EMIT changed();
}

}  // namespace lumeno
