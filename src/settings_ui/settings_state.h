#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <vector>

#include "base/observable.h"
#include "core/settings/settings_store.h"
#include "settings_ui/application_list.h"
#include "settings_ui/model_list.h"
#include "settings_ui/shortcut_recorder.h"

namespace lumeno {

/// The settings as QML sees them, for as long as the window is open. Every assignment is in the store at
/// once, and every change of the store is told. Main thread.
class SettingsState : public QObject {
  Q_OBJECT
  Q_PROPERTY(int tab READ tab WRITE setTab NOTIFY tabChanged)
  Q_PROPERTY(QVariantList tabs READ tabs CONSTANT)
  Q_PROPERTY(QString tabName READ tabName NOTIFY tabChanged)
  Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY settingsChanged)
  Q_PROPERTY(
      bool summonHotkeyEnabled READ summonHotkeyEnabled WRITE setSummonHotkeyEnabled NOTIFY settingsChanged)
  Q_PROPERTY(
      bool fileActionsEnabled READ fileActionsEnabled WRITE setFileActionsEnabled NOTIFY settingsChanged)
  Q_PROPERTY(
      bool resultSoundEnabled READ resultSoundEnabled WRITE setResultSoundEnabled NOTIFY settingsChanged)
  Q_PROPERTY(bool hapticsEnabled READ hapticsEnabled WRITE setHapticsEnabled NOTIFY settingsChanged)
  Q_PROPERTY(
      bool keyboardNavEnabled READ keyboardNavEnabled WRITE setKeyboardNavEnabled NOTIFY settingsChanged)
  Q_PROPERTY(int accentTheme READ accentTheme WRITE setAccentTheme NOTIFY settingsChanged)
  Q_PROPERTY(int glassIntensity READ glassIntensity WRITE setGlassIntensity NOTIFY settingsChanged)
  Q_PROPERTY(int backend READ backend WRITE setBackend NOTIFY settingsChanged)
  Q_PROPERTY(QString ollamaModel READ ollamaModel WRITE setOllamaModel NOTIFY settingsChanged)
  Q_PROPERTY(QVariantList accentThemes READ accentThemes CONSTANT)
  Q_PROPERTY(QVariantList glassIntensities READ glassIntensities CONSTANT)
  Q_PROPERTY(QVariantList backends READ backends CONSTANT)
  Q_PROPERTY(QVariantList transforms READ transforms CONSTANT)
  Q_PROPERTY(QVariantList quickActions READ quickActions CONSTANT)
  Q_PROPERTY(QStringList disabledActionKinds READ disabledActionKinds NOTIFY disabledActionKindsChanged)
  Q_PROPERTY(QVariantList disabledApps READ disabledApps NOTIFY disabledAppsChanged)
  Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
  Q_PROPERTY(lumeno::ShortcutRecorder* recorder READ recorder CONSTANT)
  Q_PROPERTY(lumeno::ModelList* models READ models CONSTANT)
  Q_PROPERTY(lumeno::ApplicationList* applications READ applications CONSTANT)

 public:
  /// All must outlive the state.
  struct Services {
    SettingsStore& settings;
    KeyRecorder& keyRecorder;
    SystemSound& sound;
    ApplicationCatalog& applications;
    ModelLister modelLister;
    /// What is wrong with the file of the preferences, for the user; empty when all is well.
    Observable<QString>& preferenceProblem;
  };
  explicit SettingsState(const Services& services);

  [[nodiscard]] int tab() const { return tab_; }
  /// Leaving a tab ends a recording and the loading of models.
  void setTab(int tab);
  /// Maps with "label" and "symbol".
  [[nodiscard]] static QVariantList tabs();
  [[nodiscard]] QString tabName() const;

  [[nodiscard]] bool launchAtLogin() const { return settings_.launchAtLogin.get(); }
  void setLaunchAtLogin(bool wanted) { settings_.launchAtLogin.set(wanted); }
  [[nodiscard]] bool summonHotkeyEnabled() const { return settings_.summonHotkeyEnabled.get(); }
  void setSummonHotkeyEnabled(bool enabled) { settings_.summonHotkeyEnabled.set(enabled); }
  [[nodiscard]] bool fileActionsEnabled() const { return settings_.fileActionsEnabled.get(); }
  void setFileActionsEnabled(bool enabled) { settings_.fileActionsEnabled.set(enabled); }
  [[nodiscard]] bool resultSoundEnabled() const { return settings_.resultSoundEnabled.get(); }
  void setResultSoundEnabled(bool enabled) { settings_.resultSoundEnabled.set(enabled); }
  [[nodiscard]] bool hapticsEnabled() const { return settings_.hapticsEnabled.get(); }
  void setHapticsEnabled(bool enabled) { settings_.hapticsEnabled.set(enabled); }
  [[nodiscard]] bool keyboardNavEnabled() const { return settings_.keyboardNavEnabled.get(); }
  void setKeyboardNavEnabled(bool enabled) { settings_.keyboardNavEnabled.set(enabled); }

  // Choices by their position among what is offered; a position that is not offered changes nothing.
  [[nodiscard]] int accentTheme() const { return static_cast<int>(settings_.accentTheme.get()); }
  void setAccentTheme(int index);
  [[nodiscard]] int glassIntensity() const { return static_cast<int>(settings_.glassIntensity.get()); }
  void setGlassIntensity(int index);
  [[nodiscard]] int backend() const { return static_cast<int>(settings_.backend.get()); }
  void setBackend(int index);
  [[nodiscard]] const QString& ollamaModel() const { return settings_.ollamaModel.get(); }
  void setOllamaModel(const QString& model) { settings_.ollamaModel.set(model); }
  [[nodiscard]] static QVariantList accentThemes();
  [[nodiscard]] static QVariantList glassIntensities();
  [[nodiscard]] static QVariantList backends();

  /// The kinds with a switch: maps with "kind" (the raw value), "title", "symbol" and "tint".
  [[nodiscard]] static QVariantList transforms();
  [[nodiscard]] static QVariantList quickActions();
  /// Raw values.
  [[nodiscard]] QStringList disabledActionKinds() const;
  Q_INVOKABLE void setActionKind(const QString& kind, bool enabled);

  /// Maps with "name" (as stored) and "title", in the order of the names.
  [[nodiscard]] QVariantList disabledApps() const;
  /// Takes an application's display name.
  Q_INVOKABLE void disableApp(const QString& displayName);
  /// Takes a name as stored.
  Q_INVOKABLE void enableApp(const QString& name);

  [[nodiscard]] const QString& problem() const { return problem_; }
  [[nodiscard]] ShortcutRecorder* recorder() { return &recorder_; }
  [[nodiscard]] ModelList* models() { return &models_; }
  [[nodiscard]] ApplicationList* applications() { return &applications_; }

 Q_SIGNALS:
  void tabChanged();
  void settingsChanged();
  void disabledActionKindsChanged();
  void disabledAppsChanged();
  void problemChanged();

 private:
  void setDisabledApps(const QSet<QString>& names);

  SettingsStore& settings_;
  ShortcutRecorder recorder_;
  ModelList models_;
  ApplicationList applications_;
  int tab_ = 0;
  QString problem_;
  std::vector<Subscription> subscriptions_;
};

}  // namespace lumeno
