#include "settings_ui/settings_state.h"

#include <QJsonArray>

#include "settings_ui/settings_labels.h"
#include "unit/settings_ui/settings_fixture.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

class SettingsStateTest : public SettingsFixture {
 protected:
  SettingsStateTest() { state.recorder()->setHasKeyboard(true); }

  QStringList titlesOf(const QVariantList& list, const QString& key = u"title"_s) {
    QStringList titles;
    for (const QVariant& each : list) titles += each.toMap().value(key).toString();
    return titles;
  }

  SettingsState state{services()};
};

TEST_F(SettingsStateTest, WhatIsOffered) {
  EXPECT_EQ(titlesOf(SettingsState::tabs(), u"label"_s),
            (QStringList{u"General"_s, u"Actions"_s, u"Appearance"_s, u"AI"_s}));
  EXPECT_EQ(titlesOf(SettingsState::transforms()),
            (QStringList{u"Writing"_s, u"Explain"_s, u"Reply"_s, u"Grammar"_s, u"Tone"_s, u"Translate"_s,
                         u"Definition"_s, u"Code"_s, u"Error"_s}));
  EXPECT_EQ(titlesOf(state.quickActions()),
            (QStringList{u"Date"_s, u"Filename"_s, u"Address"_s, u"Link"_s, u"Email"_s, u"Phone"_s}));
  EXPECT_EQ(
      titlesOf(SettingsState::accentThemes(), u"label"_s),
      (QStringList{u"System"_s, u"Blue"_s, u"Indigo"_s, u"Purple"_s, u"Pink"_s, u"Teal"_s, u"Orange"_s}));
  EXPECT_EQ(displayTitle(IntentKind::unknown), u"Context"_s);
}

TEST_F(SettingsStateTest, ChoicesAreStoredAtOnce) {
  state.setAccentTheme(3);
  state.setGlassIntensity(1);
  state.setBackend(1);
  EXPECT_EQ(stored("accentTheme"), u"purple"_s);
  EXPECT_EQ(stored("glassIntensity"), u"clear"_s);
  EXPECT_EQ(stored("aiBackend"), u"ollama"_s);
  const auto writes = preferences.writes.size();
  state.setAccentTheme(7);
  state.setBackend(-1);
  EXPECT_EQ(preferences.writes.size(), writes) << "there is no such choice";
  int told = 0;
  QObject::connect(&state, &SettingsState::settingsChanged, &state, [&told] { ++told; });
  settings.accentTheme.set(AccentTheme::teal);
  EXPECT_EQ(told, 1);
  EXPECT_EQ(state.accentTheme(), 5);
}

TEST_F(SettingsStateTest, KindsAreSwitchedOffAndOn) {
  state.setActionKind(u"grammar"_s, false);
  EXPECT_EQ(stored("disabledActionKinds"), QJsonArray{u"grammar"_s});
  EXPECT_EQ(state.disabledActionKinds(), QStringList{u"grammar"_s});
  state.setActionKind(u"grammar"_s, true);
  EXPECT_EQ(stored("disabledActionKinds"), QJsonArray());
}

TEST_F(SettingsStateTest, DisabledAppsAreStoredInLowerCaseAndShownCapitalised) {
  for (const QString& name : {u"Signal Desktop"_s, u"GIMP"_s, u"ÖFFI  maps"_s}) state.disableApp(name);
  EXPECT_EQ(titlesOf(state.disabledApps()), (QStringList{u"Gimp"_s, u"Signal Desktop"_s, u"Öffi  Maps"_s}));
  EXPECT_EQ(titlesOf(state.disabledApps(), u"name"_s),
            (QStringList{u"gimp"_s, u"signal desktop"_s, u"öffi  maps"_s}));
  EXPECT_EQ(stored("disabledApps").toArray().size(), 3);
  const auto writes = preferences.writes.size();
  state.enableApp(u"nothing"_s);
  EXPECT_EQ(preferences.writes.size(), writes);
  state.enableApp(u"gimp"_s);
  state.enableApp(u"signal desktop"_s);
  state.enableApp(u"öffi  maps"_s);
  EXPECT_EQ(stored("disabledApps"), QJsonArray());
  EXPECT_TRUE(state.disabledApps().isEmpty());
}

TEST_F(SettingsStateTest, RecordingTakesTheFirstKeyWithAModifier) {
  ShortcutRecorder& recorder = *state.recorder();
  EXPECT_EQ(recorder.label(), u"⌥⌘Space"_s);
  recorder.toggle();
  EXPECT_EQ(recorder.label(), u"Press keys…"_s);
  keys.press(0);
  keys.press(0, 0x10000);  // Caps Lock
  keys.press(KeyRecorder::unknownKeyCode, modifier::command);
  EXPECT_EQ(devices.cues, QStringList(3, u"beep"_s));
  EXPECT_TRUE(recorder.isRecording());
  keys.press(0, modifier::command | modifier::shift | 0x10000);
  EXPECT_FALSE(recorder.isRecording());
  EXPECT_FALSE(keys.isRecording()) << "nothing is seen any more";
  EXPECT_EQ(settings.summonHotkey.get(), (HotkeyConfig{0, 0x120000}));
  EXPECT_EQ(recorder.label(), u"⇧⌘A"_s);
  EXPECT_EQ(stored("summonHotkey").toObject().value(u"modifiers"_s), 0x120000);
  EXPECT_EQ(devices.cues.size(), 3);
}

