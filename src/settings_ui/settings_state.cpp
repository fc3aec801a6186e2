#include "settings_ui/settings_state.h"

#include <QVariantMap>
#include <algorithm>
#include <array>

#include "settings_ui/settings_labels.h"
#include "view_kit/backend_options.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array transformKinds = {
    IntentKind::writing,   IntentKind::explain,    IntentKind::reply, IntentKind::grammar, IntentKind::tone,
    IntentKind::translate, IntentKind::definition, IntentKind::code,  IntentKind::error,
};
constexpr std::array quickActionKinds = {
    IntentKind::date, IntentKind::filename, IntentKind::address,
    IntentKind::link, IntentKind::email,    IntentKind::phone,
};

QVariantMap describe(IntentKind kind) {
  return {{u"kind"_s, rawValue(kind)},
          {u"title"_s, displayTitle(kind)},
          {u"symbol"_s, symbolName(kind)},
          {u"tint"_s, tintName(tint(kind))}};
}

template <typename Enum>
void choose(Preference<Enum>& preference, int index, qsizetype count) {
  if (index >= 0 && index < count) preference.set(static_cast<Enum>(index));
}

}  // namespace

SettingsState::SettingsState(const Services& services)
    : settings_(services.settings),
      recorder_(services.settings, services.keyRecorder, services.sound),
      models_(services.settings, services.modelLister),
      applications_(services.applications) {
  settings_.refreshLaunchAtLogin();
  const auto changed = [this](const auto&) { Q_EMIT settingsChanged(); };
  subscriptions_.push_back(settings_.launchAtLogin.subscribe(changed));
  subscriptions_.push_back(settings_.summonHotkeyEnabled.subscribe(changed));
  subscriptions_.push_back(settings_.fileActionsEnabled.subscribe(changed));
  subscriptions_.push_back(settings_.resultSoundEnabled.subscribe(changed));
  subscriptions_.push_back(settings_.hapticsEnabled.subscribe(changed));
  subscriptions_.push_back(settings_.keyboardNavEnabled.subscribe(changed));
  subscriptions_.push_back(settings_.accentTheme.subscribe(changed));
  subscriptions_.push_back(settings_.glassIntensity.subscribe(changed));
  subscriptions_.push_back(settings_.backend.subscribe(changed));
  subscriptions_.push_back(settings_.ollamaModel.subscribe(changed));
  subscriptions_.push_back(
      settings_.disabledActionKinds.subscribe([this](const auto&) { Q_EMIT disabledActionKindsChanged(); }));
  subscriptions_.push_back(
      settings_.disabledApps.subscribe([this](const auto&) { Q_EMIT disabledAppsChanged(); }));
  subscriptions_.push_back(services.preferenceProblem.subscribe([this](const QString& problem) {
    problem_ = problem;
    Q_EMIT problemChanged();
  }));
}

void SettingsState::setTab(int tab) {
  if (tab == tab_ || tab < 0 || tab >= tabs().size()) return;
  recorder_.cancel();
  models_.clear();
  tab_ = tab;
  Q_EMIT tabChanged();
}

QVariantList SettingsState::tabs() {
  const auto tab = [](const QString& label, const QString& symbol) {
    return QVariantMap{{u"label"_s, label}, {u"symbol"_s, symbol}};
  };
  return {tab(u"General"_s, u"gearshape"_s), tab(u"Actions"_s, u"square.grid.2x2"_s),
          tab(u"Appearance"_s, u"paintpalette"_s), tab(u"AI"_s, u"sparkles"_s)};
}

QString SettingsState::tabName() const {
  return tabs().at(tab_).toMap().value(u"label"_s).toString();
}

void SettingsState::setAccentTheme(int index) {
  choose(settings_.accentTheme, index, accentThemes().size());
}

void SettingsState::setGlassIntensity(int index) {
  choose(settings_.glassIntensity, index, glassIntensities().size());
}

void SettingsState::setBackend(int index) {
  choose(settings_.backend, index, backends().size());
}

QVariantList SettingsState::accentThemes() {
  return accentThemeOptions();
}

QVariantList SettingsState::glassIntensities() {
  return glassIntensityOptions();
}

QVariantList SettingsState::backends() {
  return backendOptions();
}

QVariantList SettingsState::transforms() {
  QVariantList kinds;
  for (const IntentKind kind : transformKinds) kinds.append(describe(kind));
  return kinds;
}

QVariantList SettingsState::quickActions() {
  QVariantList kinds;
  for (const IntentKind kind : quickActionKinds) kinds.append(describe(kind));
  return kinds;
}

QStringList SettingsState::disabledActionKinds() const {
  QStringList kinds;
  for (const IntentKind kind : settings_.disabledActionKinds.get()) kinds += rawValue(kind);
  return kinds;
}

void SettingsState::setActionKind(const QString& kind, bool enabled) {
  if (const auto known = intentKindFromRawValue(kind)) settings_.setActionKind(*known, enabled);
}

QVariantList SettingsState::disabledApps() const {
  QStringList names = settings_.disabledApps.get().values();
  names.sort();
  QVariantList apps;
  for (const QString& name : names) {
    apps.append(QVariantMap{{u"name"_s, name}, {u"title"_s, capitalizedWords(name)}});
  }
  return apps;
}

void SettingsState::disableApp(const QString& displayName) {
  if (displayName.isEmpty()) return;
  QSet<QString> names = settings_.disabledApps.get();
  names.insert(displayName.toLower());
  setDisabledApps(names);
}

void SettingsState::enableApp(const QString& name) {
  QSet<QString> names = settings_.disabledApps.get();
  if (names.remove(name)) setDisabledApps(names);
}

void SettingsState::setDisabledApps(const QSet<QString>& names) {
  settings_.disabledApps.set(names);
  settings_.writeDisabledApps();
}

}  // namespace lumeno
