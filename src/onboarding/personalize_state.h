#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>
#include <vector>

#include "base/observable.h"
#include "core/settings/settings_store.h"

namespace lumeno {

/// The personalise scene: preferences as QML reads and writes them. An assignment goes to the settings, and
/// what they then say comes back. Main thread.
class PersonalizeState : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool fileActionsEnabled READ fileActionsEnabled WRITE setFileActionsEnabled NOTIFY changed)
  Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY changed)
  Q_PROPERTY(bool resultSoundEnabled READ resultSoundEnabled WRITE setResultSoundEnabled NOTIFY changed)
  Q_PROPERTY(bool hapticsEnabled READ hapticsEnabled WRITE setHapticsEnabled NOTIFY changed)
  Q_PROPERTY(bool summonHotkeyEnabled READ summonHotkeyEnabled WRITE setSummonHotkeyEnabled NOTIFY changed)
  Q_PROPERTY(bool keyboardNavEnabled READ keyboardNavEnabled WRITE setKeyboardNavEnabled NOTIFY changed)
  Q_PROPERTY(QVariantList backends READ backends CONSTANT)
  Q_PROPERTY(int backend READ backend WRITE setBackend NOTIFY changed)
  Q_PROPERTY(QString backendDetail READ backendDetail NOTIFY changed)
  Q_PROPERTY(QString summonHotkey READ summonHotkey NOTIFY changed)

 public:
  /// The settings must outlive the state.
  explicit PersonalizeState(SettingsStore& settings);

  [[nodiscard]] bool fileActionsEnabled() const { return settings_.fileActionsEnabled.get(); }
  void setFileActionsEnabled(bool enabled) { settings_.fileActionsEnabled.set(enabled); }
  [[nodiscard]] bool launchAtLogin() const { return settings_.launchAtLogin.get(); }
  void setLaunchAtLogin(bool enabled) { settings_.launchAtLogin.set(enabled); }
  [[nodiscard]] bool resultSoundEnabled() const { return settings_.resultSoundEnabled.get(); }
  void setResultSoundEnabled(bool enabled) { settings_.resultSoundEnabled.set(enabled); }
  [[nodiscard]] bool hapticsEnabled() const { return settings_.hapticsEnabled.get(); }
  void setHapticsEnabled(bool enabled) { settings_.hapticsEnabled.set(enabled); }
  [[nodiscard]] bool summonHotkeyEnabled() const { return settings_.summonHotkeyEnabled.get(); }
  void setSummonHotkeyEnabled(bool enabled) { settings_.summonHotkeyEnabled.set(enabled); }
  [[nodiscard]] bool keyboardNavEnabled() const { return settings_.keyboardNavEnabled.get(); }
  void setKeyboardNavEnabled(bool enabled) { settings_.keyboardNavEnabled.set(enabled); }
  [[nodiscard]] static QVariantList backends();
  /// The place of the backend among them.
  [[nodiscard]] int backend() const;
  void setBackend(int index);
  /// What the backend is, in a sentence.
  [[nodiscard]] QString backendDetail() const;
  /// The shortcut as people read it.
  [[nodiscard]] QString summonHotkey() const;

 Q_SIGNALS:
  void changed();

 private:
  SettingsStore& settings_;
  std::vector<Subscription> subscriptions_;
};

}  // namespace lumeno
