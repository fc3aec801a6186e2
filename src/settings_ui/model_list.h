#pragma once

#include <QObject>
#include <QStringList>
#include <functional>

#include "base/job.h"
#include "core/settings/settings_store.h"

namespace lumeno {

/// Asks for the names of the installed models, given the name of the chosen one; empty when there is no
/// answer.
using ModelLister =
    std::function<Job(const QString& model, std::function<void(const QStringList& names)> done)>;

/// Asks the Ollama server of this machine.
[[nodiscard]] ModelLister ollamaModelLister();

/// The models that can be chosen, loaded when they are to be seen. Main thread.
class ModelList : public QObject {
  Q_OBJECT
  Q_PROPERTY(QStringList models READ models NOTIFY changed)
  Q_PROPERTY(bool isLoading READ isLoading NOTIFY changed)
  Q_PROPERTY(bool loadFailed READ loadFailed NOTIFY changed)

 public:
  /// The settings must outlive the list.
  ModelList(SettingsStore& settings, ModelLister lister);

  [[nodiscard]] const QStringList& models() const { return models_; }
  [[nodiscard]] bool isLoading() const { return isLoading_; }
  [[nodiscard]] bool loadFailed() const { return loadFailed_; }

  /// Asks (again). The answer to an earlier question no longer counts. Chooses the first model when the one
  /// chosen is not installed.
  Q_INVOKABLE void load();
  /// Forgets everything, an answer that is still to come too.
  Q_INVOKABLE void clear();

 Q_SIGNALS:
  void changed();

 private:
  void finish(const QStringList& names);

  SettingsStore& settings_;
  ModelLister lister_;
  QStringList models_;
  bool isLoading_ = false;
  bool loadFailed_ = false;
  Job job_;
};

}  // namespace lumeno
