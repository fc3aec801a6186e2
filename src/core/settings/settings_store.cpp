#include "core/settings/settings_store.h"

#include <QJsonArray>
#include <QJsonObject>
#include <optional>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr auto backendKey = "Lumeno.aiBackend"_L1;
constexpr auto ollamaModelKey = "Lumeno.ollamaModel"_L1;
constexpr auto disabledAppsKey = "Lumeno.disabledApps"_L1;
constexpr auto summonHotkeyEnabledKey = "Lumeno.summonHotkeyEnabled"_L1;
constexpr auto summonHotkeyKey = "Lumeno.summonHotkey"_L1;
constexpr auto disabledActionKindsKey = "Lumeno.disabledActionKinds"_L1;
constexpr auto hasCompletedOnboardingKey = "Lumeno.hasCompletedOnboarding"_L1;
constexpr auto resultSoundEnabledKey = "Lumeno.resultSoundEnabled"_L1;
constexpr auto hapticsEnabledKey = "Lumeno.hapticsEnabled"_L1;
constexpr auto accentThemeKey = "Lumeno.accentTheme"_L1;
constexpr auto glassIntensityKey = "Lumeno.glassIntensity"_L1;
constexpr auto keyboardNavEnabledKey = "Lumeno.keyboardNavEnabled"_L1;
constexpr auto fileActionsEnabledKey = "Lumeno.fileActionsEnabled"_L1;

QJsonValue stored(const QString& value) {
  return value;
}
QJsonValue stored(bool value) {
  return value;
}
QJsonValue stored(const HotkeyConfig& config) {
  return toJson(config);
}
template <typename Enum>
requires std::is_enum_v<Enum> QJsonValue stored(Enum value) {
  return rawValue(value);
}

template <typename T>
std::function<void(const T&)> writeTo(PreferencesStore& defaults, QLatin1StringView key) {
  return [&defaults, key](const T& value) { defaults.setValue(key, stored(value)); };
}

/// The strings of a stored array; none when any member is something else, for then it is not such an array.
QStringList storedStrings(const PreferencesStore& defaults, QLatin1StringView key) {
  QStringList strings;
  const QJsonArray array = defaults.value(key).toArray();
  for (const QJsonValue& member : array) {
    if (!member.isString()) return {};
    strings += member.toString();
  }
  return strings;
}

QSet<QString> loadDisabledApps(const PreferencesStore& defaults) {
  const QStringList names = storedStrings(defaults, disabledAppsKey);
  return {names.begin(), names.end()};
}

QSet<IntentKind> loadDisabledActionKinds(const PreferencesStore& defaults) {
  QSet<IntentKind> kinds;
  for (const QString& name : storedStrings(defaults, disabledActionKindsKey)) {
    if (const auto kind = intentKindFromRawValue(name)) kinds.insert(*kind);
  }
  return kinds;
}

HotkeyConfig loadSummonHotkey(const PreferencesStore& defaults) {
  return hotkeyConfigFromJson(defaults.value(summonHotkeyKey).toObject()).value_or(HotkeyConfig{});
}

}  // namespace

SettingsStore::SettingsStore(PreferencesStore& defaults, LoginItem& loginItem, TriggerMode triggerMode)
    : defaults_(defaults),
      loginItem_(loginItem),
      triggerMode(triggerMode),
      backend(aiBackendFromRawValue(defaults.value(backendKey).toString()),
              writeTo<AIBackend>(defaults, backendKey)),
      ollamaModel(defaults.value(ollamaModelKey).toString(u"llama3.2"_s),
                  writeTo<QString>(defaults, ollamaModelKey)),
      disabledApps(loadDisabledApps(defaults)),
      summonHotkeyEnabled(defaults.value(summonHotkeyEnabledKey).toBool(true),
                          writeTo<bool>(defaults, summonHotkeyEnabledKey)),
      summonHotkey(loadSummonHotkey(defaults), writeTo<HotkeyConfig>(defaults, summonHotkeyKey)),
      disabledActionKinds(loadDisabledActionKinds(defaults)),
      hasCompletedOnboarding(defaults.value(hasCompletedOnboardingKey).toBool(false),
                             writeTo<bool>(defaults, hasCompletedOnboardingKey)),
      resultSoundEnabled(defaults.value(resultSoundEnabledKey).toBool(false),
                         writeTo<bool>(defaults, resultSoundEnabledKey)),
      hapticsEnabled(defaults.value(hapticsEnabledKey).toBool(true),
                     writeTo<bool>(defaults, hapticsEnabledKey)),
      accentTheme(accentThemeFromRawValue(defaults.value(accentThemeKey).toString()),
                  writeTo<AccentTheme>(defaults, accentThemeKey)),
      glassIntensity(glassIntensityFromRawValue(defaults.value(glassIntensityKey).toString()),
                     writeTo<GlassIntensity>(defaults, glassIntensityKey)),
      keyboardNavEnabled(defaults.value(keyboardNavEnabledKey).toBool(true),
                         writeTo<bool>(defaults, keyboardNavEnabledKey)),
      fileActionsEnabled(defaults.value(fileActionsEnabledKey).toBool(true),
                         writeTo<bool>(defaults, fileActionsEnabledKey)),
      launchAtLogin(loginItem.isEnabled(), [this](bool wanted) { applyLoginItem(wanted); }) {}

void SettingsStore::writeDisabledApps() {
  const QSet<QString>& names = disabledApps.get();
  defaults_.setValue(disabledAppsKey, QJsonArray::fromStringList(QStringList(names.begin(), names.end())));
}

void SettingsStore::setActionKind(IntentKind kind, bool enabled) {
  QSet<IntentKind> kinds = disabledActionKinds.get();
  if (enabled) {
    kinds.remove(kind);
  } else {
    kinds.insert(kind);
  }
  disabledActionKinds.set(kinds);
  QJsonArray names;
  for (const IntentKind disabled : disabledActionKinds.get()) names.append(rawValue(disabled));
  defaults_.setValue(disabledActionKindsKey, names);
}

void SettingsStore::applyLoginItem(bool wanted) {
  if (isApplyingLoginItem_ || wanted == loginItem_.isEnabled()) return;
  if (wanted ? loginItem_.registerItem() : loginItem_.unregisterItem()) return;
  refreshLaunchAtLogin();
}

void SettingsStore::refreshLaunchAtLogin() {
  isApplyingLoginItem_ = true;
  launchAtLogin.set(loginItem_.isEnabled());
  isApplyingLoginItem_ = false;
}

}  // namespace lumeno
