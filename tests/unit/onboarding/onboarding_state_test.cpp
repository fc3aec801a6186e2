#include "onboarding/onboarding_state.h"

#include "unit/onboarding/onboarding_fixture.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using Scene = OnboardingState::Scene;

class OnboardingStateTest : public OnboardingFixture {
 protected:
  int finished = 0;
  OnboardingState state{services, [this] { ++finished; }};
};

TEST_F(OnboardingStateTest, ThePrimaryButtonLeadsThroughEverySceneToTheEnd) {
  const struct {
    Scene scene;
    QString label;
    QString symbol;
  } scenes[] = {{Scene::welcome, u"Get started"_s, u"arrow.right"_s},
                {Scene::capabilities, u"Set permissions"_s, u"arrow.right"_s},
                {Scene::permission, u"Personalize"_s, u"arrow.right"_s},
                {Scene::personalize, u"Finish setup"_s, u"arrow.right"_s},
                {Scene::ready, u"Start using Lumeno"_s, u"checkmark"_s}};
  for (const auto& each : scenes) {
    EXPECT_EQ(finished, 0);
    EXPECT_EQ(state.scene(), each.scene);
    EXPECT_EQ(state.primaryLabel(), each.label);
    EXPECT_EQ(state.primarySymbol(), each.symbol);
    EXPECT_EQ(state.canGoBack(), each.scene != Scene::welcome);
    EXPECT_EQ(state.canSetUpLater(), each.scene != Scene::ready);
    state.activatePrimary();
  }
  EXPECT_EQ(finished, 1);
  EXPECT_EQ(state.scene(), Scene::ready);
}

TEST_F(OnboardingStateTest, MovingStopsAtBothEnds) {
  int changes = 0;
  QObject::connect(&state, &OnboardingState::sceneChanged, [&] { ++changes; });
  state.move(-1);
  EXPECT_EQ(state.scene(), Scene::welcome);
  for (int i = 0; i < 9; ++i) state.move(1);
  EXPECT_EQ(state.scene(), Scene::ready);
  EXPECT_EQ(changes, 4);
  state.setUpLater();
  EXPECT_EQ(finished, 0) << "there is nothing left to set up";
  state.move(-1);
  EXPECT_EQ(state.scene(), Scene::personalize);
  state.setUpLater();
  EXPECT_EQ(finished, 1);
}

TEST_F(OnboardingStateTest, PreferencesAndSettingsFollowEachOther) {
  PersonalizeState& preferences = *state.preferences();
  int changes = 0;
  QObject::connect(&preferences, &PersonalizeState::changed, [&] { ++changes; });
  EXPECT_EQ(preferences.summonHotkey(), u"⌥⌘Space"_s);

  preferences.setFileActionsEnabled(false);
  preferences.setLaunchAtLogin(true);
  preferences.setResultSoundEnabled(true);
  preferences.setHapticsEnabled(false);
  preferences.setSummonHotkeyEnabled(false);
  preferences.setKeyboardNavEnabled(false);
  preferences.setBackend(1);
  EXPECT_FALSE(settings.fileActionsEnabled.get());
  EXPECT_TRUE(loginItem.enabled);
  EXPECT_TRUE(settings.resultSoundEnabled.get());
  EXPECT_FALSE(settings.hapticsEnabled.get());
  EXPECT_FALSE(settings.summonHotkeyEnabled.get());
  EXPECT_FALSE(settings.keyboardNavEnabled.get());
  EXPECT_EQ(settings.backend.get(), AIBackend::ollama);
  preferences.setBackend(2);
  EXPECT_EQ(settings.backend.get(), AIBackend::ollama);

  changes = 0;
  settings.fileActionsEnabled.set(true);
  settings.backend.set(AIBackend::appleIntelligence);
  EXPECT_EQ(changes, 2);
  EXPECT_TRUE(preferences.fileActionsEnabled());
  EXPECT_EQ(preferences.backend(), 0);

  loginItem.refuses = true;
  preferences.setLaunchAtLogin(false);
  EXPECT_TRUE(preferences.launchAtLogin()) << "the switch flips back";
}

TEST_F(OnboardingStateTest, WhatCannotBeOpenedIsSaid) {
  state.openTextEdit();
  state.openFinder();
  scheduler.advance(0);
  EXPECT_EQ(launcher.textEditors, 1);
  EXPECT_EQ(launcher.homeFolders, 1);
  EXPECT_EQ(state.launchNote(), QString());
  launcher.succeeds = false;
  state.openTextEdit();
  scheduler.advance(0);
  EXPECT_TRUE(state.launchNote().contains(u"no text editor"_s));
  state.openFinder();
  scheduler.advance(0);
  EXPECT_TRUE(state.launchNote().contains(u"no file manager"_s));
}

TEST_F(OnboardingStateTest, WithoutATrayTheReadySceneTellsTheWayToTheSettings) {
  const auto enterReady = [this] {
    state.move(-1);
    while (state.scene() != Scene::ready) state.move(1);
  };
  enterReady();
  EXPECT_EQ(state.trayNote(), QString());
  isTrayShown = false;
  enterReady();
  EXPECT_EQ(state.trayNote(), u"There is no tray here: start Lumeno again to open Settings."_s);
}

TEST_F(OnboardingStateTest, AnAnswerAfterTheEndIsDropped) {
  auto gone = std::make_unique<OnboardingState>(services, [] {});
  gone->openFinder();
  gone->permissions()->grantAccessibility();
  gone->permissions()->useCalendar();
  gone.reset();
  scheduler.advance(10);
  EXPECT_EQ(urlOpener.opened.size(), 1u);
}

}  // namespace
}  // namespace lumeno
