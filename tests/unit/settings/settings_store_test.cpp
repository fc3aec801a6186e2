#include "core/settings/settings_store.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>

#include "support/fake_login_item.h"
#include "support/fake_preferences.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

/// Compared as text, so that a failure shows both values.
std::string json(const QJsonValue& value) {
  return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).toStdString();
}

struct Fixture {
  explicit Fixture(const QJsonObject& stored = {}) : preferences(stored), settings(preferences, loginItem) {}
  FakePreferences preferences;
  FakeLoginItem loginItem;
  SettingsStore settings;
};

/// One stored value and what the settings make of it.
struct LoadCase {
  const char* key;
  QJsonValue stored;
  QJsonValue expected;
  std::function<QJsonValue(const SettingsStore&)> read;
};

template <typename T>
std::function<QJsonValue(const SettingsStore&)> reads(Preference<T> SettingsStore::*member) {
  return [member](const SettingsStore& settings) -> QJsonValue {
    const T& value = (settings.*member).get();
    if constexpr (std::is_enum_v<T>) {
      return rawValue(value);
    } else if constexpr (std::is_same_v<T, HotkeyConfig>) {
      return toJson(value);
    } else {
      return value;
    }
  };
}

QJsonValue readDisabledApps(const SettingsStore& settings) {
  QStringList names(settings.disabledApps.get().begin(), settings.disabledApps.get().end());
  names.sort();
  return QJsonArray::fromStringList(names);
}

QJsonValue readDisabledKinds(const SettingsStore& settings) {
  QJsonArray names;
  for (const IntentKind kind : allIntentKinds) {
    if (settings.disabledActionKinds.get().contains(kind)) names.append(rawValue(kind));
  }
  return names;
}

