#include "onboarding/personalize_state.h"

#include <algorithm>

#include "hotkey/key_names.h"
#include "view_kit/backend_options.h"

namespace lumeno {

using namespace Qt::StringLiterals;

PersonalizeState::PersonalizeState(SettingsStore& settings) : settings_(settings) {
  const auto follow = [this](auto&... preferences) {
    (subscriptions_.push_back(preferences.subscribe([this](const auto&) { Q_EMIT changed(); })), ...);
  };
  settings.refreshLaunchAtLogin();
  follow(settings.fileActionsEnabled, settings.launchAtLogin, settings.resultSoundEnabled,
         settings.hapticsEnabled, settings.summonHotkeyEnabled, settings.keyboardNavEnabled, settings.backend,
         settings.summonHotkey);
}

QVariantList PersonalizeState::backends() {
  return backendOptions();
}

int PersonalizeState::backend() const {
  const auto found = std::find(allAIBackends.begin(), allAIBackends.end(), settings_.backend.get());
  return static_cast<int>(found - allAIBackends.begin());
}

void PersonalizeState::setBackend(int index) {
  if (index < 0 || index >= static_cast<int>(allAIBackends.size())) return;
  settings_.backend.set(allAIBackends[static_cast<size_t>(index)]);
}

QString PersonalizeState::backendDetail() const {
  switch (settings_.backend.get()) {
    case AIBackend::appleIntelligence:
      return u"Apple Intelligence by default, with template fallbacks."_s;
    case AIBackend::ollama:
      return u"Your Ollama model over localhost."_s;
  }
  Q_UNREACHABLE();
}

QString PersonalizeState::summonHotkey() const {
  return displayString(settings_.summonHotkey.get());
}

}  // namespace lumeno
