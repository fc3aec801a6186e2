#pragma once

#include <QSet>
#include <QString>
#include <functional>
#include <utility>

#include "base/observable.h"
#include "core/settings/settings_enums.h"
#include "platform/login_item.h"
#include "platform/preferences_store.h"
#include "records/hotkey_config.h"
#include "records/intent_kind.h"

namespace lumeno {

/// One preference: observable, and written to the store at every assignment.
template <typename T>
class Preference {
 public:
  Preference(T initial, std::function<void(const T&)> write)
      : value_(std::move(initial)), write_(std::move(write)) {}

  [[nodiscard]] const T& get() const { return value_.get(); }
  /// Tells observers first, then stores, also when the value is the same. What is stored is the value that
  /// stands then, for an observer may have assigned another.
  void set(const T& value) {
    value_.set(value);
    write_(value_.get());
  }
  [[nodiscard]] Subscription subscribe(std::function<void(const T&)> observer) {
    return value_.subscribe(std::move(observer));
  }
  [[nodiscard]] Subscription subscribeDistinct(std::function<void(const T&)> observer) {
    return value_.subscribeDistinct(std::move(observer));
  }

 private:
  Observable<T> value_;
  std::function<void(const T&)> write_;
};

/// Every user preference, loaded once and written back the moment it changes. Main thread. A missing,
/// mistyped or undecodable stored value reads as the default and stays stored until the preference is next
/// assigned.
class SettingsStore {
 public:
  /// Both must outlive the store. Loading writes nothing and does not touch the login item.
  SettingsStore(PreferencesStore& defaults, LoginItem& loginItem,
                TriggerMode triggerMode = TriggerMode::hint);
  SettingsStore(const SettingsStore&) = delete;
  SettingsStore& operator=(const SettingsStore&) = delete;

 private:
  PreferencesStore& defaults_;
  LoginItem& loginItem_;
  bool isApplyingLoginItem_ = false;

 public:
  /// Not stored and without a setter: the program runs in hint mode.
  const TriggerMode triggerMode;

  Preference<AIBackend> backend;
  Preference<QString> ollamaModel;
  /// Display names in lower case (root locale). Changed by assignment to the observable, stored by
  /// `writeDisabledApps`.
  Observable<QSet<QString>> disabledApps;
  Preference<bool> summonHotkeyEnabled;
  Preference<HotkeyConfig> summonHotkey;
  Observable<QSet<IntentKind>> disabledActionKinds;
  Preference<bool> hasCompletedOnboarding;
  Preference<bool> resultSoundEnabled;
  Preference<bool> hapticsEnabled;
  Preference<AccentTheme> accentTheme;
  Preference<GlassIntensity> glassIntensity;
  Preference<bool> keyboardNavEnabled;
  Preference<bool> fileActionsEnabled;
  /// Never stored: the system's own registration is the truth. An assignment that cannot be carried out
  /// reverts to the real state.
  Preference<bool> launchAtLogin;

  /// Takes the real state of the login item again; others may have changed it.
  void refreshLaunchAtLogin();

  void writeDisabledApps();
  void setActionKind(IntentKind kind, bool enabled);

 private:
  void applyLoginItem(bool wanted);
};

}  // namespace lumeno