TEST(SettingsStore, LoadsWhatIsStoredAndTakesTheDefaultForAnythingElse) {
  const QJsonValue absent(QJsonValue::Undefined);
  const auto backend = reads(&SettingsStore::backend);
  const auto model = reads(&SettingsStore::ollamaModel);
  const auto theme = reads(&SettingsStore::accentTheme);
  const auto glass = reads(&SettingsStore::glassIntensity);
  const auto hotkey = reads(&SettingsStore::summonHotkey);
  const QJsonObject defaultHotkey{{"keyCode"_L1, 49}, {"modifiers"_L1, 0x180000}};
  const QJsonObject otherHotkey{{"keyCode"_L1, 36}, {"modifiers"_L1, 0x20000}};

  std::vector<LoadCase> cases = {
      {"aiBackend", absent, u"appleIntelligence"_s, backend},
      {"aiBackend", u"ollama"_s, u"ollama"_s, backend},
      {"aiBackend", u"OLLAMA"_s, u"appleIntelligence"_s, backend},
      {"aiBackend", 1, u"appleIntelligence"_s, backend},
      {"ollamaModel", absent, u"llama3.2"_s, model},
      {"ollamaModel", u""_s, u""_s, model},
      {"ollamaModel", false, u"llama3.2"_s, model},
      {"accentTheme", u"teal"_s, u"teal"_s, theme},
      {"accentTheme", u"mauve"_s, u"system"_s, theme},
      {"glassIntensity", u"clear"_s, u"clear"_s, glass},
      {"glassIntensity", u"Clear"_s, u"regular"_s, glass},
      {"summonHotkey", absent, defaultHotkey, hotkey},
      {"summonHotkey", otherHotkey, otherHotkey, hotkey},
      {"summonHotkey", u"{\"keyCode\":36,\"modifiers\":0}"_s, defaultHotkey, hotkey},
      {"summonHotkey", QJsonObject{{"keyCode"_L1, 36}}, defaultHotkey, hotkey},
      {"summonHotkey", QJsonObject{{"keyCode"_L1, u"36"_s}, {"modifiers"_L1, 0}}, defaultHotkey, hotkey},
      {"disabledApps", absent, QJsonArray(), readDisabledApps},
      {"disabledApps", QJsonArray{u"slack"_s, u"mail"_s, u"slack"_s}, QJsonArray{u"mail"_s, u"slack"_s},
       readDisabledApps},
      {"disabledApps", u"slack"_s, QJsonArray(), readDisabledApps},
      {"disabledApps", QJsonArray{u"slack"_s, 7}, QJsonArray(), readDisabledApps},
      {"disabledActionKinds", QJsonArray{u"tone"_s, u"nonsense"_s, u"tone"_s}, QJsonArray{u"tone"_s},
       readDisabledKinds},
      {"disabledActionKinds", QJsonObject(), QJsonArray(), readDisabledKinds},
  };
  const struct {
    const char* key;
    bool byDefault;
    Preference<bool> SettingsStore::*member;
  } switches[] = {
      {"summonHotkeyEnabled", true, &SettingsStore::summonHotkeyEnabled},
      {"hasCompletedOnboarding", false, &SettingsStore::hasCompletedOnboarding},
      {"resultSoundEnabled", false, &SettingsStore::resultSoundEnabled},
      {"hapticsEnabled", true, &SettingsStore::hapticsEnabled},
      {"keyboardNavEnabled", true, &SettingsStore::keyboardNavEnabled},
      {"fileActionsEnabled", true, &SettingsStore::fileActionsEnabled},
  };
  for (const auto& row : switches) {
    cases.push_back({row.key, absent, row.byDefault, reads(row.member)});
    cases.push_back({row.key, !row.byDefault, !row.byDefault, reads(row.member)});
    cases.push_back({row.key, row.byDefault ? u"false"_s : u"true"_s, row.byDefault, reads(row.member)});
    cases.push_back({row.key, row.byDefault ? 0 : 1, row.byDefault, reads(row.member)});
  }

  for (const LoadCase& test : cases) {
    QJsonObject stored{{"Lumeno.triggerMode"_L1, u"auto"_s}};
    if (!test.stored.isUndefined()) stored.insert(u"Lumeno."_s + QLatin1StringView(test.key), test.stored);
    Fixture f(stored);
    EXPECT_EQ(json(test.read(f.settings)), json(test.expected)) << test.key;
    EXPECT_EQ(f.settings.triggerMode, TriggerMode::hint);
    EXPECT_EQ(json(f.preferences.values), json(stored)) << "loading must write nothing";
    EXPECT_TRUE(f.preferences.writes.isEmpty());
    EXPECT_EQ(f.loginItem.calls, 0);
  }
}

TEST(SettingsStore, AssignmentsAreStoredAtOnceAndReadBackBySettingsMadeLater) {
  Fixture f;
  SettingsStore& s = f.settings;
  s.backend.set(AIBackend::ollama);
  s.ollamaModel.set(u"qwen2.5"_s);
  s.summonHotkeyEnabled.set(false);
  s.summonHotkey.set({36, modifier::command | modifier::shift});
  s.hasCompletedOnboarding.set(true);
  s.resultSoundEnabled.set(true);
  s.hapticsEnabled.set(false);
  s.accentTheme.set(AccentTheme::orange);
  s.glassIntensity.set(GlassIntensity::clear);
  s.keyboardNavEnabled.set(false);
  s.fileActionsEnabled.set(false);
  s.disabledApps.set({u"slack"_s});
  s.writeDisabledApps();
  s.setActionKind(IntentKind::tone, false);
  s.setActionKind(IntentKind::code, false);
  s.setActionKind(IntentKind::tone, true);

  const QJsonObject expected{
      {"Lumeno.aiBackend"_L1, u"ollama"_s},
      {"Lumeno.ollamaModel"_L1, u"qwen2.5"_s},
      {"Lumeno.summonHotkeyEnabled"_L1, false},
      {"Lumeno.summonHotkey"_L1, QJsonObject{{"keyCode"_L1, 36}, {"modifiers"_L1, 0x120000}}},
      {"Lumeno.hasCompletedOnboarding"_L1, true},
      {"Lumeno.resultSoundEnabled"_L1, true},
      {"Lumeno.hapticsEnabled"_L1, false},
      {"Lumeno.accentTheme"_L1, u"orange"_s},
      {"Lumeno.glassIntensity"_L1, u"clear"_s},
      {"Lumeno.keyboardNavEnabled"_L1, false},
      {"Lumeno.fileActionsEnabled"_L1, false},
      {"Lumeno.disabledApps"_L1, QJsonArray{u"slack"_s}},
      {"Lumeno.disabledActionKinds"_L1, QJsonArray{u"code"_s}},
  };
  EXPECT_EQ(json(f.preferences.values), json(expected));

  const SettingsStore later(f.preferences, f.loginItem);
  EXPECT_EQ(later.summonHotkey.get(), s.summonHotkey.get());
  EXPECT_EQ(later.disabledActionKinds.get(), s.disabledActionKinds.get());
}