TEST_F(SettingsStateTest, RecordingEndsWithoutAChange) {
  ShortcutRecorder& recorder = *state.recorder();
  const std::vector<std::pair<const char*, std::function<void()>>> ends = {
      {"Escape", [&] { keys.press(53); }},
      {"Escape with a modifier", [&] { keys.press(53, modifier::command); }},
      {"a second click", [&] { recorder.toggle(); }},
      {"the keyboard goes elsewhere", [&] { recorder.setHasKeyboard(false); }},
      {"switched off", [&] { settings.summonHotkeyEnabled.set(false); }},
      {"another tab", [&] { state.setTab(1); }},
  };
  for (const auto& [name, end] : ends) {
    SCOPED_TRACE(name);
    recorder.setHasKeyboard(true);
    settings.summonHotkeyEnabled.set(true);
    state.setTab(0);
    recorder.toggle();
    ASSERT_TRUE(recorder.isRecording());
    end();
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_FALSE(keys.isRecording());
  }
  EXPECT_EQ(settings.summonHotkey.get(), HotkeyConfig{});
  EXPECT_TRUE(devices.cues.isEmpty());
}

TEST_F(SettingsStateTest, RecordingNeedsTheKeyboardAndTheSwitch) {
  ShortcutRecorder& recorder = *state.recorder();
  recorder.setHasKeyboard(false);
  recorder.toggle();
  keys.press(0, modifier::command);
  EXPECT_EQ(settings.summonHotkey.get(), HotkeyConfig{}) << "typed into another window";
  recorder.cancel();
  settings.summonHotkeyEnabled.set(false);
  recorder.toggle();
  EXPECT_FALSE(recorder.isRecording());
  settings.summonHotkeyEnabled.set(true);
  keys.refuses = true;
  recorder.toggle();
  EXPECT_FALSE(recorder.isRecording());
  EXPECT_TRUE(recorder.isRefused());
  keys.refuses = false;
  recorder.toggle();
  EXPECT_FALSE(recorder.isRefused());
}

TEST_F(SettingsStateTest, ModelsAreLoadedAndAMissingOneIsReplaced) {
  ModelList& models = *state.models();
  models.load();
  EXPECT_EQ(askedWith, QStringList{u"llama3.2"_s});
  EXPECT_TRUE(models.isLoading());
  answer(0, {});
  EXPECT_FALSE(models.isLoading());
  EXPECT_TRUE(models.loadFailed());
  EXPECT_EQ(settings.ollamaModel.get(), u"llama3.2"_s);

  models.load();
  EXPECT_FALSE(models.loadFailed());
  answer(1, {u"gemma"_s, u"llama3.2"_s});
  EXPECT_EQ(models.models().size(), 2);
  EXPECT_TRUE(preferences.writes.isEmpty()) << "nothing changes when the chosen one is installed";

  models.load();
  answer(2, {u"gemma"_s, u"qwen"_s});
  EXPECT_EQ(stored("ollamaModel"), u"gemma"_s);
  models.load();
  answer(3, {});
  EXPECT_TRUE(models.models().isEmpty());
  EXPECT_EQ(settings.ollamaModel.get(), u"gemma"_s);
}

TEST_F(SettingsStateTest, OnlyTheLatestAnswerCounts) {
  ModelList& models = *state.models();
  models.load();
  models.load();
  EXPECT_FALSE(isWaiting(0));
  answer(1, {u"llama3.2"_s});
  EXPECT_EQ(models.models(), QStringList{u"llama3.2"_s});
  state.setTab(3);
  models.load();
  state.setTab(0);
  EXPECT_FALSE(isWaiting(2)) << "the tab is left";
  EXPECT_FALSE(models.isLoading());
  EXPECT_TRUE(models.models().isEmpty());
  {
    SettingsState other(services());
    other.models()->load();
    EXPECT_TRUE(isWaiting(3));
  }
  EXPECT_FALSE(isWaiting(3)) << "the window is closed";
}

TEST_F(SettingsStateTest, ApplicationsAreFilteredByWhatIsTyped) {
  ApplicationList& list = *state.applications();
  list.load();
  EXPECT_TRUE(list.isLoading());
  catalog.answer({{u"a"_s, u"Firefox"_s, {}}, {u"b"_s, u"GIMP"_s, {}}, {u"c"_s, u"Files"_s, {}}});
  EXPECT_FALSE(list.isLoading());
  EXPECT_EQ(list.count(), 3);
  list.setFilter(u" FI "_s);
  EXPECT_EQ(list.count(), 2);
  EXPECT_EQ(list.nameAt(1), u"Files"_s);
  EXPECT_EQ(list.nameAt(2), QString());
  list.load();
  EXPECT_EQ(list.filter(), QString());
  list.clear();
  EXPECT_FALSE(catalog.isWanted());
  EXPECT_EQ(list.count(), 0);
}

TEST_F(SettingsStateTest, ATroubleWithTheFileIsSaid) {
  problem.set(u"The settings cannot be stored."_s);
  EXPECT_EQ(state.problem(), u"The settings cannot be stored."_s);
  EXPECT_EQ(SettingsState(services()).problem(), state.problem());
}

}  // namespace
}  // namespace lumeno
