#pragma once

#include <QObject>
#include <QString>
#include <functional>

#include "core/settings/settings_store.h"
#include "onboarding/permission_state.h"
#include "onboarding/personalize_state.h"
#include "platform/application_launcher.h"

namespace lumeno {

/// The services that onboarding uses. All must outlive it.
struct OnboardingServices {
  SettingsStore& settings;
  AccessibilityAuthorization& accessibility;
  UrlOpener& urlOpener;
  ApplicationLauncher& launcher;
  Scheduler& scheduler;
  FileManager* fileManager = nullptr;      ///< null: nothing is said of file actions
  CalendarStore* calendarStore = nullptr;  ///< null: nothing is asked about calendars
  /// Whether the desktop shows tray items; asked when the last scene appears. Empty: it does.
  std::function<bool()> isTrayShown;
};

/// The five scenes, as their views see them, and the way from one to the next. Main thread.
class OnboardingState : public QObject {
  Q_OBJECT
  Q_PROPERTY(int scene READ sceneIndex NOTIFY sceneChanged)
  Q_PROPERTY(int sceneCount READ sceneCount CONSTANT)
  Q_PROPERTY(QString primaryLabel READ primaryLabel NOTIFY sceneChanged)
  Q_PROPERTY(QString primarySymbol READ primarySymbol NOTIFY sceneChanged)
  Q_PROPERTY(bool canGoBack READ canGoBack NOTIFY sceneChanged)
  Q_PROPERTY(bool canSetUpLater READ canSetUpLater NOTIFY sceneChanged)
  Q_PROPERTY(bool hasFileActions READ hasFileActions CONSTANT)
  Q_PROPERTY(QString launchNote READ launchNote NOTIFY notesChanged)
  Q_PROPERTY(QString trayNote READ trayNote NOTIFY notesChanged)
  Q_PROPERTY(lumeno::PermissionState* permissions READ permissions CONSTANT)
  Q_PROPERTY(lumeno::PersonalizeState* preferences READ preferences CONSTANT)

 public:
  enum class Scene { welcome, capabilities, permission, personalize, ready };

  /// `onFinish` ends onboarding; it may destroy this object later, not at once.
  OnboardingState(const OnboardingServices& services, std::function<void()> onFinish);

  [[nodiscard]] Scene scene() const { return scene_; }
  [[nodiscard]] int sceneIndex() const { return static_cast<int>(scene_); }
  [[nodiscard]] int sceneCount() const { return static_cast<int>(Scene::ready) + 1; }
  [[nodiscard]] QString primaryLabel() const;
  [[nodiscard]] QString primarySymbol() const;
  [[nodiscard]] bool canGoBack() const { return scene_ != Scene::welcome; }
  [[nodiscard]] bool canSetUpLater() const { return scene_ != Scene::ready; }
  [[nodiscard]] bool hasFileActions() const { return services_.fileManager != nullptr; }
  /// What to do where an application could not be opened; empty when nothing has failed.
  [[nodiscard]] const QString& launchNote() const { return launchNote_; }
  /// How to reach the settings where there is no tray; empty where there is one.
  [[nodiscard]] const QString& trayNote() const { return trayNote_; }
  [[nodiscard]] PermissionState* permissions() { return &permissions_; }
  [[nodiscard]] PersonalizeState* preferences() { return &preferences_; }

  /// To the scene `step` further; nothing happens beyond either end.
  Q_INVOKABLE void move(int step);
  /// What the primary button and Return do.
  Q_INVOKABLE void activatePrimary();
  Q_INVOKABLE void setUpLater();
  Q_INVOKABLE void openTextEdit();
  Q_INVOKABLE void openFinder();

 Q_SIGNALS:
  void sceneChanged();
  void notesChanged();

 private:
  /// For the launcher: shows `text` if nothing was opened.
  std::function<void(bool)> noteIfFailed(const QString& text);

  OnboardingServices services_;
  std::function<void()> onFinish_;
  PermissionState permissions_;
  PersonalizeState preferences_;
  Scene scene_ = Scene::welcome;
  QString launchNote_;
  QString trayNote_;
};

}  // namespace lumeno