TEST(SettingsStore, ObserversComeBeforeTheStoreAndEveryAssignmentCounts) {
  Fixture f;
  QStringList seen;
  const Subscription subscription = f.settings.ollamaModel.subscribe([&](const QString& model) {
    seen += model + u'/' + f.preferences.values.value("Lumeno.ollamaModel"_L1).toString();
    if (model == "corrected-me"_L1) f.settings.ollamaModel.set(u"corrected"_s);
  });
  f.settings.ollamaModel.set(u"a"_s);
  f.settings.ollamaModel.set(u"a"_s);
  EXPECT_EQ(seen, QStringList({u"llama3.2/"_s, u"a/"_s, u"a/a"_s}));
  EXPECT_EQ(f.preferences.writes.size(), 2);

  f.settings.ollamaModel.set(u"corrected-me"_s);
  EXPECT_EQ(f.settings.ollamaModel.get(), u"corrected"_s);
  EXPECT_EQ(f.preferences.values.value("Lumeno.ollamaModel"_L1).toString(), u"corrected"_s);
}

TEST(SettingsStore, DisabledAppsAreStoredByTheirOwnOperationOnly) {
  Fixture f;
  f.settings.disabledApps.set({u"slack"_s});
  EXPECT_TRUE(f.preferences.writes.isEmpty());
  f.settings.writeDisabledApps();
  EXPECT_EQ(f.preferences.writes, QStringList{u"Lumeno.disabledApps"_s});
}

TEST(SettingsStore, LaunchAtLoginFollowsTheSystem) {
  const struct {
    const char* name;
    bool enabledBefore, wanted, refuses;
    int calls;
    bool expected;
  } cases[] = {
      {"register", false, true, false, 1, true},          {"already registered", true, true, true, 0, true},
      {"registering fails", false, true, true, 1, false}, {"unregister", true, false, false, 1, false},
      {"not registered", false, false, true, 0, false},   {"unregistering fails", true, false, true, 1, true},
  };
  for (const auto& test : cases) {
    FakePreferences preferences;
    FakeLoginItem loginItem;
    loginItem.enabled = test.enabledBefore;
    loginItem.refuses = test.refuses;
    SettingsStore settings(preferences, loginItem);
    EXPECT_EQ(settings.launchAtLogin.get(), test.enabledBefore) << test.name;
    std::vector<bool> seen;
    const Subscription subscription = settings.launchAtLogin.subscribe([&](bool on) { seen.push_back(on); });
    settings.launchAtLogin.set(test.wanted);
    EXPECT_EQ(settings.launchAtLogin.get(), test.expected) << test.name;
    EXPECT_EQ(seen.back(), test.expected) << test.name;
    EXPECT_EQ(loginItem.calls, test.calls) << test.name;
    EXPECT_TRUE(preferences.writes.isEmpty()) << test.name;
  }
}

}  // namespace
}  // namespace lumeno
